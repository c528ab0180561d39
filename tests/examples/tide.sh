#!/usr/bin/env bash
# The work of a wallpaper's author: installs Nivlo, builds a wallpaper outside its tree in both ways that
# docs/wallpapers.md shows, tests, installs and shows it.
# usage: tide.sh SOURCE_DIR BUILD_DIR   (BUILD_DIR: where Nivlo is built)
set -euo pipefail
source=$(realpath "$1") build=$(realpath "$2")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix
export HOME=$work/home XDG_RUNTIME_DIR=$work/run XDG_DATA_DIRS=$prefix/share PATH=$prefix/bin:$PATH
export PKG_CONFIG_PATH=$prefix/lib/pkgconfig
unset DISPLAY WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS XDG_DATA_HOME XDG_STATE_HOME
mkdir -p "$HOME" "$XDG_RUNTIME_DIR"
chmod 700 "$XDG_RUNTIME_DIR"

fail() { echo "FAILED: $*" >&2; exit 1; }
# expect TEXT COMMAND...: the command's output, of both kinds, holds the text.
expect() {
  local text=$1 output
  shift
  output=$("$@" 2>&1) || true
  [[ $output == *"$text"* ]] || fail "'$*' does not say '$text' but: $output"
}
# show FILE NIVLO_ARGUMENTS...: writes a picture of the wallpaper, which must not be plain: a plain one compresses to nearly nothing.
show() {
  local picture=$1
  shift
  nivlo "$@" --surface offscreen --size 640x360 --frames 3 --snapshot "$picture" --alerts terminal </dev/null >"$work/log" 2>&1 ||
    { cat "$work/log"; fail "nivlo $*"; }
  [ "$(stat -c %s "$picture")" -gt 20000 ] || fail "nivlo $*: the picture is plain"
}

cmake --install "$build" --prefix "$prefix" >"$work/install.log" || { cat "$work/install.log"; fail "installing Nivlo"; }
find "$prefix" -type f -exec python3 "$source/cmake/check_run_paths.py" {} + || fail "libraries of the current folder would be loaded"

echo "With CMake"
cp -r "$source/examples/tide" "$work/tide"
cmake -S "$work/tide" -B "$work/cmake" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" -DTIDE_TESTS=ON
cmake --build "$work/cmake"
ctest --test-dir "$work/cmake" --output-on-failure --no-tests=error
show "$work/built.png" --bundle "$work/cmake/Tide.bundle" --preset 2
cmake --install "$work/cmake" --prefix "$prefix"

echo "With pkg-config"
mkdir "$work/Tide.bundle"
cp "$prefix/share/nivlo/wallpapers/Tide.bundle/Info.plist" "$work/Tide.bundle"
# shellcheck disable=SC2046
g++ -std=c++20 -shared -fPIC "$work"/tide/*.cpp -o "$work/Tide.bundle/Tide.so" $(pkg-config --cflags --libs nivlo)
expect "the sea by moonlight" nivlo presets --bundle "$work/Tide.bundle"

echo "Installed"
expect "Tide" nivlo wallpapers
expect "the sea at sunrise" nivlo presets --bundle tide
show "$work/sunrise.png" --bundle tide --preset 2
show "$work/moonlight.png" --bundle tide --preset 3
cmp -s "$work/sunrise.png" "$work/moonlight.png" && fail "two presets look the same"
expect "Tide has 3 presets" nivlo --bundle tide --preset 4 --surface offscreen --frames 1
expect "does not read codes" nivlo --bundle tide --qr on --surface offscreen --frames 1
if nivlo --bundle tide --preset 4 --surface offscreen --frames 1 </dev/null >/dev/null 2>&1; then
  fail "a preset that does not exist is a success"
fi
