#!/usr/bin/env python3
"""Line and branch coverage of the library's folders, as a table.

Every line and branch that no test reaches must be listed, with its reason, in the table of
docs/testing.md under "Lines that no test reaches"; and what is listed there must be unreached.
Lines are named by their text, so that the list stays true while lines move.

usage: report.py SOURCE_FOLDER COVERAGE_FILE (as gcovr --json writes it)
"""

import json
import re
import sys
from collections import defaultdict
from pathlib import Path

HEADING = "## Lines that no test reaches"


def listed(document):
    """(file, text of the line) of each row under the heading."""
    _, _, chapter = document.partition(HEADING + "\n")
    chapter = chapter.partition("\n## ")[0]
    return {(row[1], row[2].replace("\\|", "|"))
            for row in re.finditer(r"^\| `([^`]+)` \| `([^`]+)` \|", chapter, re.MULTILINE)}


def main():
    root, coverage = Path(sys.argv[1]), json.loads(Path(sys.argv[2]).read_text())
    excused = listed((root / "docs/testing.md").read_text())
    missed = {}
    counts = defaultdict(lambda: [0, 0, 0, 0])  # lines, reached, branches, reached
    for source in coverage["files"]:
        name = source["file"]
        text = (root / name).read_text().splitlines()
        folder = counts[name.split("/")[0]]
        for line in source["lines"]:
            if line.get("gcovr/noncode"):
                continue
            taken = [branch["count"] > 0 for branch in line["branches"]]
            folder[0] += 1
            folder[1] += line["count"] > 0
            folder[2] += len(taken)
            folder[3] += sum(taken)
            if line["count"] == 0 or not all(taken):
                missed[name, text[line["line_number"] - 1].strip()] = line["line_number"]

    print(f"{'folder':<12}{'lines':>8}{'reached':>9}{'':>8}{'branches':>10}{'reached':>9}")
    total = [0, 0, 0, 0]
    for folder, count in [*sorted(counts.items()), ("total", total)]:
        if folder != "total":
            total = [a + b for a, b in zip(total, count)]
        else:
            count = total
        print(f"{folder:<12}{count[0]:>8}{count[1]:>9}{100 * count[1] / count[0]:>7.1f}%"
              f"{count[2]:>10}{count[3]:>9}{100 * count[3] / count[2]:>7.1f}%")

    unlisted = sorted(set(missed) - excused)
    stale = sorted(excused - set(missed))
    for name, text in unlisted:
        print(f"{name}:{missed[name, text]}: not reached, and not listed: {text}")
    for name, text in stale:
        print(f"{name}: listed as not reached, but it is: {text}")
    print(f"figure: lines or branches that no test reaches, each listed: {len(excused)}")
    sys.exit(1 if unlisted or stale else 0)


if __name__ == "__main__":
    main()
