#!/bin/sh
# SPDX-License-Identifier: MIT
# The commands that decode and write pictures: open, save and audio.
. "$(dirname "$0")/../checks.sh"

# STATUS COMMAND PATTERN...: the patterns must match the output of both streams.
runs() {
  ends "$1" "$2"
  command=$2
  shift 2
  shows "$command" "$(cat out err)" "$@"
}
made='^exif\.jpg: exif\.wav$'
seed kind_png31 >edited.png  # 27 x 21 pixels, 24 bits
seed fields_with_picture_ii >exif.jpg
seed saved_plain_jpeg >plain.jpg
mkdir sounds
echo new >sounds/note.wav

# Saves say whether metadata was kept.
runs 0 '"$E" save exif.jpg new.jpg --picture edited.png' 'new.jpg: saved with the Exif data of exif'
runs 0 '"$E" info new.jpg' 'Make +Maker' 'Software +Software'
runs 0 '"$E" open new.jpg' '^image      27 x 21 pixels, 24 bits' '^thumbnail  160 x 120'
runs 3 '"$E" save exif.jpg new.jpg' 'new.jpg: exists; --yes'
touch -d '2002-05-14 10:20:30' exif.jpg
mkdir to
runs 0 '"$E" save --keep-time --yes exif.jpg new.jpg to'
runs 3 '"$E" save --yes new.jpg ./new.jpg to' 'new.jpg: not saved: another picture of this name'
same 'time of a saved file' "$(stat -c %Y exif.jpg)" "$(stat -c %Y to/exif.jpg)"
runs 0 '"$E" check to/new.jpg && "$E" save exif.jpg copy.jpg && "$E" save exif.jpg copy.jpg --yes'
runs 0 '"$E" save exif.jpg turned.jpg --process 2 && "$E" info turned.jpg' 'Software +Vexapict'
runs 0 '"$E" save exif.jpg new.png' 'saved without Exif data'
runs 0 '"$E" save plain.jpg plain2.jpg' 'plain.jpg has none'
answers 1 'plain2.jpg: not an Exif file' '"$E" check plain2.jpg'

# Lost rows are written on request only.
head -c -60 new.jpg >cut.jpg
runs 0 '"$E" open cut.jpg' ' rows lost'
for arguments in 'open cut.jpg --image out.png' 'save cut.jpg out.jpg' \
  'save exif.jpg out.jpg --picture cut.jpg' 'audio cut.jpg'; do
  runs 3 '"$E" '"$arguments" 'of 21 rows are lost; --damaged'
  [ ! -e out.jpg ] || fail "out.jpg is there after $arguments"
  runs 0 '"$E" '"$arguments --damaged" 'cut.jpg: damaged: '
  rm -f out.jpg
done

runs 0 '"$E" open exif.jpg' '^image      8 x 8 pixels, 24 bits' '^thumbnail  none$'
runs 0 '"$E" save exif.jpg both.jpg --thumbnail edited.png'
runs 0 '"$E" open both.jpg --image image.png --thumbnail small.tif'
shows formats "$(head -c 3 small.tif) $(head -c 4 image.png | tail -c 3)" '^II\* PNG$'

# What fails leaves nothing.
mkdir folder.jpg
printf old >old.tif
before=$(ls)
runs 3 '"$E" open exif.jpg --image folder.jpg' 'Is a directory'
runs 3 'trap "" XFSZ; ulimit -f 1; "$E" open new.jpg --image old.tif'
same old.tif old "$(cat old.tif)"
runs 3 '"$E" save exif.jpg absent.jpg --picture gone.png'
runs 3 '"$E" open exif.jpg --thumbnail small.png' 'no thumbnail'
runs 3 '"$E" open exif.jpg --image ./exif.jpg' itself
runs 3 '"$E" open exif.jpg --image image.xyz' 'jpg, jpeg, jpe, tif'
runs 1 '"$E" open plain.jpg --image plain.png'
for page in absent/page.html plain.jpg . /dev/full old.tif; do
  runs 3 'trap "" XFSZ; ulimit -f 1; "$E" info --html new.jpg -o '"$page"
done
same old.tif old "$(cat old.tif)"
# A regular file whose first byte cannot be read.
runs 3 '"$E" save /proc/self/mem absent.jpg' 'read: Input/output error; no'
same files "$before" "$(ls)"

answers 0 'exif.jpg: note.wav' '"$E" audio exif.jpg --sound sounds/note.wav --software "My Album"'
same note.wav new "$(cat note.wav)"
answers 0 'exif.jpg: note.wav' '"$E" sound exif.jpg'
runs 0 '"$E" info exif.jpg' Maker 'My Album'
runs 0 '"$E" audio exif.jpg' "$made"
# Given an image, the picture itself need not be one that can be decoded.
seed fields_jpeg_ii >exif.jpg
runs 3 '"$E" audio exif.jpg'
runs 0 '"$E" audio exif.jpg --picture edited.png' "$made"
# A plain picture becomes a JPEG file beside it.
printf "somebody's" >edited.jpg
runs 3 '"$E" audio edited.png' 'edited.jpg: exists'
same edited.jpg "somebody's" "$(cat edited.jpg)"
answers 0 'edited.jpg: edited.wav' '"$E" audio edited.png --yes'
answers 0 'edited.jpg: edited.wav' '"$E" sound edited.jpg'

# What is not kept is named: here a comment after the Exif segment.
for arguments in 'save comment.jpg comment.jpg' 'audio comment.jpg'; do
  python3 -c 'bytes = open("exif.jpg", "rb").read(); end = 4 + int.from_bytes(bytes[4:6], "big")
open("comment.jpg", "wb").write(bytes[:end] + b"\xFF\xFE\0\7hello" + bytes[end:])'
  runs 0 '"$E" '"$arguments --picture edited.png" 'not kept: comment$'
done

# A recording is replaced when somebody agrees; without a terminal there is nobody to ask.
printf old >note.wav
cp exif.jpg before.jpg
runs 3 'yes | "$E" audio exif.jpg --sound sounds/note.wav' --yes
same note.wav old "$(cat note.wav)"
cmp exif.jpg before.jpg || fail 'the picture is another'
attach='"$E" audio exif.jpg --picture edited.png --sound sounds/note.wav'
runs 0 "$attach --yes"
same note.wav new "$(cat note.wav)"
command -v script >/dev/null || { echo "skipped: no terminal to be had"; exit $failures; }
printf old >note.wav
runs 3 "echo no | script -qec '$attach' typed" 'note.wav exists\. Overwrite it\? \[y/N\]'
same note.wav old "$(cat note.wav)"
runs 0 "echo yes | script -qec '$attach' typed"
same note.wav new "$(cat note.wav)"
exit $failures
