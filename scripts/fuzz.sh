# SPDX-License-Identifier: MIT
# Fuzzes for a fixed time. Sourced by ./test; `root` is the checkout. Requires a build of the
# preset fuzz.

fuzz_targets=(read open save tiff_save audio)

# fuzz_briefly SECONDS: runs each target on the corpus. Inputs that make a target fail are stored
# in build/fuzz/faults. The limits are generous for busy machines; the seed is fixed.
fuzz_briefly() {
  local seconds=$1 build=$root/build/fuzz target found
  mkdir -p "$build/faults"
  for target in "${fuzz_targets[@]}"; do
    found=$(mktemp -d)
    if ! "$build/fuzz/fuzz_$target" "$found" "$root/fuzz/corpus" -dict="$root/fuzz/exif.dict" \
          -max_total_time="$seconds" -timeout=60 -rss_limit_mb=2048 -max_len=65537 -seed=1 \
          -print_final_stats=1 -artifact_prefix="$build/faults/$target-" \
          >"$build/fuzz_$target.log" 2>&1; then
      cat "$build/fuzz_$target.log" >&2
      rm -rf "$found"
      return 1
    fi
    rm -rf "$found"
    echo "$target: $(sed -n 's/stat::number_of_executed_units: *//p' "$build/fuzz_$target.log") runs"
  done
}
