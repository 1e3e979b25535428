#!/usr/bin/env bash
# Draws docs/survey-lag.png: the survey that the end-to-end survey test has
# gc40 log from gc40-sim (the meter 600 ms behind the GPS, its sensor 1.5 m
# behind the antenna), exported by r40 as recorded and with the lag r40
# estimates and the layback, side by side. Builds build/dev first.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh
gc40_build build/dev -DCMAKE_BUILD_TYPE=Debug
ctest --test-dir build/dev -R '^SurveyRun\.' --output-on-failure

build=build/dev
survey=$build/tests/survey.R40
out=$build/survey-picture.d
mkdir -p "$out"
lag=$("$build/r40" lag "$survey" --layback 1.5 | sed -n 's/^lag: \(-\{0,1\}[0-9]*\) ms.*/\1/p')
"$build/r40" export "$survey" -o "$out/as_recorded.csv" >/dev/null
"$build/r40" export "$survey" -o "$out/corrected.csv" --lag "$lag" --layback 1.5 >/dev/null
"$build/survey-picture" docs/survey-lag.png \
  "As recorded" "$out/as_recorded.csv" \
  "Lag $lag ms and layback 1.5 m corrected" "$out/corrected.csv"
echo "docs/survey-lag.png: lag $lag ms"
