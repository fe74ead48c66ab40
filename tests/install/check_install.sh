#!/usr/bin/env bash
# Installs a build into an empty folder, then builds programs as users do and runs them: with the
# installed tree by find_package and by pkg-config, and with the source tree by add_subdirectory; in
# C and in C++, with the shared and the static library.
# Usage: check_install.sh BUILD_FOLDER C_COMPILER CXX_COMPILER [FLAG]
set -euo pipefail
build=$1 cc=$2 cxx=$3
shift 3
flags=("$@")
here=$(cd "$(dirname "$0")" && pwd)
source=$(cd "$here/../.." && pwd)
own_header=$source/tests/build/own_header
run=$source/tests/build/run.sh
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
tree=$scratch/root/opt/zusahpi
export LC_ALL=C CC=$cc CXX=$cxx CFLAGS="${flags[*]}" CXXFLAGS="${flags[*]}"

fail() {
    echo "$1" >&2
    exit 1
}

install_tree() {
    DESTDIR=$scratch/root cmake --install "$build" --prefix /opt/zusahpi >"$scratch/install.log"
    [ "$(ls "$scratch/root")" = opt ] || fail "installed outside the prefix: $(ls "$scratch/root")"
    pc=$(dirname "$(find "$tree" -name zuSaHpi_util.pc)")
    lib=$(dirname "$pc")
    version=$(sed -nE 's/^#define ZUSAHPI_UTIL_VERSION "(.*)"/\1/p' "$source/include/zuSaHpi_util.h")
}

check_files() {
    local expected found page section
    expected=$(sed -e "s#^LIB#${lib#"$tree"/}#" -e "s#VERSION#$version#" "$here/files.txt" | sort)
    found=$(cd "$tree" && find . \( -type f -o -type l \) -printf '%P\n' |
        grep -v '^share/man/' | sort)
    diff <(echo "$expected") <(echo "$found") || fail "the installed files are not those of files.txt"
    for page in "$source"/man/*.scd; do
        page=$(basename "$page" .scd)
        section=${page##*.}
        grep -q '^\.TH' "$tree/share/man/man$section/$page" || fail "$page is no manual page"
    done
    [ "$(cat "$tree/share/man/man3/zuSaHpiEventLogInit.3")" = ".so man3/zusahpi_eventlog.3" ] ||
        fail "the page of a function does not lead to the page about it"
    if grep -rIl -e "$source" -e "$build" "$tree"; then
        fail "these installed files name a folder of this machine"
    fi
    "$run" "$tree/bin/evtlogctl" --version | grep -qF "$version" || fail "evtlogctl is not version $version"
}

# run_programs FOLDER: those that the project in consumer/ builds
run_programs() {
    local program folder count=0
    for program in "$1"/use_log_* "$1"/minimal_mainlib_*; do
        folder=$(mktemp -d "$scratch/run.XXXXXX")
        case $program in
        */use_log_*)
            result=$(cd "$folder" && "$run" "$program")
            [ "$result" = "one entry, as it was added" ] || fail "$program: $result"
            ;;
        *) "$source/tests/build/run_example.sh" "$program" "$source/tests/build/minimal_mainlib.txt" ;;
        esac
        count=$((count + 1))
    done
    echo "$count programs run in $1"
    [ "$count" -eq "$2" ] || fail "$2 programs were to be built"
}

# cmake_consumer NAME PROGRAMS OPTION...: configures, builds and runs the project in consumer/
cmake_consumer() {
    local folder=$scratch/$1 count=$2
    shift 2
    cmake -G Ninja -S "$here/consumer" -B "$folder" -DEXAMPLES="$source/examples" \
        -DOWN_HEADER="$own_header" "$@" \
        >"$folder.log" 2>&1 || { cat "$folder.log" >&2 && fail "$folder: not configured"; }
    cmake --build "$folder" >"$folder.log" 2>&1 || { cat "$folder.log" >&2 && fail "$folder: not built"; }
    run_programs "$folder" "$count"
}

