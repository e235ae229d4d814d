# SPDX-License-Identifier: Apache-2.0
#
# Prints what zsh offers at the end of each line that comes in, after "? " and that line: a word or
# WORD<tab>DESCRIPTION a line.
#   zsh -f complete.zsh FOLDER_OF_THE_COMPLETION <LINES
# It types the line and a tab into an interactive zsh on a terminal of its own.
setopt err_exit
zmodload zsh/zpty

folder=$1
work=$(mktemp -d)
trap 'rm -rf $work' EXIT

cat >$work/.zshrc <<RC
unset zle_bracketed_paste
fpath=(${(q)folder} \$fpath)
autoload -U compinit
compinit -u -D
offered=${(q)work}/offered
ended=${(q)work}/ended
RC
cat >>$work/.zshrc <<'RC'
# All that is offered goes through compadd.
compadd() {
  local -a hits descriptions
  local array
  # Those that only ask which words would match.
  if [[ ${(j: :)argv[1,(i)(-|--)]} == *-(O|A|D)* ]]; then
    builtin compadd "$@"
    return
  fi
  if (( $argv[(I)-d] )); then
    array=$argv[$argv[(i)-d]+1]
    descriptions=("${(@P)array}")
  fi
  builtin compadd -A hits -D descriptions "$@"
  local i
  for ((i = 1; i <= $#hits; ++i)); do
    print -r -- "$hits[i]"${descriptions[i]:+$'\t'${descriptions[i]##* -- }} >>$offered
  done
  builtin compadd "$@"
}
end-of-test() { : >$ended; zle kill-whole-line }
zle -N end-of-test
bindkey '^I' complete-word
bindkey '^X' end-of-test
RC

zpty -b shell "exec env TERM=dumb ZDOTDIR=${(q)work} zsh -i"

# Waits until the shell has done all that was typed.
wait_for_end() {
  local i
  for ((i = 0; i < 4000; ++i)); do
    if [[ -e $work/ended ]]; then
      rm $work/ended
      return
    fi
    # What is echoed must be read, or the shell stands still.
    while zpty -r -t shell echoed; do :; done
    sleep 0.05
  done
  print -u 2 "the shell does not answer"
  exit 1
}

# A tab that comes before the line editor does is no completion.
zpty -w -n shell $'\C-x'
wait_for_end
while IFS= read -r line; do
  print -r -- "? $line"
  zpty -w -n shell "$line"$'\t\C-x'
  wait_for_end
  if [[ -e $work/offered ]]; then
    sort -u $work/offered
    rm $work/offered
  fi
done
zpty -d shell
