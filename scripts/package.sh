#!/usr/bin/env bash
# Builds the Debian package: a Release build into build/package (programs and
# packaging files only) and cpack -G DEB there, which writes
# build/package/gc40_VERSION_ARCH.deb with the runtime packages it needs.
#
#   scripts/package.sh            build the package
#   scripts/package.sh --check    then install it into a fresh Debian (a
#                                 debootstrap chroot, removed afterwards) and
#                                 run gc40 --version, man -l and
#                                 desktop-file-validate there
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh
gc40_build build/package -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
  -DGC40_BUILD_TESTS=OFF -DGC40_BUILD_BENCH=OFF
(cd build/package && cpack -G DEB >/dev/null)
deb=$(ls -t build/package/gc40_*.deb | head -n 1)
echo "gc40: built $deb"
dpkg-deb --field "$deb" Package Version Depends

[ "${1:-}" = --check ] || exit 0

# A fresh Debian of this machine's release, with the package and the tools
# that check it installed by apt as a user would.
gc40_install_packages debootstrap
suite=$(. /etc/os-release && echo "$VERSION_CODENAME")
root=$(mktemp -d "${TMPDIR:-/tmp}/gc40-chroot.XXXXXX")
chmod 755 "$root"  # apt in the chroot fetches as _apt
cleanup() {
  for mount in proc dev/pts dev; do umount "$root/$mount" 2>/dev/null || true; done
  rm -rf --one-file-system "$root"
}
trap cleanup EXIT
echo "gc40: making a fresh $suite in $root"
debootstrap --variant=minbase "$suite" "$root" >/dev/null
mount -t proc proc "$root/proc"
mount --bind /dev "$root/dev"
mount --bind /dev/pts "$root/dev/pts"
cp "$deb" "$root/tmp/"
chroot "$root" env DEBIAN_FRONTEND=noninteractive bash -c "
  set -euo pipefail
  apt-get update -q >/dev/null
  apt-get install -y -q --no-install-recommends /tmp/$(basename "$deb") man-db desktop-file-utils >/dev/null
  echo '--- gc40 --version:'; gc40 --version
  for page in gc40 gc40-sim r40; do
    MANWIDTH=80 man --warnings -l /usr/share/man/man1/\$page.1.gz >/dev/null 2>/tmp/warnings
    [ ! -s /tmp/warnings ] || { cat /tmp/warnings; exit 1; }
    echo \"--- man -l \$page.1.gz: \$(MANWIDTH=80 man -l /usr/share/man/man1/\$page.1.gz | sed -n 4p)\"
  done
  desktop-file-validate /usr/share/applications/gc40.desktop && echo '--- desktop-file-validate: ok'
  for program in gc40 gc40-sim r40; do
    ! ldd /usr/bin/\$program | grep 'not found' || exit 1
  done
  echo '--- ldd: every library found'
  # Three seconds of a headless run on the simulator, then a shutdown.
  gc40-sim --link /tmp/meter > /tmp/sim.txt & sim=\$!
  sleep 1
  env -u DISPLAY timeout -s TERM 3 gc40 --headless --auto-start --storage /tmp/s \\
    --port COM1=/tmp/meter < /dev/null > /dev/null 2>&1 || [ \$? = 124 ]
  kill \$sim; wait \$sim || true
  r40 check /tmp/s/DATA40/*.R40
"
echo "gc40: the package installs and runs on a fresh $suite"
