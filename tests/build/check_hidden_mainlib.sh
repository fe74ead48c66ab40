#!/usr/bin/env bash
# The shared library finds a main library whose builder hides every name that is not told otherwise:
# in a program, which runs, and in a shared object, which exports all that the library imports.
# Usage: check_hidden_mainlib.sh SOURCE LIBRARY C_COMPILER [FLAG]
set -euo pipefail
source=$1 library=$2 cc=$3
shift 3
export LC_ALL=C
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
build=("$cc" "$@" -fvisibility=hidden "-I$source/include" "$source/examples/minimal_mainlib.c"
    "$library" "-Wl,-rpath,$(dirname "$library")")

"${build[@]}" -fPIE -pie -o "$scratch/program"
"$source/tests/build/run_example.sh" "$scratch/program" "$source/tests/build/minimal_mainlib.txt"

"${build[@]}" -fPIC -shared -o "$scratch/object.so"
exported=$(nm -D --defined-only "$scratch/object.so" | awk '{print $3}' | sort)
if ! diff <(grep . "$source/tests/build/imports.txt") <(echo "$exported"); then
    echo "a hidden main library does not export what the library imports" >&2
    exit 1
fi
