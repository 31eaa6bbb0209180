#!/bin/sh
# SPDX-License-Identifier: MIT
# Runs the examples.
. "$(dirname "$0")/../checks.sh"

seed fields_with_picture_ii >first.jpg
seed kind_png31 >wide.png  # 27 x 21 pixels
"$E" save first.jpg photo.jpg --picture wide.png 2>log && rm first.jpg || fail "$(cat log)"
shows list_folder "$("$EXAMPLES/list_folder" .)" '^[^ ]*photo.jpg \(Exif 2.2\)$' ': Maker$' \
  '^1 Exif pictures$'
shows README "$("$README_EXAMPLE" photo.jpg)" ': Maker$'
ends 0 '"$EXAMPLES/rotate_and_save" photo.jpg turned.jpg'
shows turned.jpg "$("$E" open turned.jpg; "$E" info turned.jpg)" '^image +21 x 27 pixels' \
  'Make +Maker' 'Row 0 is at the visible top'
mkdir sounds
echo waves >'sounds/Recording at the beach.wav'
answers 0 'photo.jpg: Record01.wav' \
  '"$EXAMPLES/attach_recording" photo.jpg "sounds/Recording at the beach.wav"'
same recording waves "$(cat Record01.wav)"
exit $failures
