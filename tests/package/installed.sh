#!/bin/sh
# SPDX-License-Identifier: MIT
# Installs this build into a folder, moves the folder, and uses it like hosts and users: inspects
# and runs it, and builds hosts with CMake and pkg-config. Also checks the files of the Debian
# packages.
. "$(dirname "$0")/../checks.sh"

"$CMAKE" --install "$BUILD" --prefix staged >log 2>&1 || fail "$(cat log)"
mv staged prefix
mkdir pictures
tail -c +2 "$SOURCE/fuzz/corpus/fields_jpeg_ii" >pictures/photo.jpg
same headers "exifkeep.h field_list.h platform/afx.h platform/afxcoll.h platform/afxstat_.h \
platform/afxwin.h platform/code_page.h platform/exifkeep_version.h platform/language.h \
platform/load_picture.h \
platform/module_strings.h platform/platform_api.h platform/praster.h platform/pxcodec32.h \
platform/shell_copy_handler.h platform/shellapi.h platform/windows.h" \
  "$(cd prefix/include/exifkeep && find . -name '*.h' | cut -c 3- | sort | xargs)"
[ -e prefix/share/doc/exifkeep/LICENSE ] || fail "no licence"
same run 'pictures/photo.jpg: Exif file' "$(prefix/bin/exifkeep check pictures/photo.jpg)"

# Otherwise a host's functions of the same names could replace them. Builds with sanitizers export
# all names.
library=prefix/$LIBDIR/libexifkeep
[ -n "$SANITIZERS" ] ||
  same 'names of the platform' "exifkeep::CodePageEncoder exifkeep::ModuleStrings \
exifkeep::languageVariants exifkeep::loadPicture exifkeep::matchLanguage \
exifkeep::runningVersion exifkeep::userLanguage" \
    "$("$READELF" -W --demangle --dyn-syms ${library}_platform.so | grep -o 'exifkeep::[A-Za-z]*' |
      sort -u | xargs)"
same exports "AddAudio AddAudioFile EXIFKEEP_0 FreeInfoList GetExifInfo GetExifVersion \
GetSoundFile IsExifFile OpenExifFile SaveFile SaveProcessFile" \
  "$("$NM" -D --defined-only $library.so | awk '{ print $3 }' | sed 's/@.*//' | sort | xargs)"
shows 'own calls' "$("$READELF" -Wr --demangle $library.so)" '!EXIFKEEP_0'
shows 'own calls' "$("$READELF" -Wr --demangle ${library}_platform.so)" jpeg_ '!PRaster::' \
  '!CString::'

# There are no paths outside the folder, except those of sources in debug information and
# assertions.
find prefix -type f >files
while read -r file; do
  if [ "$(head -c 4 "$file" | tail -c 3)" = ELF ]; then
    shows "$file" "$("$READELF" -d "$file")" NEEDED '!path: \[/' '!:/'
  else
    for place in "$SOURCE" "$BUILD" "$folder"; do
      ! grep -qF "$place" "$file" || fail "$file names $place"
    done
  fi
done <files

# Full RELRO and immediate binding, a non-executable stack, stack and buffer checks, and on x86
# indirect branch tracking and stack probes.
for file in ${HARDENED:+bin/exifkeep "$LIBDIR/libexifkeep.so" "$LIBDIR/libexifkeep_platform.so"}; do
  shows "$file" "$("$READELF" -Wdl "prefix/$file")" BIND_NOW GNU_RELRO 'GNU_STACK.* RW ' \
    'type is DYN'
  shows "$file" "$("$NM" -D "prefix/$file")" ' __stack_chk_fail' printf_chk
  [ "$(uname -m)" != x86_64 ] || shows "$file" \
    "$("$OBJDUMP" -d --no-show-raw-insn "prefix/$file" | grep -E 'endbr64|[$]0x0,[(]%rsp[)]')" \
    endbr64 '(or[lq] +|movq? +)[$]0x0,\(%rsp\)'
done

if [ -n "$SANITIZERS" ]; then
  echo "skipped: hosts and packages of builds with sanitizers"
  exit $failures
fi

# A host, built with these arguments, lists the picture.
lists() {
  host=$1
  shift
  sh -c "$*" >log 2>&1 || fail "$*: $(cat log)"
  shows "$*" "$(LD_LIBRARY_PATH=prefix/$LIBDIR $host pictures)" '^[^ ]*photo.jpg \(Exif 2.2\)$' \
    '^  Make: Maker$'
}
by_cmake='"$CMAKE" -G "$GENERATOR" -DCMAKE_CXX_COMPILER="$CXX"'
source='"$SOURCE/examples/list_folder.cpp"'
lists found/list_folder "$by_cmake"' -S "$SOURCE/examples" -B found \
  -DCMAKE_PREFIX_PATH="$folder/prefix" && "$CMAKE" --build found'
