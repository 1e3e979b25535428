#!/usr/bin/env bash
# Builds gc40 with AddressSanitizer and UndefinedBehaviorSanitizer and runs
# every test, then each fuzz target for 10 s (scripts/fuzz.sh) when clang is
# installed, then the static checks (scripts/lint.sh) where their tools are
# installed; exits non-zero on any failure. Under CI (CI=true) a compiler
# warning fails the build.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh
werror=OFF
[ "${CI:-}" = true ] && werror=ON
# Line tables (-g1) are all a sanitizer's report needs, and cost a tenth less to
# build than full debug information.
gc40_build build/test -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-g1 -DGC40_SANITIZE=ON \
  -DGC40_WERROR=$werror

export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1:strict_string_checks=1"
export LSAN_OPTIONS="suppressions=$PWD/scripts/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
ctest --test-dir build/test --output-on-failure -j "$(nproc)" --timeout 300

if command -v clang++ >/dev/null; then
  scripts/fuzz.sh 10
else
  echo "gc40: clang not installed; fuzz targets not run (scripts/fuzz.sh installs it)"
fi

if command -v clang-format >/dev/null && command -v run-clang-tidy >/dev/null; then
  scripts/lint.sh build/test
else
  echo "gc40: clang-format or run-clang-tidy not installed; static checks skipped"
fi
