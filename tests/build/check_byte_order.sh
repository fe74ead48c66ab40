#!/usr/bin/env bash
# The file format compiles, and for a big-endian machine it is refused with a sentence that says why.
# Usage: check_byte_order.sh CXX_COMPILER [FLAG...]
set -euo pipefail
cd "$(dirname "$0")/../.."
compile=("$@" -D_FILE_OFFSET_BITS=64 -std=c++20 -I. -Iinclude -fsyntax-only -x c++
    eventlog/log_format.h)

"${compile[@]}" -w
if message=$("${compile[@]}" -w -U__BYTE_ORDER__ -D__BYTE_ORDER__=__ORDER_BIG_ENDIAN__ 2>&1); then
    echo "a big-endian machine is not refused" >&2
    exit 1
fi
if ! grep -qF "big-endian machines are not supported" <<<"$message"; then
    printf 'a big-endian machine is refused without the reason:\n%s\n' "$message" >&2
    exit 1
fi
