#!/usr/bin/env bash
# Every manual page can be made, and mandoc finds nothing in it from the level "warning" on.
#
# Two things are scdoc's and not ours: it writes paragraph macros where none is needed, which mandoc
# skips with a warning each, and the level below, "style", is about the form of the roff.
# Usage: check_pages.sh
set -euo pipefail
cd "$(dirname "$0")/../../man"
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

command -v mandoc >/dev/null || {
    echo "mandoc is missing"
    exit 1
}

failed=0
for source in *.scd; do
    page=${source%.scd}
    if ! ./make_page.sh "$source" >"$scratch/$page" 2>"$scratch/errors"; then
        sed "s|^|man/$source: |" "$scratch/errors"
        failed=1
        continue
    fi
    # mandoc's own status tells of the warnings that are left out here, too.
    found=$(cd "$scratch" && { mandoc -T lint -W warning "$page" || true; } |
        { grep -v 'WARNING: skipping paragraph macro' || true; })
    if [ -n "$found" ]; then
        echo "$found"
        failed=1
    fi
    # Said in the first line, or man(1) leaves tables undrawn.
    if grep -q '^\.TS' "$scratch/$page" && [ "$(head -n 1 "$scratch/$page")" != "'\\\" t" ]; then
        echo "man/$page: has a table, and does not ask for the preprocessor of tables"
        failed=1
    fi
done
exit "$failed"
