#!/usr/bin/python3
"""The unit of the watch is one that systemd takes, shuts the watch in, and lets it do its work.

systemd need not run: its own tool looks at the unit, and the watch runs as the unit has it while
strace notes the system calls, none of which the unit may forbid.

usage: check_unit.py EVTLOGCTL UNIT SETTINGS SEL_FILE
"""

import os
import re
import shlex
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

MOST_EXPOSED = 12  # tenths; 100 is everything
PATIENCE = 240  # seconds, for what takes a moment on a machine that is not busy
NOT_CALLS = {"exit_group"}  # never returns, so strace may note it at any time


def analyze(*words):
    return subprocess.run(["systemd-analyze", *words], capture_output=True, text=True, check=False)


def check_by_systemd(unit):
    done = analyze("verify", "--man=no", unit)
    assert done.returncode == 0 and not done.stderr, done.stderr
    done = analyze("security", "--offline=true", f"--threshold={MOST_EXPOSED}", "--no-pager", unit)
    assert done.returncode == 0, done.stdout + done.stderr
    exposure = re.search(r"Overall exposure level.*: ([\d.]+)", done.stdout)
    print(f"exposure {exposure[1]} of 10")


def values(text, key):
    return re.findall(rf"^{key}=(.*)$", text, re.MULTILINE)


def calls_of(group):
    calls = set()
    for line in analyze("syscall-filter", group).stdout.splitlines()[1:]:
        word = line.strip()
        if word.startswith("@"):
            calls |= calls_of(word)
        elif word and not word.startswith("#"):
            calls.add(word)
    assert calls, group
    return calls


def allowed_calls(unit_text):
    allowed = set()
    for value in values(unit_text, "SystemCallFilter"):
        for group in value.lstrip("~").split():
            if value.startswith("~"):
                allowed -= calls_of(group)
            else:
                allowed |= calls_of(group)
    return allowed | calls_of("@default")


def traced_calls(words, folder, environment):
    trace = folder / "trace"
    output = folder / "output"
    with open(output, "wb") as to:
        watch = subprocess.Popen(["strace", "-f", "-qq", "-o", trace, *words], stdout=to,
                                 stderr=subprocess.PIPE, env=environment, text=True)
    end = time.monotonic() + PATIENCE
    while b" added" not in output.read_bytes() and time.monotonic() < end:
        time.sleep(0.05)
    for child in Path(f"/proc/{watch.pid}/task/{watch.pid}/children").read_text().split():
        os.kill(int(child), signal.SIGTERM)  # strace itself would end without it
    errors = watch.communicate(timeout=PATIENCE)[1]
    assert watch.returncode == 0 and not errors, (watch.returncode, errors)
    assert b" added" in output.read_bytes(), output.read_bytes()
    return set(re.findall(r"^\d+ +(\w+)\(", trace.read_text(errors="replace"), re.MULTILINE))


def check_by_running(unit_text, settings_text, sel, folder):
    """The words of the unit, with a command that ends well without a controller."""
    command, = values(settings_text, "SEL_COMMAND")
    assert shlex.split(command)[0] == "ipmitool" and "{}" in shlex.split(command), command
    asked = command.replace("bmc.example.net", "127.0.0.1 -p 9 -N 1 -R 1 -C 3")
    script = f"{asked.replace('{}', '$0')} 2>/dev/null; cat {sel} >$0"
    options, = values(settings_text, "WATCH_OPTIONS")
    start, = values(unit_text, "ExecStart")
    words = []
    for word in shlex.split(start):
        words += {"$WATCH_OPTIONS": shlex.split(options),
                  "$SEL_COMMAND": ["sh", "-c", script, "{}"],
                  "${STATE_DIRECTORY}": [str(folder / "state")]}.get(word, [word])
    used = traced_calls(words, folder, {**os.environ, "IPMI_PASSWORD": "x"})
    for either in ({"fchown", "fchown32"}, {"socket", "socketcall"}):  # the work was done
        assert either & used, used
    forbidden = used - allowed_calls(unit_text) - NOT_CALLS
    assert not forbidden, f"the unit forbids {sorted(forbidden)}"
    print(f"{len(used)} system calls used, all allowed")


def main():
    tool, unit, settings, sel = (Path(word).resolve() for word in sys.argv[1:])
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        text = unit.read_text(encoding="utf-8").replace("/usr/bin/evtlogctl", str(tool))
        copy = folder / unit.name
        copy.write_text(text, encoding="utf-8")
        check_by_systemd(copy)
        check_by_running(text, settings.read_text(encoding="utf-8"), sel, folder)


if __name__ == "__main__":
    main()
