#!/usr/bin/env python3
"""What a bare machine has after scripts/setup.sh: nothing else may be needed.

usage: provided.py path FOLDER      fills FOLDER with links to the programs of those packages, for a
                                    PATH that holds no other
       provided.py headers BUILD... every header that a build included, by the compiler's dependency
                                    files, is this project's or one of theirs

Those packages are the ones that setup.sh installs for the tests, what they depend on, and what every
Debian has. A development machine has more, which hides what setup.sh forgets.
"""

import os
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
PACKAGES = ("dpkg-query", "-W", "-f", "${binary:Package}|${Essential}|${Priority}\n")
FOLDERS = ("/usr/local/bin", "/usr/local/sbin", "/usr/bin", "/usr/sbin", "/bin", "/sbin")


def lines(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout.splitlines()


def needed_packages():
    """The names of the packages, with :ARCHITECTURE where dpkg writes it."""
    known = {}
    for line in lines(*PACKAGES):
        name, essential, priority = line.split("|")
        known[name] = essential == "yes" or priority == "required" or name == "apt"
    wanted = [name for name, always in known.items() if always]
    wanted += lines(ROOT / "scripts/setup.sh", "--list", "--tests")
    depends = ("apt-cache", "depends", "--recurse", "--installed", "--no-recommends",
               "--no-suggests", "--no-conflicts", "--no-breaks", "--no-replaces", "--no-enhances")
    found = {line.strip() for line in lines(*depends, *wanted)
             if line and not line.startswith((" ", "|", "<"))}
    native = lines("dpkg", "--print-architecture")[0]
    return [name for name in known
            if name in found or name.split(":")[0] in found and name.endswith(":" + native)]


def same(path):
    """Programs and headers lie in /usr, whatever a package calls their folder."""
    for folder in ("/bin/", "/sbin/", "/lib/", "/lib32/", "/lib64/"):
        if path.startswith(folder):
            return "/usr" + path
    return path


def provided_files():
    return {same(line) for line in lines("dpkg-query", "-L", *needed_packages())}


def make_path(folder):
    files = provided_files()
    Path(folder).mkdir(parents=True)
    for place in FOLDERS:
        for program in sorted(os.listdir(place)) if os.path.isdir(place) else ():
            name = os.path.join(place, program)
            link = Path(folder, program)
            target = os.path.realpath(name)
            if not link.is_symlink() and {same(name), same(target)} & files:
                link.symlink_to(name)


def check_headers(builds):
    files = provided_files()
    foreign = {}
    for build in builds:
        for line in lines("ninja", "-C", build, "-t", "deps"):
            header = os.path.realpath(os.path.join(build, line.strip()))
            own = header.startswith((f"{ROOT}/", os.path.realpath(build) + "/"))
            if line.startswith("    ") and not own:
                if same(header) not in files:
                    foreign[header] = build
    for header, build in sorted(foreign.items()):
        owner = subprocess.run(("dpkg", "-S", header), capture_output=True, text=True, check=False)
        package = owner.stdout.split(": ")[0] or "no package"
        print(f"{header}: {build} includes it, and it is of {package}, which scripts/setup.sh "
              "does not install for the tests")
    print(f"figure: headers that setup.sh does not provide: {len(foreign)}")
    sys.exit(1 if foreign else 0)


def main():
    if len(sys.argv) == 3 and sys.argv[1] == "path":
        make_path(sys.argv[2])
    elif len(sys.argv) > 2 and sys.argv[1] == "headers":
        check_headers(sys.argv[2:])
    else:
        sys.exit(__doc__)


if __name__ == "__main__":
    main()
