#!/usr/bin/env bash
# The installed evtlogctl imports the example that came with it, lists it and finds it sound.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

tool() {
    "$here/../build/run.sh" "$(command -v evtlogctl)" --root "$scratch" "$@"
}

tool --config /usr/share/doc/evtlogctl/examples/evtlog.conf config >/dev/null
tool import /usr/share/doc/evtlogctl/examples/server.sel
tool check
[ "$(tool list | wc -l)" -eq 234 ]
echo "evtlogctl: imported, sound, listed"
