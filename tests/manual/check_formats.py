#!/usr/bin/env python3
"""The pages of section 5 say what the documents say: the tables of the log file's areas and
records, and the keywords of the configuration with their values. (Tests beside the code hold the
documents against the code.)"""

import re

from page import ROOT, Complaints, plain, sections, sources, table

DOCUMENTS = ROOT / "docs"


def document_rows(name, heading=None):
    """The rows of the tables under a heading of a document, or of all its tables."""
    rows, under = [], heading is None
    for line in (DOCUMENTS / name).read_text(encoding="utf-8").splitlines():
        if line.startswith("#") and heading is not None:
            under = line.lstrip("# ") == heading
        elif under and line.startswith("| ") and not line.startswith("| offset"):
            rows.append([cell.strip().replace("`", "") for cell in line.strip("|").split("|")])
    return rows


def check_file_format(complaints):
    page = next(path for path in sources("5") if path.name == "zusahpi-evtlog.5.scd")
    shown = sections(page)
    for section, heading in (("AREAS", "The log file"), ("INFO RECORD", "The info record"),
                             ("ENTRY RECORD", "An entry record")):
        rows = [tuple(row) for row in table(shown[section])]
        expected = [tuple(row) for row in document_rows("file-format.md", heading)]
        if not expected:
            complaints.add(f"file-format.md: no table under {heading}")
        complaints.same("row", expected, rows, "file-format.md", f"{page.name}, {section}")


def keywords_of_page(page):
    found = {}
    for line in page.read_text(encoding="utf-8").splitlines():
        keyword = re.fullmatch(r"\*(\w+)\*: (.*)", line)
        if keyword:
            found[keyword[1]] = plain(keyword[2])
    return found


def check_configuration(complaints):
    page = next(path for path in sources("5") if path.name == "zusahpi-evtlog.conf.5.scd")
    expected = {row[0]: row[1] for row in document_rows("configuration-file.md", "Keywords")
                if row[0] != "keyword" and not row[0].startswith("---")}
    if not expected:
        complaints.add("configuration-file.md: no keywords")
    complaints.same("keyword", expected.items(), keywords_of_page(page).items(),
                    "configuration-file.md", page.name)


def main():
    complaints = Complaints()
    check_file_format(complaints)
    check_configuration(complaints)
    complaints.exit()


main()
