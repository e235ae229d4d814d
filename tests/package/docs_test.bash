#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Makes the documentation: the reference without a warning of doxygen, no link that leads nowhere, no
# picture older than its source, every subcommand described.
#   docs_test.bash SOURCE_FOLDER VERSION DOXYFILE COMMAND
set -euo pipefail
export LC_ALL=C.UTF-8

source_dir="$1"
version="$2"
doxyfile="$3"
command="$4"

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

fail() {
  echo "FAILED: $*" >&2
  exit 1
}

echo "-- pictures"
"$source_dir/docs/site/make-pictures" --check

echo "-- pages"
"$source_dir/docs/site/make-site" "$source_dir" "$version" "$work/site"
grep -q '<h2 id="what-it-does">' "$work/site/index.html" || fail "no front page"

echo "-- reference"
{ cat "$doxyfile"; echo "OUTPUT_DIRECTORY = \"$work/site\""; } >"$work/Doxyfile"
doxygen "$work/Doxyfile" || fail "doxygen complains"
grep -q 'RenderToFileHeadless' "$work/site/api/classViZEditor.html" || fail "no reference"
grep -q 'jniguard_install' "$work/site/api/jniguard_8h.html" || fail "no functions in the reference"
for header in "$work"/site/api/*_8h_source.html; do
  [[ -f "${header%_source.html}.html" ]] ||
    fail "the reference leaves $(basename "$header" _8h_source.html).h out; see docs/api/structure.dox"
done

echo "-- links"
"$source_dir/docs/site/check-links" "$work/site" || fail "dead links"

echo "-- subcommands"
# leaves WORD...: the subcommands that do something, a line each.
leaves() {
  local help names name
  help="$("$command" "$@" --help)"
  names="$(sed -n '/^Subcommands:/,/^$/p' <<<"$help" | sed -n -E 's/^  ([a-z]+) .*/\1/p')"
  if [[ -z "$names" ]]; then
    echo "chartbridge $*"
    return
  fi
  for name in $names; do leaves "$@" "$name"; done
}
leaves >"$work/leaves"
[[ "$(wc -l <"$work/leaves")" -ge 7 ]] || fail "too few subcommands: $(cat "$work/leaves")"
while read -r leaf; do
  grep -q -F -- "$leaf " "$source_dir/docs/command.md" || fail "docs/command.md lacks \"$leaf\""
done <"$work/leaves"

echo "PASSED"
