# Configuring and building a preset, quietly. Sourced by ./run and ./test; `root` is the checkout.

# build_preset PRESET [TARGET]: shows the build's output only when it fails.
build_preset() {
  local preset=$1 target=${2:-all} log=$root/build/$1.log
  if command -v ccache >/dev/null; then export CMAKE_CXX_COMPILER_LAUNCHER=ccache; fi
  if ! { [ -f "$root/build/$preset/build.ninja" ] || (cd "$root" && cmake --preset "$preset"); } \
        >"$log" 2>&1 ||
     ! cmake --build "$root/build/$preset" --target "$target" >>"$log" 2>&1; then
    cat "$log" >&2
    return 1
  fi
}
