#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# consumer.sh SOURCES BUILD PRESET WINE: packs the zip, unpacks it elsewhere, builds the examples
# as a separate project with its contents, and runs one of them with the DLLs in the zip.
set -euo pipefail
sources=$1 build=$2 preset=$3 wine=$4
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

cd "$build"
cpack --config CPackConfig.cmake -B "$folder/packed" >"$folder/log" 2>&1 || { cat "$folder/log"; exit 1; }
cmake -E chdir "$folder" cmake -E tar xf "$folder"/packed/exifkeep-*.zip
prefix=$(echo "$folder"/exifkeep-*/)
for file in bin/exifkeep.{exe,dll} bin/exifkeep_platform.dll lib/libexifkeep{,_platform}.dll.a \
            include/exifkeep/exifkeep.h \
            share/doc/exifkeep/{LICENSE,licences/{libjpeg-turbo,libpng,libtiff,zlib,mingw-w64,cli11}}; do
  [ -s "$prefix$file" ] || { echo "the zip has no $file"; exit 1; }
done
[ ! -e "${prefix}include/exifkeep/platform/windows.h" ] || { echo "the zip hides windows.h"; exit 1; }

cmake -S "$sources/examples" -B "$folder/host" -G Ninja -DCMAKE_BUILD_TYPE=Release \
  -DCMAKE_TOOLCHAIN_FILE="$sources/cmake/mingw.cmake" -DEXIFKEEP_PROCESSOR="$preset" \
  -Dexifkeep_DIR="${prefix}lib/cmake/exifkeep" >"$folder/log" 2>&1 &&
  cmake --build "$folder/host" >>"$folder/log" 2>&1 || { cat "$folder/log"; exit 1; }
cp "$folder"/host/*.exe "${prefix}bin"
cd "${prefix}bin"
"$wine" list_folder.exe . | grep -q "^0 Exif pictures"
"$wine" exifkeep.exe --version | grep -q "^exifkeep 0"
