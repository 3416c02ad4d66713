#!/bin/bash
# Runs a command on a display with two screens side by side, within a desktop of with_desktop.sh.
#   tools/stage/with_desktop.sh tools/stage/with_two_screens.sh COMMAND [ARGUMENT...]
# Needs the X server with its dummy driver: what virtual servers without one tell of a second screen, toolkits do
# not believe.
set -u
server=/usr/lib/xorg/Xorg
for needed in "$server" /usr/lib/xorg/modules/drivers/dummy_drv.so xrandr; do
  command -v "$needed" >/dev/null || [ -e "$needed" ] || {
    echo "with_two_screens: $needed is not installed (xserver-xorg-core, xserver-xorg-video-dummy, x11-xserver-utils)" >&2
    exit 70
  }
done

scratch=$(mktemp -d)
trap 'kill $manager $display_server 2>/dev/null; wait $display_server 2>/dev/null; rm -rf "$scratch"' EXIT
manager= display_server=
cat >"$scratch/xorg.conf" <<'CONF'
Section "Device"
  Identifier "dummy"
  Driver "dummy"
  VideoRam 256000
EndSection
Section "Monitor"
  Identifier "monitor"
  HorizSync 5.0-1000.0
  VertRefresh 5.0-200.0
EndSection
Section "Screen"
  Identifier "screen"
  Device "dummy"
  Monitor "monitor"
  DefaultDepth 24
  SubSection "Display"
    Depth 24
    Virtual 2560 800
  EndSubSection
EndSection
Section "ServerFlags"
  Option "AutoAddDevices" "false"
  Option "AutoAddGPU" "false"
EndSection
CONF

: >"$scratch/display"
"$server" -displayfd 3 -config "$scratch/xorg.conf" -logfile "$scratch/xorg.log" -noreset -nolisten tcp \
  >"$scratch/xorg.out" 2>&1 3>"$scratch/display" &
display_server=$!
for _ in $(seq 400); do [ -s "$scratch/display" ] && break; sleep 0.05; done
[ -s "$scratch/display" ] || { tail -n 5 "$scratch/xorg.out" >&2; echo "with_two_screens: the X server did not start" >&2; exit 70; }
DISPLAY=:$(tr -d '[:space:]' <"$scratch/display")
export DISPLAY

xrandr --output DUMMY0 --mode 1280x800 --pos 0x0 &&
  xrandr --addmode DUMMY1 1280x800 && xrandr --output DUMMY1 --mode 1280x800 --pos 1280x0 ||
  { echo "with_two_screens: the second screen could not be switched on" >&2; exit 70; }
openbox --sm-disable --startup "touch $scratch/ready" >/dev/null 2>&1 &
manager=$!
for _ in $(seq 400); do [ -e "$scratch/ready" ] && break; sleep 0.05; done

"$@"
