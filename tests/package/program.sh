# Sourced by run. Every subcommand and option that the help of the installed program names is in its manual pages and is
# completed, and the shells that are here accept the scripts.

completed() {  # WORD…: what bash offers for the last word
  COMP_WORDS=("$prefix/bin/$1" "${@:2}") COMP_CWORD=$(($# - 1)) COMPREPLY=()
  _orlan
  echo "${COMPREPLY[*]}"
}

expect_completion() {  # EXPECTED WORD…
  local found
  found=$(completed "${@:2}")
  [ "$found" = "$1" ] || fail "'${*:2}' completes to '$found', expected '$1'"
}

check_program() {
  local program=$prefix/bin/orlan share=$prefix/share command option page seen=0
  local bash=$share/bash-completion/completions/orlan zsh=$share/zsh/site-functions/_orlan
  local fish=$share/fish/vendor_completions.d/orlan.fish
  # Options stand two blanks in, subcommands below their heading.
  options_in() { grep -oE '^  (-[A-Za-z],)?--[a-z-]+' | grep -oE -- '--[a-z-]+'; }
  mapfile -t commands < <("$program" --help | sed -n '/^Subcommands:/,$p' | grep -oE '^  [a-z]+' | tr -d ' ')
  [ ${#commands[@]} -ge 3 ] || fail "the help names ${#commands[@]} subcommands"
  for command in "" "${commands[@]}"; do
    page=$share/man/man1/orlan${command:+-$command}.1
    for option in $("$program" $command --help | options_in); do
      seen=$((seen + 1))
      grep -qF -- "${option//-/\\-}" "$page" || fail "manual: $command $option"
    done
    ! command -v groff >/dev/null || [ -z "$(groff -man -ww -Kutf8 -Tutf8 "$page" 2>&1 >/dev/null)" ] || fail "groff complains"
  done
  [ $seen -ge 25 ] || fail "the help names $seen options"

  . "$bash"
  expect_completion "--help --version ${commands[*]}" orlan ""
  expect_completion "simulate" orlan sim
  expect_completion "--track" orlan run --trac
  expect_completion "--help" orlan backend --h
  expect_completion "" orlan simulate day
  ! command -v zsh >/dev/null || zsh -n "$zsh"
  ! command -v fish >/dev/null || [ "$(PATH=$prefix/bin:$PATH fish -c "source $fish; complete -C 'orlan run --trac'")" = --track ] ||
    fail "fish does not complete"
}
