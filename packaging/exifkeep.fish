# SPDX-License-Identifier: MIT
# Fish completion of exifkeep: commands, options, and file names.

set -l commands info check version sound languages open save audio
complete -c exifkeep -n "not __fish_seen_subcommand_from $commands" -f -a "$commands"
complete -c exifkeep -n "__fish_seen_subcommand_from languages" -f
complete -c exifkeep -l help -s h
complete -c exifkeep -l color -x -a "auto always never"
complete -c exifkeep -n "not __fish_seen_subcommand_from $commands" -l version
complete -c exifkeep -n "__fish_seen_subcommand_from info" -l lang -x \
  -a "de en es fi fr it ja ko nl pt sv zh-CN zh-TW"
complete -c exifkeep -n "__fish_seen_subcommand_from info" -l json-lines
complete -c exifkeep -n "__fish_seen_subcommand_from info" -l csv
complete -c exifkeep -n "__fish_seen_subcommand_from info" -l html
complete -c exifkeep -n "__fish_seen_subcommand_from info" -l output -s o -r
complete -c exifkeep -n "__fish_seen_subcommand_from info" -l tag -x
complete -c exifkeep -n "__fish_seen_subcommand_from info" -l gps
complete -c exifkeep -n "__fish_seen_subcommand_from info" -l recursive -s r
complete -c exifkeep -n "__fish_seen_subcommand_from info" -l jobs -s j -x
complete -c exifkeep -n "__fish_seen_subcommand_from info check version sound languages" -l json
complete -c exifkeep -n "__fish_seen_subcommand_from info check version sound" -l null -s 0
complete -c exifkeep -n "__fish_seen_subcommand_from open" -l image -r
complete -c exifkeep -n "__fish_seen_subcommand_from open save audio" -l thumbnail -r
complete -c exifkeep -n "__fish_seen_subcommand_from open save audio" -l damaged
complete -c exifkeep -n "__fish_seen_subcommand_from save audio" -l picture -r
complete -c exifkeep -n "__fish_seen_subcommand_from save audio" -l yes
complete -c exifkeep -n "__fish_seen_subcommand_from save" -l process -x -a "2 3 4 5 6"
complete -c exifkeep -n "__fish_seen_subcommand_from save" -l keep-time
complete -c exifkeep -n "__fish_seen_subcommand_from audio" -l sound -r
complete -c exifkeep -n "__fish_seen_subcommand_from audio" -l software -x
