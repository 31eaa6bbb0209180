#!/bin/sh
# SPDX-License-Identifier: MIT
# Checks that the program's help, manual page and bash completion have the same commands and
# options, and that links are valid.
. "$(dirname "$0")/../checks.sh"

# The words of a section of a command's help, one per line.
help_words() {
  "$E" $1 --help | sed -n "/^$2:\$/,/^\$/p"
}
long_options() {
  tr ', ' '\n\n' | grep '^--' | sort -u | xargs
}
# The completions that bash offers after `$1` for the word `$2`.
completions() {
  bash -c '. "$SOURCE/packaging/exifkeep.bash"; COMP_WORDS=('"$1"' "'"$2"'")
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _exifkeep; echo "${COMPREPLY[@]}"' 2>&1
}

manual=$(tr -d '\\' <"$SOURCE/packaging/exifkeep.1")
fish=$(cat "$SOURCE/packaging/exifkeep.fish")
commands=$(help_words '' Commands | awk 'NR > 1 && NF { print $1 }')
[ "$(echo "$commands" | wc -l)" -ge 8 ] || fail "commands: $commands"
for command in $commands; do
  shows manual "$manual" "^\.B $command\$"
  shows completion "$(completions exifkeep '' | tr ' ' '\n')" "^$command\$"
  options=$(help_words "$command" Options | long_options)
  shows "$command" "$options" '--help( |$)'
  same "$command's completion" "$options" "$(completions "exifkeep $command" - | long_options)"
  for option in $options; do
    shows manual "$manual" "^\.B[RI]? .*$option([ \"]|\$)"
    shows fish "$fish" " -l ${option#--}( |\$)"
  done
done
same completion "$(help_words '' Options | long_options)" \
  "$(completions exifkeep - | long_options)"

languages=$(completions 'exifkeep info --lang' '')
same languages "$("$E" languages | awk '{ print $1 }' | sort | xargs)" \
  "$(echo "$languages" | tr ' ' '\n' | sort | xargs)"
same '--lang =' "$languages" "$(completions 'exifkeep info --lang' =)"
same 'after --color' "$(completions exifkeep '')" "$(completions 'exifkeep --color = auto' '')"
same '--lang=d' de "$(completions 'exifkeep info --lang =' d)"

# Links in the repository's documents must lead to existing files.
for document in "$SOURCE"/*.md "$SOURCE"/docs/*.md "$SOURCE"/fuzz/*.md; do
  for link in $(grep -o ']([^)]*)' "$document" | sed 's/^](\(.*\))$/\1/' | grep -v '^http'); do
    [ -e "$(dirname "$document")/$link" ] || fail "$document: $link"
    links=$((${links:-0} + 1))
  done
done
[ "${links:-0}" -gt 8 ] || fail "only ${links:-0} links"
exit $failures
