#!/usr/bin/env bash
# Describes the ABI of VERSION: describe_abi.sh VERSION LIBRARY FILE, where LIBRARY is made of
# abi.cpp. Within a version the ABI stays: when FILE, such as exifkeep.abi, describes this version
# already, the version has to be raised first or, before its release, the file deleted.
set -euo pipefail
if grep -qsF ".so.$1'" "$3"; then
  echo "The ABI of $1 is described already: raise the version in exifkeep_version.h first" >&2
  exit 1
fi
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
abidw --suppr "$here/abi.suppr" --no-corpus-path --no-comp-dir-path --no-show-locs --no-elf-needed \
  --no-parameter-names --type-id-style hash --no-write-default-sizes --no-architecture \
  --out-file "$3" "$2"
sed -i "s/ path='[^']*'/ path='abi.cpp'/" "$3"
