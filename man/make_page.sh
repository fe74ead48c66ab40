#!/usr/bin/env bash
# Makes the manual page PAGE of its source PAGE.scd, on standard output.
# Usage: make_page.sh SOURCE
set -euo pipefail

# scdoc forbids hyphenation before the title, and the title allows it again: names of functions and
# options would break at the end of a line.
page=$(scdoc <"$1" | sed '/^\.TH /a .nh')
# Which preprocessor a page needs stands in its first line: without that, tables are not drawn.
case $page in
*$'\n.TS\n'*) echo "'\\\" t" ;;
esac
printf '%s\n' "$page"
