#!/usr/bin/env bash
# Programs in C and in C++ are built against the installed library and run: one with the default
# main library, one with its own. With a GNU type as an argument, such as aarch64-linux-gnu, the
# programs are for that machine.
set -euo pipefail
cd "$(dirname "$0")/../.."
cc=${1:+$1-}gcc
cxx=${1:+$1-}g++
run=$PWD/tests/build/run.sh
if [ $# -gt 0 ]; then
    export PKG_CONFIG_LIBDIR=/usr/lib/$1/pkgconfig
fi
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# Options are words.
# shellcheck disable=SC2046
build() {
    "$1" -Wall -Wextra -Werror "$2" -o "$scratch/program" $(pkg-config --cflags --libs "$3")
}

build "$cc" tests/install/consumer/use_log.c zuSaHpi_mainlib
(mkdir "$scratch/c" && cd "$scratch/c" && "$run" ../program)
build "$cxx" tests/install/consumer/use_log.cpp zuSaHpi_mainlib
(mkdir "$scratch/cpp" && cd "$scratch/cpp" && "$run" ../program)
build "$cc" /usr/share/doc/libzusahpi-util-dev/examples/minimal_mainlib.c zuSaHpi_util
tests/build/run_example.sh "$scratch/program" tests/build/minimal_mainlib.txt
echo "libzusahpi-util-dev: three programs built and run"
