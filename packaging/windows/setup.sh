# shellcheck shell=bash
# shellcheck disable=SC2034
# Shared by build-qt, build and check; to be sourced.
source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/setup.sh"

tools="$root/packaging/windows"
house=${SONDRIX_WINDOWS:-$HOME/.cache/sondrix-windows} # Qt, GoogleTest and Wine's 32-bit half; outside the tree

# widths_of [32|64]...: the widths that are asked for, both when none is.
widths_of() {
  local width
  for width in "$@"; do
    [[ "$width" == 32 || "$width" == 64 ]] || fail "a width is 32 or 64, not $width"
  done
  echo "${@:-32 64}"
}

# private_apt NAME SOURCES ARCHITECTURE: an apt of our own, so that the system's isn't touched; its files are kept in
# the house. Sets `apt` to the options that apt-get needs.
private_apt() {
  local at="$house/apt-$1"
  mkdir -p "$at/lists/partial" "$at/cache/archives/partial"
  echo "$2" >"$at/sources.list"
  touch "$at/status"
  apt=(-o "Dir::Etc::sourcelist=$at/sources.list" -o Dir::Etc::sourceparts=- -o "Dir::State::lists=$at/lists"
    -o "Dir::Cache=$at/cache" -o "Dir::State::status=$at/status" -o "APT::Architecture=$3" -o "APT::Architectures=$3"
    -o APT::Sandbox::User=root -o Debug::NoLocking=1 -q)
  apt-get "${apt[@]}" update
}

debian="[signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] http://deb.debian.org/debian bookworm main"

# mingw_of WIDTH: the first part of the names of its tools.
mingw_of() {
  if [ "$1" = 32 ]; then echo i686-w64-mingw32; else echo x86_64-w64-mingw32; fi
}
