#!/usr/bin/env bash
# Builds the Debian packages twice, in different folders, and checks them: that both builds are alike to the bit, what Debian's
# and the desktops' own checkers say, the completions in each shell, and their whole life on a bare machine (bare_machine.sh).
# usage: packaging/check_package.sh   (needs root or sudo; the packages and logs are left in build/package)
# Ends with the line "N checks passed, M failed".
set -euo pipefail
cd "$(dirname "$0")/.."
. packaging/build.sh
work=$PWD/build/package
passed=0 failed=0

# check NAME COMMAND...: one check, whose output is shown if it fails.
check() {
  local name=$1 log
  log=$work/logs/${1//[^a-zA-Z0-9]/-}.log
  shift
  if "$@" >"$log" 2>&1; then
    echo "ok      $name"
    passed=$((passed + 1))
  else
    echo "FAILED  $name; the end of $log:"
    tail -n 30 "$log"
    failed=$((failed + 1))
  fi
}

# build_in FOLDER: builds the packages from a copy of this checkout.
build_in() {
  local source=$1/nivlo
  mkdir -p "$source"
  git ls-files -z | xargs -0 cp --parents --target-directory="$source"
  (cd "$source" && dpkg-buildpackage -us -uc)
}

# one_version: the packages have the version of the program.
one_version() {
  local packaged
  packaged=$(dpkg-parsechangelog --show-field Version)
  grep -q "^project(nivlo VERSION $packaged " CMakeLists.txt || { echo "debian/changelog says $packaged, CMakeLists.txt does not"; return 1; }
}

# alike: each package of the first build is the same as that of the second.
alike() {
  local package
  for package in "$work"/one/*.deb; do
    cmp "$package" "$work/two/a-folder-of-another-name/${package##*/}" || return 1
    sha256sum "$package"
  done
}

manual_is_clean() {
  local said
  said=$(LC_ALL=C.UTF-8 MANROFFSEQ='' MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$1" 2>&1 >/dev/null)
  [ -z "$said" ] || { echo "$said"; return 1; }
}

as_root=()
[ "$(id -u)" = 0 ] || as_root=(sudo)
export DEBIAN_FRONTEND=noninteractive
say "Installing what the package and its checks need"
quiet=(-qq -o DPkg::Lock::Timeout=300 -o Dpkg::Use-Pty=0)
"${as_root[@]}" apt-get "${quiet[@]}" install -y --no-install-recommends dpkg-dev debhelper lintian appstream desktop-file-utils \
  man-db groff zsh fish mmdebstrap inotify-tools >/dev/null
"${as_root[@]}" apt-get "${quiet[@]}" build-dep -y --no-install-recommends ./ >/dev/null

"${as_root[@]}" rm -rf "$work"
mkdir -p "$work/logs" "$work/two"
say "Building the packages twice"
check "the packages have the program's version" one_version
check "the packages are built" build_in "$work/one"
check "they are built in a folder of another name" env TZ=Pacific/Apia LC_ALL=C bash -c "$(declare -f build_in); set -e; build_in \"\$1\"" - \
  "$work/two/a-folder-of-another-name"
check "both builds are alike" alike

say "Checking what is in them"
place=$work/place
mkdir "$place"
for package in "$work"/one/*.deb; do dpkg-deb --extract "$package" "$place"; done
share=$place/usr/share
check "lintian finds no error and nothing to warn of" lintian --fail-on error,warning --info "$work"/one/*.changes
check "the AppStream data is valid" appstreamcli validate --no-net "$share"/metainfo/*.xml
check "the desktop entry is valid" desktop-file-validate "$share"/applications/nivlo.desktop
check "the manual page is clean" manual_is_clean "$share"/man/man1/nivlo.1.gz
check "bash completes" tests/packaging/completion.sh bash "$share"/bash-completion/completions/nivlo
check "zsh completes" tests/packaging/completion.sh zsh "$share"/zsh/vendor-completions/_nivlo
check "fish completes" tests/packaging/completion.sh fish "$share"/fish/vendor_completions.d/nivlo.fish
libraries=$(echo "$place"/usr/lib/*/nivlo)
check "all of it is hardened" tests/packaging/hardening.sh --optimised "$place"/usr/bin/nivlo "$place"/usr/libexec/nivlo/nivlo-reader \
  "$libraries"/NivloWallpaper.bundle/NivloWallpaper.so "$libraries"/*.so.?

say "Installing, using and removing them on a bare machine"
check "they live and die on a bare machine" "${as_root[@]}" packaging/bare_machine.sh "$work"/machine "$work"/one/*.deb
echo "$passed checks passed, $failed failed"
[ "$failed" -eq 0 ]
