"""Completion for bash."""
from commands import files, operands, options, walk, words

SCRIPT = r"""# Completion of nivlo's command line for bash. Made from the program's own options.

# Prints what can be said at PLACE: a command with its parents, or an option of one. Files are told by "<file>", folders by
# "<folder>".
_nivlo_words() {
  case $1 in
@CASES@
  esac
}

_nivlo() {
  local line=${COMP_LINE:0:COMP_POINT} words=() place=nivlo option="" word current="" all
  read -ra words <<<"$line"
  # The last word is being written, unless a space follows it.
  [[ $line == *[[:space:]] ]] || { current=${words[-1]}; unset 'words[-1]'; }
  for word in "${words[@]:1}"; do
    if [[ $option ]]; then
      option=""
    elif [[ $word == -* ]]; then
      [[ $word == *=* ]] || { _nivlo_words "$place $word" >/dev/null && option=$word; }
    elif all=" $(_nivlo_words "$place") " && [[ $all == *" $word "* ]] && _nivlo_words "$place $word" >/dev/null; then
      place+=" $word"
    fi
  done
  local prefix=""
  if [[ ! $option && $current == --*=* ]]; then
    option=${current%%=*} prefix=${current%%=*}= current=${current#*=}
  fi
  [[ ! $option ]] || place+=" $option"
  local shown=() candidate
  for candidate in $(_nivlo_words "$place"); do
    case $candidate in
      "<file>") compopt -o filenames 2>/dev/null; mapfile -t -O "${#shown[@]}" shown < <(compgen -f -- "$current") ;;
      "<folder>") compopt -o filenames 2>/dev/null; mapfile -t -O "${#shown[@]}" shown < <(compgen -d -- "$current") ;;
      -*) [[ $current != -* || $candidate != "$current"* ]] || shown+=("$candidate") ;;
      *) [[ $candidate != "$current"* ]] || shown+=("$candidate") ;;
    esac
  done
  # bash replaces only what follows the last "=" or ":", as these divide words.
  local whole=$prefix$current kept=""
  [[ $COMP_WORDBREAKS != *=* || $whole != *=* ]] || kept=${whole%"${whole##*=}"}
  [[ $COMP_WORDBREAKS != *:* || ${whole#"$kept"} != *:* ]] || kept=${whole%"${whole##*:}"}
  COMPREPLY=()
  for candidate in "${shown[@]}"; do
    candidate=$prefix$candidate
    COMPREPLY+=("${candidate#"$kept"}")
    [[ $candidate != *[=:] ]] || compopt -o nospace 2>/dev/null
  done
}
complete -F _nivlo nivlo
"""


def values(option):
    kind = files(option)
    return words(option) + ([f"<{kind}>"] if kind else [])


def cases(command):
    for path, inner in walk(command):
        said = [name for option in options(inner) for name in option["names"]]
        said += [each["name"] for each in inner["commands"]]
        said += [value for operand in operands(inner) for value in values(operand)]
        yield path, said
        for option in options(inner):
            if option["takesValue"]:
                for name in option["names"]:
                    yield f"{path} {name}", values(option)


def completion(command):
    lines = [f'    "{place}") echo "{" ".join(said)}" ;;' for place, said in cases(command)]
    return SCRIPT.replace("@CASES@", "\n".join([*lines, "    *) return 1 ;;"]))
