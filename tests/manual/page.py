"""Reads the sources of the manual pages (man/*.scd): their sections, literal blocks and tables."""

import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
MANUAL = ROOT / "man"


def sources(section="*"):
    found = sorted(MANUAL.glob(f"*.{section}.scd"))
    if not found:
        sys.exit(f"{MANUAL}: no manual pages")
    return found


def sections(path, mark="# "):
    """The text under each heading of that level, up to the next one."""
    result, heading, literal = {}, None, False
    for line in path.read_text(encoding="utf-8").splitlines():
        literal ^= line == "```"
        if not literal and line.startswith(mark):
            heading = line[len(mark):]
            result[heading] = []
        elif not literal and mark == "## " and line.startswith("# "):
            heading = None
        elif heading is not None:
            result[heading].append(line)
    return {heading: "\n".join(lines) for heading, lines in result.items()}


def literals(text):
    """The literal blocks of a section, as the page shows them: a backslash makes the character after
    it stand for itself, and is shown only when it is doubled."""
    return [re.sub(r"\\(.)", r"\1", block)
            for block in re.findall(r"^```\n(.*?)^```$", text, re.M | re.S)]


def plain(text):
    """A line or cell without its markup."""
    return re.sub(r"\\(.)", r"\1", re.sub(r"(?<![\\\w])[*_]|(?<!\\)[*_](?!\w)", "", text)).strip()


def table(text):
    """The rows of the one table in a section, as lists of cells, its heading left out."""
    rows = []
    for line in text.splitlines():
        cell = re.fullmatch(r"([\[|\]:])(?:[\[\-\]<=>] ?| {0,2})(.*)", line)
        if cell and cell[1] != ":":
            rows.append([])
        if cell:
            rows[-1].append(plain(cell[2]))
    return rows[1:]


def names(path):
    """What the NAME section says that the page is about."""
    line = sections(path)["NAME"].strip()
    return [name.strip() for name in line.split(" - ")[0].split(",")]


class Complaints:
    """Differences found, each one line that names what is missing where."""

    def __init__(self):
        self.lines = []

    def add(self, line):
        self.lines.append(line)

    def same(self, what, left, right, in_left, in_right):
        """Compares two collections; in_left and in_right name their places."""
        left, right = set(left), set(right)
        for item in sorted(left - right, key=str):
            self.add(f"{what} {item}: in {in_left}, but not in {in_right}")
        for item in sorted(right - left, key=str):
            self.add(f"{what} {item}: in {in_right}, but not in {in_left}")

    def exit(self):
        for line in self.lines:
            print(line)
        sys.exit(1 if self.lines else 0)
