#!/usr/bin/env bash
# The shared library needs the C library alone and is linked as safely as the target allows.
# Usage: check_hardening.sh LIBRARY
set -euo pipefail
library=$1
dynamic=$(readelf -dW "$library")
segments=$(readelf -lW "$library")
symbols=$(nm -D "$library")
machine=$(readelf -hW "$library" | sed -nE 's/^ *Machine: *//p')

fail() {
    echo "$library: $1" >&2
    exit 1
}
has() {
    grep -qE "$2" <<<"$1" || fail "$3"
}

needed=$(sed -nE 's/.*\(NEEDED\).*\[(.*)\]/\1/p' <<<"$dynamic")
case $machine in
AArch64)
    # The stack protector's value lies in the loader there, a part of the C library.
    [ "$needed" = $'libc.so.6\nld-linux-aarch64.so.1' ] || fail "needs: $needed"
    code=$(aarch64-linux-gnu-objdump -d "$library")
    has "$code" 'paciasp' "no signed return addresses"
    has "$code" '\bbti\b' "no control-flow protection"
    ;;
*)
    [ "$needed" = libc.so.6 ] || fail "needs: $needed"
    code=$(objdump -d "$library")
    has "$code" 'endbr(32|64)' "no control-flow protection"
    ;;
esac
has "$dynamic" 'SONAME.*\[libzuSaHpi_util\.so\.1\]' "no SONAME libzuSaHpi_util.so.1"
has "$dynamic" 'FLAGS.*(BIND_)?NOW' "symbols are not bound at load"
has "$segments" 'GNU_RELRO' "no read-only relocations"
has "$segments" 'GNU_STACK.* RW ' "the stack is executable"
grep -q TEXTREL <<<"$dynamic" && fail "text relocations"
has "$symbols" '__stack_chk_fail' "no stack protector"
has "$symbols" '_chk@' "no fortified calls"
