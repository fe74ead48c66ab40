#!/usr/bin/env bash
# Compares the ABI that the shared library exports with its description under abi/, one file for each
# ABI. Nothing may differ: a change that old programs survive is written down with --update, one that
# they do not needs a new major version first.
#
#   scripts/abi.sh [PRESET...]           compares what these presets build: abi, abi-i386, abi-arm64;
#                                        the first two if none
#   scripts/abi.sh --update [PRESET...]  writes their descriptions anew
set -euo pipefail
cd "$(dirname "$0")/.."

# build PRESET: leaves the library's name in $library, that of its description in $description
build() {
    cmake --preset "$1" >/dev/null
    cmake --build --preset "$1"
    library=build/$1/libzuSaHpi_util.so.1
    case $(readelf -hW "$library" | sed -nE 's/^ *Machine: *//p') in
    *80386) description=abi/i386.abi ;;
    *X86-64) description=abi/x86-64.abi ;;
    AArch64) description=abi/arm64.abi ;;
    esac
}

# What is the same wherever and whenever the library was built.
describe() {
    abidw --no-corpus-path --no-comp-dir-path --no-show-locs --no-elf-needed --headers-dir include \
        --exported-interfaces-only --drop-private-types --drop-undefined-syms --type-id-style hash "$1"
}

compare() {
    if ! abidiff --harmless --no-show-locs --exported-interfaces-only "$description" "$library"; then
        echo "$library: its ABI is not that of $description; see scripts/abi.sh" >&2
        exit 1
    fi
    echo "$description: the library exports just that"
}

action=compare
if [ "${1:-}" = --update ]; then
    action=update
    shift
fi
[ $# -gt 0 ] || set -- abi abi-i386
for preset; do
    build "$preset"
    if [ "$action" = update ]; then
        describe "$library" >"$description"
    else
        compare
    fi
done
