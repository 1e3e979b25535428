#!/usr/bin/env bash
# Builds gc40 with AddressSanitizer and UndefinedBehaviorSanitizer and runs
# every test, then each fuzz target for 10 s (scripts/fuzz.sh) when clang is
# installed, with the static checks (scripts/lint.sh) beside them where their
# tools are installed; exits non-zero on any failure. Under CI (CI=true) a
# compiler warning fails the build.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh
werror=OFF
[ "${CI:-}" = true ] && werror=ON
# Line tables (-g1) are all a sanitizer's report needs, and cost a tenth less to
# build than full debug information.
gc40_build build/test -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-g1 -DGC40_SANITIZE=ON \
  -DGC40_WERROR=$werror

# The static checks need only the build, so they run beside the tests, which
# leave much of the machine idle while they wait on pseudo-terminals and
# timers, and the fuzzers. In their own session, so that an early exit ends
# them all; at the lowest priority, which counts where the scheduler does not
# give each session its own share.
lint_log=$(mktemp)
lint_pid=
trap 'rm -f "$lint_log"; [ -z "$lint_pid" ] || kill -- -"$lint_pid" 2>/dev/null || true' EXIT
if command -v clang-format >/dev/null && command -v run-clang-tidy >/dev/null; then
  nice -n 19 setsid -w scripts/lint.sh build/test >"$lint_log" 2>&1 &
  lint_pid=$!
else
  echo "gc40: clang-format or run-clang-tidy not installed; static checks skipped"
fi

export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1:strict_string_checks=1"
export LSAN_OPTIONS="suppressions=$PWD/scripts/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
ctest --test-dir build/test --output-on-failure -j "$(nproc)" --timeout 300

if command -v clang++ >/dev/null; then
  scripts/fuzz.sh 10
else
  echo "gc40: clang not installed; fuzz targets not run (scripts/fuzz.sh installs it)"
fi

if [ -n "$lint_pid" ]; then
  lint_status=0
  wait "$lint_pid" || lint_status=$?
  lint_pid=
  cat "$lint_log"
  exit "$lint_status"
fi