# Nothing of how the library is compiled and linked reaches a user's own program.
check_no_leak() {
    local commands
    commands=$(ninja -C "$1" -t commands use_log_c_zuSaHpi_util_static |
        grep -E 'use_log\.c|-o use_log_c_zuSaHpi_util_static')
    [ "$(wc -l <<<"$commands")" -eq 2 ] || fail "$1: not one compilation and one link: $commands"
    commands=$(sed -E 's/-Wl,-(rpath|-dependency-file)//g' <<<"$commands") # CMake's own
    if grep -E -e '-W|-fno-|-fstack|-fvis|-O[0-9g]|FORTIFY|_BITS' <<<"$commands"; then
        fail "options of the library reached a user's program"
    fi
}

# pkgconfig_consumer NAME COMPILER SOURCE PACKAGE [-static]
pkgconfig_consumer() {
    local options
    options=$(PKG_CONFIG_LIBDIR=$pc pkg-config --cflags --libs ${5:+--static} "$4")
    # The options are words.
    # shellcheck disable=SC2086
    "$2" "${flags[@]}" -Wall -Wextra -Werror ${5:-} "$3" -o "$scratch/pkg-config/$1" $options
}

pkgconfig_consumers() {
    mkdir "$scratch/pkg-config"
    [ "$(PKG_CONFIG_LIBDIR=$pc pkg-config --modversion zuSaHpi_util)" = "$version" ]
    local kind example=$source/examples/minimal_mainlib.c
    for kind in "" -static; do
        pkgconfig_consumer use_log_c$kind "$cc" "$here/consumer/use_log.c" zuSaHpi_mainlib $kind
        pkgconfig_consumer use_log_cpp$kind "$cxx" "$here/consumer/use_log.cpp" zuSaHpi_mainlib $kind
        pkgconfig_consumer minimal_mainlib_c$kind "$cc" "$example" zuSaHpi_util $kind
    done
    # A SaHpi.h of the user's own counts although its folder stands behind that of our headers.
    read -ra options < <(PKG_CONFIG_LIBDIR=$pc pkg-config --cflags zuSaHpi_util)
    echo '#include <SaHpi.h>' | "$cc" "${options[@]}" -I"$own_header" -E -x c - |
        grep -F "$own_header/SaHpi.h" >/dev/null || fail "<SaHpi.h> is not the user's own"
    flags+=(-DZUSAHPI_OWN_SAHPI_H -idirafter "$own_header")
    pkgconfig_consumer minimal_mainlib_own_header "$cc" "$example" zuSaHpi_util
    LD_LIBRARY_PATH=$lib run_programs "$scratch/pkg-config" 7
}

# expect_refusal TEXT OPTION...: the configuration is refused with a line that holds the text
expect_refusal() {
    local text=$1
    shift
    if cmake -G Ninja -S "$source" -B "$scratch/refused" "$@" >"$scratch/refused.log" 2>&1; then
        fail "configured with $*"
    fi
    tr -s ' \n' ' ' <"$scratch/refused.log" | grep -qF -e "$text" || fail "no \"$text\" with $*"
    rm -rf "$scratch/refused"
}

library_alone() {
    expect_refusal "-DZUSAHPI_TOOL=OFF -DZUSAHPI_DEVELOPER=OFF" -DZUSAHPI_MAINLIB=OFF
    expect_refusal "-DZUSAHPI_DEVELOPER=OFF" -DZUSAHPI_TOOL=OFF
    cmake -G Ninja -S "$source" -B "$scratch/alone" -DZUSAHPI_MAINLIB=OFF -DZUSAHPI_TOOL=OFF \
        -DZUSAHPI_DEVELOPER=OFF >"$scratch/alone.log" || fail "the library alone is not configured"
}

install_tree
check_files
library_alone
cmake_consumer find_package 7 -DCMAKE_PREFIX_PATH="$tree"
cmake_consumer find_package_c_only 5 -DCMAKE_PREFIX_PATH="$tree" -DLANGUAGES=C
pkgconfig_consumers
cmake_consumer add_subdirectory 7 -DZUSAHPI_SOURCE="$source"
check_no_leak "$scratch/add_subdirectory"
