# Sourced by run. Every option that the help of the installed program names is in its manual page and completions, and
# the shells that are here accept the scripts.

completed() {  # WORD…: what bash offers for the last word
  COMP_WORDS=("$@") COMP_CWORD=$(($# - 1)) COMPREPLY=()
  compopt() { :; }  # exists only while a person completes
  _orlan
  echo "${COMPREPLY[*]}"
}

expect_completion() {  # EXPECTED WORD…
  local found
  found=$(completed "${@:2}")
  [ "$found" = "$1" ] || fail "'${*:2}' completes to '$found', expected '$1'"
}

check_program() {
  local program=$prefix/bin/orlan share=$prefix/share command option missing=0 seen=0
  local bash=$share/bash-completion/completions/orlan zsh=$share/zsh/site-functions/_orlan
  local fish=$share/fish/vendor_completions.d/orlan.fish page=$share/man/man1/orlan.1
  # Options stand two blanks in, subcommands below their heading.
  options_in() { grep -oE '^  (-[A-Za-z],)?--[a-z-]+' | grep -oE -- '--[a-z-]+'; }
  mapfile -t commands < <("$program" --help | sed -n '/^Subcommands:/,$p' | grep -oE '^  [a-z]+' | tr -d ' ')
  [ ${#commands[@]} -ge 4 ] || fail "the help names ${#commands[@]} subcommands"
  for command in "" "${commands[@]}"; do
    local bash_words zsh_words fish_words page_words none="''" heading=OPTIONS
    [ -z "$command" ] || heading="\"orlan $command\""
    bash_words=$(grep -F "    ${command:-$none}) " "$bash") || fail "bash does not know '$command'"
    zsh_words=$(sed -n "/ ${command:-_arguments -C}[) ]/,/;;\|case/p" "$zsh")
    fish_words=$(grep -E " '?(__fish_seen_subcommand_from )?${command:-__fish_use_subcommand}'? " "$fish")
    page_words=$(sed -n "/^\.SH $heading/,/^\.SH/p" "$page")
    for option in $("$program" $command --help | options_in); do
      seen=$((seen + 1))
      grep -qE -- "$option( |')" <<<"$bash_words" || { echo "bash: $command $option"; missing=1; }
      grep -qF -- "'*$option[" <<<"$zsh_words" || { echo "zsh: $command $option"; missing=1; }
      grep -qF -- " -l ${option#--} " <<<"$fish_words" || { echo "fish: $command $option"; missing=1; }
      grep -qF -- "${option//-/\\-}\\fR" <<<"$page_words" || { echo "manual: $command $option"; missing=1; }
    done
  done
  [ $missing = 0 ] || fail "these are missing"
  [ $seen -ge 25 ] || fail "the help names $seen options"

  . "$bash"
  expect_completion "simulate" orlan sim
  expect_completion "--track" orlan run --trac
  expect_completion "staging" orlan run --env st
  expect_completion "zsh" orlan completions z
  expect_completion "" orlan simulate day
  ! command -v zsh >/dev/null || zsh -n "$zsh"
  ! command -v fish >/dev/null || fish --no-execute "$fish"
  ! command -v groff >/dev/null || [ -z "$(groff -man -ww -Kutf8 -Tutf8 "$page" 2>&1 >/dev/null)" ] || fail "groff complains"
}
