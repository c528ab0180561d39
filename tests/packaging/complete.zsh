# Prints what zsh offers for a line. usage: zsh -f complete.zsh SCRIPT LINE
# zsh completes only while a line is edited, so an inner shell edits one on a terminal of its own.
zmodload zsh/zpty
zpty inner zsh -f -i
setup='PROMPT= ; unsetopt zle_bracketed_paste; fpath=($folder $fpath); autoload -Uz compinit; compinit -u -D
# Some calls only sort candidates into arrays; all others offer them.
compadd() { if [[ ${@[1,(i)(-|--)]} == *-(O|A|D)\ * ]]; then builtin compadd "$@"; return; fi
  typeset -a offered; builtin compadd -A offered "$@"; print -rl -- offer:${^offered}; builtin compadd "$@"; }
show() { _main_complete; print END }; zle -C show complete-word show; bindkey "^X" show'
zpty -w inner "folder=${(q)1:h}; $setup; print READY"
zpty -r inner line '*READY*READY*'
zpty -w -n inner "$2"$'\C-X'
zpty -r -m inner line '*END*'
print -r -- "$line" | tr -d '\r' | sed -n 's/.*offer://p'
