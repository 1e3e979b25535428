#!/usr/bin/env bash
# Shared by demo.sh and test.sh: installs the Debian packages gc40 needs
# (only what is missing, saying what it installs) and builds with CMake.

gc40_packages=(
  cmake ninja-build g++ pkg-config
  qt6-base-dev qt6-serialport-dev qt6-svg-dev libgdal-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  locales fonts-dejavu-core
  # the headless tests on a terminal, and the checks of what is installed
  tmux desktop-file-utils man-db
  # cpack -G DEB: the runtime dependencies are read from the programs
  dpkg-dev file
)

gc40_missing_packages() {
  local pkg
  for pkg in "$@"; do
    if ! dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q 'install ok installed'; then
      echo "$pkg"
    fi
  done
}

gc40_install_packages() {
  local missing
  missing=$(gc40_missing_packages "$@")
  [ -z "$missing" ] && return 0
  echo "gc40: installing missing Debian packages:" $missing
  local sudo=()
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null 2>&1; then
      echo "gc40: need root or sudo to install:" $missing >&2
      return 1
    fi
    sudo=(sudo)
  fi
  export DEBIAN_FRONTEND=noninteractive
  "${sudo[@]}" apt-get update -q || return 1
  # shellcheck disable=SC2086
  "${sudo[@]}" apt-get install -y -q --no-install-recommends $missing || return 1
}

# Installs what is missing, then configures and builds into the folder $1 with
# the CMake options that follow. Ninja rebuilds only what changed.
gc40_build() {
  local build=$1
  shift
  gc40_install_packages "${gc40_packages[@]}"
  cmake -S . -B "$build" -G Ninja "$@" >/dev/null
  cmake --build "$build"
}
