#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# same_as_here.sh CHECKOUT WINE: has the program that is built for Windows and the one for this
# system list pictures in every language, and save and open them; compares the results byte for
# byte, except the time of saving. The pictures are those of the fuzzers' corpus and, if
# EXIFKEEP_SAMPLES names a folder, those in it.
set -euo pipefail
root=$1 wine=$2
here=$root/build/test/tools/exifkeep/exifkeep
there=$root/build/windows/bin/exifkeep.exe
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export LC_ALL=C.UTF-8
unset LANGUAGE LC_MESSAGES LC_CTYPE

mkdir "$folder/pictures"
# take FILE FIRST: copies the file from byte FIRST on to a name with the extension of its kind.
take() {
  local name extension=jpg
  name=$(basename "$1")
  case $(tail -c "+$2" "$1" | head -c 2) in II | MM) extension=tif ;; esac
  tail -c "+$2" "$1" >"$folder/pictures/${name%.*}.$extension"
}
# The first byte of files in the corpus is only for the fuzzers.
for file in "$root"/fuzz/corpus/{fields,saved}_*; do take "$file" 2; done
for file in ${EXIFKEEP_SAMPLES:+"$EXIFKEEP_SAMPLES"/*}; do take "$file" 1; done
cd "$folder"

on_both() {
  "$here" "$@" >here.out 2>here.err || true
  "$wine" "$there" "$@" >there.out 2>there.err || true
}
compared=0
expect_same() {
  if ! cmp -s "$1" "$2"; then
    echo "$3 differs between the systems:" >&2
    diff -a "$1" "$2" | head -n 10 >&2
    exit 1
  fi
  compared=$((compared + 1))
}
without_times() {
  LC_ALL=C sed -E 's/[0-9]{4}:[0-9]{2}:[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}/time/g' "$1"
}

for language in zh-TW de en es fi fr it ja ko nl sv zh-CN pt; do
  on_both info --lang "$language" pictures/*
  expect_same here.out there.out "the list in $language"
done
[ "$(wc -l <here.out)" -gt 100 ]
for form in --json --json-lines --csv --html; do
  on_both info "$form" -r pictures/
  expect_same here.out there.out "info $form"
done

saved=0
for picture in pictures/*; do
  extension=${picture##*.}
  rm -f saved.* here.saved there.saved
  "$here" save "$picture" "saved.$extension" >/dev/null 2>&1 && mv "saved.$extension" here.saved
  "$wine" "$there" save "$picture" "saved.$extension" >/dev/null 2>&1 &&
    mv "saved.$extension" there.saved
  [ -f here.saved ] || [ -f there.saved ] || continue
  touch here.saved there.saved
  without_times here.saved >here.out
  without_times there.saved >there.out
  expect_same here.out there.out "$picture as saved"
  saved=$((saved + 1))
done
[ "$saved" -gt 3 ] || { echo "only $saved pictures were saved" >&2; exit 1; }
echo "$compared outputs are the same, $saved saved pictures among them"
