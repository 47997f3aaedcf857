# bash completion for orlan, which is asked what it knows; where no option begins, a file may stand.
_orlan() {
  local program=${COMP_WORDS[0]} current=${COMP_WORDS[COMP_CWORD]} words=
  if [ "$COMP_CWORD" = 1 ]; then
    words=$("$program" --help 2>/dev/null | sed -nE '/^Subcommands:/,$s/^  ([a-z]+).*/\1/p; s/^  (-[A-Za-z],)?(--[a-z-]+).*/\2/p')
  elif [[ $current == -* ]]; then
    words=$("$program" "${COMP_WORDS[1]}" --help 2>/dev/null | sed -nE 's/^  (-[A-Za-z],)?(--[a-z-]+).*/\2/p')
  fi
  COMPREPLY=()
  [ -z "$words" ] || mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}
complete -o default -F _orlan orlan
