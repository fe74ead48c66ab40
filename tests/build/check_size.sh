#!/usr/bin/env bash
# The stripped shared library stays small: no larger than is promised for i386, where it matters
# most, and for x86-64, whose pointers and unwinding tables are larger. Its relocations are packed,
# but on arm64, where Debian 12's linker cannot do so: they are 20 KiB there.
# Usage: check_size.sh LIBRARY
set -euo pipefail
library=$1
strip="strip"
case $(readelf -hW "$library" | sed -nE 's/^ *Machine: *//p') in
*80386) most=$((96 * 1024)) ;;
*X86-64) most=$((120 * 1024)) ;;
AArch64) most=$((136 * 1024)) strip=aarch64-linux-gnu-strip ;;
*) echo "$library: no shared library" >&2 && exit 1 ;;
esac

stripped=$(mktemp)
trap 'rm -f "$stripped"' EXIT
"$strip" -o "$stripped" "$library"
size=$(stat -c %s "$stripped")
echo "$size bytes, at most $most"
[ "$size" -lt "$most" ] || { echo "$library: too large" >&2 && exit 1; }

# Single relocations are left for the functions and variables that another object may define.
single=$(readelf -rW "$library" | grep -cE 'R_(386|X86_64)_RELATIVE' || true)
[ "$single" -eq 0 ] || { echo "$library: $single relative relocations are not packed" >&2 && exit 1; }
