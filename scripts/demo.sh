#!/usr/bin/env bash
# Builds gc40 and starts it on the simulated meter (gc40-sim), so it shows live
# readings with no hardware; further arguments go to gc40 (gc40 --help lists them).
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh
gc40_build build/demo -DCMAKE_BUILD_TYPE=RelWithDebInfo -DGC40_BUILD_TESTS=OFF
exec build/demo/gc40 --simulate "$@"
