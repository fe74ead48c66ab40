#!/usr/bin/python3
"""What `stat`, `info`, `config` and `check` print with `-o json` fits the documented schemas and
nothing else is printed, whatever the log holds; and the counts of `stat` are those of the entries
that `list` shows.

usage: check_reports.py EVTLOGCTL DOCS_FOLDER SEL_FILE
"""

import collections
import json
import os
import random
import subprocess
import sys
import tempfile
from pathlib import Path

import jsonschema

ENTRIES_OFFSET, ENTRY_SIZE, INFO_SIZE = 6064, 1496, 80
HEADER = 24  # of a record: links and number stay, so that the log stays a log
TYPE_OFFSET, TYPE_END = 40, 44  # of the info record: stays, so that the log stays a log
EVENT_TYPE, RDR_TYPE, CAPABILITIES = 36, 780, 496
DAMAGED = 3
SEED, ROUNDS = 20261122, 5
CONFIGURATION = """EventLog=circular {
Filename="evtlog.dat"
Size=300
Overflow=wrap
Syslog=yes {
EventLogSyslogEventType=sensor {
EventLogSyslogSeverity=critical { EventLogSyslogLevel=emerg }
EventLogSyslogSeverity=ok { EventLogSyslogLevel=none }
}
}
}
"""


class Tool:
    def __init__(self, program, docs):
        self.program = program
        self.validators = {name: self.validator(docs, name)
                           for name in ("stat", "info", "config", "check")}
        self.objects = 0

    @staticmethod
    def validator(docs, name):
        file = Path(docs, f"{name}.schema.json").resolve()
        schema = json.loads(file.read_text(encoding="utf-8"))
        kind = jsonschema.Draft202012Validator
        kind.check_schema(schema)
        return kind(schema, resolver=jsonschema.RefResolver(file.as_uri(), schema))

    def lines(self, *arguments, statuses=(0,)):
        """The lines of a command's JSON, each fit for the command's schema."""
        command = [arguments[0], "-o", "json", *arguments[1:]]
        done = subprocess.run([self.program, *command], check=False, capture_output=True)
        assert done.returncode in statuses, (command, done)
        assert done.stderr == b"" or done.returncode == DAMAGED, done.stderr
        lines = [json.loads(line) for line in done.stdout.decode("utf-8").splitlines()]
        for line in lines:
            self.validators[arguments[0]].validate(line)
        self.objects += len(lines)
        return lines

    def only(self, *arguments, **options):
        lines = self.lines(*arguments, **options)
        assert len(lines) == 1, lines
        return lines[0]

    def entries(self, log):
        done = subprocess.run([self.program, "list", "-o", "json", log], check=True,
                              capture_output=True)
        return [json.loads(line) for line in done.stdout.decode("utf-8").splitlines()]


def check_counts(stat, entries):
    """Every count of `stat --all` against a count of the entries one by one."""
    events = [entry["Event"] for entry in entries]
    assert stat["Counted"] == len(events)
    assert stat["UntimedEntries"] == sum(e["Timestamp"] == -2**63 for e in events)
    timed = [e["Timestamp"] for e in events if e["TimestampTime"] is not None]
    assert stat["TimedEntries"] == len(timed)
    assert stat["RelativeEntries"] == len(events) - len(timed) - stat["UntimedEntries"]
    assert (stat["First"], stat["Last"]) == ((min(timed), max(timed)) if timed else (None, None))
    for key, tally in (("Severity", "Severities"), ("EventType", "EventTypes")):
        groups = stat[tally]["Groups"]
        assert {g[key]: g["Entries"] for g in groups} == collections.Counter(e[key] for e in events)
        numbers = [group["Entries"] for group in groups]
        assert numbers == sorted(numbers, reverse=True)
        for group in groups:
            times = [e["Timestamp"] for e in events
                     if e[key] == group[key] and e["TimestampTime"] is not None]
            assert group["TimedEntries"] == len(times)
            assert group["First"] == (min(times) if times else None)
            days = (max(timed) - min(timed)) / 86400e9 if timed else 0
            expected = len(times) / days if days > 0 else None
            assert group["PerDay"] == expected or abs(group["PerDay"] - expected) < 1e-9 * expected
    assert sum(g["Entries"] for g in stat["Sources"]["Groups"]) == len(events)
    sensors = sum(e["EventTypeName"] in ("SAHPI_ET_SENSOR", "SAHPI_ET_SENSOR_ENABLE_CHANGE",
                                         "SAHPI_ET_WATCHDOG") for e in events)
    assert sum(g["Entries"] for g in stat["Sensors"]["Groups"]) == sensors
    for entry in entries:
        message = entry["Message"]
        kind = entry["Event"]["EventTypeName"]
        if kind in ("SAHPI_ET_SENSOR", "SAHPI_ET_SENSOR_ENABLE_CHANGE", "SAHPI_ET_WATCHDOG"):
            assert any(message.startswith(group["Sensor"] + ": ")
                       for group in stat["Sensors"]["Groups"]), message


