#!/usr/bin/env python3
"""House rules that a program can check, over the files that git tracks:

- lines of at most 100 columns, no trailing blanks, no tabs in C and C++;
- functions of at most 70 lines;
- every source file opens with a comment that says what lives there;
- includes point one way: util, constants <- display <- config <- eventlog <- frontends, and
  nothing in the library includes the main library's or the tool's folders;
- the library's folders use nothing of the C++ standard library that needs its run time.
"""

import re
import subprocess
import sys
from pathlib import Path

MAX_COLUMNS = 100
MAX_FUNCTION_LINES = 70
LIBRARY = {
    "util": {"util"},
    "constants": {"constants", "util"},
    "display": {"display", "util", "constants"},
    "config": {"config", "display", "util", "constants"},
    "eventlog": {"eventlog", "config", "display", "util", "constants"},
    "frontends": {"frontends", "eventlog", "config", "display", "util", "constants"},
}
RUN_TIME_HEADERS = {
    "string", "vector", "map", "set", "memory", "iostream", "sstream", "fstream", "functional",
    "stdexcept", "exception", "deque", "list", "unordered_map", "regex", "thread", "mutex",
}

problems = []


def problem(path, line, text):
    problems.append(f"{path}:{line}: {text}")


def check_lines(path, lines):
    for number, line in enumerate(lines, 1):
        if len(line) > MAX_COLUMNS:
            problem(path, number, f"{len(line)} columns, {MAX_COLUMNS} at most")
        if line != line.rstrip() or "\t" in line:
            problem(path, number, "trailing blank or tab")


def check_functions(path, lines):
    """A function of formatted code ends with the first bare closing brace of its own column."""
    for start, line in enumerate(lines):
        opened = re.match(r"( *)(?!namespace|extern|struct|class|enum|union|typedef|if|for|while"
                          r"|switch|else|do\b|}|#|//)\S.*[)\w] (noexcept )?{$", line)
        if not opened or line.endswith("= {") or len(opened[1]) > 4:
            continue
        indent = opened[1]
        for end in range(start + 1, len(lines)):
            if lines[end].startswith(indent + "}") and len(lines[end].strip()) <= 2:
                if end - start + 1 > MAX_FUNCTION_LINES:
                    problem(path, start + 1, f"function of {end - start + 1} lines, "
                            f"{MAX_FUNCTION_LINES} at most")
                break


def check_opening(path, lines):
    if lines and not lines[0].startswith(("//", "/*")):
        problem(path, 1, "does not open with a comment that says what lives here")


def check_includes(path, lines):
    folder = path.parts[0]
    allowed = LIBRARY.get(folder)
    for number, line in enumerate(lines, 1):
        included = re.match(r'#include ["<]([^">]+)[">]', line)
        if not included or allowed is None:
            continue
        name = included[1]
        target = name.split("/")[0] if "/" in name else None
        known = target in LIBRARY or target in ("mainlib", "tools", "tests")
        if known and target not in allowed:
            problem(path, number, f"{folder}/ may not include {name}")
        if name in RUN_TIME_HEADERS:
            problem(path, number, f"<{name}> needs the C++ run time")


def main():
    files = subprocess.run(["git", "ls-files", "*.h", "*.cpp", "*.c"], check=True,
                           capture_output=True, text=True).stdout.split()
    for name in files:
        path = Path(name)
        lines = path.read_text(encoding="utf-8").splitlines()
        check_lines(path, lines)
        check_functions(path, lines)
        check_opening(path, lines)
        check_includes(path, lines)
    print("\n".join(problems))
    sys.exit(1 if problems else 0)


main()
