#!/bin/sh
# SPDX-License-Identifier: MIT
# The layers of the tree, that is, which folders may include from which. In src/ a layer may
# include from itself and those before it, but only `api` from `info` and `open`. The program and
# the examples are hosts, which may include only public headers and their own. The platform must
# not include the library.
. "$(dirname "$0")/../checks.sh"

cd "$SOURCE" || exit 1
same includes '' "$(grep -r --include='*.h' --include='*.cpp' '^#include ' src platform tools examples |
  awk -F ':#include [<"]' '
    BEGIN {
      count = split("system imageio probe read info open write tiff audio api", layers, " ")
      for (i = 1; i <= count; ++i) rank[layers[i]] = i
    }
    {
      split($1, file, "/")
      split($2, name, "[/>\"]")
      from = file[2]
      to = name[1]
      wrong = to in rank || to == ".." || (file[1] == "platform" && to == "exifkeep")
      if (file[1] == "src")
        wrong = !(from in rank) || (to in rank && to != from && from != "api" &&
                                    (rank[to] > rank[from] || to == "info" || to == "open"))
      if (wrong) print
    }
    END { if (NR < 500) print "only", NR, "found" }')"
exit $failures
