#!/usr/bin/env bash
# Runs the consumer program on a log in a scratch folder and compares its output.
# Usage: run_consumer.sh PROGRAM EXPECTED
set -euo pipefail
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
diff "$2" <("$1" "$scratch/log")
