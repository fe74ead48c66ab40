#!/usr/bin/env bash
# The shared library exports exactly the names of exports.txt, its data objects have exactly the
# sizes of data_sizes.txt, and it imports nothing but the names of imports.txt and the C library's.
# A program that is not position-independent holds copies of the data objects, of the size that they
# had when it was linked: another size breaks it.
# Usage: check_symbols.sh LIBRARY
set -euo pipefail
here=$(dirname "$0")
library=$1
export LC_ALL=C

# compare FILE FOUND WHAT [EXPECTED]: what is found with the file, or with what is expected of it
compare() {
    local expected=${4:-$(cat "$here/$1")}
    if ! difference=$(diff <(printf '%s\n' "$expected") <(printf '%s\n' "$2")); then
        printf '%s differs from %s:\n%s\n' "$3" "$1" "$difference" >&2
        exit 1
    fi
}

exported=$(nm -D --defined-only "$library" | awk '{print $3}' | sort)
compare exports.txt "$exported" "what the library exports"

# The columns of data_sizes.txt: name, size on i386, size on x86-64.
case $(readelf -hW "$library" | sed -nE 's/^ *Class: *//p') in
ELF32) sizes=$(awk '!/^#/ {print $1, $2}' "$here/data_sizes.txt") ;;
ELF64) sizes=$(awk '!/^#/ {print $1, $3}' "$here/data_sizes.txt") ;;
*) echo "$library is of no known class" >&2 && exit 1 ;;
esac
data=$(readelf --dyn-syms -W "$library" | awk '$4 == "OBJECT" && $7 != "UND" {print $8, $3}' | sort)
compare data_sizes.txt "$data" "the size of what the library exports" "$sizes"

undefined=$(nm -D --undefined-only "$library" | awk '{print $2}')
imported=$(printf '%s\n' "$undefined" | grep -v '@GLIBC_' |
    grep -vxE '_ITM_(de)?registerTMCloneTable|__gmon_start__|__cxa_finalize' | sort)
compare imports.txt "$imported" "what the library imports"
