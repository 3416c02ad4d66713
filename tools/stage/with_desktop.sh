#!/bin/bash
# Runs a command inside a private desktop: its own X server, session bus, accessibility bus and window manager.
#   tools/stage/with_desktop.sh COMMAND [ARGUMENT...]
# NIMBLETYPE_SCREENS: the screens as Xvfb takes them, such as "-screen 0 1440x900x24 -screen 1 1440x900x24 +xinerama".
# Everything started here ends with the command, each process group by its id. Logs stay silent unless something
# does not come up; then one sentence says what.
set -u

# The last child whose group is to be ended comes first.
groups=()
scratch=$(mktemp -d)

finish() {
  local id
  for id in "${groups[@]}"; do kill -TERM -- "-$id" 2>/dev/null; done
  for id in "${groups[@]}"; do
    for _ in $(seq 40); do kill -0 -- "-$id" 2>/dev/null || break; sleep 0.05; done
    kill -KILL -- "-$id" 2>/dev/null
  done
  rm -rf "$scratch"
}
trap finish EXIT
trap 'exit 143' TERM INT HUP

give_up() {
  echo "with_desktop: $1" >&2
  exit 70
}

# start NAME COMMAND...: runs a service as the leader of a process group of its own.
start() {
  local name=$1
  shift
  command -v "$1" >/dev/null || [ -x "$1" ] || give_up "$name is not installed ($1)"
  setsid "$@" >"$scratch/$name.log" 2>&1 9>&- &
  groups=($! "${groups[@]}")
}

# await SECONDS SENTENCE CONDITION...: waits until the condition holds.
await() {
  local tries=$(($1 * 20)) sentence=$2
  shift 2
  for _ in $(seq "$tries"); do
    "$@" >/dev/null 2>&1 && return 0
    sleep 0.05
  done
  tail -n 5 "$scratch"/*.log >&2 2>/dev/null
  give_up "$sentence"
}

export HOME=$scratch/home XDG_RUNTIME_DIR=$scratch/run
mkdir -p "$HOME" "$XDG_RUNTIME_DIR"
chmod 700 "$XDG_RUNTIME_DIR"
unset WAYLAND_DISPLAY XDG_SESSION_TYPE SESSION_MANAGER AT_SPI_BUS_ADDRESS XDG_CONFIG_HOME XDG_DATA_HOME \
  XDG_CACHE_HOME XDG_CURRENT_DESKTOP
export LANG=C.UTF-8 LC_ALL=C.UTF-8 GDK_BACKEND=x11 QT_QPA_PLATFORM=xcb
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 GTK_MODULES=gail:atk-bridge GSETTINGS_BACKEND=memory

: >"$scratch/display"
start xvfb bash -c 'exec Xvfb -displayfd 3 ${NIMBLETYPE_SCREENS:--screen 0 1440x900x24} -dpi 96 -nolisten tcp -noreset 3>"$0"' "$scratch/display"
await 20 "Xvfb did not name its display within 20 s" test -s "$scratch/display"
DISPLAY=:$(tr -d '[:space:]' <"$scratch/display")
export DISPLAY

start dbus dbus-daemon --session --nofork --address="unix:path=$XDG_RUNTIME_DIR/bus"
export DBUS_SESSION_BUS_ADDRESS=unix:path=$XDG_RUNTIME_DIR/bus
await 20 "the session bus did not open its socket within 20 s" test -S "$XDG_RUNTIME_DIR/bus"

start a11y /usr/libexec/at-spi-bus-launcher --launch-immediately
await 20 "the accessibility bus did not answer within 20 s" gdbus call --session --timeout 2 \
  --dest org.a11y.Bus --object-path /org/a11y/bus --method org.a11y.Bus.GetAddress

# It announces itself before it looks after windows; what it starts comes after that.
start openbox openbox --sm-disable --startup "touch $scratch/openbox-ready"
await 20 "openbox did not take over the display within 20 s" test -e "$scratch/openbox-ready"

"$@"
