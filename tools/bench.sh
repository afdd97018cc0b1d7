#!/usr/bin/env bash
# Sets up what is missing, builds the benchmarks optimised and runs them; arguments go to Google Benchmark.
set -euo pipefail

# shellcheck source=tools/setup.sh
source "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/setup.sh"

need build test
configure release
# The benchmarks are left out of a build that was configured before Google Benchmark was installed.
quietly "configuring build/release" "$root/build/release/configure.log" cmake -S "$root" --preset release
build release account_bench
exec "$root/build/release/bench/account_bench" "$@"
