#!/usr/bin/env bash
# Builds for arm64 with Debian's cross compiler and tests that under an emulator, then compares its
# log files with those of this machine, its exported ABI with the description, and builds its Debian
# packages. A line for each step; stops at the first failure with its output.
#
# It installs what it needs, as root. The cross compiler and gcc-multilib, which the tests for i386
# take, exclude each other, so that it runs best in a Debian of its own:
#
#   scripts/fresh.sh bookworm amd64 -- scripts/arm64.sh
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh --arm64
mkdir -p build/steps

# step NAME COMMAND...
step() {
    local name=$1 started=$SECONDS log
    log=build/steps/${1//[ ,]/-}.log
    shift
    if "$@" >"$log" 2>&1; then
        echo "ok    $name ($((SECONDS - started)) s)"
    else
        cat "$log"
        echo "FAIL  $name"
        exit 1
    fi
}

build() {
    cmake --preset arm64 && cmake --build --preset arm64
}

# What is left out is there to be left out: a name that no test has any more is a mistake.
tests() {
    local name all='' known
    known=$(ctest --preset arm64 -N | sed -nE 's/^ *Test +#[0-9]+: //p') || return
    while read -r name _; do
        if ! grep -qxF "$name" <<<"$known"; then
            echo "tests/arm64/left_out.txt: no test is called $name"
            return 1
        fi
        all+="${all:+|}$name"
    done < <(grep -v '^#' tests/arm64/left_out.txt)
    ctest --preset arm64 --progress -E "^($all)\$"
}

log_files() {
    cmake --preset native && cmake --build --preset native --target abi_scenario &&
        tests/build/check_cross_abi.sh build/native build/arm64
}

step "build arm64" build
step "test arm64" tests
step "log files of arm64 and $(uname -m)" log_files
step "exported ABI of arm64" scripts/abi.sh abi-arm64
step "Debian packages for arm64" scripts/packages.sh --here arm64
echo "arm64: all tests passed ($SECONDS s)"
