#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds libjpeg-turbo, libpng and libtiff once as static libraries in build/fuzz-codecs, with the
# instrumentation of the preset `fuzz`; takes about two minutes. The preset uses them if it is
# configured afterwards. Needs the packages that ./test installs.
set -euo pipefail
root=$(dirname -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")")
. "$root/scripts/codec_sources.sh"

prefix=$root/build/fuzz-codecs
work=$prefix/work

# build PACKAGE OPTION...
build() {
  local package=$1 launcher=()
  shift
  if command -v ccache >/dev/null; then launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache); fi
  cmake -S "$sources/$package" -B "$work/$package" -G Ninja -DCMAKE_BUILD_TYPE=None \
    -DCMAKE_C_COMPILER=clang-14 -DCMAKE_POSITION_INDEPENDENT_CODE=ON \
    -DCMAKE_C_FLAGS="-O1 -g -fno-omit-frame-pointer -fsanitize=fuzzer-no-link,address,undefined \
      -fno-sanitize=alignment -fno-sanitize-recover=all -Wno-error" \
    -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_INSTALL_LIBDIR="$prefix/lib" -DCMAKE_PREFIX_PATH="$prefix" \
    "${launcher[@]}" "$@"
  cmake --build "$work/$package"
  cmake --install "$work/$package"
}

# Without libjpeg-turbo's assembler, which cannot be instrumented. The formats disabled in libtiff
# are never passed to it. libtiff's misaligned loads are known, and harmless on x86.
build_all() {
  build libjpeg-turbo -DENABLE_SHARED=OFF -DWITH_TURBOJPEG=OFF -DWITH_SIMD=OFF
  build libpng1.6 -DPNG_SHARED=OFF -DPNG_TESTS=OFF -DPNG_EXECUTABLES=OFF
  build tiff -DBUILD_SHARED_LIBS=OFF -Dcxx=OFF -Djbig=OFF -Dlerc=OFF -Dlzma=OFF -Dzstd=OFF \
    -Dwebp=OFF -Dlibdeflate=OFF -Dtiff-tools=OFF -Dtiff-tests=OFF -Dtiff-contrib=OFF -Dtiff-docs=OFF
  rm -rf "$work"
}

mkdir -p "$prefix"
exec {lock}>"$prefix/lock"
flock "$lock"
[ -f "$prefix/complete" ] && exit 0
echo "Building the picture codecs for the fuzzers" >&2
log=$prefix/log
exec 3>&2 >"$log" 2>&1
trap '[ $? -eq 0 ] || tail -n 60 "$log" >&3' EXIT
fetch_codecs
build_all
touch "$prefix/complete"
