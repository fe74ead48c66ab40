#!/usr/bin/env bash
# The guard against what a bare machine lacks sees a header and a program that no package brought.
# Usage: check_provided.sh C_COMPILER
set -euo pipefail
guard=$(cd "$(dirname "$0")" && pwd)/provided.py
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir "$scratch/build" "$scratch/strangers"
cd "$scratch/build"

cat >build.ninja <<NINJA
rule compile
  command = $1 -MD -MF deps -c \$in -o \$out
  depfile = deps
  deps = gcc
build object: compile source.c
NINJA

echo '#include <stdio.h>' >source.c
ninja >/dev/null
"$guard" headers .

touch ../strangers/stranger.h
echo '#include "../strangers/stranger.h"' >source.c
ninja >/dev/null
if findings=$("$guard" headers .); then
    echo "a header of no package was let through" >&2
    exit 1
fi
grep -q "^$scratch/strangers/stranger.h: . includes it, and it is of no package" <<<"$findings"

"$guard" path programs
ln -s /bin/true ../strangers/stranger
PATH=$scratch/strangers:$PATH bash -c stranger
if PATH=$PWD/programs bash -c stranger 2>/dev/null; then
    echo "a program of no package was found" >&2
    exit 1
fi
PATH=$PWD/programs bash -c 'cmake --version' >/dev/null
