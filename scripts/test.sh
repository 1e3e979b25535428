#!/usr/bin/env bash
# Builds gc40 with AddressSanitizer and UndefinedBehaviorSanitizer and runs
# every test. Installs missing Debian packages first. Exits non-zero on any
# failure. A second run only rebuilds what changed.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/deps.sh
gc40_install_packages "${gc40_packages[@]}"

build=build/test
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DGC40_SANITIZE=ON >/dev/null
cmake --build "$build"

export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1:strict_string_checks=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export LSAN_OPTIONS="suppressions=$PWD/tests/lsan.supp:print_suppressions=0"
ctest --test-dir "$build" --output-on-failure -j "$(nproc)" --timeout 300
