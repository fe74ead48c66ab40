#!/usr/bin/env bash
# Runs the example of a minimal main library on a log in a scratch folder and compares its output,
# times apart.
# Usage: run_example.sh PROGRAM EXPECTED
set -euo pipefail
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
"$(dirname "$0")/run.sh" "$1" "$scratch/log" | sed -E 's/[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}/TIME/' |
    diff "$2" -
