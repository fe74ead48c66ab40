#!/usr/bin/env bash
# Power failures and disk errors under the event log on real file systems: docs/testing.md.
#
#   tests/blocks/run.sh           the long form: more than 10,000 images
#   tests/blocks/run.sh --short   a few of everything
#   tests/blocks/run.sh --counts  what an add costs each file system
#
# Needs no privileges: a kernel in user mode has the disks in its memory. What was done is kept in
# build/blocks until the program changes, so that a run that was interrupted goes on. Ends with
# status 1 if an image fails or a planted defect is not found.
set -euo pipefail
cd "$(dirname "$0")/../.."

form=long
case ${1:-} in
--short) form=short ;;
--counts) form=counts ;;
'') ;;
*) sed -n '2,/^set/{/^set/!p}' "$0" >&2 && exit 2 ;;
esac

scripts/setup.sh --blocks
cmake --preset native >/dev/null
cmake --build --preset native --target blocks_guest >/dev/null
program=$PWD/build/native/tests/blocks/blocks_guest

systems=(ext4 ext4-nojournal xfs btrfs)
parts=(linked others errors)
[ "$form" = long ] || parts=(all)

# What a guest does: the arguments of each run on a file system.
plan() {
    local system=$1 steps=30 seed action times
    [ "$system" != btrfs ] || steps=10 # it writes five times as many blocks
    case $form-$2 in
    short-all)
        echo "power $system Linked Wrap 3 1 12"
        echo "power $system Circular Wrap 4 1 24"
        echo "errors $system Linked Wrap 5 1 12"
        echo "dead $system Linked Wrap 5 1 3"
        echo "unsynced $system Linked Wrap 3 8 8"
        echo "turned $system Linked Wrap 3 8 8"
        ;;
    counts-all)
        for times in relatime lazytime noatime; do
            echo "count $system $times"
        done
        ;;
    long-linked)
        for seed in 1 2 3; do
            for action in Drop Wrap WriteLast; do
                echo "power $system Linked $action $((2 + 3 * seed)) $seed $steps"
            done
        done
        ;;
    long-others)
        for action in Drop Wrap WriteLast; do
            echo "power $system Circular $action 5 3 60"
        done
        echo "power $system Simple Drop 12 4 60"
        echo "unsynced $system Linked Wrap 3 8 12"
        echo "turned $system Linked Wrap 3 8 12"
        ;;
    long-errors)
        for seed in 5 6 7; do
            echo "errors $system Linked Wrap 5 $seed 36"
            echo "dead $system Linked Wrap 5 $seed 12"
        done
        ;;
    esac
}

# What is left of a folder's plan, the results so far taken off.
left_of_plan() {
    plan "$1" "$2" | grep -vxF -f <(cut -d '|' -f 2 "$folder/results") || true
}

boot() {
    local scratch=${TMPDIR:-/tmp}
    [ ! -w /dev/shm ] || scratch=/dev/shm
    TMPDIR=$scratch linux.uml mem=900M root=/dev/root rootfstype=hostfs rootflags=/ ro \
        init="$PWD/tests/blocks/guest.sh" program="$folder/program" results="$folder" \
        con=null con0=null,fd:1 quiet </dev/null >"$folder/console" 2>&1
}

# carry_out SYSTEM PART
carry_out() {
    local folder=$PWD/build/blocks/$form/$1-$2
    mkdir -p "$folder"
    if ! cmp -s "$program" "$folder/program"; then
        rm -f "$folder"/*
        cp "$program" "$folder/program"
    fi
    touch "$folder/results"
    left_of_plan "$1" "$2" >"$folder/plan"
    [ ! -s "$folder/plan" ] || boot || true
    left_of_plan "$1" "$2" >"$folder/plan"
    if [ -s "$folder/plan" ]; then
        cat "$folder/console"
        echo "blocks: the guest ended before its plan did: $folder" >&2
        return 1
    fi
}

guests=()
for system in "${systems[@]}"; do
    for part in "${parts[@]}"; do
        carry_out "$system" "$part" &
        guests+=($!)
    done
done
for guest in "${guests[@]}"; do
    wait "$guest"
done

if [ "$form" = counts ]; then
    cat build/blocks/counts/*/results
    exit
fi

# A run ends well when all its images were held, but for those with a defect.
awk -F'|' '
    {
        split($2, run, " ")
        planted = run[1] == "unsynced" || run[1] == "turned"
        good = planted ? $1 == "failed" && $3 ~ /^images / : $1 == "ok"
        what = run[1] " " run[2] (planted ? "" : " " run[3])
        if (!(what in runs)) order[++kinds] = what
        ++runs[what]
        if (!good) { bad[what] = 1; ++failures }
        split($3, counts, " ")
        for (i = 1; i < 12; i += 2) sum[what, counts[i]] += counts[i + 1]
        operations[what] += run[7]
        total += planted ? 0 : counts[2]
    }
    END {
        printf "%-32s %5s %6s %7s %7s %7s %7s %9s %8s\n", "trial", "runs", "steps", "images",
            "held", "mixed", "failed", "creation", "refused"
        for (i = 1; i <= kinds; i++) {
            w = order[i]
            printf "%-32s %5d %6d %7d %7d %7d %7d %9d %8d%s\n", w, runs[w], operations[w],
                sum[w, "images"], sum[w, "held"], sum[w, "mixed"], sum[w, "failed"],
                sum[w, "creation"], sum[w, "refused"], w in bad ? "  <- WRONG" : ""
        }
        printf "figure: images of real file systems: %d\n", total
        exit failures > 0
    }' "build/blocks/$form"/*/results
