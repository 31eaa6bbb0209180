# SPDX-License-Identifier: MIT
# Configures, builds and tests a preset. Sourced by ./run and ./test; `root` is the checkout.

# show_progress NAME: shows the progress of the build whose output it reads: in one line on a terminal,
# otherwise a line for each quarter. Prints nothing if nothing had to be built.
show_progress() {
  local name=$1 line quarter=0 shown=
  while IFS= read -r line; do
    [[ $line =~ ^\[([0-9]+)/([0-9]+)\] ]] || continue
    local built=${BASH_REMATCH[1]} all=${BASH_REMATCH[2]}
    if [ -t 2 ]; then
      printf '\rBuilding %s: %s of %s\e[K' "$name" "$built" "$all" >&2
      shown=yes
    elif [ $((4 * built / all)) -gt "$quarter" ]; then
      quarter=$((4 * built / all))
      echo "Building $name: $built of $all" >&2
    fi
  done
  if [ -n "$shown" ]; then printf '\r\e[K' >&2; fi
}

# build_preset PRESET [TARGET]: shows the output of the build only if it fails.
build_preset() {
  local preset=$1 target=${2:-all} log=$root/build/$1.log
  if command -v ccache >/dev/null; then export CMAKE_CXX_COMPILER_LAUNCHER=ccache; fi
  if [ ! -f "$root/build/$preset/build.ninja" ]; then
    echo "Configuring $preset" >&2
    (cd "$root" && cmake --preset "$preset") >"$log" 2>&1 || { cat "$log" >&2; return 1; }
  fi
  cmake --build "$root/build/$preset" --target "$target" 2>&1 | tee "$log" | show_progress "exifkeep ($preset)" &&
    return 0
  cat "$log" >&2
  return 1
}

# run_tests PRESET: and why those did not run that were skipped.
run_tests() {
  local build=$root/build/$1
  ctest --test-dir "$build" -j"$(nproc)" --output-on-failure --no-tests=error || return 1
  awk '/^[0-9]+\/[0-9]+ Testing: / { name = $3 }
       /: Skipped$/ { getline; print "skipped: " name ": " $0 }
       sub(/^skipped: /, "") { print "skipped: " name ": " $0 }' \
    "$build/Testing/Temporary/LastTest.log" | sort -u
}
