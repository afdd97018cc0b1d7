#!/usr/bin/env bash
# Sets up what is missing, builds MarginDesk and runs its command line with the arguments given; without any, shows
# a master account of the demo book. Standard output is the command's own.
set -euo pipefail

# A master account with its sub-accounts, in five currencies.
DEMO=(account M20001 --aggregate --columns "PL,I.Margin,MarginLevel")
TARGETS=(margindesk)

# shellcheck source=tools/setup.sh
source "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/tools/setup.sh"

need build
build release "${TARGETS[@]}"

if [[ $# -eq 0 ]]; then
  set -- "${DEMO[@]}"
fi
exec "$root/build/release/terminal/cli/margindesk" "$@"
