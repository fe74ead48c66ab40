#!/usr/bin/env bash
# Static analysis of the library, the default main library and the tool, each source by itself.
# Nothing may be found.
set -euo pipefail
cd "$(dirname "$0")/../.."
folders=(util constants config display eventlog frontends mainlib tools)

cppcheck --enable=warning,performance,portability --inline-suppr --error-exitcode=1 --quiet \
    --std=c++20 --library=posix -j "$(nproc)" -Iinclude -I. "${folders[@]}"
echo "cppcheck: nothing found"

build=build/analysis # for its compile commands; nothing is built
cmake --preset analysis >/dev/null
pattern=$(IFS='|' && echo "/(${folders[*]})/[a-z0-9_/]+\.cpp$")
# One of the two line editors is built, and no other source may be left out.
listed=$(git ls-files -- "${folders[@]/%//*.cpp}" | grep -v /line_editor_)
analysed=$(sed -nE 's/^ *"file": "(.*)",?$/\1/p' "$build/compile_commands.json" |
    grep -E "^$PWD$pattern" | sed "s#^$PWD/##" | sort -u)
if missed=$(comm -23 <(sort <<<"$listed") <(echo "$analysed")) && [ -n "$missed" ]; then
    echo "clang-tidy would not see: $missed" >&2
    exit 1
fi
run-clang-tidy -quiet -p "$build" -j "$(nproc)" "$PWD$pattern" 2>/dev/null
echo "clang-tidy: nothing found"
