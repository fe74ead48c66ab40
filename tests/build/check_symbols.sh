#!/usr/bin/env bash
# The shared library exports exactly the names of exports.txt, and imports nothing but the names of
# imports.txt and the C library's.
# Usage: check_symbols.sh LIBRARY
set -euo pipefail
here=$(dirname "$0")
library=$1
export LC_ALL=C

compare() {
    if ! difference=$(diff "$1" <(printf '%s\n' "$2")); then
        printf '%s differs from %s:\n%s\n' "$3" "$(basename "$1")" "$difference" >&2
        exit 1
    fi
}

exported=$(nm -D --defined-only "$library" | awk '{print $3}' | sort)
compare "$here/exports.txt" "$exported" "what the library exports"

undefined=$(nm -D --undefined-only "$library" | awk '{print $2}')
imported=$(printf '%s\n' "$undefined" | grep -v '@GLIBC_' |
    grep -vxE '_ITM_(de)?registerTMCloneTable|__gmon_start__|__cxa_finalize' | sort)
compare "$here/imports.txt" "$imported" "what the library imports"
