# SPDX-License-Identifier: MIT
# Gets the sources of libjpeg-turbo, libpng and libtiff with Debian's patches into
# build/codec-sources. Sourced by the scripts that build them; `root` is the checkout. apt uses a
# separate list of sources, so that the machine's configuration is not changed.
sources=$root/build/codec-sources

# The machine's Debian archives, as archives of sources.
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

# fetch PACKAGE: unpacks the newest version that is completely available into PACKAGE. A security
# archive may list a version that it no longer has.
fetch() {
  local package=$1 version
  [ -d "$package" ] && return 0
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

# fetch_codecs: fetches all once, into $sources/libjpeg-turbo, libpng1.6 and tiff.
fetch_codecs() (
  set -e
  mkdir -p "$sources/lists/partial" "$sources/cache/archives/partial"
  exec {lock}>"$sources/lock"
  flock "$lock"
  [ -f "$sources/complete" ] && exit 0
  cd "$sources"
  rm -rf ./*.part libjpeg-turbo libpng1.6 tiff
  list_source_archives
  # The archives may be temporarily unavailable.
  for pause in 0 20 60; do
    sleep "$pause"
    with_source_archives apt-get update || true  # what counts is that the sources come
    fetch libjpeg-turbo && fetch libpng1.6 && fetch tiff && touch complete && exit 0
  done
  exit 1
)
