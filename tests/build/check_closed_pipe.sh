#!/usr/bin/env bash
# The example of a minimal main library whose output is a pipe that nobody reads leaves no lock
# behind, so that the log can be started again.
# Usage: check_closed_pipe.sh PROGRAM
set -euo pipefail
program=("$(dirname "$0")/run.sh" "$1")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

fail() {
    echo "$1" >&2
    exit 1
}

mkfifo "$scratch/pipe"
exec 3<>"$scratch/pipe"
exec 4>"$scratch/pipe"
exec 3>&- # which leaves a writing end without a reading one
# The log grows until its printout is more than what the C library keeps back until the end.
for run in {1..5}; do
    status=0
    env --default-signal=PIPE "${program[@]}" "$scratch/log" >&4 2>"$scratch/errors" || status=$?
    [ "$status" -eq 1 ] || fail "run $run ended with status $status: $(cat "$scratch/errors")"
    [ ! -e "$scratch/log.lck" ] || fail "run $run left its lock behind"
done
"${program[@]}" "$scratch/log" >"$scratch/output"
grep -qx 'entries, says the dispatcher: 6' "$scratch/output" || fail "the log does not hold 6 entries"
