#!/usr/bin/env bash
# Each public header compiles alone, without a warning and without extensions, in every standard of C
# and C++ that its users may write in: with the compilers of this build and with clang.
# Usage: check_headers.sh INCLUDE_FOLDER C_COMPILER CXX_COMPILER [FLAG...]
set -euo pipefail
include=$1 cc=$2 cxx=$3
shift 3
flags=("$@" -Wall -Wextra -Wpedantic -Wshadow -Wconversion -pedantic-errors -Werror -fsyntax-only)

for header in "$include"/*.h "$include"/hpi/*.h; do
    for compiler in "$cc" clang; do
        for standard in c89 gnu89 c99 c11; do
            "$compiler" -x c -std=$standard "${flags[@]}" "$header"
        done
    done
    for compiler in "$cxx" clang++; do
        for standard in c++98 c++11 c++20; do
            "$compiler" -x c++ -std=$standard "${flags[@]}" "$header"
        done
    done
done
