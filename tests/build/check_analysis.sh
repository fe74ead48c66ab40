#!/usr/bin/env bash
# Static analysis of the library, the default main library and the tool. Nothing may be found.
# usage: check_analysis.sh BUILD_FOLDER (for the compile commands)
set -euo pipefail
build=$1

folders=(util constants config display eventlog frontends mainlib tools)

# Bytes of zero are a floating point zero wherever the library runs. The other one is a remark of later
# releases, that they do not look at every path.
cppcheck --enable=warning,performance,portability --inline-suppr --error-exitcode=1 --quiet \
    --suppress=memsetClassFloat --suppress=normalCheckLevelMaxBranches \
    --std=c++20 --library=posix -j "$(nproc)" -Iinclude -I. "${folders[@]}"
echo "cppcheck: nothing found"

# What is compiled of these folders: sources, and batches of them, which clang-tidy takes as a whole.
any=$(IFS='|' && echo "(${folders[*]})")
compiled=$(sed -nE 's/^ *"file": "(.*)",?$/\1/p' "$build/compile_commands.json" |
    grep -E "^$PWD/($build/)?$any/" | grep -vE 'report_page|/evtlogctl_page.dir/')
# One of the two line editors is built, and no other source may be left out.
listed=$(git ls-files -- "${folders[@]/%//*.cpp}" | grep -v /line_editor_)
# shellcheck disable=SC2086 # names without blanks
analysed=$({ echo "$compiled" && sed -nE 's/^#include "(.*)"$/\1/p' $compiled; } |
    sed -n "s#^$PWD/##p" | grep -E "^$any/" | sort -u)
if missed=$(comm -23 <(sort <<<"$listed") <(echo "$analysed")) && [ -n "$missed" ]; then
    echo "clang-tidy would not see: $missed" >&2
    exit 1
fi
pattern=$(IFS='|' && echo "^($(tr '\n' '|' <<<"$compiled" | sed 's/|$//'))\$")
run-clang-tidy -quiet -p "$build" -j "$(nproc)" "$pattern" 2>/dev/null
echo "clang-tidy: nothing found"
