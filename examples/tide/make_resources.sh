#!/usr/bin/env bash
# Draws Tide's pictures with Tide itself, after its drawing has changed.
# usage: make_resources.sh BUNDLE [NIVLO]   (BUNDLE: a built Tide.bundle; NIVLO: the program, by default the installed one)
set -euo pipefail
bundle=$(realpath "$1")
nivlo=${2:-nivlo}
cd "$(dirname "$0")/resources"

# picture NAME PRESET WIDTHxHEIGHT
picture() {
  "$nivlo" run --bundle "$bundle" --preset "$2" --surface offscreen --size "$3" --frames 20 --snapshot "$1.png" --alerts terminal >/dev/null
}

picture tide-sunrise 2 640x360
picture tide-moonlight 3 480x270
# The first preset follows the clock; the time zone is chosen so that it is half past four in the afternoon there.
minutes=$((10#$(date -u +%H) * 60 + 10#$(date -u +%M) - (16 * 60 + 30)))
[ "$minutes" -ge 0 ] && sign=+ || sign=-
minutes=${minutes#-}
TZ=$(printf 'XXX%s%02d:%02d' "$sign" $((minutes / 60)) $((minutes % 60))) picture tide-now 1 480x270
