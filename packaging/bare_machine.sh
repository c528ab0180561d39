#!/usr/bin/env bash
# Installs the packages on a bare Debian of this machine's release, uses them as an ordinary user, and removes them again. Fails
# if something does not work, if something stays, or if a camera is opened.
# usage: packaging/bare_machine.sh FOLDER PACKAGE...   (needs root, mmdebstrap and inotify-tools; FOLDER is where the machine is made)
set -euo pipefail
machine=$1
shift
suite=$(. /etc/os-release && echo "$VERSION_CODENAME")
tide=$(realpath "$(dirname "$0")/../examples/tide")

step() { printf '== %s\n' "$*"; }
fail() { echo "FAILED: $*" >&2; exit 1; }

# inside USER COMMAND: runs the shell command on the machine.
inside() {
  chroot "$machine" env -i PATH=/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive \
    runuser -u "$1" -- bash -euo pipefail -c "cd; $2"
}
apt_get() { inside root "apt-get -qq -o Dpkg::Use-Pty=0 -o APT::Sandbox::User=root $*" >"$machine.apt.log" 2>&1 || { tail -n 20 "$machine.apt.log"; fail "apt-get $*"; }; }

# nothing_runs: neither the program nor anything that would start it, now or with the next session.
nothing_runs() {
  ! pgrep -x 'nivlo(-reader)?' >/dev/null || fail "Nivlo runs"
  local starters
  starters=$(find "$machine"/etc/systemd "$machine"/etc/xdg/autostart "$machine"/usr/share/dbus-1 "$machine"/etc/skel -iname '*nivlo*' 2>/dev/null || true)
  [ -z "$starters" ] || fail "something would start Nivlo: $starters"
}

if [ "${NIVLO_OWN_NAMESPACE:-}" = "" ]; then
  exec env NIVLO_OWN_NAMESPACE=1 unshare --mount-proc --pid --fork --kill-child "$0" "$machine" "$@"
fi

step "A bare Debian ($suite)"
rm -rf "$machine"
mmdebstrap --quiet --variant=apt "$suite" "$machine" >/dev/null
cp -a /etc/apt/apt.conf.d/. "$machine/etc/apt/apt.conf.d/"  # how packages are reached from here
cp /etc/resolv.conf "$machine/etc/resolv.conf"
mount -t proc proc "$machine/proc"
mount -t tmpfs tmpfs "$machine/tmp"
mount -t tmpfs tmpfs "$machine/dev"
for device in null zero full random urandom tty; do cp -a "/dev/$device" "$machine/dev/$device"; done
mkdir "$machine/dev/shm"
chmod 1777 "$machine/tmp" "$machine/dev/shm"
# Stand-ins for cameras. Whoever opens them is noted.
touch "$machine/dev/video0" "$machine/dev/video1"
chmod 666 "$machine"/dev/video*
inotifywait --quiet --monitor --event open --outfile "$machine.opened" "$machine"/dev/video0 "$machine"/dev/video1 &
watcher=$!
trap 'kill $watcher' EXIT
# It is ready once it notes us.
until [ -s "$machine.opened" ]; do
  cat "$machine/dev/video0"
  sleep 0.1
done
: >"$machine.opened"
inside root "useradd --create-home --shell /bin/bash user"
install -m 644 "$@" "$machine/tmp"
apt_get update
apt_get install --yes --no-install-recommends man-db bash-completion systemd

step "Install"
apt_get install --yes /tmp/nivlo_*.deb
nothing_runs
inside user "mkdir -m 700 /tmp/session; XDG_RUNTIME_DIR=/tmp/session systemd-analyze --user verify /usr/lib/systemd/user/nivlo.service"

step "Use"
inside user "nivlo --version"
inside user "nivlo --surface offscreen --size 640x360 --frames 30 --snapshot wall.png </dev/null"
[ "$(stat -c %s "$machine/home/user/wall.png")" -gt 20000 ] || fail "the picture of the wallpaper is plain"
inside user "nivlo scan wall.png"
inside user "nivlo scan --json /usr/lib/*/nivlo/NivloWallpaper.bundle/*.png >scan.json && grep -c milliseconds scan.json"
inside user "MANWIDTH=80 man nivlo | col -b | grep -A3 '^NAME'"
# shellcheck disable=SC2016
inside user '. /usr/share/bash-completion/bash_completion; _completion_loader nivlo || true
  COMP_LINE="nivlo ctl p" COMP_POINT=11; _nivlo; [ "${COMPREPLY[*]}" = "pause preset" ]; echo "nivlo ctl p<Tab>: ${COMPREPLY[*]}"'
inside user "nivlo wallpapers; nivlo presets; status=0; nivlo ctl status || status=\$?; [ \$status = 3 ]"
nothing_runs

step "Build a wallpaper against libnivlo-dev"
apt_get install --yes --no-install-recommends g++ cmake make pkg-config /tmp/libnivlo-dev_*.deb
cp -r "$tide" "$machine/home/user/tide"
inside root "chown -R user: /home/user/tide"
inside user "cmake -S tide -B built >/dev/null && cmake --build built >/dev/null && nivlo presets --bundle built/Tide.bundle"
# shellcheck disable=SC2016
inside user 'mkdir Tide.bundle && cp built/Tide.bundle/Info.plist Tide.bundle &&
  g++ -shared -fPIC tide/*.cpp -o Tide.bundle/Tide.so $(pkg-config --cflags --libs nivlo) && nivlo presets --bundle Tide.bundle | head -n 1'

step "Remove"
apt_get remove --yes nivlo
inside root "dpkg --purge nivlo libnivlo-dev" >/dev/null
nothing_runs
left=$(find "$machine" -xdev -iname '*nivlo*' -not -path "$machine/home/*" -not -path "$machine/var/cache/apt/*")
[ -z "$left" ] || fail "these stay: $left"
named=$(grep -rIl nivlo "$machine/etc" "$machine/var/lib" --exclude-dir=apt || true)
! grep -v '/dpkg/.*-old$' <<<"$named" | grep -q . || fail "these still name Nivlo: $named"
echo "Of the user's own: $(cd "$machine/home/user" && find .config .local -type f -ipath '*nivlo*' 2>/dev/null | tr '\n' ' ')"

step "Cameras"
kill "$watcher" && trap - EXIT
[ ! -s "$machine.opened" ] || fail "a camera was opened: $(cat "$machine.opened")"
echo "No camera was opened."
