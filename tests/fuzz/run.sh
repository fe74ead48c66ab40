#!/usr/bin/env bash
# Builds the fuzz targets and runs each a number of times. Fails when a target finds
# something or was run less often, and when the target with the planted defect finds nothing.
#
#   tests/fuzz/run.sh [--preset NAME] [--build FOLDER] [--runs N] [--seed N] [TARGET...]
#
#   --preset  fuzz (the default), fuzz-i386 or fuzz-memory
#   --build   where it is built; build/NAME otherwise
#   --runs    executions of each target, 100000 otherwise
#   --seed    of the random numbers; 1 otherwise, so that a run in a fresh build repeats
#
# What a run learns stays in the build folder and is where the next run begins. A finding's input is
# there too, under findings/: it belongs to the seeds, beside a test of what it found.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
here=$root/tests/fuzz

preset=fuzz
build=
runs=100000
seed=1
targets=()
while [ $# -gt 0 ]; do
    case $1 in
    --preset) preset=$2 && shift 2 ;;
    --build) build=$2 && shift 2 ;;
    --runs) runs=$2 && shift 2 ;;
    --seed) seed=$2 && shift 2 ;;
    -*) echo "run.sh: unknown option $1" >&2 && exit 2 ;;
    *) targets+=("$1") && shift ;;
    esac
done
build=${build:-$root/build/$preset}
kind=${preset#fuzz} # ", i386" or ", memory" in the figures
kind=${kind/#-/, }

mkdir -p "$build"
(cd "$root" && cmake --preset "$preset" -B "$build" >"$build/configure.log" 2>&1) ||
    { cat "$build/configure.log" && exit 1; }
cmake --build "$build" --target fuzzers >"$build/fuzzers.log" 2>&1 ||
    { cat "$build/fuzzers.log" && exit 1; }
mkdir -p "$build/findings" "$build/corpus"

# Log files are synchronous, so they are kept in memory where that is possible.
place=/dev/shm
[ -w "$place" ] || place=${TMPDIR:-/tmp}
TMPDIR=$(mktemp -d "$place/zufuzz.XXXXXX")
export TMPDIR
trap 'rm -rf "$TMPDIR"' EXIT

# An execution may take seconds at worst, all of them together minutes for each 100000; a busy
# machine gets ten times as long.
common=("-seed=$seed" -timeout=120 -rss_limit_mb=2048 -print_final_stats=1 -verbosity=0 -print_funcs=0)
seconds=$((3000 + runs / 10))

# Some ten thousand executions find the planted defect; chance must not fail a test.
canary_runs=5000000

executions() {
    sed -n 's/^stat::number_of_executed_units: *//p' "$1"
}

# fuzz TARGET SEEDS
fuzz() {
    local target=$1 log=$build/corpus/$1.log done_runs
    local options=("${common[@]}" "-runs=$runs" "-max_total_time=$seconds"
        "-artifact_prefix=$build/findings/$target-")
    # Long enough for all that the format has, short enough to be fast.
    case $2 in
    log_file) options+=(-max_len=16000) ;;
    sel_import) options+=(-max_len=300) ;;
    *) options+=(-max_len=4000) ;;
    esac
    [ -f "$here/dictionaries/$target.dict" ] && options+=("-dict=$here/dictionaries/$target.dict")
    mkdir -p "$build/corpus/$target"
    if ! "$build/tests/fuzz/fuzz_$target" "${options[@]}" "$build/corpus/$target" \
        "$here/seeds/$2" >"$log" 2>&1; then
        tail -n 60 "$log"
        echo "FAIL  $target found something; its input is in $build/findings"
        return 1
    fi
    done_runs=$(executions "$log")
    if [ "$done_runs" -lt "$runs" ]; then
        echo "FAIL  $target was run $done_runs times in $seconds s instead of $runs"
        return 1
    fi
    echo "figure: fuzz executions $target$kind: $done_runs"
}

# The planted defect must be found. It begins without seeds and without what was learnt.
canary() {
    local log=$build/corpus/canary.log
    if "$build/tests/fuzz/fuzz_canary" "${common[@]}" "-runs=$canary_runs" \
        "-artifact_prefix=$TMPDIR/canary-" >"$log" 2>&1; then
        echo "FAIL  canary: the planted defect was not found in $canary_runs executions"
        return 1
    fi
    if ! grep -qE 'SUMMARY: (Address|Memory)Sanitizer' "$log"; then
        tail -n 30 "$log"
        echo "FAIL  canary: it ended, but not by its defect"
        return 1
    fi
    echo "figure: fuzz executions until the planted defect was found$kind: $(executions "$log")"
}

run() {
    if [ "$1" = canary ]; then canary; else fuzz "$1" "$2"; fi
}

# As many at a time as there are processors.
while read -r target seeds; do
    [ ${#targets[@]} -eq 0 ] || [[ " ${targets[*]} " = *" $target "* ]] || continue
    while [ "$(jobs -rp | wc -l)" -ge "$(nproc)" ]; do
        sleep 0.2
    done
    { run "$target" "$seeds" || touch "$TMPDIR/failed"; } &
done <"$build/fuzz-targets.txt"
wait
[ ! -e "$TMPDIR/failed" ]
