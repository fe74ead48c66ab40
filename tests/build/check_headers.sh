#!/usr/bin/env bash
# Each public header compiles alone, as C99, C11 and C++, without extensions.
# Usage: check_headers.sh INCLUDE_FOLDER C_COMPILER CXX_COMPILER [FLAG]
set -euo pipefail
include=$1 cc=$2 cxx=$3
shift 3
warnings=(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -pedantic-errors -Werror)

for header in "$include"/*.h; do
    for standard in c99 c11; do
        "$cc" "$@" -x c -std=$standard "${warnings[@]}" -fsyntax-only "$header"
    done
    for standard in c++11 c++20; do
        "$cxx" "$@" -x c++ -std=$standard "${warnings[@]}" -fsyntax-only "$header"
    done
done
