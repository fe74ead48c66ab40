#!/usr/bin/env bash
# Builds the project and runs its main job: a real server's hardware events go into a crash-safe
# log and back onto the screen. With arguments it passes them to evtlogctl instead.
set -euo pipefail
caller=$PWD # where file names in the arguments begin
cd "$(dirname "$0")"

scripts/setup.sh
mkdir -p build
if ! { cmake --preset native && cmake --build --preset native --target evtlogctl; } \
    >build/run.log 2>&1; then
    cat build/run.log >&2
    exit 1
fi
tool=build/native/evtlogctl

if [ $# -gt 0 ]; then
    tool=$PWD/$tool
    cd "$caller"
    exec "$tool" "$@"
fi

demo=(--root build/demo)
forwarded=build/demo/syslog.txt
mkdir -p build/demo
echo "Importing examples/server.sel, the event log of a real server, into a log under build/demo:"
if ! "$tool" "${demo[@]}" --syslog=stderr import examples/server.sel 2>>"$forwarded"; then
    tail -n 1 "$forwarded" >&2
    exit 1
fi
echo
echo "What went out to syslog (build/demo/syslog.txt; here its last lines):"
tail -n 4 "$forwarded"
echo
echo "The log:"
"$tool" "${demo[@]}" info
echo
echo "Its newest entries:"
"$tool" "${demo[@]}" list -n 12
echo
echo "The newest one in full:"
"$tool" "${demo[@]}" list -n 1 -o verbose
cat <<'TEXT'

Try next:
  ./run.sh --root build/demo list                          every entry, oldest first
  ./run.sh --root build/demo shell                         a prompt for evtlog commands
  ./run.sh --root build/demo import --ipmitool-order FILE  your own server's, as written by
                                                           ipmitool sel writeraw FILE
  ./run.sh --root build/demo export --format=sel copy.sel  the records back, byte for byte
  ./run.sh --help                                          all commands
TEXT
