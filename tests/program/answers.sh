#!/bin/sh
# SPDX-License-Identifier: MIT
# Common to all commands: exit statuses, output and messages, names from standard input, usage
# errors, and standard streams that are closed or full.
. "$(dirname "$0")/../checks.sh"

seed pixels_8 >exif.jpg
seed fields_jpeg_ii >sound.jpg
printf '\377\330\377\331' >plain.jpg
mkdir folder.jpg
mkfifo fifo.jpg
listed='exif.jpg: Exif file'
both="$listed\nsound.jpg: Exif file"

# The status is the highest of all files.
answers 1 "plain.jpg: not an Exif file\n$listed" '"$E" check plain.jpg exif.jpg'
same messages '' "$(cat err)"
answers 3 "plain.jpg: not an Exif file\n$listed" '"$E" check gone.jpg plain.jpg exif.jpg'
answers 0 'exif.jpg: 2.1' '"$E" version exif.jpg'
answers 0 'sound.jpg: SOUND001.WAV' '"$E" sound sound.jpg'
answers 1 'exif.jpg: no recording' '"$E" sound exif.jpg'
for command in 'check /dev/zero' 'open folder.jpg' 'audio fifo.jpg'; do
  complains 3 . '"$E" '"$command"
done

# Wrong usage does nothing.
complains 2 'FILE is required' '"$E" check'
complains 2 'de, en, es, fi, fr, it, ja, ko, nl, sv' '"$E" info --lang tlh exif.jpg'
complains 2 'always or never' '"$E" check --color red exif.jpg'
complains 2 'not expected: never --colour' '"$E" --colour never check exif.jpg'
complains 2 '2 to 6' '"$E" save exif.jpg new.jpg --process 7'
complains 2 'not to standard output' '"$E" save exif.jpg -'
complains 2 'need a folder' '"$E" save exif.jpg sound.jpg new.jpg'
complains 2 'not to standard output' '"$E" open exif.jpg --image -'
complains 2 '\.wav, \.WAV or \.Wav' '"$E" audio exif.jpg --sound note.mp3'
complains 2 255 '"$E" audio exif.jpg --software "$(printf %256s x)"'

for arguments in '' --help 'audio -h'; do
  ends 0 '"$E" '"$arguments"
  shows "help $arguments" "$(cat out)" Example
  same 'messages of help' '' "$(cat err)"
done
shows version "$("$E" --version)" '^exifkeep '

# Names from standard input.
cp exif.jpg './two
lines.jpg'
cp exif.jpg ./-0.jpg
: >'[a]'
answers 0 "$both" 'printf "exif.jpg\n\nsound.jpg" | "$E" check -'
answers 0 "$both" 'printf "exif.jpg\0" | "$E" check --null - sound.jpg'
answers 0 "two\\\\nlines.jpg: Exif file\n$listed" \
  'printf "two\nlines.jpg\0exif.jpg\0" | "$E" check -0'
answers 0 "$listed\n-0.jpg: Exif file" '"$E" check exif.jpg -- -0.jpg'
answers 3 '[a]: not an Exif file' '"$E" check "[a]" check'
complains 3 . '"$E" check - < .'
complains 3 'standard input: holds a picture' '"$E" info - <sound.jpg'
complains 3 'standard input: holds a picture' 'printf "MM\0*" | "$E" info -'
complains 1 'misspelt: no picture has' '"$E" info --tag misspelt exif.jpg'
answers 0 "$listed" '"$E" --color never check exif.jpg'

# The language is that of the tag, or else of the environment.
maker='メーカー名 +Maker'
shows --lang "$("$E" info --lang ja sound.jpg)" "$maker"
shows LANGUAGE "$(LANGUAGE=de "$E" info sound.jpg)" '^Hersteller +Maker'
shows LANGUAGE "$(LC_ALL=fi_FI.UTF-8 LANGUAGE=xx:nl "$E" info sound.jpg)" '^Fabrikant '
shows JSON "$(LC_ALL=ja_JP.eucJP "$E" info --json sound.jpg)" メーカー名
shows languages "$("$E" languages)" '^zh-TW +繁體中文$'

# Names arrive whole and in order, however they are read and whichever job takes them.
seq 1200 | sed 's/.*5$/sound.jpg/' >names
"$E" check - <names 2>&1 | sed 's/^exifkeep: //; s/:.*//' | cmp - names || fail 'check - <names'
for form in --json --json-lines --csv --gps; do
  for jobs in 1 3; do "$E" info $form -j $jobs - <names >out$jobs 2>err$jobs; done
  [ -s out3 ] && cmp out1 out3 && cmp err1 err3 || fail "info $form -j 3"
done
ends 3 '"$E" info --json-lines -j 3 exif.jpg exif.jpg exif.jpg >/dev/full'

# A picture's object is the same whatever was written before it.
body=$("$E" info --json sound.jpg | sed '1d;$d')
array=$("$E" info --json -j 1 sound.jpg exif.jpg sound.jpg | sed '1d;$d')
case $array in "$body,"*",
$body") ;; *) fail 'info --json of a picture listed before' ;; esac
[ "$("$E" info --json-lines -j 1 sound.jpg exif.jpg sound.jpg | sort -u | wc -l)" = 2 ] ||
  fail 'info --json-lines of a picture listed before'

# Failure to write output is reported, unless the reader has closed the pipe. The FIFO makes sure
# that it has.
for arguments in 'check exif.jpg >/dev/full' 'info --json exif.jpg >/dev/full' \
  'info exif.jpg >&-' '--help >&-'; do
  complains 3 'standard output' '"$E" '"$arguments"
done
ends 0 'mkfifo gate; { read _ <gate; "$E" info exif.jpg; echo $? >&2; } | { exec <&-; echo >gate; }'
same 'a reader who has gone' 3 "$(cat err)"

command -v script >/dev/null || { echo "skipped: no terminal to be had"; exit $failures; }
typed() {
  TERM=xterm script -qec "$1" typescript </dev/null
}
escape=$(printf '\033')
# Colour needs a terminal and consent.
for command in '$E check exif.jpg' 'NO_COLOR=1 $E check exif.jpg --color always | cat' \
  'NO_COLOR= $E info --color auto exif.jpg'; do
  shows "$command" "$(typed "$command")" "$escape\["
done
for command in 'NO_COLOR=1 $E check exif.jpg' 'TERM=dumb $E check gone.jpg' \
  '$E check --color never exif.jpg'; do
  shows "$command" "$(typed "$command")" "!$escape\["
done
# The progress of many files appears after half a second, is erased before messages and erased at
# the end.
slowly='{ echo exif.jpg; sleep 0.6; echo exif.jpg; sleep 0.2; echo gone; }'
clear=$(printf '\r\033[K')
shown=$(typed "$slowly | \$E check --color never - >answers")
case $shown in
  *"${clear}2 files${clear}exifkeep: gone: No such"*[!s]) ;;
  *) fail "progress: $shown" ;;
esac
same 'answers of a batch' "$(printf '%b' "$listed\n$listed")" "$(cat answers)"
shows 'a batch into a pipe' "$(typed "$slowly | \$E check - | cat")" '!files'
exit $failures
