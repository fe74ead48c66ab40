#!/usr/bin/env bash
# Runs every test program of a build under valgrind: no invalid access, no use of what was never
# set, no leak. Left out are
# - programs and tests that try out very many cases: here they would take hours. The sanitizers have
#   them, and the fuzzers, whose memory sanitizer sees the use of what was never set;
# - tests that start the tool as a program, which valgrind does not follow;
# - a test that steps through instructions, which are not the processor's own here, and those that let
#   operator new fail: valgrind puts its own in the place of theirs.
# usage: check_memory.sh BUILD_FOLDER
set -euo pipefail
build=$1
left_out='BitFlips*:*/BitFlips*:*/*.EveryCallFails/*:SelPacking.RandomRecordsComeBack'
left_out+=':SelNews.EveryRecordArrivesOnceWhateverHappens:RequestTest.EveryTypeIsServedOrFatal'
left_out+=':Check.*:Ending.*:EvtlogProgram.*:Follow.*:List.*:Program.*:Report.*:Salvage.*:Stat.*:Unlock*:Watch.*'
left_out+=':Clock.GoesFromOneTimeToTheOtherInOneInstruction:ConfigMemory*'

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
