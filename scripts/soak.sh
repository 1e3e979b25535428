#!/usr/bin/env bash
# A whole field day through the real gc40: 316,800 readings (eight hours at
# 11 a second) and a 10 Hz receiver's sentences, fed as fast as gc40 records
# them, each checked in the data file, which is then opened in View Files.
# Builds build/release (Release, with the benches) first. Options go to
# gc40_e2e_bench soak (e.g. --readings 11000 for a short run); exits non-zero
# when a reading or sentence was lost, doubled or reordered.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh
gc40_build build/release -DCMAKE_BUILD_TYPE=Release -DGC40_BUILD_BENCH=ON
exec build/release/bench/gc40_e2e_bench soak "$@"
