#!/usr/bin/env bash
# Completes beginnings of command lines, as the Tab key does.
# usage: completion.sh SHELL SCRIPT   (SHELL: bash, zsh or fish; SCRIPT: nivlo's completion for it)
set -euo pipefail
shell=$1 script=$(realpath "$2")
here=$(realpath "$(dirname "$0")")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
mkdir pictures && touch pictures/one.png

# Each prints what the shell offers for the line in $1, separated by white space. bash and zsh see a line as the keyboard
# wrote it; fish is asked.
complete_bash() {
  bash --norc -c 'source "$1"; COMP_LINE=$2 COMP_POINT=${#2}; _nivlo; echo "${COMPREPLY[@]}"' - "$script" "$1"
}
complete_fish() { HOME=$work fish --no-config -c "source '$script'; complete --do-complete '$1'" | cut -f1; }
complete_zsh() { HOME=$work zsh -f "$here/complete.zsh" "$script" "$1"; }

failures=0
# offers LINE WANTED UNWANTED: completing the line offers each of the wanted words, and none of the unwanted.
offers() {
  local offered word
  offered=" $(complete_"$shell" "$1" | tr '\n\r' '  ') "
  for word in $2; do
    # Some show the whole word, others only what follows its last equals sign or slash.
    [[ $offered == *[\ =/]"$word"[\ /]* || $offered == *" $word "* ]] ||
      { echo "FAILED ($shell): '$1' does not offer '$word' but:$offered"; failures=$((failures + 1)); }
  done
  for word in $3; do
    [[ $offered != *[\ =]"$word "* ]] || { echo "FAILED ($shell): '$1' offers '$word'"; failures=$((failures + 1)); }
  done
}

offers "nivlo " "ctl scan install-service presets" "status --preset pictures"
offers "nivlo --pre" "--preset" "--qr scan"
offers "nivlo --qr " "on off" "ctl back"
offers "nivlo --qr=o" "on off" "ctl"
offers "nivlo --layer b" "background bottom" "auto"
offers "nivlo --source " "back= front=" "ctl"
offers "nivlo --snapshot pict" "pictures" "pick"
offers "nivlo --fps " "" "ctl on pictures"
offers "nivlo run --alerts=" "desktop terminal" "ctl"
offers "nivlo ctl " "status pause preset scan quit" "devices ctl pictures"
offers "nivlo ctl scan " "on off" "status pictures"
offers "nivlo ctl status --j" "--json" "--preset"
offers "nivlo --qr off --camera back ctl p" "pause preset" "pick presets"
offers "nivlo scan pictures/" "one.png" "status on"
offers "nivlo install-service --r" "--remove" "--snapshot"
[ "$failures" -eq 0 ]
