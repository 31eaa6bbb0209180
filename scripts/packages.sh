# SPDX-License-Identifier: MIT
# The Debian packages that ./run and ./test need, and their installation. Sourced by both.

run_packages=(
  g++ cmake ninja-build
  libjpeg-dev libtiff-dev libpng-dev  # the picture codec
  libcli11-dev                        # the program's command line
)
test_packages=(
  libgtest-dev libgmock-dev nlohmann-json3-dev
  python3-jsonschema           # validates the JSON that the program writes
  pkg-config                   # finds the installed library as hosts do
  dpkg-dev file                # what cpack makes Debian packages with
  lintian                      # checks them
  clang-14 libclang-rt-14-dev  # the fuzzers
  abigail-tools                # compares the ABI with that of its version
  doxygen                      # checks the comments of the public headers
)
windows_packages=(
  g++-mingw-w64-x86-64 libz-mingw-w64-dev
  cmake ninja-build
  nasm                      # libjpeg-turbo's fast paths
  dpkg-dev xz-utils         # unpacks Debian's sources of the picture codecs
  wine64                    # runs the tests
  googletest                # its sources: the tests need it for Windows as well
)
windows32_packages=(g++-mingw-w64-i686)

as_root() {
  if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

# sudo asks for a password only if there is a terminal.
can_be_root() {
  [ "$(id -u)" -eq 0 ] || { command -v sudo >/dev/null && { [ -t 0 ] || sudo -n true 2>/dev/null; }; }
}

is_installed() {
  [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

apt_install() {
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "$@"
}

# install_missing LOG PACKAGE...: prints nothing if all are installed. On other systems users have
# to install the tools themselves.
install_missing() {
  local log=$1 package missing=()
  shift
  command -v dpkg-query >/dev/null && command -v apt-get >/dev/null || return 0
  for package in "$@"; do
    is_installed "$package" || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  if can_be_root; then
    echo "Installing ${missing[*]}" >&2
    apt_install "${missing[@]}" >"$log" 2>&1 && return 0
    { as_root apt-get update && apt_install "${missing[@]}"; } >"$log" 2>&1 && return 0
    cat "$log" >&2
  fi
  printf '%s\n' "Some packages are missing. To install them, as root:" \
    "  apt-get install --no-install-recommends ${missing[*]}" >&2
  return 1
}
