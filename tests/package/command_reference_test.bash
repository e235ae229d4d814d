#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Every subcommand and every option that --help names is in the manual pages and in the completion,
# and nothing else is.
#   command_reference_test.bash COMMAND MANUAL_FOLDER COMPLETION
set -euo pipefail
export LC_ALL=C.UTF-8

command="$1"
manual="$2"
completion="$3"

failures=0
complain() {
  echo "FAILED: $*" >&2
  failures=$((failures + 1))
}

# The completion runs the command by the name on the command line.
PATH="$(dirname "$command"):$PATH"
# shellcheck source=packaging/completion/chartbridge.bash
source "$completion"

# completed WORD...: what the completion offers for the last word, in order.
completed() {
  COMP_WORDS=(chartbridge "$@")
  COMP_CWORD=$#
  COMPREPLY=()
  _chartbridge 2>/dev/null
  printf '%s\n' "${COMPREPLY[@]}" | sort -u
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
  local name="chartbridge" help page word option
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
  [[ "$(options "$help")" == "$(completed "$@" --)" ]] ||
    complain "$* --: completed are $(completed "$@" -- | tr '\n' ' ')"
  [[ -z "$(subcommands "$help")" || "$(subcommands "$help")" == "$(completed "$@" "")" ]] ||
    complain "$*: completed are $(completed "$@" "" | tr '\n' ' ')"
  while read -r word; do
    [[ -z "$word" ]] || check "$@" "$word"
  done < <(subcommands "$help")
}

check
[[ "$(sort <<<"${pages%$'\n'}")" == "$(cd "$manual" && ls)" ]] ||
  complain "manual pages of no command: $(comm -13 <(sort <<<"$pages") <(cd "$manual" && ls))"
[[ "$(wc -l <<<"$pages")" -ge 8 ]] || complain "only these commands were found: $pages"

echo "-- values of options"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
cd "$work"
mkdir folder
touch file.csv
[[ "$(completed render x -d f)" == $'file.csv\nfolder' ]] || complain "files of render -d"
[[ "$(completed tree batch x -o f)" == folder ]] || complain "folders of tree batch -o"
[[ "$(completed tree render x -t p)" == $'pdf\npng' ]] || complain "formats of tree render -t"
[[ -z "$(completed tree render x --depth f)" ]] || complain "numbers of tree render --depth"
[[ "$(completed document export x -t h)" == $'htm\nhtml' ]] || complain "formats of document export -t"
[[ "$(completed render f)" == $'file.csv\nfolder' ]] || complain "files of render"

[[ "$failures" -eq 0 ]] || exit 1
echo "PASSED: $(grep -c . <<<"$pages") manual pages"
