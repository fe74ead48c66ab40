#!/usr/bin/env bash
# Form that reviews need not look at: formatting, shell scripts, and the house rules of tidy.py.
set -euo pipefail
cd "$(dirname "$0")/../.."

git ls-files '*.h' '*.cpp' '*.c' | xargs clang-format --dry-run --Werror
git ls-files '*.sh' '*.bash-completion' .ci/run | xargs shellcheck
python3 tests/build/tidy.py
