#!/usr/bin/env bash
# Reads the sources with clang-tidy; anything it finds fails.
#   tools/tidy.sh            all sources
#   tools/tidy.sh PATH...    those whose path from the repository's folder begins so
set -euo pipefail

# shellcheck source=tools/setup.sh
source "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/setup.sh"

need build test tidy
configure clang
commands="$root/build/clang"
quietly "configuring build/clang" "$commands/configure.log" ninja -C "$commands" build.ninja

# Units that the build generates are left out.
paths=("$@")
[[ $# -gt 0 ]] || paths=(accountinfo bench controls forms fuzz host marginsim model plugin terminal tests tools)
paths=("${paths[@]/#/$root/}")
for path in "$@"; do
  grep -qF "\"file\": \"$root/$path" "$commands/compile_commands.json" || fail "no source begins with $path"
done

# What is said about every file, found or not, is dropped.
run-clang-tidy-14 -quiet -j "$jobs" -p "$commands" "${paths[@]/#/^}" 2>&1 |
  sed -E '/[0-9]+ warnings? generated\.|clang-tidy-14 .*-p=/d'
say "clean"
