#!/usr/bin/env bash
# Builds and tests what is committed in a bare Debian, where nothing is installed: ./run.sh, then
# ./test.sh, with an empty environment and without a terminal. Needs root. Nothing is left behind
# but build/fresh/SUITE-ARCHITECTURE.tar, the bare Debian that the next run begins with.
#
#   scripts/fresh.sh [SUITE [ARCHITECTURE]]            bookworm, this machine's architecture
#   scripts/fresh.sh SUITE ARCHITECTURE -- COMMAND...  runs that instead, in the clone
#
# On i386 it is ./test.sh --quick. For arm64 it is scripts/arm64.sh alone, in a bare Debian for this
# machine, since it is built by a cross compiler and runs under an emulator.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/apt_sources.sh

suite=bookworm
machine=$(dpkg --print-architecture)
architecture=$machine
[ $# -eq 0 ] || [ "$1" = -- ] || { suite=$1 && shift; }
[ $# -eq 0 ] || [ "$1" = -- ] || { architecture=$1 && shift; }
place=/srv/project    # where the clone lies in the root
root_of=$architecture # the architecture of the root
as=()                 # what makes a command see it
case $machine/$architecture in
*/i386) as=(setarch i386) ;; # the kernel's own word is x86_64
amd64/arm64) root_of=$machine ;;
esac

# bare_debian: leaves the tarball's name in $tarball
bare_debian() {
    tarball=build/fresh/$suite-$root_of.tar
    [ ! -e "$tarball" ] || return 0
    scripts/setup.sh --packages
    mkdir -p build/fresh
    if ! apt_sources "$suite" | mmdebstrap --variant=minbase --format=tar \
        --architectures="$root_of" "$suite" "$tarball.part" - 2>"$tarball.log"; then
        cat "$tarball.log" >&2
        return 1
    fi
    mv "$tarball.part" "$tarball"
}

# Besides the clone it gets the one host that every installation knows, and what leads to Debian's
# mirrors from here.
fill_root() {
    tar -x -f "$tarball" -C "$root"
    echo "127.0.0.1 localhost" >"$root/etc/hosts"
    cp -L /etc/resolv.conf "$root/etc/"
    apt-config dump | grep -E '^Acquire::(https?::|Check-)' >"$root/etc/apt/apt.conf.d/99outside" ||
        true
    git clone --quiet --no-hardlinks . "$root$place"
}

# furnish ROOT: in namespaces of its own, makes that folder the root. A mere chroot would not do: its
# root is no mount point, which tests that hide /proc or /dev/log from others need it to be.
furnish() {
    local node
    mount --bind "$1" "$1"
    cd "$1"
    mount -t proc proc proc
    mount --rbind /sys sys
    mount -t tmpfs -o mode=755 tmpfs run
    mount -t tmpfs -o mode=755 tmpfs dev
    mkdir dev/pts dev/shm outside
    for node in null zero full random urandom tty; do
        : >"dev/$node"
        mount --bind "/dev/$node" "dev/$node"
    done
    mount -t devpts -o newinstance,ptmxmode=666,mode=620,gid=5 devpts dev/pts
    mount -t tmpfs -o mode=1777 tmpfs dev/shm
    ln -s pts/ptmx dev/ptmx
    ln -s /proc/self/fd dev/fd
    ln -s fd/0 dev/stdin
    ln -s fd/1 dev/stdout
    ln -s fd/2 dev/stderr
    pivot_root . outside
    cd /
    umount -l outside
    rmdir outside
}

# run_inside FOLDER COMMAND...: the signals are as they were before this shell ignored ^C for it.
run_inside() {
    local path=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin
    cd "$1"
    shift
    setsid --wait env -i --default-signal PATH=$path HOME=/root "$@" </dev/null 2>&1 | cat
}
export -f furnish run_inside

inside=
leave() {
    if [ -n "$inside" ]; then
        pkill -KILL -P "$inside" || true # all processes of a namespace end with its first
        wait "$inside" || true
    fi
    rm -rf "$root"
}

# enter COMMAND...: in the background, so that a signal to this script is answered at once
enter() {
    local result=0
    # shellcheck disable=SC2016
    unshare --mount --pid --ipc --fork bash -euo pipefail -c \
        'furnish "$1" && shift && run_inside "$@"' bash "$root" "$place" "${as[@]}" "$@" &
    inside=$!
    wait "$inside" || result=$?
    inside=
    return "$result"
}

# step COMMAND...
step() {
    local started=$SECONDS
    if ! enter "$@"; then
        echo "FAIL  $suite $architecture: $*"
        exit 1
    fi
    echo "ok    $suite $architecture: $* ($((SECONDS - started)) s)"
}

bare_debian
root=$(mktemp -d)
trap leave EXIT
trap 'exit 130' INT TERM HUP
fill_root
if [ "${1:-}" = -- ]; then
    shift
    enter "$@"
    exit
fi
case $machine/$architecture in
*/i386) step ./run.sh && step ./test.sh --quick ;;
amd64/arm64) step scripts/arm64.sh ;;
*) step ./run.sh && step ./test.sh ;;
esac
echo "$suite $architecture: a bare machine is enough ($SECONDS s)"
