#!/usr/bin/env python3
"""What `evtlogctl --help` shows, what its manual page describes and what bash completes is the
same: commands, options of each command with their short and long names, whether an option takes a
value, and the words of options that take words. Each difference is a line that says what is missing
where. What the completion offers for an option is taken by the program.

Usage: check_options.py EVTLOGCTL
"""

import re
import subprocess
import sys
import tempfile

from page import MANUAL, ROOT, Complaints, sections

COMPLETION = ROOT / "tools/evtlogctl/evtlogctl.bash-completion"
OPTION = r"-[A-Za-z]|--[A-Za-z][\w-]*"
# Every command has these; the manual and the completion have them among the options of all.
COMMON = {"-h", "--help"}


class Option:
    def __init__(self, takes_value, words):
        self.takes_value = takes_value
        self.words = words  # None where the value is no word of a fixed set


def help_of(program, *command):
    return subprocess.run([program, *command, "--help"], check=True, capture_output=True,
                          text=True).stdout


def options_in_help(text):
    """By each name of an option. A line is "  -o,--output FORM:{short,json}    Form of ...", or
    "  -r,--reverse Excludes: --follow"."""
    found = {}
    value = r"(?: (?!Needs:|Excludes:|REQUIRED)(\S+))?"
    for line in text.splitlines():
        shown = re.match(rf"  ((?:{OPTION})(?:, ?(?:{OPTION}))*){value}(?: |$)", line)
        if not shown:
            continue
        words = re.search(r"{(.*)}", shown[2] or "")
        for name in re.split(", ?", shown[1]):
            found[name] = Option(shown[2] is not None, words and set(words[1].split(",")))
    return found


def commands_in_help(text):
    listed = re.search(r"^Subcommands:\n((?:  .*\n)*)", text, re.M)
    return re.findall(r"^  (\w+)", listed[1], re.M)


def options_in_manual(text):
    """An option is defined by a line like "*-o* _FORM_, *--output* _FORM_"."""
    found = {}
    lines = text.splitlines()
    for at, line in enumerate(lines):
        if not line.startswith("*-"):
            continue
        paragraph = []
        for follower in lines[at + 1:]:
            if follower.startswith("\t") or not follower:
                paragraph.append(follower)
            else:
                break
        words = set(re.findall(r"\*([\w-]+)\*", " ".join(paragraph)))
        for name in re.findall(rf"\*({OPTION})\*", line):
            found[name] = Option("_" in line, words)
    return found


def complete(*words):
    """What bash offers in place of the last word."""
    script = """source "$1"; shift
                COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _evtlogctl
                printf '%s\\n' "${COMPREPLY[@]}" """
    result = subprocess.run(["bash", "--norc", "-c", script, "bash", COMPLETION, "evtlogctl",
                             *words], check=True, capture_output=True, text=True)
    return set(result.stdout.split())


def values_in_completion(command, option):
    """Words; or FILE, DIR or TEXT alone; or nothing."""
    script = 'source "$1"; _evtlogctl_values "$2" "$3"'
    result = subprocess.run(["bash", "--norc", "-c", script, "bash", COMPLETION, command, option],
                            check=True, capture_output=True, text=True)
    return result.stdout.split()


def refuses(program, command, option, word):
    """Whether the word is wrong usage. The log that the command looks for is not there."""
    wrong_usage = 2
    with tempfile.TemporaryDirectory() as root:
        result = subprocess.run([program, "--root", root, command, option, word],
                                stdin=subprocess.DEVNULL, capture_output=True, text=True)
    return result.returncode == wrong_usage


def compare(program, command, helped, described, completed, complaints):
    where = f"{command} " if command else ""
    complaints.same(f"{where}option", helped, described, "--help", "the manual")
    complaints.same(f"{where}option", helped, completed, "--help", "the completion")
    for name, option in helped.items():
        if name in described and option.takes_value != described[name].takes_value:
            complaints.add(f"{where}option {name}: takes a value in one of --help and the manual")
        values = values_in_completion(command, name)
        if option.takes_value != bool(values):
            complaints.add(f"{where}option {name}: takes a value in one of --help and the "
                           "completion")
        if not option.words:
            for word in [word for word in values if word not in ("FILE", "DIR", "TEXT")]:
                if refuses(program, command, name, word):
                    complaints.add(f"{where}option {name}: does not take {word}, which the "
                                   "completion offers")
            continue
        for word in sorted(option.words - described.get(name, option).words):
            complaints.add(f"{where}option {name}: the manual's paragraph lacks *{word}*")
        offered = complete(*([command] if command else []), name, "")
        complaints.same(f"{where}option {name}: word", option.words, offered, "--help",
                        "the completion")


def main():
    program = sys.argv[1]
    complaints = Complaints()
    page = MANUAL / "evtlogctl.1.scd"
    described = {heading.split()[0]: options_in_manual(text)
                 for heading, text in sections(page, "## ").items()}
    commands = commands_in_help(help_of(program))
    if not commands:
        complaints.add("--help: no commands")
    complaints.same("command", commands, described, "--help", "the manual")
    complaints.same("command", commands, complete(""), "--help", "the completion")

    common = options_in_help(help_of(program))
    compare(program, "", common, options_in_manual(sections(page)["OPTIONS"]), complete("-"),
            complaints)
    for command in commands:
        shown = options_in_help(help_of(program, command))
        if not COMMON <= set(shown):
            complaints.add(f"{command}: --help does not show {' '.join(sorted(COMMON))}")
        own = {name: option for name, option in shown.items() if name not in COMMON}
        # The words behind "evtlog" are its line's, so nothing is completed there.
        offered = set() if command == "evtlog" else complete(command, "-") - complete("-")
        compare(program, command, own, described.get(command, {}), offered, complaints)
    complaints.exit()


main()
