#!/usr/bin/env bash
# Installs what a bare Debian 12 lacks for building this project; with --tests also for testing it,
# with --bench for its benchmark, with --packages for building Debian packages of it, with --arm64 for
# building, testing and packaging it for arm64 on another machine, with --blocks for testing it on real
# file systems. Does nothing when all is there. With --list before that it prints the packages instead.
set -euo pipefail

list=no
if [ "${1:-}" = --list ]; then
    list=yes
    shift
fi
packages=(cmake ninja-build g++ googletest libcli11-dev libedit-dev libfmt-dev rapidjson-dev
    tao-pegtl-dev)
if [ "${1:-}" = --tests ]; then
    packages+=(abigail-tools binutils chromium chromium-driver clang clang-format clang-tidy cppcheck
        gcovr git ipmitool llvm lnav mandoc openipmi pkg-config python3 python3-jsonschema
        python3-selenium rsyslog scdoc shellcheck strace systemd valgrind)
    # Debian 12 has no name for what belongs to its own clang; later ones do.
    if grep -q '^VERSION_CODENAME=bookworm$' /etc/os-release; then
        packages+=(libclang-rt-14-dev)
    else
        packages+=(libclang-rt-dev)
    fi
    if [ "$(dpkg --print-architecture)" = amd64 ]; then
        packages+=(gcc-multilib g++-multilib librapidcheck-dev)
    fi
elif [ "${1:-}" = --packages ]; then
    packages+=(arch-test build-essential debhelper dpkg-dev git lintian mmdebstrap scdoc)
elif [ "${1:-}" = --arm64 ]; then
    packages+=(abigail-tools clang crossbuild-essential-arm64 git ipmitool libedit-dev:arm64
        libfmt-dev:arm64 librapidcheck-dev:arm64 lnav mandoc openipmi pkg-config python3
        python3-jsonschema qemu-user-static rsyslog scdoc)
    [ "$(id -u)" -ne 0 ] || dpkg --add-architecture arm64
elif [ "${1:-}" = --blocks ]; then
    packages+=(btrfs-progs e2fsprogs kmod user-mode-linux xfsprogs)
elif [ "${1:-}" = --bench ]; then
    packages+=(binutils bsdextrautils libleveldb-dev liblmdb-dev libsqlite3-dev pkg-config python3
        sqlite3 strace valgrind xxd)
    if [ "$(dpkg --print-architecture)" = amd64 ]; then
        packages+=(gcc-multilib g++-multilib)
    fi
fi

if [ "$list" = yes ]; then
    printf '%s\n' "${packages[@]}"
    exit
fi

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$status" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

if [ "$(id -u)" -ne 0 ]; then
    echo "setup: missing packages; run as root: apt-get install ${missing[*]}" >&2
    exit 1
fi
export DEBIAN_FRONTEND=noninteractive
log=$(mktemp)
trap 'rm -f "$log"' EXIT
# Debian's cross compilers and gcc-multilib exclude each other: neither takes the other's place here.
if ! { apt-get update && apt-get install -y --no-install-recommends --no-remove "${missing[@]}"; } \
    >"$log" 2>&1; then
    cat "$log" >&2
    echo "setup: could not install: ${missing[*]}" >&2
    exit 1
fi