def check_left_out(tool, log, whole):
    """What two rows leave out is counted."""
    short = tool.only("stat", "-n", "2", log)
    for tally in ("Severities", "EventTypes", "Sources", "Sensors"):
        all_groups = whole[tally]["Groups"]
        assert short[tally]["Groups"] == all_groups[:2]
        assert short[tally]["GroupsLeftOut"] == max(len(all_groups) - 2, 0)
        assert short[tally]["EntriesLeftOut"] == sum(g["Entries"] for g in all_groups[2:])


def check_findings(tool, log):
    """The lines of check count what their summary says."""
    for options in ([], ["--all"]):
        *findings, summary = tool.lines("check", *options, log, statuses=(0, 1, DAMAGED))
        assert len(findings) + summary["LeftOut"] == summary["Findings"]
        assert summary["Damages"] + summary["Notices"] == summary["Findings"]
        assert not options or summary["LeftOut"] == 0
        assert not options or sum(f["Damage"] for f in findings) == summary["Damages"]
        for finding in findings:
            record = finding["Record"] or ""
            assert finding["EntryId"] is None or f"entry {finding['EntryId']}" in record


def disturb(contents, chance):
    """Random bytes in some places of every entry, and of the info record."""
    for begin in range(ENTRIES_OFFSET, len(contents), ENTRY_SIZE):
        for _ in range(chance.choice([0, 1, 10, 400])):
            contents[begin + chance.randrange(HEADER, ENTRY_SIZE)] = chance.randrange(256)
        at = begin + EVENT_TYPE
        contents[at:at + 4] = bytes([chance.randrange(10), 0, 0, 0])
        if chance.randrange(3) == 0:
            contents[begin + CAPABILITIES:begin + CAPABILITIES + 4] = bytes(4)
        if chance.randrange(3) > 0:
            contents[begin + RDR_TYPE:begin + RDR_TYPE + 4] = bytes([chance.randrange(7), 0, 0, 0])
    for place in (*range(8, TYPE_OFFSET), *range(TYPE_END, 48), *range(64, 72)):
        contents[place] = chance.randrange(256)


def write_old(file, contents):
    """As if it was written long ago: findings in a file that was just changed are waited for."""
    file.write_bytes(contents)
    os.utime(file, (1_000_000, 1_000_000))


def check_salvage(tool, log, folder):
    """A broken link is a finding with its entry, and what was saved is the last line."""
    contents = bytearray(log.read_bytes())
    contents[ENTRIES_OFFSET + 119 * ENTRY_SIZE + 16] ^= 0xFF
    broken = Path(folder, "broken.dat")
    write_old(broken, contents)
    saved = str(Path(folder, "saved.dat"))
    *findings, summary, salvage = tool.lines("check", "--salvage", saved, str(broken),
                                             statuses=(DAMAGED,))
    assert any(finding["EntryId"] == 120 and finding["Damage"] for finding in findings), findings
    assert summary["Damages"] >= 1 and summary["File"] == str(broken)
    assert salvage["SalvageFile"] == saved and salvage["Saved"] == 234, salvage


def main():
    program, docs, sel = sys.argv[1:]
    tool = Tool(program, docs)
    with tempfile.TemporaryDirectory() as folder:
        config = Path(folder, "conf\udcff")  # no UTF-8
        config.write_text(CONFIGURATION, encoding="ascii")
        here = ["--root", str(Path(folder, "root")), "--config", str(config)]
        assert tool.only("config", *here)["Configuration"].endswith("conf\ufffd")
        assert len(tool.only("config", *here)["SyslogMap"]) == 2
        assert tool.only("config")["Configuration"] is None
        subprocess.run([program, *here, "import", sel], check=True, capture_output=True)
        log = next(Path(folder, "root", "evtlog").glob("*.dat"))
        check_salvage(tool, log, folder)
        contents = bytearray(log.read_bytes())
        chance = random.Random(SEED)
        for _ in range(ROUNDS):
            tool.only("info", str(log))
            whole = tool.only("stat", "--all", str(log))
            check_counts(whole, tool.entries(log))
            check_left_out(tool, str(log), whole)
            check_findings(tool, str(log))
            disturb(contents, chance)
            write_old(log, contents)
    print(f"{tool.objects} objects fit their schemas (seed {SEED})")


if __name__ == "__main__":
    main()
