# Prints what zsh offers for a line. usage: zsh -f complete.zsh SCRIPT LINE
# zsh completes only while a line is edited, so an inner shell edits one on a terminal of its own.
zmodload zsh/zpty
zpty inner zsh -f -i
setup='PROMPT= ; unsetopt zle_bracketed_paste; fpath=("$dir" $fpath); autoload -Uz compinit; compinit -u -D
LISTMAX=0; zstyle ":completion:*" list-prompt ""; zstyle ":completion:*" verbose no
compadd() { if [[ ${@[1,(i)(-|--)]} == *-(O|A|D)\ * ]]; then builtin compadd "$@"; return; fi
  typeset -a offered; builtin compadd -A offered "$@"; print -rl -- "offer:"${^offered}; builtin compadd "$@"; }
bindkey "^I" complete-word; zle -C show complete-word show; show() { _main_complete; print END }; bindkey "^X" show'
zpty -w inner "dir=${(q)1:h}; $setup; print READY"
zpty -r inner line '*READY*READY*' 
zpty -w -n inner "$2"$'\C-X'
zpty -r -m inner line '*END*'
print -r -- "$line" | tr -d '\r' | sed -n 's/.*offer://p'
