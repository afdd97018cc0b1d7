#!/usr/bin/env bash
# Sets up what is missing, builds MarginDesk and runs its command line with the arguments given; without any, shows
# the demo book's master account. Standard output is the command's own.
set -euo pipefail

DEMO_ACCOUNT=M10001
TARGETS=(margindesk)

# shellcheck source=tools/setup.sh
source "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/tools/setup.sh"

need build
build release "${TARGETS[@]}"

if [[ $# -eq 0 ]]; then
  set -- account "$DEMO_ACCOUNT"
fi
exec "$root/build/release/terminal/cli/margindesk" "$@"
