#!/usr/bin/env bash
# `evtlogctl list -o json-journal` is read by lnav, a real reader of the systemd journal's form: each
# entry with its time, its level and its text.
#
# usage: check_lnav.sh EVTLOGCTL SEL_FILE
set -euo pipefail
evtlogctl=$1
sel=$2

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export HOME=$folder TZ=UTC0
"$evtlogctl" --root "$folder" import "$sel" >"$folder/summary"
"$evtlogctl" --root "$folder" list -o json-journal >"$folder/log.json"
lnav -n -c ';select log_time, log_level, log_body from all_logs' -c ':write-csv-to -' \
    "$folder/log.json" >"$folder/read.csv"

python3 - "$folder/read.csv" <("$evtlogctl" --root "$folder" list -o csv) <<'CHECK'
import csv
import sys

LEVELS = {"critical": "critical", "major": "error", "minor": "warning", "informational": "stats"}
read = [(row["log_time"][:19].replace(" ", "T"), row["log_level"], row["log_body"])
        for row in csv.DictReader(open(sys.argv[1], encoding="utf-8"))]
listed = [(row["Time"][:19] if row["Time"] != "unspecified" else row["Logged"][:19],
           LEVELS[row["Severity"]], row["Message"])
          for row in csv.DictReader(open(sys.argv[2], encoding="utf-8"))]
# lnav shows an entry that is older than the one before it at the time of that one.
for before, row in enumerate(listed[1:]):
    listed[before + 1] = (max(row[0], listed[before][0]), *row[1:])
assert len(listed) == 234, len(listed)
extra, lost = set(read) - set(listed), set(listed) - set(read)
assert sorted(read) == sorted(listed), (len(read), extra, lost)
print(f"lnav reads {len(read)} entries")
CHECK
