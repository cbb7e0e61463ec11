#!/usr/bin/env bash
# Makes the packages of a build, and an older one of the program, and runs the tests of them in a new Wine prefix.
#
#   installer.sh BUILD_FOLDER PREFIX
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
build=$(realpath "$1") prefix=$2
source "$root/scripts/common.sh"
source "$root/scripts/wine.sh"

"$root/packaging/build.sh" "$build"
older="$build/packages/older"
mkdir -p "$older/bin"
cp "$build"/bin/{QXBackupUtility,QXHostCheck,cabarc}.exe "$older/bin/"
echo older >>"$older/bin/QXBackupUtility.exe"
echo "An older manual" >"$older/manual.html"
makensis -V1 -DVERSION=0.9.0 "-DMANUAL=$older/manual.html" "-DBIN=$older/bin" "-DPACKAGES=$older" \
  "$root/packaging/QXBackupUtility.nsi"

# Wine would add the shortcuts to this machine's own menus.
export WINEDLLOVERRIDES="$WINEDLLOVERRIDES;winemenubuilder.exe=d"
use_new_prefix "$prefix"
trap 'stop_wine "$prefix"' EXIT
use_null_display
PACKAGES=$(winepath -w "$build/packages") wine "$build/bin/qx_installer_tests.exe"
