#!/usr/bin/env python3
"""The programs in the EXAMPLES of the manual's section 3 compile without a warning, run, and print
what the page says behind them.

Usage: check_examples.py LIBRARY MAIN-LIBRARY COMPILER [FLAG...]
"""

import subprocess
import sys
import tempfile
from pathlib import Path

from page import ROOT, Complaints, literals, sections, sources

RUN = ROOT / "tests/build/run.sh"
WARNINGS = ["-std=c99", "-Wall", "-Wextra", "-Werror"]


def programs(path):
    """Each program with the output that the page shows."""
    blocks = literals(sections(path).get("EXAMPLES", ""))
    return [(blocks[at], blocks[at + 1]) for at, block in enumerate(blocks)
            if block.startswith("#include")]


def output_of(program, library, mainlib, compiler):
    with tempfile.TemporaryDirectory() as folder:
        source, binary = Path(folder, "example.c"), Path(folder, "example")
        source.write_text(program, encoding="utf-8")
        subprocess.run([*compiler, *WARNINGS, f"-I{ROOT / 'include'}", source, library, mainlib,
                        "-lstdc++", "-o", binary], check=True)
        return subprocess.run([RUN, binary], cwd=folder, check=True, capture_output=True,
                              text=True).stdout


def main():
    library, mainlib, *compiler = sys.argv[1:]
    complaints = Complaints()
    for path in sources("3"):
        shown = programs(path)
        if not shown and path.name != "zusahpi_util.3.scd":
            complaints.add(f"{path.name}: no program among its examples")
        for program, expected in shown:
            printed = output_of(program, library, mainlib, compiler)
            if printed != expected:
                complaints.add(f"{path.name}: the example prints\n{printed}expected\n{expected}")
    complaints.exit()


main()
