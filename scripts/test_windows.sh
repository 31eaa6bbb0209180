#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs ./test windows: builds for 64-bit Windows and runs the tests under Wine; builds for 32-bit
# Windows and checks the exports of the DLLs; has the programs for both systems list and save the
# same pictures; packs the zip and builds a host with it. Installs the packages needed.
set -euo pipefail
root=$(dirname -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")")
. "$root/scripts/packages.sh"
. "$root/scripts/build.sh"

mkdir -p "$root/build"
install_missing "$root/build/packages.log" "${run_packages[@]}" "${test_packages[@]}" \
  "${windows_packages[@]}" "${windows32_packages[@]}"
"$root/scripts/windows_codecs.sh" x86_64
"$root/scripts/windows_codecs.sh" i686

# A separate folder for Wine, so that the user's settings are neither used nor changed, without the
# components that Wine would otherwise offer to download.
export WINEPREFIX=$root/build/wine WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml='
unset DISPLAY WAYLAND_DISPLAY
wine=$(command -v wine64 || echo /usr/lib/wine/wine64)
# One server and one desktop for all programs; otherwise each would start its own, which keeps the
# program's output open.
server=$(command -v wineserver || echo /usr/lib/wine/wineserver64)
mkdir -p "$WINEPREFIX"
"$server" -p
trap '"$server" -k' EXIT
"$wine" wineboot --init >"$root/build/wine.log" 2>&1
"$wine" explorer /desktop >>"$root/build/wine.log" 2>&1 &

echo "== windows"
build_preset windows
run_tests windows

echo "== windows32"
build_preset windows32
"$root/tests/windows/exports.sh" i686-w64-mingw32-objdump "$root/build/windows32/bin" "$root"

echo "== windows and here"
build_preset test exifkeep_program
"$root/tests/windows/same_as_here.sh" "$root" "$wine"
