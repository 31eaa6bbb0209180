#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds libjpeg-turbo, libpng and libtiff for Windows once as static libraries, from Debian's
# sources with Debian's patches, in build/windows-codecs/PROCESSOR (x86_64, the default, or i686);
# takes about three minutes. zlib is from Debian's package for MinGW-w64.
#
#   scripts/windows_codecs.sh [PROCESSOR]
set -euo pipefail
root=$(dirname -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")")
. "$root/scripts/packages.sh"
. "$root/scripts/codec_sources.sh"

processor=${1:-x86_64}
codecs=$root/build/windows-codecs
prefix=$codecs/$processor
work=$codecs/work-$processor

# install_zlib: only the static library, so that the linker does not use the DLL.
install_zlib() {
  local mingw=/usr/$processor-w64-mingw32
  mkdir -p "$prefix/include" "$prefix/lib" "$prefix/licences"
  cp "$mingw/include/zlib.h" "$mingw/include/zconf.h" "$prefix/include"
  cp "$mingw/lib/libz.a" "$prefix/lib"
  cp /usr/share/doc/libz-mingw-w64-dev/copyright "$prefix/licences/zlib"
}

# build PACKAGE OPTION...
build() {
  local package=$1 launcher=()
  shift
  if command -v ccache >/dev/null; then launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache); fi
  cmake -S "$sources/$package" -B "$work/$package" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw.cmake" -DEXIFKEEP_PROCESSOR="$processor" \
    -DCMAKE_INSTALL_PREFIX="$prefix" "${launcher[@]}" "$@"
  cmake --build "$work/$package"
  cmake --install "$work/$package" --strip
}

build_all() {
  install_zlib
  build libjpeg-turbo -DENABLE_SHARED=OFF -DWITH_TURBOJPEG=OFF
  build libpng1.6 -DPNG_SHARED=OFF -DPNG_TESTS=OFF -DPNG_EXECUTABLES=OFF
  build tiff -DBUILD_SHARED_LIBS=OFF -Dcxx=OFF -Djbig=OFF -Dlerc=OFF -Dlzma=OFF -Dzstd=OFF \
    -Dwebp=OFF -Dlibdeflate=OFF -Dtiff-tools=OFF -Dtiff-tests=OFF -Dtiff-contrib=OFF -Dtiff-docs=OFF
  cat "$sources"/libjpeg-turbo/{LICENSE.md,README.ijg} >"$prefix/licences/libjpeg-turbo"
  cp "$sources/libpng1.6/LICENSE" "$prefix/licences/libpng"
  cp "$sources/tiff/LICENSE.md" "$prefix/licences/libtiff"
  rm -rf "$work"
}

mkdir -p "$codecs"
exec {lock}>"$codecs/lock"
flock "$lock"
[ -f "$prefix/complete" ] && exit 0
case $processor in
  x86_64) install_missing "$codecs/packages.log" "${windows_packages[@]}" ;;
  i686) install_missing "$codecs/packages.log" "${windows_packages[@]}" "${windows32_packages[@]}" ;;
  *) echo "usage: $0 [x86_64 | i686]" >&2; exit 2 ;;
esac
echo "Building the picture codecs for Windows ($processor)" >&2
log=$codecs/$processor.log
exec 3>&2 >"$log" 2>&1
trap '[ $? -eq 0 ] || tail -n 60 "$log" >&3' EXIT
fetch_codecs
build_all
touch "$prefix/complete"
