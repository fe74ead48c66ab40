#!/usr/bin/env bash
# Built with the assertions and the debug mode of the C++ library, as some distributions and
# developers build everything, the shared library still needs the C library alone.
# Usage: check_checked_build.sh SOURCE C_COMPILER CXX_COMPILER [FLAG]
set -euo pipefail
source=$1 cc=$2 cxx=$3
shift 3
build=$(mktemp -d)
trap 'rm -rf "$build"' EXIT

CC=$cc CXX=$cxx cmake -G Ninja -S "$source" -B "$build" -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_C_FLAGS="$*" -DCMAKE_CXX_FLAGS="$* -D_GLIBCXX_DEBUG -Wp,-D_GLIBCXX_ASSERTIONS" \
    -DZUSAHPI_DEVELOPER=OFF -DZUSAHPI_MAINLIB=OFF -DZUSAHPI_TOOL=OFF -DZUSAHPI_INSTALL=OFF
cmake --build "$build" --target zuSaHpi_util
"$source/tests/build/check_symbols.sh" "$build/libzuSaHpi_util.so"
