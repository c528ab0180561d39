#!/usr/bin/env bash
# Draws the README's pictures anew: the demo as a desktop's background, with a dialog on it, and the choice of presets.
# usage: docs/images/make_screenshots.sh   (from the project's root, after ./run or ./test; needs sway and grim)
set -euo pipefail
cd "$(dirname "$0")/../.."
nivlo=$PWD/build/release/bin/nivlo
stage=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; wait 2>/dev/null || true; rm -rf "$stage"' EXIT

export XDG_RUNTIME_DIR=$stage XDG_STATE_HOME=$stage/state XDG_CONFIG_HOME=$stage/config WAYLAND_DISPLAY=wayland-1
export SWAYSOCK=$stage/sway.sock GSK_RENDERER=cairo NO_AT_BRIDGE=1 GTK_A11Y=none GSETTINGS_BACKEND=memory ADW_DISABLE_PORTAL=1
export DBUS_SESSION_BUS_ADDRESS=unix:path=$stage/bus DBUS_SYSTEM_BUS_ADDRESS=unix:path=$stage/none
unset DISPLAY
dbus-daemon --session --nofork --address="$DBUS_SESSION_BUS_ADDRESS" &
cat >"$stage/sway.conf" <<END
output HEADLESS-1 resolution 1280x720
default_border none
xwayland disable
seat * hide_cursor 1
END
# sway refuses to run as root; in a user namespace it does not see that it does.
as_user=()
[ "$(id -u)" != 0 ] || as_user=(unshare --user --map-user=1000 --map-group=1000)
WLR_BACKENDS=headless WLR_RENDERER=pixman WLR_LIBINPUT_NO_DEVICES=1 "${as_user[@]}" sway -c "$stage/sway.conf" &

# wait_for COMMAND...: until it succeeds, for ten seconds at most.
wait_for() {
  for _ in $(seq 100); do
    if "$@" >/dev/null 2>&1; then return; fi
    sleep 0.1
  done
  echo "This did not come about: $*" >&2
  exit 1
}
has_window() { swaymsg -t get_tree | grep -q '"app_id": "nivlo"'; }

wait_for swaymsg -t get_outputs
"$nivlo" --source back=demo --source front=demo >"$stage/log" 2>&1 </dev/null &
wait_for has_window
sleep 0.7 # the dialog fades in
grim -l 9 docs/images/dialog.png
"$nivlo" ctl scan off
swaymsg '[app_id=nivlo] kill' >/dev/null
wait_for eval '! has_window'
"$nivlo" pick >>"$stage/log" 2>&1 &
wait_for has_window
swaymsg '[app_id=nivlo] floating enable, resize set 740 560, move position center' >/dev/null
sleep 0.7
grim -l 9 docs/images/pick.png
