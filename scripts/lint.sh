#!/usr/bin/env bash
# Static checks; exits non-zero on any finding:
# - clang-format: every C++ file in src, tests, tools, bench, fuzz, harness and packaging is laid out as
#   .clang-format says;
# - clang-tidy: the checks .clang-tidy names, over src/ only (the tests and
#   tools would double the time for little), with the compile commands of the
#   build folder $1 (default build/test), which must have been built.
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build/test}

find src tests tools bench fuzz harness packaging \( -name '*.cpp' -o -name '*.h' \) -print0 |
  xargs -0 clang-format --dry-run --Werror

if [ ! -f "$build/compile_commands.json" ]; then
  echo "gc40: no $build/compile_commands.json; build first (scripts/test.sh does)" >&2
  exit 1
fi
log=$(mktemp)
trap 'rm -f "$log"' EXIT
trap 'exit 143' TERM  # test.sh ends it early when a test fails: the log goes too
# Only the findings: not the command of each file or the count of what was
# suppressed in system headers.
if ! run-clang-tidy -p "$build" -j "$(nproc)" -quiet "^$PWD/src/" >"$log" 2>&1; then
  grep -v -e '^clang-tidy' -e 'warnings\? generated\.$' "$log" >&2
  echo "gc40: clang-tidy found the above" >&2
  exit 1
fi
echo "gc40: clang-format and clang-tidy found nothing"
