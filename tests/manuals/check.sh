#!/usr/bin/env bash
# Holds manual pages and completions against the help texts: every command and every option is in all of
# them, and bash completes as it should. ctest starts it.
#
# usage: check.sh FOLDER_OF_PROGRAMS FOLDER_OF_MANUALS
set -euo pipefail
readonly programs=$1 manuals=$2

fail() { echo "$*" >&2; exit 1; }

# The words that bash offers for the last of a line's.
offered() {
  (
    # shellcheck disable=SC1091
    source "$manuals/bash/vexel"
    COMP_WORDS=("$@") COMP_CWORD=$(($# - 1))
    _vexel
    echo "${COMPREPLY[*]}"
  )
}

# check_command COMMAND PROGRAM ARGUMENT...
check_command() {
  local command=$1 option
  shift
  local page=$manuals/man1/vexel-$command.1.gz
  local bash_offers=" $(offered vexel "$command" -) "
  for option in $("$@" --help | grep -oE '^ +(-[a-z],)?--[a-z0-9-]+' | grep -oE '\-\-.*'); do
    zgrep -qF "\\fB${option//-/\\-}\\fR" "$page" || fail "vexel-$command.1 has no $option"
    [[ $bash_offers == *" $option "* ]] || fail "bash: $command has no $option"
    grep -qE "^ +'\*$option\[.+\]" "$manuals/zsh/_vexel" || fail "zsh: $command has no $option"
    grep -qE "_from $command'.* -l ${option#--} .*-d '.+'" "$manuals/fish/vexel.fish" ||
      fail "fish: $command has no $option"
  done
  [[ -n ${option:-} ]] || fail "$command has no options"
  zgrep -qF "vexel\\-$command" "$manuals/man1/vexel.1.gz" || fail "vexel.1 does not name vexel-$command"
}

commands=$("$programs/vexel" --help | sed -n '/^Commands:/,/^$/s/^  \([a-z]*\) .*/\1/p')
for command in $commands; do
  if [[ -x $programs/vexel-$command ]]; then
    check_command "$command" "$programs/vexel-$command"
  elif [[ -e $manuals/man1/vexel-$command.1.gz ]]; then
    check_command "$command" "$programs/vexel" "$command"
  fi
done
check_command render "$programs/vexel" render

[[ $(offered vexel rend) == render ]] || fail "bash completes no command"
[[ " $(offered vexel render x.mdf --intervals "") " == *" natural "* ]] || fail "bash completes no word"
[[ $(offered vexel render x.mdf --groups "") == "" ]] || fail "bash completes a number"
