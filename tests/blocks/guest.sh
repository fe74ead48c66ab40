#!/bin/sh
# The first process of the guest: brings up its disks, carries the plan out, and halts.
#
# The plan has a line for each run: the arguments of blocks_guest. What a run printed, and the
# status it ended with, is added to the results.
set -eu

word() {
    sed -n "s/.*\<$1=\([^ ]*\).*/\1/p" /proc/cmdline
}

finish() {
    status=$?
    [ "$status" -eq 0 ] || echo "guest: failed with status $status"
    sync
    "$(word program)" halt
}
trap finish EXIT

mount -t proc proc /proc
mount -t sysfs sys /sys
mountpoint -q /dev || mount -t devtmpfs dev /dev
mount -t tmpfs tmp /mnt
mkdir -p /mnt/lib /mnt/fs /mnt/results
mount -t hostfs -o "$(word results)" results /mnt/results
ln -s /usr/lib/uml/modules /mnt/lib/modules
modprobe -d /mnt brd rd_nr=4 rd_size=307200
for module in dm-log-writes dm-snapshot dm-flakey; do
    modprobe -d /mnt "$module"
done
dmesg -n 1

while read -r line; do
    # shellcheck disable=SC2086 # words
    if "$(word program)" $line >/mnt/out 2>&1 </dev/null; then
        result=ok
    else
        result=failed
    fi
    sed 's/^/    /' /mnt/out >>/mnt/results/output
    echo "$result|$line|$(tail -n 1 /mnt/out)" >>/mnt/results/results
done </mnt/results/plan
