#!/usr/bin/env bash
# Fails when README.md or ARCHITECTURE.md names a repository path (in
# backticks) that does not exist, so the documents keep up with the code.
# Paths under src/ may be written without the src/ prefix; globs are allowed.
set -euo pipefail
cd "$(dirname "$0")/.."
shopt -s nullglob
status=0
for doc in README.md ARCHITECTURE.md; do
  while IFS= read -r path; do
    path=${path%%:*}
    found=0
    for match in $path src/$path; do [[ -e $match ]] && found=1; done
    if ((found == 0)); then
      echo "$doc: \`$path\` is not in the repository" >&2
      status=1
    fi
  done < <(grep -o '`[A-Za-z0-9_.*/-]*/[A-Za-z0-9_.*/-]*`' "$doc" | tr -d '`' |
           grep -Ev '^(build|/|\.\./|~)' | grep -E '^(src|tests|tools|bench|fuzz|cmake|scripts|\.ci|base|settings|platform|ui|instrument|datafile|gps|logging|survey|map|viewer|app|harness|docs)/' || true)
done
exit $status
