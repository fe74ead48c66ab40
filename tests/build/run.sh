#!/bin/sh
# Runs a program: one for arm64 on another machine under an emulator.
# Usage: run.sh PROGRAM [ARGUMENT...]
aarch64=' b7 00' # the machine in a program's header
if [ "$(uname -m)" != aarch64 ] && [ "$(od -An -tx1 -j18 -N2 "$1")" = "$aarch64" ]; then
    exec qemu-aarch64-static "$@"
fi
exec "$@"
