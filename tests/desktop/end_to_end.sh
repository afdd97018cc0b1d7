#!/usr/bin/env bash
# A session at the desktop with the mouse and the keyboard, on a display of its own. What came of it is read
# from the book, the configuration, the workspace and the clipboard, and figures are compared with those of the
# command line; no pixel is looked at.
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

# Places on a screen of 1280 by 800 pixels: of the account information view, alone and beside a pay-off, and of
# a simulator beside it.
account_box=(300 58) pay_off_close=(1266 25) first_figure=(120 115) second_position=(60 631)
simulator_box=(560 58) simulator_convert=(545 88) simulator_figure=(500 115) hinted_caption=(500 222)
order_symbols=(910 78 910 100 910 122) first_quantity=(1165 78)
simulate_button=(895 759) clear_button=(1148 759) submit_button=(1234 759)

finish() {
  local process
  for process in "${started[@]}"; do kill "$process" 2>/dev/null || true; done
  wait
  rm -rf "$home"
}
trap finish EXIT

fail() {
  printf 'end_to_end: %s\n' "$*" >&2
  tail -n 60 "$home/out" >&2
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
point() { xdotool mousemove "$1" "$2" && sleep 0.1; }
click() { point "$1" "$2" && xdotool click 1 && sleep 0.3; }
window() { xdotool search --onlyvisible --name "$1" 2>/dev/null | tail -n 1 | grep .; }
focus() {
  until_true "no window $1" window "$1" >/dev/null
  xdotool windowfocus --sync "$(window "$1")" && sleep 0.3
}
# menu X Y KEY...: a right click, and keys in the menu that it opens.
menu() {
  point "$1" "$2" && xdotool click 3 && sleep 0.4
  shift 2
  keys "$@" Return
}
picture() {
  [[ -z $pictures ]] || { sleep 0.7 && import -window root -crop 1280x800+0+0 +repage "$pictures/$1.png"; }
}

has() { grep -qF -- "$1" "$workspace" 2>/dev/null; }
stores() { [[ "$("$cli" config list 2>/dev/null)" == *"$1"* ]]; }
gone() { ! kill -0 "$process" 2>/dev/null; }
count_orders() { "$cli" orders "$1" --format csv | wc -l; }
has_orders() { [[ $(count_orders "$1") -eq $2 ]]; }
count_windows() { xdotool search --onlyvisible --name '' 2>/dev/null | wc -l; }
has_more_windows() { [[ $(count_windows) -gt $1 ]]; }

# The trading limit as the command line tells it: real, and after orders.
real_limit() { "$cli" account "$@" --columns TradingLimit | awk '/^Trading Limit/ { print $3 }'; }
simulated_limit() {
  "$cli" simulate "$@" --columns TradingLimit | awk '/^Trading Limit/ { print $4 }'
}

# A menu can come up late on a busy machine: the row is copied until it is the one that is looked for.
shows_figure() {
  menu "$1" "$2" Up Up
  [[ $(xclip -selection clipboard -o 2>/dev/null) == *"$3"* ]]
}
shows() {
  local turn
  [[ -n $3 ]] || fail "the command line has no figure ($4)"
  for turn in 1 2 3 4 5; do shows_figure "$1" "$2" "$3" && return; done
  fail "$4: $(xclip -selection clipboard -o) in place of $3"
}

# order NUMBER SYMBOL SIDE PRICE QUANTITY: typed into a row of the simulator's grid.
order() {
  click "${order_symbols[@]:2*$1-2:2}"
  text "$2"
  keys Tab
  text "$3"
  keys Tab
  text "$4"
  keys Tab
  text "$5"
  keys Return
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

# The first view is there: a master account, its sub-accounts summed when asked, a figure put out of sight.
start
until_true "the first view is not kept" has '"TIAccountInfo"'
shows "${first_figure[@]}" "$(real_limit M20001)" "the first view"
menu "${first_figure[@]}" Down
shows "${first_figure[@]}" "$(real_limit M20001 --aggregate)" "aggregated"
picture master
menu "${first_figure[@]}" Down Down
keys Down space Return
until_true "the second figure is still shown" has 'CashBalance,0'

# An account by a part of its name, the pay-off of an option, and the option's position closed; the Enter key
# closes nothing.
click "${account_box[@]}"
keys ctrl+a
text optionsworth
keys Down Return
until_true "no account was chosen by its name" has 'Account=30011'
menu "${second_position[@]}" Down Down Down Down Down Down
picture pay-off
before="$(count_orders 30011)"
menu "${second_position[@]}" Down Down Down
keys Return
has_orders 30011 "$before" || fail "the Enter key closed a position"
menu "${second_position[@]}" Down Down Down
keys shift+Tab space
until_true "the position is not closed" has_orders 30011 "$((before + 1))"
focus '^MarginDesk$'
click "${pay_off_close[@]}"

# The simulator comes from the menu; figures in US dollars.
keys alt+a m
until_true "the simulator does not open" has '"TIMarginSimulator"'
click "${simulator_box[@]}"
keys ctrl+a
text quill
keys Down Down Return
until_true "no account was chosen in the simulator" has 'Account=20011'
click "${simulator_convert[@]}"
keys Down Return
until_true "the currency is still the first" has 'Currency=USD'
shows "${simulator_figure[@]}" "$(real_limit 20011 --convert USD)" "the simulator before orders"

# Three orders, simulated as the command line does, edited and placed; the Enter key sends none.
cat >"$home/orders.csv" <<'ORDERS'
symbol,side,price,quantity
90101,buy,62.35,500
90118,sell,318.6,100
ZZQL,buy,41.5,20
ORDERS
before="$(count_orders 20011)"
expected="$(simulated_limit 20011 --convert USD --orders "$home/orders.csv")"
order 1 90101 b 62.35 500
order 2 90118 s 318.6 100
order 3 ZZQL b 41.5 20
click "${simulate_button[@]}"
shows "${simulator_figure[@]}" "$expected" "simulated"
windows="$(count_windows)"
point "${hinted_caption[@]}"
until_true "no hint tells how the figure comes about" has_more_windows "$windows"
picture hint
click "${first_quantity[@]}"
text 1000
keys Return
picture light
keys alt+v s Down Return
until_true "the skin stayed" stores Dark
picture dark
click "${submit_button[@]}"
focus '^Confirm'
keys Return
has_orders 20011 "$before" || fail "the Enter key sent an order"
focus '^MarginDesk$'
click "${submit_button[@]}"
focus '^Confirm'
picture confirmation
keys shift+Tab space
until_true "the orders were not placed" has_orders 20011 "$((before + 3))"
focus '^MarginDesk$'

# An order that is simulated, looked at in another language and cleared away.
order 1 90118 b 318.6 100
click "${simulate_button[@]}"
keys alt+v l Down Return
until_true "the language stayed" stores DesktopLanguage
picture chinese
click "${clear_button[@]}"
has_orders 20011 "$((before + 3))" || fail "clearing placed an order"

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
sleep 1
keys Return # the message that the views are kept
focus '^MarginDesk$'
leave
cmp -s "$workspace" "$home/before" || fail "a start without the package lost the workspace"
echo "end_to_end: all is well"
