#!/usr/bin/env bash
# The shared library needs the C library alone and is linked as safely as the target allows.
# Usage: check_hardening.sh LIBRARY
set -euo pipefail
library=$1
dynamic=$(readelf -dW "$library")
segments=$(readelf -lW "$library")
symbols=$(nm -D "$library")
code=$(objdump -d "$library")

fail() {
    echo "$library: $1" >&2
    exit 1
}
has() {
    grep -qE "$2" <<<"$1" || fail "$3"
}

needed=$(sed -nE 's/.*\(NEEDED\).*\[(.*)\]/\1/p' <<<"$dynamic")
[ "$needed" = libc.so.6 ] || fail "needs: $needed"
has "$dynamic" 'SONAME.*\[libzuSaHpi_util\.so\.1\]' "no SONAME libzuSaHpi_util.so.1"
has "$dynamic" 'FLAGS.*(BIND_)?NOW' "symbols are not bound at load"
has "$segments" 'GNU_RELRO' "no read-only relocations"
has "$segments" 'GNU_STACK.* RW ' "the stack is executable"
grep -q TEXTREL <<<"$dynamic" && fail "text relocations"
has "$symbols" '__stack_chk_fail' "no stack protector"
has "$symbols" '_chk@' "no fortified calls"
has "$code" 'endbr(32|64)' "no control-flow protection"
