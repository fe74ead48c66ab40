#!/usr/bin/env bash
# The commands by which README.md and docs/main-library.md link a program with what was just built
# work as they stand there, and the programs start and print what is shown.
# Usage: check_link_commands.sh BUILD_FOLDER C_COMPILER [FLAG]
set -euo pipefail
build=$1
shift
here=$(cd "$(dirname "$0")" && pwd)
source=$(cd "$here/../.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export LC_ALL=C PATH=$scratch/bin:$PATH

# The compiler of this build under the name that the documents use.
mkdir "$scratch/bin"
printf '#!/bin/sh\nexec %s "$@"\n' "$*" >"$scratch/bin/cc"
chmod +x "$scratch/bin/cc"

# Takes the console blocks of a document that call the compiler apart: commands.1 and shown.1 for the
# first, and so on. The build itself, which has been made, is left out.
linking_blocks() {
    awk -v folder="$scratch" '
        function keep() {
            ++count
            printf "%s", commands > (folder "/commands." count)
            printf "%s", shown > (folder "/shown." count)
        }
        /^```/ {
            if (inside && commands ~ /(^|\n)cc /) keep()
            inside = /^```console$/; commands = shown = ""; goes_on = 0
            next
        }
        !inside || /^\$ cmake / { next }
        /^\$ / || goes_on { goes_on = /\\$/; sub(/^\$ /, ""); commands = commands $0 "\n"; next }
        { shown = shown $0 "\n" }' "$1"
}

# run_commands COMMANDS SHOWN: in a folder that looks like the top of the source tree, built
run_commands() {
    local top=$scratch/top
    rm -rf "$top"
    mkdir -p "$top/build"
    ln -s "$source/include" "$source/examples" "$top"
    ln -s "$build" "$top/build/native"
    cp "$here/consumer/use_log.c" "$top/main.c"
    (cd "$top" && bash -eu "$1") >"$scratch/printed" 2>&1 ||
        { cat "$1" "$scratch/printed" >&2 && return 1; }
    diff "$2" "$scratch/printed"
}

for document in README.md docs/main-library.md; do
    rm -f "$scratch"/{commands,shown}.*
    linking_blocks "$source/$document"
    [ -s "$scratch/shown.1" ] || { echo "$document: links no program that runs" >&2 && exit 1; }
    for commands in "$scratch"/commands.*; do
        run_commands "$commands" "$scratch/shown.${commands##*.}" ||
            { echo "$document: its commands do not do what it says" >&2 && exit 1; }
    done
done
