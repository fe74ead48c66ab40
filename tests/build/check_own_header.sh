#!/usr/bin/env bash
# A platform's own SaHpi.h takes the place of ours: it is found wherever it stands on the search path,
# every public header takes it in every standard, and one of another layout is refused with a line
# that says what to do.
# Usage: check_own_header.sh INCLUDE_FOLDER C_COMPILER CXX_COMPILER [FLAG...]
set -euo pipefail
include=$1 cc=$2 cxx=$3
shift 3
own=$(cd "$(dirname "$0")" && pwd)/own_header
# Its folder stands behind that of our headers: no order of the two may matter.
flags=("$@" -Wall -Wextra -Werror -fsyntax-only -I"$include" -I"$own")
by_name=-DZUSAHPI_OWN_SAHPI_H
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

fail() {
    echo "$1" >&2
    exit 1
}

# compile LANGUAGE STANDARD COMPILER FLAG... FILE
compile() {
    local language=$1 standard=$2 compiler=$3
    shift 3
    "$compiler" -x "$language" -std="$standard" "${flags[@]}" "$@"
}

# in_each_standard FLAG... FILE
in_each_standard() {
    local standard compiler
    for standard in c89 gnu89 c99 c11; do
        for compiler in "$cc" clang; do
            compile c $standard "$compiler" "$@"
        done
    done
    for standard in c++98 c++11 c++20; do
        for compiler in "$cxx" clang++; do
            compile c++ $standard "$compiler" "$@"
        done
    done
}

# expect_refusal LANGUAGE STANDARD COMPILER TEXT FLAG... FILE
expect_refusal() {
    local language=$1 standard=$2 compiler=$3 text=$4
    shift 4
    if compile "$language" "$standard" "$compiler" "$@" 2>"$scratch/errors"; then
        fail "$compiler -std=$standard $*: compiled"
    fi
    grep -qF -e "$text" "$scratch/errors" || {
        cat "$scratch/errors" >&2
        fail "$compiler -std=$standard $*: does not say: $text"
    }
}

# refused_everywhere TEXT TEXT_OF_OLD_STANDARDS FLAG... FILE
refused_everywhere() {
    local text=$1 old_text=$2 compiler
    shift 2
    for compiler in "$cc" clang; do
        expect_refusal c c89 "$compiler" "$old_text" "$@"
        expect_refusal c c99 "$compiler" "$old_text" "$@"
        expect_refusal c gnu89 "$compiler" "$text" "$@"
        expect_refusal c c11 "$compiler" "$text" "$@"
    done
    for compiler in "$cxx" clang++; do
        expect_refusal c++ c++98 "$compiler" "$old_text" "$@"
        expect_refusal c++ c++11 "$compiler" "$text" "$@"
    done
}

for header in "$include"/zuSaHpi_*.h; do
    printf '#include <%s>\n#ifndef PLATFORM_RECORD\n#error ours\n#endif\n' "${header##*/}" \
        >"$scratch/by_name"
    printf '#include <SaHpi.h>\n#include <%s>\n#ifdef SAHPI_MAX_NAME_LENGTH\n#error ours\n#endif\n' \
        "${header##*/}" >"$scratch/first"
    in_each_standard $by_name "$scratch/by_name"
    in_each_standard "$scratch/first"
done

named="zuSaHpi_wrong_layout_see_own_sahpi_header_md"
util=$include/zuSaHpi_util.h
refused_everywhere "enumerations must have 4 bytes: compile without -fshort-enums" $named \
    -fshort-enums $by_name "$util"
refused_everywhere "SaHpiNameT must have 258 bytes, see docs/own-sahpi-header.md" $named \
    -DValue='Value[1],Rest' $by_name "$util"
# x86-64 has 64-bit members on 8 bytes of its own accord.
if "$cc" "$@" -dM -E -x c /dev/null | grep -q __i386__; then
    refused_everywhere "SaHpiInt64T must lie on 8 bytes in every record: give its typedef in SaHpi.h \
__attribute__((aligned(8))), see docs/own-sahpi-header.md" $named -DPLATFORM_ALIGNED= $by_name "$util"
fi

mkdir "$scratch/other"
echo '#define __SAHPI_H' >"$scratch/other/SaHpi.h"
text="is not the HPI standard's: it has no SAHPI_INTERFACE_VERSION"
refused_everywhere "$text" "$text" -include "$scratch/other/SaHpi.h" "$util"
# There is no falling back to ours where one's own is asked for by name.
flags=("$@" -fsyntax-only -I"$include")
expect_refusal c c99 "$cc" "SaHpi.h: No such file" $by_name "$util"
