# Functions that ./run and ./test share. They source this file and call them from the project's root.

say() { printf '\033[1m%s\033[0m\n' "$*"; }

# install_packages SET: installs the missing packages of the program ("program"), of the tests too ("all"), or those that
# "./test desktops" needs besides ("desktops").
install_packages() {
  local list=packaging/debian-packages.txt wanted missing
  wanted=$(case "$1" in
    program) sed '/^== tests/,$d' "$list" ;;
    all) cat "$list" ;;
    desktops) cat packaging/desktops-packages.txt ;;
  esac | grep -v '^#\|^==\|^$')
  # shellcheck disable=SC2086
  missing=$({ dpkg-query -W -f '${Package} ${Status}\n' $wanted 2>/dev/null || true; } | awk '/ install ok installed$/ {print $1}' |
    sort | comm -13 - <(printf '%s\n' $wanted | sort))
  [ -n "$missing" ] || return 0
  command -v apt-get >/dev/null || { echo "There is no apt-get here; install the counterparts of these Debian packages:" $missing >&2; return 1; }
  local as_root=()
  if [ "$(id -u)" != 0 ]; then
    command -v sudo >/dev/null || { echo "There is no sudo here; run this once as root, or install:" $missing >&2; return 1; }
    as_root=(sudo)
  fi
  say "Installing: $(echo $missing)"
  local quiet=(-qq -o DPkg::Lock::Timeout=300 -o Dpkg::Use-Pty=0)
  "${as_root[@]}" apt-get "${quiet[@]}" update
  # shellcheck disable=SC2086
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get "${quiet[@]}" install -y --no-install-recommends $missing >/dev/null
}

# build PRESET [CMAKE ARGUMENTS...] [--target NAME]: configures the preset and builds everything, or one target. Prints
# nothing of that unless it fails.
build() {
  local preset=$1 log=build/$1.log arguments=() target=()
  shift
  while [ $# -gt 0 ]; do
    if [ "$1" = --target ]; then
      target=(--target "$2")
      shift
    else
      arguments+=("$1")
    fi
    shift
  done
  mkdir -p build
  say "Building ($preset)"
  if ! { cmake --preset "$preset" "${arguments[@]}" && cmake --build --preset "$preset" "${target[@]}"; } >"$log" 2>&1; then
    tail -n 60 "$log"
    echo "The build failed; its full output is in $log" >&2
    return 1
  fi
}
