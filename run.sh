#!/usr/bin/env bash
# Sets up what is missing, builds MarginDesk and runs it.
#   ./run.sh               on a display the desktop; without one a master account of the demo book as text
#   ./run.sh desktop ...   the desktop with the arguments given
#   ./run.sh ...           the command line with the arguments given
# Standard output is the program's own.
set -euo pipefail

# A master account with its sub-accounts, in five currencies.
DEMO=(account M20001 --aggregate --columns "PL,I.Margin,MarginLevel")
TARGETS=(margindesk)

# shellcheck source=tools/setup.sh
source "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/tools/setup.sh"

if [[ ${1-} == desktop || ($# -eq 0 && -n ${DISPLAY-}${WAYLAND_DISPLAY-}) ]]; then
  need build desktop
  # A build that was configured before Qt was there has left the desktop out.
  configure release
  ninja -C "$root/build/release" -t query margindesk-desktop >/dev/null 2>&1 ||
    quietly "configuring build/release" "$root/build/release/configure.log" cmake -S "$root" --preset release
  build release accountviews margindesk-desktop
  [[ $# -eq 0 ]] || shift
  exec "$root/build/release/terminal/desktop/margindesk-desktop" "$@"
fi

need build
build release "${TARGETS[@]}"

if [[ $# -eq 0 ]]; then
  set -- "${DEMO[@]}"
fi
exec "$root/build/release/terminal/cli/margindesk" "$@"
