#!/usr/bin/env bash
# Sets up what is missing, then builds and runs the tests.
#   ./test.sh          every test, in an ordinary build and under the address and undefined-behaviour sanitizers
#   ./test.sh clang    every test, built by Clang 14
#   ./test.sh tidy     clang-tidy over all sources
set -euo pipefail

# shellcheck source=tools/setup.sh
source "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/tools/setup.sh"

run_tests() {
  build "$1"
  say "testing build/$1"
  (cd "$root" && ctest --preset "$1" --parallel "$jobs")
}

case "$*" in
  "")
    need build test desktop screen
    run_tests dev
    run_tests asan
    ;;
  clang)
    need build test clang
    run_tests clang
    ;;
  tidy)
    exec "$root/tools/tidy.sh"
    ;;
  *)
    say "usage: test.sh [clang|tidy]"
    exit 2
    ;;
esac
