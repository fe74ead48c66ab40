#!/usr/bin/env bash
# Makes the manual page PAGE of its source PAGE.scd, on standard output.
# Usage: make_page.sh SOURCE
set -euo pipefail

# scdoc forbids hyphenation before the title, and the title allows it again: names of functions and
# options would break at the end of a line.
scdoc <"$1" | sed '/^\.TH /a .nh'
