#!/usr/bin/env bash
# cmake --install into a scratch folder of the build (removed afterwards):
# every file lands where a Linux program's go, the desktop entry and the
# manual pages pass their checkers, the icon is a 256-pixel PNG, and the
# installed gc40 runs. Usage: install_tree_test.sh BUILD_DIR VERSION
set -euo pipefail
build=$1
version=$2
root=$(cd "$build" && pwd)/install-check
trap 'rm -rf "$root"' EXIT
rm -rf "$root"
DESTDIR=$root cmake --install "$build" --prefix /usr >/dev/null
cd "$root/usr"

status=0
fail() {
  echo "$*" >&2
  status=1
}
for file in bin/gc40 bin/gc40-sim bin/r40 share/applications/gc40.desktop \
  share/icons/hicolor/scalable/apps/gc40.svg share/icons/hicolor/256x256/apps/gc40.png \
  share/man/man1/gc40.1.gz share/man/man1/gc40-sim.1.gz share/man/man1/r40.1.gz \
  lib/systemd/system/gc40-headless@.service; do
  [ -e "$file" ] || fail "not installed: $file"
done
# Nothing else: no test, bench or build tool goes along.
extra=$(find . -type f | grep -Ev '^\./(bin/(gc40|gc40-sim|r40)|share/(applications|icons|man)/.*|lib/systemd/system/gc40-headless@\.service)$' || true)
[ -z "$extra" ] || fail "installed but not meant to be: $extra"

desktop-file-validate --no-hints share/applications/gc40.desktop || fail "desktop entry refused"
for page in share/man/man1/*.1.gz; do
  warnings=$(MANWIDTH=80 man --warnings -E UTF-8 -l "$page" 2>&1 >/dev/null)
  [ -z "$warnings" ] || fail "$page: $warnings"
  MANWIDTH=80 man -E UTF-8 -l "$page" 2>/dev/null | grep -q "gc40 $version" || fail "$page has no version"
done
MANWIDTH=80 man -E UTF-8 -l share/man/man1/gc40.1.gz 2>/dev/null |
  grep -q -- "--headless" || fail "gc40(1) does not document --headless"

# A PNG's header: the signature, then IHDR with width and height 256.
header=$(od -An -tx1 -N24 share/icons/hicolor/256x256/apps/gc40.png | tr -d ' \n')
[ "$header" = "89504e470d0a1a0a0000000d494844520000010000000100" ] || fail "icon is not a 256x256 PNG: $header"

[ "$(bin/gc40 --version)" = "gc40 $version" ] || fail "installed gc40 --version: $(bin/gc40 --version)"
exit $status
