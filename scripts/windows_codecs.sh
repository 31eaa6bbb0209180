#!/usr/bin/env bash
# Builds libjpeg-turbo, libpng and libtiff for Windows as static libraries, from Debian's sources
# with Debian's patches, into build/windows-codecs/PROCESSOR (x86_64, the default, or i686), once;
# takes about three minutes. zlib comes from Debian's package for MinGW-w64, ready-made.
#   scripts/windows_codecs.sh [PROCESSOR]
# apt fetches the sources by a list of its own: nothing of the machine's configuration is changed.
set -euo pipefail
root=$(dirname -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")")
. "$root/scripts/packages.sh"

processor=${1:-x86_64}
codecs=$root/build/windows-codecs
sources=$codecs/sources
prefix=$codecs/$processor
work=$codecs/work-$processor

# The machine's own Debian archives, as archives of sources.
list_source_archives() {
  local list
  for list in /etc/apt/sources.list.d/debian.sources /etc/apt/sources.list; do
    [ -s "$list" ] || continue
    case $list in
      *.sources) sed 's/^Types:.*/Types: deb-src/' "$list" >"$sources/archives.sources" ;;
      *) sed -n 's/^deb /deb-src /p' "$list" >"$sources/archives.list" ;;
    esac
    return 0
  done
  echo "No list of Debian's archives was found" >&2
  return 1
}

with_source_archives() {
  local command=$1
  shift
  "$command" -o Dir::Etc::SourceList="$(echo "$sources"/archives.*)" \
    -o Dir::Etc::SourceParts=/dev/null -o Dir::State::Lists="$sources/lists" \
    -o Dir::Cache="$sources/cache" -o APT::Sandbox::User=root "$@"
}

# fetch PACKAGE: unpacks the newest version that the archives hold whole into sources/PACKAGE. The
# list of a security archive may name a version that the archive itself does not have any more.
fetch() {
  local package=$1 version
  [ -d "$sources/$package" ] && return 0
  for version in $(with_source_archives apt-cache showsrc --only-source "$package" |
                   sed -n 's/^Version: //p' | sort -rVu); do
    with_source_archives apt-get source --download-only --only-source "$package=$version" || continue
    dpkg-source --no-check -x "${package}_${version#*:}.dsc" "$package.part" || return 1
    mv "$package.part" "$package"
    return 0
  done
  echo "No whole source package of $package was found" >&2
  return 1
}

fetch_all() {
  mkdir -p "$sources/lists/partial" "$sources/cache/archives/partial"
  cd "$sources"
  rm -rf ./*.part
  list_source_archives
  with_source_archives apt-get update
  fetch libjpeg-turbo
  fetch libpng1.6
  fetch tiff
}

# install_zlib: the static library alone, lest the linker takes the DLL.
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
fetch_all
build_all
touch "$prefix/complete"
