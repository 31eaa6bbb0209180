# SPDX-License-Identifier: MIT
# Bash completion of exifkeep: commands, options, and file names.

_exifkeep_languages="de en es fi fr it ja ko nl pt sv zh-CN zh-TW"

# The values of an option that takes one of a few; false for any other.
_exifkeep_choices() {
  case $1 in
    --color) echo auto always never ;;
    --lang) echo "$_exifkeep_languages" ;;
    --process) echo 2 3 4 5 6 ;;
    --software | --tag | --jobs | -j) ;;
    *) return 1 ;;
  esac
}

_exifkeep_options() {
  case $1 in
    info) echo --lang --json --json-lines --csv --html --output -o --tag --gps --recursive -r --jobs -j --null -0 ;;
    check | version | sound) echo --json --null -0 ;;
    languages) echo --json ;;
    open) echo --image --thumbnail --damaged ;;
    save) echo --picture --thumbnail --process --damaged --keep-time --yes ;;
    audio) echo --sound --software --picture --thumbnail --damaged --yes ;;
  esac
  echo --color --help -h
}

_exifkeep() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} words= prefix= command=1
  # Of --lang=de bash makes three words, zsh one.
  [ "$before" = "=" ] && before=${COMP_WORDS[COMP_CWORD - 2]}
  [ "$word" = "=" ] && word=
  if [[ $word == --*=* ]]; then
    before=${word%%=*} prefix=${word%%=*}= word=${word#*=}
  fi
  # The command follows --color, of which bash makes one to three words with its value.
  while [[ ${COMP_WORDS[command]} == --color* ]]; do
    [[ ${COMP_WORDS[command]} == *=* ]] || command=$((command + 1))
    [ "${COMP_WORDS[command]}" = "=" ] && command=$((command + 1))
    command=$((command + 1))
  done
  if [ "$COMP_CWORD" -eq "$command" ]; then
    words="info check version sound languages open save audio --color --help -h --version"
  elif ! words=$(_exifkeep_choices "$before"); then
    # Without words of its own the shell completes file names.
    [[ $word == -* ]] && words=$(_exifkeep_options "${COMP_WORDS[command]}")
  fi
  # Not with mapfile, which zsh lacks.
  COMPREPLY=($(compgen -P "$prefix" -W "$words" -- "$word"))
}

complete -o default -F _exifkeep exifkeep
