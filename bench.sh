#!/usr/bin/env bash
# Measures the event log against the bare limit and against what people would use instead, on this
# machine, and prints tables. Options go to bench/run.py, such as --folder DIR for the disk that is
# to be measured. docs/performance.md holds a run and says what it means.
set -euo pipefail
cd "$(dirname "$0")"

scripts/setup.sh --bench
mkdir -p build
presets=(bench)
if [ "$(uname -m)" = x86_64 ]; then
    presets+=(bench-i386)
fi
for preset in "${presets[@]}"; do
    if ! { cmake --preset "$preset" && cmake --build --preset "$preset"; } >build/bench.log 2>&1; then
        cat build/bench.log >&2
        exit 1
    fi
done
exec bench/run.py build/bench "$@"