lists ./shared 'PKG_CONFIG_PATH="$folder/prefix/$LIBDIR/pkgconfig"; export PKG_CONFIG_PATH
  "$CXX" -std=c++20 -Wall -Wextra -Werror '"$source"' $(pkg-config --cflags --libs exifkeep) -o shared'

# A project includes the sources, builds static libraries and installs these with its own program;
# another host links what was installed.
cat >CMakeLists.txt <<'PROJECT'
cmake_minimum_required(VERSION 3.25)
project(whole LANGUAGES CXX)
find_package(JPEG REQUIRED)
add_subdirectory($ENV{SOURCE} exifkeep)
foreach(absent IN ITEMS exifkeep_program exifkeep_docs package)
  if(TARGET ${absent})
    message(FATAL_ERROR "${absent} is no concern of the whole")
  endif()
endforeach()
if(DEFINED CPACK_GENERATOR OR CMAKE_BUILD_TYPE STREQUAL Release)
  message(FATAL_ERROR "the whole's own settings are changed")
endif()
add_executable(host $ENV{SOURCE}/examples/list_folder.cpp)
target_link_libraries(host PRIVATE exifkeep::exifkeep exifkeep::platform)
PROJECT
lists whole/host "$by_cmake"' -S . -B whole -DCMAKE_DISABLE_FIND_PACKAGE_CLI11=ON \
  -DBUILD_SHARED_LIBS=OFF -DEXIFKEEP_INSTALL=ON -DCMAKE_INSTALL_LIBDIR="$LIBDIR" &&
  "$CMAKE" --build whole'
shows 'static host' "$("$READELF" -d whole/host)" '!libexifkeep'
"$CMAKE" --install whole --prefix static >log 2>&1 || fail "$(cat log)"
lists again/list_folder "$by_cmake"' -S "$SOURCE/examples" -B again \
  -DCMAKE_PREFIX_PATH="$folder/static" && "$CMAKE" --build again'
lists ./static-host 'PKG_CONFIG_PATH="$folder/static/$LIBDIR/pkgconfig"; export PKG_CONFIG_PATH
  "$CXX" -std=c++20 '"$source"' $(pkg-config --static --cflags --libs exifkeep) -o static-host'

# The ABI must be that of the version.
if [ -n "$ABI" ] && command -v abidiff >/dev/null; then
  "$SOURCE/packaging/describe_abi.sh" "$VERSION" "$ABI" now.abi &&
    abidiff "$SOURCE/packaging/exifkeep.abi" now.abi || fail "raise the version in \
exifkeep_version.h, then have the target abi_baseline write packaging/exifkeep.abi anew"
else
  echo "skipped: the ABI needs abidiff and a description made by g++ on x86-64"
fi

for tool in dpkg-deb dpkg-shlibdeps file "$CPACK"; do
  command -v "$tool" >/dev/null || { echo "skipped: packages, no $tool"; exit $failures; }
done
"$CPACK" --config "$BUILD/CPackConfig.cmake" -B "$folder/packages" >log 2>&1 || fail "$(cat log)"
# The files of a package, without the folder for its changelog and licence.
files_of() {
  dpkg-deb -x packages/$1_*.deb $1 && rm -r $1/usr/share/doc/$1 && (cd $1/usr && find . ! -type d)
}
libraries=$(files_of libexifkeep0)
same libexifkeep0 4 "$(echo "$libraries" | grep -c '\.so\.0')"
same libexifkeep0 4 "$(echo "$libraries" | wc -l)"
same exifkeep "./bin/exifkeep ./share/bash-completion/completions/exifkeep \
./share/fish/vendor_completions.d/exifkeep.fish ./share/man/man1/exifkeep.1.gz \
./share/zsh/vendor-completions/_exifkeep" "$(files_of exifkeep | sort | xargs)"
shows libexifkeep-dev "$(files_of libexifkeep-dev)" include/exifkeep/exifkeep.h \
  "$LIBDIR/libexifkeep.so" "$LIBDIR/pkgconfig/exifkeep.pc" share/man/man3/exifkeep.3.gz
shows libexifkeep0 "$(dpkg-deb -f packages/libexifkeep0_*.deb Depends)" libtiff
for package in libexifkeep-dev exifkeep; do
  shows $package "$(dpkg-deb -f packages/${package}_*.deb Depends)" "libexifkeep0 \(= $VERSION"
done
# There is no request for a package that this first version could close.
if [ "$LIBDIR" != lib ] && command -v lintian >/dev/null; then
  lintian --allow-root --fail-on error,warning \
    --suppress-tags initial-upload-closes-no-bugs packages/*.deb || fail lintian
else
  echo "skipped: no lintian, or CMAKE_INSTALL_PREFIX is not /usr"
fi
exit $failures
