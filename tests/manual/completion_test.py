#!/usr/bin/env python3
"""Completion in a real bash: what is offered for words as bash hands them over, and one line typed
into an interactive bash with the Tab key. bash-completion, the package, takes no part.

Usage: completion_test.py
"""

import os
import pty
import select
import signal
import subprocess
import sys
import tempfile
import time

from page import ROOT

COMPLETION = ROOT / "tools/evtlogctl/evtlogctl.bash-completion"
FILES = ["fan log.dat", "fans.sel", "it's.dat"]
FOLDERS = ["fan-logs"]

# The words as bash splits them, the last one being typed, and what is offered.
CASES = [
    (["l"], ["list"]),
    (["ex"], ["export"]),
    (["nothing"], []),
    (["--ro"], ["--root"]),
    (["list", "--r"], ["--root", "--reverse"]),
    (["--syslog", ""], ["stderr", "syslog"]),
    (["--syslog", "="], ["stderr", "syslog"]),
    (["--syslog", "=", "std"], ["stderr"]),
    (["list", "--output", "=", "v"], ["verbose"]),
    (["list", "-o", "j"], ["json", "json-journal"]),
    (["list", "-p", "mi"], ["minor"]),
    (["list", "--priority", "=", "major..c"], ["major..critical"]),
    (["list", "-t", "sensor,u"], ["sensor,user"]),
    (["list", "--since", "y"], ["yesterday"]),
    (["info", "-o", "j"], ["json"]),
    (["report", "-o", "fans"], ["fans.sel"]),
    (["import", "--watch", "--", "evtlogctl-no-such-command"], []),
    (["import", "--watch", "--", "base64"], ["base64"]),
    (["import", "--watch", "--", "cat", "fans"], ["fans.sel"]),
    (["list", "-o", "json", "fans"], ["fans.sel"]),
    (["import", "--form"], ["--format"]),
    (["import", "--format", "r"], ["raw"]),
    (["import", "fan"], ["fan log.dat", "fans.sel", "fan-logs"]),
    (["import", "--severity-table", "fans"], ["fans.sel"]),
    (["--root", "fan"], ["fan-logs"]),
    (["--root", "fan-logs", "inf"], ["info"]),
    (["--root", "=", "list", "inf"], ["info"]),
    (["--root", "list", "config", ""], []),
    (["--config", "fans"], ["fans.sel"]),
    (["info", "it"], ["it's.dat"]),
    (["check", "--all", "fan l"], ["fan log.dat"]),
    (["check", "--salvage", "fans"], ["fans.sel"]),
    (["evtlog", "e"], ["entry"]),
    (["evtlog", "entry", ""], ["oldest", "newest"]),
    (["evtlog", "del", "o"], ["oldest"]),
    (["evtlog", "state", "p"], ["protect"]),
    (["evtlog", "print", ""], ["dump"]),
    (["evtlog", "add", "fan"], []),
    (["--root", "fan-logs", "evtlog", "i"], ["info"]),
    (["shell", "f"], []),
]

# Keys, and the words of the line that comes of them.
TYPED = [
    ("evtlogctl lis\t-o ver\t'fan l\t\n", "<list><-o><verbose><fan log.dat>"),
    ("evtlogctl --root=fan-\t inf\t\n", "<--root=fan-logs/><info>"),
]


def offered(words):
    script = """set -u; source "$1"; shift
                COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _evtlogctl
                [ ${#COMPREPLY[@]} -eq 0 ] || printf '%s\\n' "${COMPREPLY[@]}" """
    result = subprocess.run(["bash", "--norc", "-c", script, "bash", COMPLETION, "evtlogctl",
                             *words], capture_output=True, text=True)
    if result.returncode != 0 or result.stderr:
        return f"failed with status {result.returncode}: {result.stderr}"
    return result.stdout.splitlines()


class Terminal:
    """The other end of a program's terminal."""

    def __init__(self, descriptor):
        self.descriptor = descriptor
        self.shown = b""  # and not yet taken

    def take_until(self, mark, seconds=120):
        """What the program shows up to the mark and with it."""
        end = time.monotonic() + seconds
        while mark not in self.shown:
            if time.monotonic() > end:
                sys.exit(f"bash does not show {mark!r} but {self.shown!r}")
            if select.select([self.descriptor], [], [], 1)[0]:
                self.shown += os.read(self.descriptor, 4096)
        taken, mark, self.shown = self.shown.partition(mark)
        return (taken + mark).decode()


def typed_with_tab(keys):
    """The words of the command line that an interactive bash makes of the keys."""
    child, descriptor = pty.fork()
    if child == 0:
        os.environ.update(PS1="ready> ", TERM="dumb", HISTFILE="", INPUTRC="/dev/null")
        os.execvp("bash", ["bash", "--norc", "--noprofile", "-i"])
    try:
        terminal = Terminal(descriptor)
        terminal.take_until(b"ready> ")
        os.write(descriptor, f". '{COMPLETION}'\n".encode())
        terminal.take_until(b"ready> ")
        os.write(descriptor, b"evtlogctl() { printf '<%s>' \"$@\"; echo ' end'; }\n")
        terminal.take_until(b"ready> ")
        os.write(descriptor, keys.encode() + b"\n")
        return terminal.take_until(b"> end\r\n").splitlines()[-1].removesuffix(" end")
    finally:
        os.kill(child, signal.SIGKILL)
        os.waitpid(child, 0)
        os.close(descriptor)


def main():
    failures = 0
    with tempfile.TemporaryDirectory() as scratch:
        os.chdir(scratch)
        for name in FILES:
            open(name, "w", encoding="utf-8").close()
        for name in FOLDERS:
            os.mkdir(name)
        for words, expected in CASES:
            result = offered(words)
            if set(result) != set(expected):
                print(f"{words}: {result}, expected {expected}")
                failures += 1
        for keys, expected in TYPED:
            result = typed_with_tab(keys)
            if result != expected:
                print(f"{keys!r}: {result}, expected {expected}")
                failures += 1
        os.chdir("/")
    sys.exit(1 if failures else 0)


main()
