#!/usr/bin/env bash
# Builds gc40 and starts it on the simulated meter (gc40-sim), so it shows live
# readings with no hardware; further arguments go to gc40 (gc40 --help lists them).
# Without a display (a server, a container, an SSH session) it runs in the
# terminal instead: gc40 --headless --simulate.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh
gc40_build build/demo -DCMAKE_BUILD_TYPE=RelWithDebInfo -DGC40_BUILD_TESTS=OFF
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ] && [ -z "${QT_QPA_PLATFORM:-}" ]; then
  echo "gc40: no display (DISPLAY and WAYLAND_DISPLAY unset): logging in this terminal with gc40 --headless --simulate"
  exec build/demo/gc40 --headless --simulate "$@"
fi
exec build/demo/gc40 --simulate "$@"
