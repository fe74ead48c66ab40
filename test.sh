#!/usr/bin/env bash
# Builds and tests everything: style, both ABIs, both ABIs under the sanitizers, and one ABI's log
# files against the other's. A line for each step; stops at the first failure with its output. What
# was skipped is listed at the end, with its reason.
#
#   ./test.sh          all of it
#   ./test.sh --quick  style, one build for this machine, and its tests
set -euo pipefail
cd "$(dirname "$0")"

quick=no
case ${1:-} in
--quick) quick=yes ;;
'') ;;
*) echo "usage: ./test.sh [--quick]" >&2 && exit 2 ;;
esac

scripts/setup.sh --tests
rm -rf build/steps build/programs
mkdir -p build/steps
tests/build/provided.py path build/programs

# provided COMMAND...: finds the programs that setup installs for the tests, and no others. Builds find
# their compilers as they do without this script: a build folder belongs to one of a name and place.
provided() {
    PATH=$PWD/build/programs "$@"
}

# What a step counted; tests that count the same thing are added up.
figures() {
    { grep -oh '^figure: .*: [0-9]*$' "$1" || true; } | awk '
        { what = $0; sub(/^figure: /, "", what); sub(/: [0-9]*$/, "", what) }
        !(what in sum) { order[++kinds] = what }
        { sum[what] += $NF }
        END { for (i = 1; i <= kinds; i++) printf "        %s: %d\n", order[i], sum[order[i]] }'
}

# step NAME COMMAND...
step() {
    local name=$1 started=$SECONDS log
    log=build/steps/${1//[ ,]/-}.log
    shift
    if "$@" >"$log" 2>&1; then
        echo "ok    $name ($((SECONDS - started)) s)"
        figures "$log"
        { grep -h '^skip  ' "$log" || true; } >>build/steps/skipped
    else
        cat "$log"
        echo "FAIL  $name"
        exit 1
    fi
}

# What GoogleTest says of a skipped test: its name, the place of the skip, the reason.
skipped_tests() {
    awk -v preset="$1" '
        /^\[ RUN      \]/ { test = $4 }
        skipped { print "skip  " preset ", " test ": " $0; skipped = 0 }
        /: Skipped$/ { skipped = 1 }' "$2"
}

build_and_test() {
    local log=build/$1/Testing/Temporary/LastTest.log
    cmake --preset "$1" && cmake --build --preset "$1" &&
        provided ctest --preset "$1" --progress && skipped_tests "$1" "$log" &&
        { grep -h '^figure: ' "$log" || true; }
}

i386_runs() {
    local probe
    probe=$(mktemp -d)
    echo 'int main() { return 0; }' >"$probe/probe.cpp"
    g++ -m32 "$probe/probe.cpp" -o "$probe/probe" 2>/dev/null && "$probe/probe"
    local result=$?
    rm -rf "$probe"
    return "$result"
}

# Besides one build for this machine.
all_else() {
    local i386=yes presets=(native asan) abis=(abi) fuzzers=(fuzz) preset
    if i386_runs; then
        presets=(native i386 asan asan-i386)
    else
        i386=no
        echo "skip  i386: this machine cannot build or run its programs" >>build/steps/skipped
    fi

    for preset in "${presets[@]:1}"; do
        step "build and test $preset" build_and_test "$preset"
    done
    if [ "$i386" = yes ]; then
        step "log files of both ABIs" tests/build/check_cross_abi.sh build/native build/i386
    fi
    [ "$i386" = no ] || abis+=(abi-i386)
    step "exported ABI" scripts/abi.sh "${abis[@]}"
    step "Debian packages" scripts/packages.sh
    if [ "$(uname -m)" = x86_64 ]; then
        step "valgrind" provided tests/build/check_memory.sh build/native
    fi
    step "static analysis" provided tests/build/check_analysis.sh build/native
    step "coverage" tests/coverage/run.sh
    sed -n '/^folder/,/^total/s/^/        /p' build/steps/coverage.log
    step "fuzz" tests/fuzz/run.sh
    if [ "$i386" = yes ]; then
        fuzzers+=(fuzz-i386)
        step "fuzz i386" tests/fuzz/run.sh --preset fuzz-i386 --runs 10000
    fi
    if [ "$(uname -m)" = x86_64 ]; then # the memory sanitizer knows no other
        fuzzers+=(fuzz-memory)
        step "fuzz memory" tests/fuzz/run.sh --preset fuzz-memory --runs 10000
    fi
    builds=("${presets[@]}" coverage "${fuzzers[@]}")
}

step "style" provided tests/build/check_style.sh
step "build and test native" build_and_test native
builds=(native)
if [ "$quick" = no ]; then
    all_else
fi
step "headers" tests/build/provided.py headers "${builds[@]/#/build/}"
cat build/steps/skipped
echo "all tests passed ($SECONDS s)"
