#!/usr/bin/env bash
# An add to a log without synchronisation stays under 3,000 instructions, while the log grows and
# when it wraps: counted at two numbers of adds and subtracted, so that start and end drop out.
# Usage: check_add_cost.sh ADD_COST
set -euo pipefail
program=$1
most=3000
few=200
many=700

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

# instructions TYPE SIZE COUNT
instructions() {
    rm -f "$folder/log"
    valgrind --tool=callgrind --callgrind-out-file=/dev/null --log-file="$folder/callgrind" \
        "$program" "$folder/log" "$@" >/dev/null
    sed -nE 's/.*Collected : ([0-9]+).*/\1/p' "$folder/callgrind"
}

# check NAME TYPE SIZE
check() {
    local each=$((($(instructions "$2" "$3" $many) - $(instructions "$2" "$3" $few)) / (many - few)))
    echo "figure: instructions of an add to $1: $each"
    [ "$each" -gt 0 ] && [ "$each" -lt $most ]
}

check "a Simple log that grows" 0 1000
check "a full Circular log" 1 100
