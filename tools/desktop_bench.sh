#!/usr/bin/env bash
# Sets up what is missing, builds the desktop's benchmark optimised and runs it, first without a screen, then on a
# display of its own. The argument is for how many seconds the load is measured. It fails where a wanted figure is
# missed.
set -euo pipefail

# shellcheck source=tools/setup.sh
source "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/setup.sh"

need build test desktop screen
configure release
# The benchmarks are left out of a build that was configured before their libraries were installed.
quietly "configuring build/release" "$root/build/release/configure.log" cmake -S "$root" --preset release
build release desktop_bench

folder="$(mktemp -d)"
server=
finish() {
  [[ -z $server ]] || kill "$server" 2>/dev/null || true
  wait
  rm -rf "$folder"
}
trap finish EXIT
export XDG_RUNTIME_DIR="$folder"
unset WAYLAND_DISPLAY QT_SCALE_FACTOR

missed=0
QT_QPA_PLATFORM=offscreen "$root/build/release/bench/desktop_bench" "$@" || missed=1

Xvfb -displayfd 3 -screen 0 1280x800x24 3>"$folder/display" >/dev/null 2>&1 &
server=$!
for _ in $(seq 100); do
  [[ ! -s $folder/display ]] || break
  sleep 0.1
done
[[ -s $folder/display ]] || fail "the display did not come up"
DISPLAY=":$(<"$folder/display")" QT_QPA_PLATFORM=xcb "$root/build/release/bench/desktop_bench" "$@" || missed=1
exit "$missed"
