#!/usr/bin/env bash
# The stripped shared library stays small: no larger than is promised for i386, where it matters
# most, and for x86-64, whose pointers and unwinding tables are larger. Its relocations are packed.
# Usage: check_size.sh LIBRARY
set -euo pipefail
library=$1
case $(readelf -hW "$library" | sed -nE 's/^ *Class: *//p') in
ELF32) most=$((96 * 1024)) ;;
ELF64) most=$((120 * 1024)) ;;
*) echo "$library: no shared library" >&2 && exit 1 ;;
esac

stripped=$(mktemp)
trap 'rm -f "$stripped"' EXIT
strip -o "$stripped" "$library"
size=$(stat -c %s "$stripped")
echo "$size bytes, at most $most"
[ "$size" -lt "$most" ] || { echo "$library: too large" >&2 && exit 1; }

# Single relocations are left for the functions and variables that another object may define.
single=$(readelf -rW "$library" | grep -cE 'R_(386|X86_64)_RELATIVE' || true)
[ "$single" -eq 0 ] || { echo "$library: $single relative relocations are not packed" >&2 && exit 1; }
