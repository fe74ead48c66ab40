#!/usr/bin/env bash
# Runs every test program of a build under valgrind: no invalid access, no use of what was never
# set, no leak. The programs and tests that try out very many cases are left to the sanitizers: here
# they would take hours. Tests that expect to find their own process under its name are left out, too,
# and those that let operator new fail: valgrind puts its own in the place of theirs.
# usage: check_memory.sh BUILD_FOLDER
set -euo pipefail
build=$1
left_out='ConfigMemory*:Unlock*:BitFlips*:*/BitFlips*:*/*.EveryCallFails/*:SelPacking.RandomRecordsComeBack'

# check PROGRAM TESTS
check() {
    local log=$1.$2.valgrind.log
    if ! valgrind -q --error-exitcode=9 --leak-check=full --errors-for-leak-kinds=definite \
        "$1" "--gtest_filter=$2-$left_out" >"$log" 2>&1; then
        grep -E '^==|FAILED in' "$log" | head -n 100
        echo "$1: failed under valgrind"
        return 1
    fi
    echo "$(basename "$1") $2: $(tail -n 1 "$log")"
}

pids=()
# begin PROGRAM TESTS: as many at a time as there are processors
begin() {
    while [ "$(jobs -rp | wc -l)" -ge "$(nproc)" ]; do
        sleep 0.2
    done
    check "$1" "$2" &
    pids+=($!)
}

# The tests of the tool take as long as all others together: they go first, in two halves.
begin "$build/tests/evtlogctl/test_evtlogctl" '[ABCDEFGHIJKL]*'
begin "$build/tests/evtlogctl/test_evtlogctl" '[!ABCDEFGHIJKL]*'
for program in "$build"/tests/*/test_*; do
    [[ -f $program && -x $program ]] || continue
    [[ $program =~ /test_(evtlogctl|model|crash)$ ]] || begin "$program" '*'
done
failed=0
for pid in "${pids[@]}"; do
    wait "$pid" || failed=1
done
exit "$failed"
