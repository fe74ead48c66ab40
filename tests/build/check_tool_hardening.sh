#!/usr/bin/env bash
# The tool reads files that it does not trust: it is compiled, with its main library, and linked as
# safely as the library. The objects are looked at, since the C library's start files have no
# control-flow protection and the linker then drops its mark from the program.
# Usage: check_tool_hardening.sh TOOL OBJECT...
set -euo pipefail
tool=$1
shift

fail() {
    echo "$1" >&2
    exit 1
}
has() {
    grep -qE "$2" <<<"$1" || fail "$tool: $3"
}

objdump=objdump
case $(readelf -hW "$tool" | sed -nE 's/^ *Machine: *//p') in
*X86-64 | *80386)
    protected='x86 feature: IBT, SHSTK'
    probe='or[lq] +[$]0x0,(0x[0-9a-f]+)?\(%[er]sp\)'
    ;;
AArch64)
    protected='AArch64 feature: BTI, PAC'
    probe='str[[:space:]]+xzr, \[sp, #1024\]'
    objdump=aarch64-linux-gnu-objdump
    ;;
*) fail "$tool: what its machine protects is not known here" ;;
esac
dynamic=$(readelf -dW "$tool")
segments=$(readelf -lW "$tool")
has "$dynamic" 'Flags:.* PIE' "not position independent"
has "$dynamic" 'FLAGS.*(BIND_)?NOW' "symbols are not bound at load"
has "$segments" 'GNU_RELRO' "no read-only relocations"
has "$segments" 'GNU_STACK.* RW ' "the stack is executable"

for object; do
    grep -q "$protected" <<<"$(readelf -nW "$object")" || fail "$object: no control-flow protection"
done
symbols=$(nm "$@")
has "$symbols" 'U __stack_chk_fail' "no stack protector"
has "$symbols" 'U __[a-z]+_chk' "no fortified calls"
has "$("$objdump" -d "$@")" "$probe" "large frames are not probed page by page"
echo "$# objects"
