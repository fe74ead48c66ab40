#!/usr/bin/env bash
# Builds the library with coverage counters, runs its tests, and prints what they reach.
set -euo pipefail
cd "$(dirname "$0")/../.."

programs=(test_util test_constants test_display test_config test_eventlog test_frontends
    test_failing_calls)
build=build/coverage
cmake --preset coverage >/dev/null
cmake --build --preset coverage --target "${programs[@]}"
find "$build" -name '*.gcda' -delete
for program in "${programs[@]}"; do
    "$(find "$build/tests" -name "$program" -type f)"
done
gcovr -r . --object-directory "$build" --json "$build/coverage.json" \
    -f '(util|constants|display|config|eventlog|frontends)/' "$build"
python3 tests/coverage/report.py . "$build/coverage.json"
