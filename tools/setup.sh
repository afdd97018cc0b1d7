# shellcheck shell=bash
# Shared by run.sh, test.sh and the tools: what Debian has to supply, and how a preset is configured and built.
# Everything said here goes to standard error.

# The repository's folder.
root="$(dirname -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")")"

# How many compilers and tests run at once.
jobs="${JOBS:-2}"

# Debian's packages by what needs them.
declare -A packages=(
  [build]="g++ cmake ninja-build libsqlite3-dev libcurl4-openssl-dev libcli11-dev nlohmann-json3-dev libstb-dev ca-certificates"
  [test]="libgtest-dev libgmock-dev libbenchmark-dev clang-format"
  [desktop]="qt6-base-dev qt6-translations-l10n fonts-dejavu-core fonts-noto-cjk"
  [screen]="xvfb xdotool xclip imagemagick"
  [clang]="clang-14"
  [tidy]="clang-14 clang-tidy-14"
)

say() { printf '%s: %s\n' "$(basename -- "$0")" "$*" >&2; }

fail() {
  say "$@"
  exit 1
}

# need GROUP...: installs those of the groups' packages that are missing, or ends the script with one line.
need() {
  local group wanted=() missing=() as_root=() installed package
  for group in "$@"; do
    read -ra wanted <<<"${wanted[*]} ${packages[$group]}"
  done
  command -v dpkg-query >/dev/null ||
    fail "this is not a Debian system; install what these Debian packages hold and build with cmake: ${wanted[*]}"

  installed="$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "${wanted[@]}" 2>/dev/null || true)"
  for package in "${wanted[@]}"; do
    grep -qxF "installed $package" <<<"$installed" || missing+=("$package")
  done
  [[ ${#missing[@]} -gt 0 ]] || return 0

  command -v apt-get >/dev/null || fail "cannot install ${missing[*]}: there is no apt-get here"
  if [[ $(id -u) -ne 0 ]]; then
    command -v sudo >/dev/null || fail "cannot install ${missing[*]}: that needs root or sudo"
    # A password can only be asked for where somebody can answer.
    [[ -t 0 && -t 2 ]] || sudo -n true 2>/dev/null ||
      fail "cannot install ${missing[*]}: sudo wants a password; run first: sudo apt-get install ${missing[*]}"
    sudo -v || fail "cannot install ${missing[*]}: sudo refused"
    as_root=(sudo)
  fi
  say "installing from Debian's packages: ${missing[*]}"
  apt_get update
  apt_get install --no-install-recommends "${missing[@]}"
}

# One step of need(), with apt-get's output kept in a log. Of a failure, apt-get's first reason is told.
apt_get() {
  local log="$root/build/apt-get.log" reason
  mkdir -p "$root/build"
  if ! "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o Acquire::Retries=2 \
    -o Acquire::http::Timeout=30 -o Acquire::https::Timeout=30 -o DPkg::Lock::Timeout=120 \
    "$@" </dev/null >"$log" 2>&1; then
    reason="$(grep -m1 '^E: ' "$log" || tail -n1 "$log")"
    fail "cannot install ${missing[*]}: ${reason:-apt-get failed} (see $log)"
  fi
}

# Runs a command with its output kept in a log that is shown only when the command fails, which ends the script.
quietly() {
  local what="$1" log="$2"
  shift 2
  if ! "$@" </dev/null >"$log" 2>&1; then
    cat "$log" >&2
    fail "$what failed"
  fi
}

# configure PRESET: configures build/PRESET when that was not done yet, when the presets changed, or when the
# repository was moved; other changes the build notices by itself.
configure() {
  local preset="$1" dir="$root/build/$1"
  mkdir -p "$dir"
  if [[ ! -f $dir/build.ninja || $root/CMakePresets.json -nt $dir/build.ninja ]] ||
    ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$dir/CMakeCache.txt"; then
    say "configuring build/$preset"
    quietly "configuring build/$preset" "$dir/configure.log" cmake --fresh -S "$root" --preset "$preset"
  fi
}

# build PRESET [TARGET...]: brings build/PRESET up to date; without targets, all of it. Two scripts at once wait for
# each other.
build() {
  local preset="$1" dir="$root/build/$1" lock plan
  shift
  mkdir -p "$dir"
  exec {lock}>"$dir/.lock"
  if ! flock -n "$lock"; then
    say "waiting for the build that is under way in build/$preset"
    flock "$lock"
  fi
  configure "$preset"
  plan="$(ninja -C "$dir" -n "$@" 2>&1 </dev/null || true)"
  if ! grep -q 'no work to do' <<<"$plan"; then
    say "bringing build/$preset up to date (the first time takes some minutes)"
    quietly "building build/$preset" "$dir/build.log" ninja -C "$dir" -j "$jobs" "$@"
  fi
  exec {lock}>&-
}
