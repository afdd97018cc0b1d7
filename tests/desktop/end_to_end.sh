#!/usr/bin/env bash
# A session at the desktop with the mouse and the keyboard, on a display of its own. What came of it is read
# from the book, the configuration and the workspace, not from pixels.
#   end_to_end.sh DESKTOP CLI [PICTURES]     the two programs; a folder for pictures of the session
set -euo pipefail

desktop="$1"
cli="$2"
pictures="${3-}"
home="$(mktemp -d)"
export XDG_DATA_HOME="$home/data" XDG_CONFIG_HOME="$home/config" XDG_RUNTIME_DIR="$home/run"
unset WAYLAND_DISPLAY QT_QPA_PLATFORM QT_SCALE_FACTOR
mkdir -m 700 "$XDG_DATA_HOME" "$XDG_CONFIG_HOME" "$XDG_RUNTIME_DIR"
workspace="$XDG_CONFIG_HOME/margindesk/workspaces/default.json"
started=()

finish() {
  local process
  for process in "${started[@]}"; do kill "$process" 2>/dev/null || true; done
  wait
  rm -rf "$home"
}
trap finish EXIT

fail() {
  printf 'end_to_end: %s\n' "$*" >&2
  [[ -z $pictures ]] || import -window root "$pictures/failure.png"
  exit 1
}

# until_true WHAT COMMAND...: waits up to ten seconds.
until_true() {
  local what="$1" turn
  shift
  for turn in $(seq 100); do
    "$@" && return
    sleep 0.1
  done
  fail "$what"
}

keys() { xdotool key --delay 60 "$@" && sleep 0.3; }
text() { xdotool type --delay 40 "$1" && sleep 0.2; }
click() { xdotool mousemove "$1" "$2" && sleep 0.1 && xdotool click 1 && sleep 0.3; }
window() { xdotool search --onlyvisible --name "$1" 2>/dev/null | tail -n 1 | grep .; }
focus() {
  until_true "no window $1" window "$1" >/dev/null
  xdotool windowfocus --sync "$(window "$1")" && sleep 0.3
}
has() { grep -qF -- "$1" "$workspace" 2>/dev/null; }
count_orders() { "$cli" orders 20011 --format csv | grep -c ',90101,' || true; }
has_orders() { [[ $(count_orders) -eq $1 ]]; }
stores() { [[ "$("$cli" config list 2>/dev/null)" == *"$1"* ]]; }
gone() { ! kill -0 "$process" 2>/dev/null; }
picture() {
  [[ -z $pictures ]] || { sleep 0.7 && import -window root -crop 1280x800+0+0 +repage "$pictures/$1.png"; }
}

start() {
  "$desktop" "$@" >>"$home/out" 2>&1 &
  process=$!
  started+=("$process")
  focus '^MarginDesk$'
}

leave() {
  keys ctrl+q
  until_true "the terminal does not end" gone
  wait "$process" || fail "the terminal ended with $?"
}

exec {number}<> <(:)
Xvfb -displayfd "$number" -screen 0 1280x800x24 >/dev/null 2>&1 &
started+=($!)
read -r -t 20 -u "$number" display || fail "no display"
export DISPLAY=":$display"

# The first view is there; the simulator comes from the menu.
start
until_true "the first view is not kept" has '"TIAccountInfo"'
before="$(count_orders)"
keys alt+a m
until_true "the simulator does not open" has '"TIMarginSimulator"'

# An account by a part of its name; figures in US dollars.
click 560 58
text quill
keys Down Down Return
until_true "no account was chosen by its name" has 'Account=20011'
click 545 88
keys Down Return
until_true "the currency is still the first" has 'Currency=USD'

# Two orders, one of them simulated, edited and placed; the Enter key sends none.
click 910 78
text 90101
keys Tab
text b
keys Tab
text 62.35
keys Tab
text 500
keys Return
click 895 759
click 1165 78
text 1000
keys Return
click 16 116
picture light
keys alt+v s Down Return
until_true "the skin stayed" stores Dark
picture dark
click 1234 759
focus '^Confirm'
keys Return
has_orders "$before" || fail "the Enter key sent an order"
focus '^MarginDesk$'
click 1234 759
focus '^Confirm'
picture confirmation
keys shift+Tab space
until_true "the order was not placed" has_orders "$((before + 1))"
focus '^MarginDesk$'

# An order that is simulated, looked at in another language and cleared away.
click 910 78
text 90118
keys Tab
text b
keys Tab
text 318.6
keys Tab
text 100
keys Return
click 895 759
keys alt+v l Down Return
until_true "the language stayed" stores DesktopLanguage
picture chinese
click 1148 759
has_orders "$((before + 1))" || fail "clearing placed an order"

# Everything is as it was after a restart.
leave
cp "$workspace" "$home/before"
# Without a window manager the window's own place is not given back to the pixel.
"$cli" config list | grep -v '^DesktopGeometry=' >"$home/config-before"
start
sleep 1
leave
cmp -s "$workspace" "$home/before" || fail "the workspace came back otherwise: $(diff "$home/before" "$workspace")"
"$cli" config list | grep -v '^DesktopGeometry=' | diff "$home/config-before" - || fail "the configuration came back otherwise"

# A package that the terminal died of is asked about and skipped; what was open is kept for the next time.
echo accountviews.so >"$XDG_CONFIG_HOME/margindesk/loading-package"
start
keys Return
until_true "the mark stays" window '^MarginDesk$' >/dev/null
focus '^MarginDesk$'
leave
cmp -s "$workspace" "$home/before" || fail "a start without the package lost the workspace"
echo "end_to_end: all is well"
