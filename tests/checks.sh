# SPDX-License-Identifier: MIT
# Sourced by test scripts: creates a folder to work in and defines checks that count failures. "$E"
# is the program.
export LC_ALL=C.UTF-8
unset LANGUAGE LC_MESSAGES LC_CTYPE
failures=0
export folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder" || exit 1

fail() {
  echo "FAILED: $*"
  failures=$((failures + 1))
}
# WHAT EXPECTED FOUND
same() {
  [ "$2" = "$3" ] || fail "$1: expected '$2', found '$3'"
}
# WHAT TEXT PATTERN...: the text must match every pattern, and must not match one that follows '!'.
shows() {
  what=$1 text=$2
  shift 2
  for pattern; do
    case $pattern in
      !*) ! printf '%s\n' "$text" | grep -qE -e "${pattern#!}" || fail "$what shows ${pattern#!}" ;;
      *) printf '%s\n' "$text" | grep -qE -e "$pattern" || fail "$what: no $pattern in $text" ;;
    esac
  done
}
# STATUS COMMAND: stores the output in `out` and `err`.
ends() {
  sh -c "$2" >out 2>err </dev/null
  same "status of $2" "$1" $?
}
# STATUS OUTPUT COMMAND: the output has escapes as for printf.
answers() {
  ends "$1" "$3"
  same "$3" "$(printf '%b' "$2")" "$(cat out)"
}
# STATUS PATTERN COMMAND: the pattern must match standard error, and standard output must be empty.
complains() {
  ends "$1" "$3"
  same "$3" '' "$(cat out)"
  shows "$3" "$(cat err)" "$2"
}
# A picture from the fuzzers' corpus.
seed() {
  tail -c +2 "$SOURCE/fuzz/corpus/$1"
}
