#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Every subcommand and every option that --help names is in the manual pages and in the completion of
# each shell, and nothing else is.
#   command_reference_test.bash COMMAND MANUAL_FOLDER COMPLETION_FOLDER
set -euo pipefail
export LC_ALL=C.UTF-8

command="$1"
manual="$2"
completions="$3"

here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
completions="$(cd "$completions" && pwd)"
manual="$(cd "$manual" && pwd)"

failures=0
complain() {
  echo "FAILED: $*" >&2
  failures=$((failures + 1))
}

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
mkdir "$work/place" "$work/place/folder"
touch "$work/place/file.csv"

# The completion runs the command by the name on the command line.
PATH="$(cd "$(dirname "$command")" && pwd):$PATH"
export PATH

# ask LINE WORD...: the words that must be offered at the end of a line.
ask() {
  printf '%s\n' "$1" >>"$work/lines"
  printf '%s\n' "? $1" "${@:2}" >>"$work/expected"
}

# options HELP: the long options, a line each. No example is one.
options() {
  sed '/^Examples:/,$d' <<<"$1" | sed -n -E 's/^  (-[a-zA-Z],)?(--[a-z-]+).*/\2/p' | sort -u
}

# subcommands HELP
subcommands() {
  sed -n '/^Subcommands:/,/^$/p' <<<"$1" | sed -n -E 's/^  ([a-z]+) .*/\1/p' | sort -u
}

pages=""

# check WORD...: one subcommand, and those below it.
check() {
  local name="chartbridge" help page word words option
  for word in "$@"; do name+="-$word"; done
  help="$("$command" "$@" --help)"
  pages+="$name.1.gz"$'\n'
  if [[ ! -f "$manual/$name.1.gz" ]]; then
    complain "$name has no manual page"
    return
  fi
  # As it is read: roff writes a hyphen as \-.
  page="$(zcat "$manual/$name.1.gz" | sed 's/\\-/-/g')"
  while read -r option; do
    grep -q -F -- "$option\\fR" <<<"$page" || complain "$name(1) lacks $option"
  done < <(options "$help")
  mapfile -t words < <(options "$help")
  ask "chartbridge${*:+ $*} --" "${words[@]}"
  mapfile -t words < <(subcommands "$help")
  [[ ${#words[@]} -eq 0 ]] || ask "chartbridge${*:+ $*} " "${words[@]}"
  while read -r word; do
    [[ -z "$word" ]] || check "$@" "$word"
  done < <(subcommands "$help")
}

check
[[ "$(sort <<<"${pages%$'\n'}")" == "$(cd "$manual" && ls)" ]] ||
  complain "manual pages of no command: $(comm -13 <(sort <<<"$pages") <(cd "$manual" && ls))"
[[ "$(wc -l <<<"$pages")" -ge 8 ]] || complain "only these commands were found: $pages"

# Values of options.
ask "chartbridge render x -d f" file.csv folder
ask "chartbridge tree batch x -o f" folder
ask "chartbridge tree render x -t p" pdf png
ask "chartbridge tree render x --depth f"
ask "chartbridge document export x -t h" htm html
ask "chartbridge render f" file.csv folder

# What the shells offer, a word a line; folders with or without a slash behind them, as they like.
cd "$work/place"

offered_by_bash() (
  # shellcheck source=packaging/completion/chartbridge.bash
  source "$completions/chartbridge.bash"
  while IFS= read -r line; do
    read -r -a COMP_WORDS <<<"$line"
    [[ "$line" != *" " ]] || COMP_WORDS+=("")
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    COMPREPLY=()
    _chartbridge 2>/dev/null
    printf '%s\n' "? $line"
    printf '%s\n' "${COMPREPLY[@]}" | sort -u | sed '/^$/d'
  done
)

offered_by_zsh() {
  zsh -f "$here/complete.zsh" "$completions"
}

# shellcheck disable=SC2016 # for fish
offered_by_fish() {
  HOME="$work" fish --no-config --command 'source $argv[1]/chartbridge.fish
    while read --line line
      printf "%s\n" "? $line"
      complete --do-complete "$line"
    end' "$completions"
}

for shell in bash zsh fish; do
  echo "-- $shell"
  "offered_by_$shell" <"$work/lines" >"$work/$shell" || complain "$shell ends with an error"
  sed -E -i 's/\t.*//; s|/$||' "$work/$shell"
  diff "$work/expected" "$work/$shell" || complain "$shell does not offer (<), or offers too much (>)"
done

echo "-- what the words mean"
description='Draw a tree model, or the overview of an ensemble'
echo 'chartbridge tree re' >"$work/line"
for shell in zsh fish; do
  "offered_by_$shell" <"$work/line" >"$work/described"
  grep -q -x -F "render"$'\t'"$description" "$work/described" ||
    complain "$shell: $(cat "$work/described")"
done

[[ "$failures" -eq 0 ]] || exit 1
echo "PASSED: $(grep -c . <<<"$pages") manual pages, $(wc -l <"$work/lines") completions by three shells"
