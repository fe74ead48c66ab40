#!/usr/bin/env bash
# A new version in the public header reaches a build that was configured before.
# Usage: check_version.sh SOURCE C_COMPILER CXX_COMPILER [FLAG]
set -euo pipefail
source=$1 cc=$2 cxx=$3
shift 3
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
copy=$scratch/source build=$scratch/build header=include/zuSaHpi_util.h

mkdir "$copy"
(cd "$source" &&
    cp -r CMakeLists.txt cmake config constants display eventlog frontends include util "$copy")
CC=$cc CXX=$cxx cmake -G Ninja -S "$copy" -B "$build" -DCMAKE_C_FLAGS="$*" -DCMAKE_CXX_FLAGS="$*" \
    -DZUSAHPI_DEVELOPER=OFF -DZUSAHPI_MAINLIB=OFF -DZUSAHPI_TOOL=OFF -DZUSAHPI_INSTALL=OFF

# versions: of the header, and of the shared library that would be built
versions() {
    sed -nE 's/^#define ZUSAHPI_UTIL_VERSION "(.*)"/\1/p' "$copy/$header"
    ninja -C "$build" -t targets all | sed -nE 's/^libzuSaHpi_util\.so\.([0-9.]+\.[0-9.]+):.*/\1/p'
}

expect() {
    [ "$(versions)" = "$1"$'\n'"$1" ] || { echo "not $1 twice: $(versions)" >&2 && exit 1; }
}

before=$(sed -nE 's/^#define ZUSAHPI_UTIL_VERSION "(.*)"/\1/p' "$source/$header")
after=$((${before%%.*} + 1)).2.3
expect "$before"
sed -i "s/\"$before\"/\"$after\"/" "$copy/$header"
cmake --build "$build" --target help >"$scratch/help.log"
expect "$after"
