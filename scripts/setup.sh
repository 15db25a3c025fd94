# shellcheck shell=bash
# Shared by ./run, ./test, .ci/run and bench/compare; to be sourced.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build="$root/build/release"

say() { printf '\n== %s\n' "$*" >&2; }

fail() {
  printf 'error: %s\n' "$*" >&2
  exit 1
}

# The names that stand under the given sections of packaging/debian-packages.
packages_of() {
  awk -v wanted=" $* " '
    /^\[.*\]$/ { section = substr($0, 2, length($0) - 2); next }
    NF && !/^#/ && index(wanted, " " section " ") { print $1 }
  ' "$root/packaging/debian-packages"
}

is_installed() {
  [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# Installs what is missing of the given sections; does nothing, and needs no rights, when all is there.
ensure_packages() {
  command -v dpkg-query >/dev/null ||
    fail "this needs Debian or a relative of it; see packaging/debian-packages for what to install by hand"

  local package missing=()
  for package in $(packages_of "$@"); do
    is_installed "$package" || missing+=("$package")
  done
  [ ${#missing[@]} -gt 0 ] || return 0

  local as_root=(env DEBIAN_FRONTEND=noninteractive)
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || fail "please install as root: apt-get install ${missing[*]}"
    as_root=(sudo "${as_root[@]}")
  fi

  say "Installing with apt-get, as root: ${missing[*]}"
  local install=(apt-get install -y -q --no-install-recommends "${missing[@]}")
  # The package lists of a fresh machine are empty, those of an old one out of date.
  if ! apt-get install -s -qq --no-install-recommends "${missing[@]}" >/dev/null 2>&1; then
    "${as_root[@]}" apt-get update -q
  fi
  "${as_root[@]}" "${install[@]}" || {
    say "Trying again with fresh package lists"
    "${as_root[@]}" apt-get update -q
    "${as_root[@]}" "${install[@]}"
  }
}

# configure PRESET [CMAKE OPTION...]: quiet unless it fails.
configure() {
  local log
  log=$(cmake -S "$root" --preset "$@" 2>&1) || {
    printf '%s\n' "$log" >&2
    fail "the configuration of preset $1 failed"
  }
}

# build_release [TARGET...]: everything when no target is named.
build_release() {
  say "Building in build/release"
  configure release
  cmake --build "$build" ${1:+--target "$@"} >&2
}
