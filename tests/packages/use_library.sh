#!/usr/bin/env bash
# Programs in C and in C++ are built against the installed library and run: one with the default
# main library, one with its own.
set -euo pipefail
cd "$(dirname "$0")/../.."
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# Options are words.
# shellcheck disable=SC2046
build() {
    "$1" -Wall -Wextra -Werror "$2" -o "$scratch/program" $(pkg-config --cflags --libs "$3")
}

build cc tests/install/consumer/use_log.c zuSaHpi_mainlib
(mkdir "$scratch/c" && cd "$scratch/c" && ../program)
build c++ tests/install/consumer/use_log.cpp zuSaHpi_mainlib
(mkdir "$scratch/cpp" && cd "$scratch/cpp" && ../program)
build cc /usr/share/doc/libzusahpi-util-dev/examples/minimal_mainlib.c zuSaHpi_util
tests/build/run_example.sh "$scratch/program" tests/build/minimal_mainlib.txt
echo "libzusahpi-util-dev: three programs built and run"
