#!/usr/bin/env python3
"""docs/architecture.md names every folder of the repository, and its table of the library's rooms
stands in the order that tests/build/tidy.py enforces: each room may use those above it.

Usage: check_architecture.py
"""

import ast
import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]


def rules():
    """tidy.py's table: what the files of each folder may include."""
    tree = ast.parse((ROOT / "tests/build/tidy.py").read_text(encoding="utf-8"))
    for node in tree.body:
        if isinstance(node, ast.Assign) and node.targets[0].id == "LIBRARY":
            return ast.literal_eval(node.value)
    sys.exit("tests/build/tidy.py: no table LIBRARY")


def main():
    text = (ROOT / "docs/architecture.md").read_text(encoding="utf-8")
    rooms = [room for room in re.findall(r"^\| `([\w/]+)/` \|", text, re.M)]
    allowed = rules()
    wrong = []
    above = set()
    for room in [room for room in rooms if room in allowed]:
        above.add(room)
        if allowed[room] != above:
            wrong.append(f"{room}/ may use {sorted(allowed[room])}; those above: {sorted(above)}")
    wrong += [f"no row for {room}/" for room in allowed if room not in rooms]

    files = subprocess.run(["git", "ls-files"], cwd=ROOT, check=True, capture_output=True,
                           text=True).stdout.split("\n")
    folders = {name.split("/")[0] for name in files if "/" in name and not name.startswith(".")}
    wrong += [f"{folder}/ is not named" for folder in sorted(folders) if f"`{folder}/" not in text]
    for line in wrong:
        print(f"docs/architecture.md: {line}")
    sys.exit(1 if wrong else 0)


main()
