#!/usr/bin/env bash
# Runs the example of a minimal main library on a log in a scratch folder, in the foreground and as a
# daemon, and compares its output, times apart. Its lock must be gone in the end.
# Usage: run_example.sh PROGRAM EXPECTED
set -euo pipefail
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
for option in '' -d; do
    # The daemon holds the pipe until it ends.
    "$(dirname "$0")/run.sh" "$1" $option "$scratch/log$option" |
        sed -E 's/[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}/TIME/' | diff "$2" -
    if [ -e "$scratch/log$option.lck" ]; then
        echo "the lock of log$option is left"
        exit 1
    fi
done
