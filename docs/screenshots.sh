#!/usr/bin/env bash
# Makes the pictures in docs/screenshots anew, from a session at the desktop on a display of its own.
set -euo pipefail

# shellcheck source=tools/setup.sh
source "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/../tools/setup.sh"

need build desktop screen
build release margindesk margindesk-desktop accountviews
mkdir -p "$root/docs/screenshots"
"$root/tests/desktop/end_to_end.sh" "$root/build/release/terminal/desktop/margindesk-desktop" \
  "$root/build/release/terminal/cli/margindesk" "$root/docs/screenshots"
