#!/usr/bin/env python3
"""The manual's section 3 holds the public interface, no more and no less:

- each function and data object of the public headers stands in the SYNOPSIS of exactly one page,
  with its prototype as the header has it, and in the NAME of that page;
- what the library exports is what zuSaHpi_util.h declares;
- a page that the manual refers to, and that bears a name of this project, exists.
"""

import re

from page import ROOT, Complaints, literals, names, sections, sources


def declarations(text):
    """Declarations of functions and extern objects by their names, white space made alike."""
    text = re.sub(r"/\*.*?\*/", " ", text, flags=re.S)
    text = re.sub(r"\\\n", " ", text)
    text = re.sub(r"^\s*#.*$|^extern \"C\" {$|^}$", "", text, flags=re.M)
    text = re.sub(r"__attribute__\(\(format\(.*?\)\)\)", "", text)
    text = re.sub(r"typedef struct.*?}[^;]*;", "", text, flags=re.S)
    found = {}
    for declaration in text.split(";"):
        declaration = " ".join(declaration.split())
        name = re.fullmatch(r"extern .*?(\w+)(?:\[[^]]*\])?|[^(]*?(\w+)\(.*\)", declaration)
        if name and not declaration.startswith(("typedef", "ZUSAHPI_")):
            found[name[1] or name[2]] = re.sub(r" ?([(),]) ?", r"\1", declaration)
    return found


def exported():
    text = (ROOT / "cmake/exports.map").read_text(encoding="utf-8")
    return re.findall(r"^    (\w+);$", text, re.M)


def check_pages(declared, complaints):
    seen = {}
    for path in sources("3"):
        shown = declarations("".join(literals(sections(path)["SYNOPSIS"])))
        complaints.same("name", shown, names(path)[1:], f"SYNOPSIS of {path.name}", "its NAME")
        for name, prototype in shown.items():
            if name in seen:
                complaints.add(f"{name}: in {seen[name]} and in {path.name}")
            seen[name] = path.name
            if name in declared and prototype != declared[name]:
                complaints.add(f"{path.name}: {prototype}\n    header: {declared[name]}")
    complaints.same("name", declared, seen, "the headers", "the manual")


def check_references(complaints):
    existing = {(name, path.name.split(".")[-2]) for path in sources() for name in names(path)}
    for path in sources():
        for name, section in re.findall(r"\*([\w.-]+)\*\((\d)\)", path.read_text(encoding="utf-8")):
            ours = name.lower().startswith(("zusahpi", "evtlogctl"))
            if ours and (name, section) not in existing:
                complaints.add(f"{path.name}: refers to {name}({section}), which does not exist")


def main():
    complaints = Complaints()
    of_header = {path.name: declarations(path.read_text(encoding="utf-8"))
                 for path in (ROOT / "include").glob("zuSaHpi_*.h")}
    complaints.same("name", exported(), of_header["zuSaHpi_util.h"], "cmake/exports.map",
                    "zuSaHpi_util.h")
    check_pages({name: prototype for declared in of_header.values()
                 for name, prototype in declared.items()}, complaints)
    check_references(complaints)
    complaints.exit()


main()
