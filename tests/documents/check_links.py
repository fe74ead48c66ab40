#!/usr/bin/env python3
"""Every relative link in the documents leads to a file of the repository, and to a heading of it
where it names one; and every file that a document names as `folder/file` exists. Links to the
network are not followed.

Usage: check_links.py
"""

import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]


def prose(text):
    """Without code, in which nothing is a link."""
    return re.sub(r"`[^`\n]*`", "", re.sub(r"^```.*?^```", "", text, flags=re.M | re.S))


def anchors(path):
    """The names that git hosts give the headings of a document."""
    text = re.sub(r"^```.*?^```", "", path.read_text(encoding="utf-8"), flags=re.M | re.S)
    found, times = set(), {}
    for heading in re.findall(r"^#+ +(.*?) *$", text, re.M):
        heading = re.sub(r"\[([^]]*)\]\([^)]*\)", r"\1", heading)
        name = re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")
        found.add(f"{name}-{times[name]}" if name in times else name)
        times[name] = times.get(name, 0) + 1
    return found


def links(text):
    text = prose(text)
    return re.findall(r"\[[^]]*\]\(([^()\s]+)\)", text) + re.findall(r'<img[^>]*src="([^"]+)"', text)


def named_files(text):
    """Names in code spans that begin with a folder of the repository; build/ is made, not kept."""
    text = re.sub(r"^```.*?^```", "", text, flags=re.M | re.S)
    names = re.findall(r"`(\w+/[\w./-]*)`", text)
    return [name for name in names
            if (ROOT / name.split("/")[0]).is_dir() and not name.startswith("build/")]


def check(document):
    """What is wrong with the links of a document, and how many it has."""
    text = document.read_text(encoding="utf-8")
    found = links(text)
    wrong = [f"`{name}` does not exist" for name in named_files(text)
             if not (ROOT / name).exists()]
    for link in found:
        if re.match(r"[a-z]+:", link):
            continue
        name, _, anchor = link.partition("#")
        target = (document.parent / name).resolve() if name else document
        if not target.is_relative_to(ROOT) or not target.exists():
            wrong.append(f"{link} leads to no file of the repository")
        elif anchor and anchor not in anchors(target):
            wrong.append(f"{link} leads to no heading")
    return wrong, len(found)


def main():
    failures = total = 0
    for document in [ROOT / "README.md", ROOT / "CHANGELOG.md", *sorted((ROOT / "docs").glob("*.md"))]:
        wrong, count = check(document)
        total += count
        for line in wrong:
            print(f"{document.relative_to(ROOT)}: {line}")
            failures += 1
    print(f"{total} links")
    sys.exit(1 if failures or total == 0 else 0)


main()
