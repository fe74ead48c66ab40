#!/usr/bin/env bash
# Every name of the C library that the library imports stands in imports.txt, with what is done
# about its failure; and nothing else stands there.
# Usage: check_imports.sh LIBRARY
set -euo pipefail
here=$(dirname "$0")
export LC_ALL=C

# The names of both ABIs for one function, what the hardened build makes of them, and what newer C
# libraries bind for a newer C standard are one name.
imported=$(nm -D --undefined-only "$1" | awk '{print $2}' | grep '@GLIBC_' | sed 's/@.*//' |
    sed -E 's/^__isoc[0-9]+_//
            s/^__(v?snprintf|memmove|memcpy|memset|strcpy)_chk$/\1/; s/^__open64_2$/open/
            s/^__(f?stat|time)64(_time64)?$/\1/; s/^(open|creat|lseek|ftruncate|f?stat)64$/\1/' |
    grep -vxE '__cxa_finalize|__stack_chk_(fail|guard)|__errno_location' | sort -u)
listed=$(grep -v '^#' "$here/imports.txt" | awk '{print $1}' | sort)
if ! difference=$(diff <(printf '%s\n' "$listed") <(printf '%s\n' "$imported")); then
    printf 'the list (<) and the imports (>) differ:\n%s\n' "$difference" >&2
    exit 1
fi
