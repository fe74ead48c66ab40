#!/usr/bin/env bash
# Builds and tests everything: style, both ABIs, both ABIs under the sanitizers, and one ABI's log
# files against the other's. A line for each step; stops at the first failure with its output.
set -euo pipefail
cd "$(dirname "$0")"

scripts/setup.sh --tests
mkdir -p build/steps

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
    else
        cat "$log"
        echo "FAIL  $name"
        exit 1
    fi
}

build_and_test() {
    cmake --preset "$1" && cmake --build --preset "$1" && ctest --preset "$1" --progress &&
        { grep -h '^figure: ' "build/$1/Testing/Temporary/LastTest.log" || true; }
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

presets=(native asan)
i386=yes
if i386_runs; then
    presets=(native i386 asan asan-i386)
else
    i386=no
    echo "skip  i386: this machine cannot build or run its programs"
fi

step "style" tests/build/check_style.sh
for preset in "${presets[@]}"; do
    step "build and test $preset" build_and_test "$preset"
done
if [ "$i386" = yes ]; then
    step "log files of both ABIs" tests/build/check_cross_abi.sh build/native build/i386
fi
abis=(abi)
[ "$i386" = no ] || abis+=(abi-i386)
step "exported ABI" scripts/abi.sh "${abis[@]}"
step "Debian packages" scripts/packages.sh
if [ "$(uname -m)" = x86_64 ]; then
    step "valgrind" tests/build/check_memory.sh build/native
fi
step "static analysis" tests/build/check_analysis.sh build/native
step "coverage" tests/coverage/run.sh
sed -n '/^folder/,/^total/s/^/        /p' build/steps/coverage.log
step "fuzz" tests/fuzz/run.sh
if [ "$i386" = yes ]; then
    step "fuzz i386" tests/fuzz/run.sh --preset fuzz-i386 --runs 10000
fi
if [ "$(uname -m)" = x86_64 ]; then # the memory sanitizer knows no other
    step "fuzz memory" tests/fuzz/run.sh --preset fuzz-memory --runs 10000
fi
echo "all tests passed"
