#!/usr/bin/env bash
# compile_for_windows.sh SOURCES OBJECTS: compiles the library, the framework and the raster against
# the real Windows headers; platform/windows takes the place of platform/posix. Nothing is linked. Status 77
# when the cross compiler is not installed.
set -euo pipefail
cd -- "$1"
objects=$2
compiler=x86_64-w64-mingw32-g++-posix  # the other variant has no std::mutex
if ! command -v "$compiler" >/dev/null; then
  echo "skipped: no $compiler"
  exit 77
fi

launcher=$(command -v ccache || true)
mkdir -p "$objects"

compile() {
  $launcher "$compiler" -std=c++20 -Wall -Wextra -Wpedantic -Werror -Isrc -Iinclude \
    -Iplatform/windows -Iplatform/framework -Iplatform/raster -Iplatform/codec -c -o "$objects/${1//\//_}.o" "$1"
}
export -f compile
export launcher compiler objects

printf '%s\0' src/*/*.cpp platform/windows/*.cpp platform/framework/*.cpp platform/raster/*.cpp |
  xargs -0 -P "$(nproc)" -I{} bash -c 'compile {}'
