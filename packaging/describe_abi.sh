#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# describe_abi.sh VERSION LIBRARY FILE: writes a description of the ABI of VERSION to FILE, such as
# exifkeep.abi. LIBRARY is built from abi.cpp. The ABI must not change within a version: if FILE already
# describes this version, raise the version first or, before its release, delete the file.
set -euo pipefail
if grep -qsF ".so.$1'" "$3"; then
  echo "The ABI of $1 has already been described: raise the version in exifkeep_version.h first" >&2
  exit 1
fi
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
abidw --suppr "$here/abi.suppr" --no-corpus-path --no-comp-dir-path --no-show-locs --no-elf-needed \
  --no-parameter-names --type-id-style hash --no-write-default-sizes --no-architecture \
  --out-file "$3" "$2"
sed -i "s/ path='[^']*'/ path='abi.cpp'/" "$3"
