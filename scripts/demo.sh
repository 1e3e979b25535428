#!/usr/bin/env bash
# Builds gc40 and starts it. Installs missing Debian packages first. Any
# arguments go to gc40 (gc40 --help lists them).
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/deps.sh
gc40_install_packages "${gc40_packages[@]}"

build=build/demo
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DGC40_BUILD_TESTS=OFF >/dev/null
cmake --build "$build"
exec "$build/gc40" "$@"
