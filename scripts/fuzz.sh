#!/usr/bin/env bash
# scripts/fuzz.sh [SECONDS]: builds the fuzz targets of fuzz/ with clang
# (libFuzzer, AddressSanitizer, UndefinedBehaviorSanitizer) in build/fuzz and
# runs each for SECONDS (default 60), two at a time, on a working corpus in
# build/fuzz/corpus plus the seeds. Prints one line per target: executions,
# executions per second and libFuzzer's coverage (cov: edges, ft: features).
# Exits non-zero when a target crashes or breaks one of its checks, naming
# the saved input (build/fuzz/crashes/TARGET/) and the log.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh
seconds=${1:-60}
build=build/fuzz
targets=(framer gps_lines data_file decoder settings_file port_map)

gc40_install_packages clang "${gc40_packages[@]}"
launcher=()
command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ \
  -DGC40_FUZZ=ON -DGC40_BUILD_TESTS=OFF -DGC40_BUILD_BENCH=OFF "${launcher[@]}" >/dev/null
cmake --build "$build" --target gc40-fuzz

# Seeds afresh each run; the working corpus keeps what earlier runs found.
rm -rf "$build/seeds" "$build/logs" "$build/tmp"
mkdir -p "$build/logs" "$build/tmp"
"$build/fuzz/gc40-fuzz-seeds" "$build/seeds"
mkdir -p "$build/seeds/framer" "$build/seeds/gps_lines"
cp tests/instrument/data/*.raw "$build/seeds/framer/"
cp tests/gps/data/*.log "$build/seeds/gps_lines/"
export TMPDIR=$PWD/$build/tmp  # nothing of a run lands in /tmp
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"

max_len() {
  case $1 in
    decoder) echo 64 ;;
    data_file) echo 1024 ;;
    gps_lines) echo 512 ;;
    *) echo 1024 ;;
  esac
}

run_target() {
  local target=$1
  local folders=("$build/corpus/$target" "$build/seeds/$target")
  [ -d "fuzz/regressions/$target" ] && folders+=("fuzz/regressions/$target")
  mkdir -p "$build/corpus/$target" "$build/crashes/$target"
  "$build/fuzz/gc40-fuzz-$target" -max_total_time="$seconds" -print_final_stats=1 \
    -max_len="$(max_len "$target")" -timeout=10 -rss_limit_mb=1024 \
    -artifact_prefix="$build/crashes/$target/" "${folders[@]}" >"$build/logs/$target.log" 2>&1
}

# "framer  ok  1234567 runs  20576 exec/s  cov: 98 ft: 310", or where the crash is.
summary() {
  local target=$1 status=$2 log=$build/logs/$1.log
  if [ "$status" -ne 0 ]; then
    local input
    input=$(sed -n 's/.*Test unit written to \(.*\)$/\1/p' "$log" | tail -1)
    printf '%-14s CRASHED  input: %s  log: %s\n' "$target" "${input:-none saved}" "$log"
    return
  fi
  local runs rate coverage
  runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
  rate=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log")
  coverage=$(grep -o 'cov: [0-9]* ft: [0-9]*' "$log" | tail -1)
  printf '%-14s ok  %10s runs  %7s exec/s  %s\n' "$target" "$runs" "$rate" "$coverage"
}

echo "gc40: fuzzing each target for ${seconds}s, two at a time; logs in $build/logs"
failed=0
for ((i = 0; i < ${#targets[@]}; i += 2)); do
  pair=("${targets[@]:i:2}")
  pids=()
  for target in "${pair[@]}"; do
    run_target "$target" &
    pids+=($!)
  done
  for j in "${!pair[@]}"; do
    status=0
    wait "${pids[j]}" || status=$?
    summary "${pair[j]}" "$status"
    ((status == 0)) || failed=1
  done
done
rm -rf "$build/tmp"
exit $failed
