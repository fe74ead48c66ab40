#!/usr/bin/python3
"""Every line of `evtlogctl list -o json` fits the documented schema, whatever the log holds.

usage: check_json.py EVTLOGCTL SCHEMA SEL_FILE
"""

import json
import random
import subprocess
import sys
import tempfile
from pathlib import Path

import jsonschema

ENTRIES_OFFSET, ENTRY_SIZE = 6064, 1496
HEADER = 24  # of a record: links and number stay, so that the log stays a log
EVENT_TYPE, RDR_TYPE, CAPABILITIES = 36, 780, 496
SEED, ROUNDS = 20261121, 12


def list_json(tool, log):
    """The lines as objects; nothing else may stand on standard output or standard error."""
    done = subprocess.run([tool, "list", "-o", "json", log], check=True, capture_output=True)
    assert done.stderr == b"", done.stderr
    return [json.loads(line) for line in done.stdout.decode("utf-8").splitlines()]


def disturb(record, chance):
    """Random bytes in some places, and often a type that there is."""
    for _ in range(chance.choice([0, 1, 10, 400])):
        record[chance.randrange(HEADER, ENTRY_SIZE)] = chance.randrange(256)
    record[EVENT_TYPE:EVENT_TYPE + 4] = bytes([chance.randrange(10), 0, 0, 0])
    if chance.randrange(3) > 0:
        record[RDR_TYPE:RDR_TYPE + 4] = bytes([chance.randrange(7), 0, 0, 0])
    if chance.randrange(3) == 0:
        record[CAPABILITIES:CAPABILITIES + 4] = bytes(4)


def main():
    tool, schema_file, sel = sys.argv[1:]
    schema = json.loads(Path(schema_file).read_text(encoding="utf-8"))
    jsonschema.Draft202012Validator.check_schema(schema)
    validator = jsonschema.Draft202012Validator(schema)
    members = set()
    objects = 0
    with tempfile.TemporaryDirectory() as folder:
        root = Path(folder, "root")
        subprocess.run([tool, "--root", root, "import", sel], check=True, capture_output=True)
        log = next((root / "evtlog").glob("*.dat"))
        contents = bytearray(log.read_bytes())
        chance = random.Random(SEED)
        for round_number in range(ROUNDS):
            for entry in list_json(tool, log):
                validator.validate(entry)
                objects += 1
                members.update(entry["Event"])
                members.update(entry["Rdr"] or {"no RDR"})
                members.update(entry["Rpt"] or {"no RPT entry"})
            for begin in range(ENTRIES_OFFSET, len(contents), ENTRY_SIZE):
                record = contents[begin:begin + ENTRY_SIZE]
                disturb(record, chance)
                contents[begin:begin + ENTRY_SIZE] = record
            log.write_bytes(contents)
    known = set(schema["$defs"]["event"]["properties"]) | set(schema["$defs"]["rdr"]["properties"])
    missing = known | {"no RDR", "no RPT entry"}
    missing -= members
    assert not missing, f"never seen: {missing}"
    print(f"{objects} objects fit the schema (seed {SEED})")


if __name__ == "__main__":
    main()
