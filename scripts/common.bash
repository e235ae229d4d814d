# SPDX-License-Identifier: Apache-2.0
#
# What the scripts share. Sourced, never run.
# shellcheck shell=bash
set -euo pipefail

project_dir="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
script_name="$(basename "$0")"
cd "$project_dir"

# Prints a progress line.
say() {
  printf '%s: %s\n' "$script_name" "$*"
}

# Prints the reason and ends the script.
die() {
  printf '%s: %s\n' "$script_name" "$*" >&2
  exit 1
}

# run_quietly WHAT COMMAND...: says WHAT, runs the command, and shows its output only when it fails.
run_quietly() {
  local what="$1" log
  shift
  say "$what"
  log="$(mktemp)"
  if ! "$@" >"$log" 2>&1; then
    cat "$log" >&2
    rm -f "$log"
    die "failed: $what ($*)"
  fi
  rm -f "$log"
}

# build PRESET TARGET...: configures and builds; without a target, everything.
build() {
  local preset="$1" targets=()
  shift
  if [[ $# -gt 0 ]]; then targets=(--target "$@"); fi
  run_quietly "configuring ($preset)" cmake --preset "$preset"
  run_quietly "building ($preset)" cmake --build --preset "$preset" "${targets[@]}"
}
