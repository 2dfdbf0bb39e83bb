#!/usr/bin/env bash
# Journeys through the installed program, driven from outside as an assistive program does: its windows are found by what a
# reader of the screen is told, and get keys. On a screen, a window manager and a bus of its own; nothing of the user's is touched.
# Usage: run.sh PREFIX PICTURES [JOURNEY...]
set -euo pipefail

here=$(dirname "$(readlink -f "$0")")
place=$(mktemp -d)
screen=
end() {
  [ -z "$screen" ] || kill "$screen" 2>/dev/null || true
  "$here"/../support/postgres.sh stop "$place/server" >/dev/null 2>&1 || true
  rm -rf "$place"
}
trap end EXIT

Xvfb -displayfd 3 -screen 0 1280x900x24 -nolisten tcp -noreset 3>"$place/display" 2>"$place/xvfb.log" &
screen=$!
for _ in $(seq 100); do
  [ -s "$place/display" ] && break
  sleep 0.1
done
[ -s "$place/display" ] || { cat "$place/xvfb.log"; exit 1; }

# A letter that no key has xdotool puts on a spare one for a moment only, and a busy program looks later: it gets a key (which
# a screen without programs forgets, but for -noreset).
export DISPLAY=":$(cat "$place/display")"
setxkbmap us -print | sed 's|xkb_symbols *{\(.*\)};|xkb_symbols {\1 key <AB11> { [ iacute, Iacute ] }; };|' | xkbcomp -w 0 - "$DISPLAY"

"$here"/../support/postgres.sh start "$place/server" >"$place/server.log" 2>&1 || { cat "$place/server.log"; exit 1; }
mkdir -p "$2"
# Fresh folders for whoever starts: settings, data, caches, and the sockets of the bus.
mkdir -p "$place/home" "$place/run"
chmod 700 "$place/run"
unset WAYLAND_DISPLAY QT_STYLE_OVERRIDE XDG_CONFIG_HOME XDG_DATA_HOME DBUS_SESSION_BUS_ADDRESS
export HOME="$place/home" XDG_RUNTIME_DIR="$place/run" QT_QPA_PLATFORM=xcb \
  QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 LANG=C.UTF-8 KEL_E2E_PLACE="$place" KEL_E2E_SERVER="$place/server" PYTHONDONTWRITEBYTECODE=1
dbus-run-session -- bash -c '
  openbox 2>/dev/null & manager=$!
  /usr/libexec/at-spi-bus-launcher --launch-immediately 2>/dev/null & bus=$!
  result=0
  /usr/bin/python3 "$0" "$@" || result=$?
  kill $manager $bus
  exit $result' "$here/journeys.py" "$@"
