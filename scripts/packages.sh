#!/usr/bin/env bash
# Builds the Debian packages and lets lintian look at them: nothing may be found.
#
#   scripts/packages.sh               for this machine's architecture, with what is installed here
#   scripts/packages.sh --here arm64  for that architecture, with what is installed here
#   scripts/packages.sh amd64 i386    for each architecture in a fresh Debian of its own; then
#                                     installs them in another fresh one and uses them there. Needs
#                                     root
#
# Those for arm64 are built with Debian's cross compiler on another machine, and used there in a
# Debian of that machine's own architecture, under an emulator.
#
# The packages are left in build/packages/ARCHITECTURE. Debian comes from the mirrors that this
# machine's apt uses.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/apt_sources.sh

scripts/setup.sh --packages
release=bookworm
inside=/srv # the folder of a fresh Debian that we work in
name=zusahpi-util-$(dpkg-parsechangelog -S Version)

# copy_source FOLDER: the files that git knows or would take
copy_source() {
    mkdir -p "$1/$name"
    git ls-files -z --cached --others --exclude-standard | tar -c --null -T - | tar -x -C "$1/$name"
}

this_architecture=$(dpkg --print-architecture)

# cross ARCHITECTURE: whether this machine takes a cross compiler and an emulator for it
cross() {
    [ "$1" = arm64 ] && [ "$this_architecture" != arm64 ]
}

# debian ARCHITECTURE HOOK...: makes a fresh Debian, runs the hooks in it, and drops it.
debian() {
    local architecture=$1 hook options=()
    if cross "$1"; then
        architecture=$this_architecture,$1
    fi
    shift
    for hook in "$@"; do
        options+=("--customize-hook=$hook")
    done
    apt_sources "$release" | mmdebstrap --variant=apt --architectures="$architecture" "${options[@]}" \
        "$release" /dev/null -
}

build_here() {
    (cd "$1/$name" && dpkg-buildpackage -us -uc -F -a"$2")
}

# Debian's shell scripts for the hooks see the root folder as $1.
# shellcheck disable=SC2016
build_in_debian() {
    local compiler=build-essential
    if cross "$2"; then
        compiler+=" crossbuild-essential-$2"
    fi
    debian "$2" "copy-in '$1/$name' $inside" \
        "chroot \"\$1\" apt-get install -y --no-install-recommends $compiler" \
        "chroot \"\$1\" apt-get build-dep -y --no-install-recommends -a$2 $inside/$name" \
        "chroot \"\$1\" sh -c 'cd $inside/$name && dpkg-buildpackage -us -uc -F -a$2 && rm -r ../$name'" \
        "sync-out $inside '$1'"
}

# The tool's package is tried before anything else is installed that it might need.
# shellcheck disable=SC2016
use_in_debian() {
    local source=$inside/$name packages=$inside/packages
    local emulator=() compiler=g++ machine=
    if cross "$2"; then
        machine=$(dpkg-architecture -a"$2" -q DEB_HOST_GNU_TYPE 2>/dev/null)
        emulator=('chroot "$1" apt-get install -y --no-install-recommends qemu-user-static')
        compiler=g++-$machine
    fi
    copy_source "$1/use"
    debian "$2" "copy-in '$1/use/$name' $inside" \
        "${emulator[@]}" "mkdir \"\$1$packages\"" "sync-in '$1' $packages" \
        "chroot \"\$1\" sh -c 'apt-get install -y --no-install-recommends \
             $packages/libzusahpi-util1_*.deb $packages/evtlogctl_*.deb'" \
        "chroot \"\$1\" $source/tests/packages/use_tool.sh" \
        "chroot \"\$1\" sh -c 'apt-get install -y --no-install-recommends $compiler pkg-config \
             $packages/libzusahpi-util-dev_*.deb'" \
        "chroot \"\$1\" $source/tests/packages/use_library.sh $machine" \
        "chroot \"\$1\" apt-get purge -y evtlogctl:$2 libzusahpi-util1:$2" \
        'if find "$1/usr" "$1/etc" "$1/var/lib/zusahpi" -iname "*zusahpi*" 2>/dev/null |
             grep -v /share/doc/; then echo "left behind" >&2; exit 1; fi'
    rm -rf "$1/use"
}

# packages ARCHITECTURE here|fresh
packages() {
    local folder=$PWD/build/packages/$1
    rm -rf "$folder"
    copy_source "$folder"
    if [ "$2" = here ]; then
        build_here "$folder" "$1"
    else
        build_in_debian "$folder" "$1"
    fi
    rm -rf "${folder:?}/$name"
    lintian --allow-root --fail-on error,warning "$folder"/*.changes
    if [ "$2" = fresh ]; then
        use_in_debian "$folder" "$1"
    fi
    ls -l "$folder"
}

if [ $# -eq 0 ]; then
    packages "$this_architecture" here
elif [ "$1" = --here ]; then
    packages "$2" here
    exit
fi
for architecture; do
    packages "$architecture" fresh
done
