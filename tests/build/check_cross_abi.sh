#!/usr/bin/env bash
# Log files that one ABI writes are byte-identical to the other's, and each opens the other's.
# Usage: check_cross_abi.sh BUILD_FOLDER OTHER_BUILD_FOLDER
set -euo pipefail
run=$(dirname "$0")/run.sh
one=("$run" "$1/tests/build/abi_scenario")
other=("$run" "$2/tests/build/abi_scenario")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

mkdir "$scratch/one" "$scratch/other"
"${one[@]}" write "$scratch/one"
"${other[@]}" write "$scratch/other"
for kind in simple circular linked; do
    cmp "$scratch/one/$kind" "$scratch/other/$kind"
done
"${one[@]}" read "$scratch/other" >"$scratch/read-by-one"
"${other[@]}" read "$scratch/one" >"$scratch/read-by-other"
diff "$scratch/read-by-one" "$scratch/read-by-other"
[ "$(wc -l <"$scratch/read-by-one")" -eq 18 ]
