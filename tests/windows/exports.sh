#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# exports.sh OBJDUMP FOLDER SOURCES: checks the exports and imports of the two DLLs and the program
# in FOLDER. The library must export only the ten undecorated names, and the platform library what
# its headers mark; all may need only each other and Windows' own DLLs.
set -euo pipefail
objdump=$1 folder=$2 sources=$3
status=0

complain() {
  echo "$*" >&2
  status=1
}

exports() {
  "$objdump" -p "$folder/$1" | sed -n '/\[Ordinal\/Name Pointer\]/,/^$/ s/^\t\[ *[0-9]*\] //p' |
    sed 's/^+base\[ *[0-9]*\] *[0-9a-f]* *//' | sort
}
imports() {
  "$objdump" -p "$folder/$1" | sed -n 's/^\tDLL Name: //p' | tr '[:upper:]' '[:lower:]'
}
has_version() {
  local version
  version=$(sed -n 's/^#define EXIFKEEP_VERSION_[A-Z]* \([0-9]\)/\1/p' \
    "$sources/platform/framework/exifkeep_version.h" | sed 's/ .*//' | paste -sd.)
  strings -el "$folder/$1" | grep -Fxq "$version" || complain "$1 does not tell version $version"
}

expected=$(sed -n 's/^  \([A-Za-z]*\)$/\1/p' "$sources/src/exifkeep.def" | sort)
[ "$(wc -l <<<"$expected")" = 10 ] || complain "exifkeep.def does not hold ten names"
[ "$(exports exifkeep.dll)" = "$expected" ] ||
  complain "exifkeep.dll exports: $(exports exifkeep.dll | xargs)"

marked='(CObject|CString|CPtrList|CWinApp|CWnd|AFX_MAINTAIN_STATE2|PRaster)(::|$)|operator\+|Afx|All|'
marked+='SetShellCopyHandler|exifkeep::(loadPicture|runningVersion|'
marked+='languageVariants|matchLanguage|userLanguage|CodePageEncoder|ModuleStrings)'
shared=$(exports exifkeep_platform.dll | sed 's/^_Z/__Z/; s/^_*\(_Z\)/\1/' | c++filt)
others=$(grep -Ev "^(vtable for |typeinfo (name )?for )?($marked)" <<<"$shared" || true)
[ -n "$shared" ] || complain "exifkeep_platform.dll exports nothing"
[ -z "$others" ] || complain "exifkeep_platform.dll exports more than its headers mark: $others"

for file in exifkeep.dll exifkeep_platform.dll exifkeep.exe; do
  has_version "$file"
  for name in $(imports "$file"); do
    case $name in
      kernel32.dll | msvcrt.dll | user32.dll | shell32.dll | gdi32.dll | advapi32.dll) ;;
      exifkeep.dll | exifkeep_platform.dll) ;;
      *) complain "$file needs $name" ;;
    esac
  done
done
exit $status
