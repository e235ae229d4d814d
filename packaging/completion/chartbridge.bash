# SPDX-License-Identifier: Apache-2.0
# shellcheck shell=bash
#
# Completion of `chartbridge` for bash. The words come from the command's own --help, so that they
# fit the version that is installed.

# _chartbridge_words SECTIONS HELP: the words of an --help: its subcommands, or its options.
_chartbridge_words() {
  local line wanted="$1" section=""
  while IFS= read -r line; do
    if [[ "$line" =~ ^[A-Z].*:$ ]]; then
      section="${line%:}"
    elif [[ "$wanted" == subcommands && "$section" == Subcommands && "$line" =~ ^\ \ ([a-z]+) ]]; then
      printf '%s\n' "${BASH_REMATCH[1]}"
    elif [[ "$wanted" == options && "$section" != Examples ]]; then
      [[ "$line" =~ ^\ \ (-[^\ ]*) ]] && printf '%s\n' "${BASH_REMATCH[1]//,/$'\n'}"
    fi
  done <<<"$2"
}

# _chartbridge_value OPTION HELP: the kind of value that an option takes; nothing for a flag.
_chartbridge_value() {
  local line kind
  while IFS= read -r line; do
    [[ "$line" =~ ^\ \ (-[^\ ]*)\ ([^\ ]+) ]] || continue
    kind="${BASH_REMATCH[2]}"
    [[ ",${BASH_REMATCH[1]}," == *",$1,"* ]] && printf '%s\n' "${kind%%=*}" && return
  done <<<"$2"
}

_chartbridge() {
  local command="${COMP_WORDS[0]}" current="${COMP_WORDS[COMP_CWORD]}"
  local previous="${COMP_WORDS[COMP_CWORD - 1]}"
  local help subcommands path=() index
  COMPREPLY=()
  help="$("$command" --help 2>/dev/null)" || return
  subcommands="$(_chartbridge_words subcommands "$help")"
  for ((index = 1; index < COMP_CWORD; ++index)); do
    [[ -n "$subcommands" ]] || break
    grep -qxF -- "${COMP_WORDS[index]}" <<<"$subcommands" || continue
    path+=("${COMP_WORDS[index]}")
    help="$("$command" "${path[@]}" --help 2>/dev/null)" || return
    subcommands="$(_chartbridge_words subcommands "$help")"
  done

  case "$(_chartbridge_value "$previous" "$help")" in
    "") ;;
    FORMAT)
      # The help names them once: "the format (png, svg, pdf)".
      [[ "$help" =~ format\ \(([a-z0-9,\ ]+)\) ]] || return
      mapfile -t COMPREPLY < <(compgen -W "${BASH_REMATCH[1]//,/ }" -- "$current")
      return
      ;;
    FOLDER)
      compopt -o filenames 2>/dev/null
      mapfile -t COMPREPLY < <(compgen -d -- "$current")
      return
      ;;
    FILE | PATH)
      compopt -o filenames 2>/dev/null
      mapfile -t COMPREPLY < <(compgen -f -- "$current")
      return
      ;;
    # A name or a number, which only the user knows.
    *) return ;;
  esac

  if [[ "$current" == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$(_chartbridge_words options "$help")" -- "$current")
  elif [[ -n "$subcommands" ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$subcommands" -- "$current")
  else
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -- "$current")
  fi
}

complete -F _chartbridge chartbridge
