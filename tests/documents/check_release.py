#!/usr/bin/env python3
"""What a release repeats is the same wherever it stands: the version of the public header in
CHANGELOG.md, debian/changelog and the names of packages in docs/installing.md; and README.md and
debian/copyright say alike how the code may be used.

Usage: check_release.py
"""

import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]


def text_of(name):
    return (ROOT / name).read_text(encoding="utf-8")


def versions():
    """Each place with the versions that it names."""
    return {
        "CHANGELOG.md": re.findall(r"^## (\d\S*)", text_of("CHANGELOG.md"), re.M)[:1],
        "debian/changelog": re.findall(r"^\S+ \((.*?)\)", text_of("debian/changelog"), re.M)[:1],
        "docs/installing.md": re.findall(r"_([\d.]+)_amd64\.deb", text_of("docs/installing.md")),
    }


def licence(name, start):
    """The sentence behind the start, whatever its lines."""
    found = re.search(start + r"\s+([^.]*\.)", text_of(name))
    return " ".join(found[1].split()) if found else f"nothing behind {start!r}"


def main():
    header = re.search(r'ZUSAHPI_UTIL_VERSION "(.*)"', text_of("include/zuSaHpi_util.h"))[1]
    wrong = [f"{name} names {found or 'no version'}, include/zuSaHpi_util.h {header}"
             for name, found in versions().items() if set(found) != {header}]
    readme = licence("README.md", "## Licence")
    package = licence("debian/copyright", "\nLicense: no-licence-chosen\n(?= )")
    if readme != package:
        wrong.append(f"README.md: {readme}\ndebian/copyright: {package}")
    for line in wrong:
        print(line)
    sys.exit(1 if wrong else 0)


main()
