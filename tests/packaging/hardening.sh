#!/usr/bin/env bash
# Reads off the built programs and shared objects how they are hardened, and fails if one of them is not.
# usage: hardening.sh [--optimised] FILE...   (--optimised: they also guard the stack and check the sizes of buffers)
set -euo pipefail
export LC_ALL=C
optimised=false
if [ "$1" = --optimised ]; then
  optimised=true
  shift
fi
failures=0
# require FILE WHAT COMMAND...: notes a failure, unless the command succeeds.
require() {
  local file=$1 what=$2
  shift 2
  "$@" >/dev/null || { echo "FAILED: $file: $what" >&2; failures=$((failures + 1)); }
}
has() { grep -qE -- "$1" <<<"$2"; }
lacks() { ! has "$@"; }
# Compilers replace these by checked ones (__snprintf_chk) wherever they are called; others, such as memcpy, only where they
# know the size of the buffer.
unchecked='^v?(f|s|sn|d|as)?printf(@|$)'

printf '%-32s %-5s %-6s %-9s %-6s %-6s %s\n' FILE PIE RELRO BIND_NOW STACK CHECKS RUNPATH
for file in "$@"; do
  name=${file##*/}
  segments=$(readelf -W --program-headers "$file") dynamic=$(readelf -W --dynamic "$file")
  symbols=$(readelf -W --dyn-syms "$file" | awk '$7 == "UND" {print $8}')
  runpath=$(sed -nE 's/.*\((RUNPATH|RPATH)\).*\[(.*)\]/\2/p' <<<"$dynamic")
  guard=$(grep -c '^__stack_chk_fail' <<<"$symbols" || true) checks=$(grep -c '^__[a-z]*_chk@' <<<"$symbols" || true)
  printf '%-32s %-5s %-6s %-9s %-6s %-6s %s\n' "$name" "$(has 'Elf file type is DYN' "$segments" && echo yes || echo no)" \
    "$(has GNU_RELRO "$segments" && echo yes || echo no)" "$(has 'NOW' "$dynamic" && echo yes || echo no)" "$guard" "$checks" "$runpath"
  require "$name" "it is not position-independent" has 'Elf file type is DYN' "$segments"
  require "$name" "the linker's tables stay writable" has GNU_RELRO "$segments"
  require "$name" "symbols are resolved only when they are used" has '\(FLAGS(_1)?\).*NOW' "$dynamic"
  require "$name" "the stack is executable" has 'GNU_STACK .* RW ' "$segments"
  require "$name" "a segment is both writable and executable" lacks 'LOAD .* RWE ' "$segments"
  require "$name" "code is changed when it is loaded" lacks TEXTREL "$dynamic"
  if $optimised; then
    require "$name" "the stack is not guarded" [ "$guard" -gt 0 ]
    # The address of vsnprintf, which std::to_string takes, remains beside the checked calls.
    [ "$checks" -gt 0 ] || require "$name" "the sizes of buffers are not checked" lacks "$unchecked" "$symbols"
  fi
done
[ "$failures" -eq 0 ]
