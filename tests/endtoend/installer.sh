#!/usr/bin/env bash
# Makes the packages of a build, and an older one of the program, and runs the tests of them in a new Wine prefix.
#
#   tests/endtoend/installer.sh BUILD_FOLDER PREFIX [--help]
build=$(realpath -m -- "${1:-build/windows}") prefix=$(realpath -m -- "${2:-build/installer-prefix}")
cd "$(dirname "$0")/../.."
source scripts/lib.sh
arguments 2 "$@"
wine_environment

packaging/build.sh "$build"
older=$build/packages/older
options=(-V1 -DVERSION=0.9.0 "-DMANUAL=$older/manual.html" "-DBIN=$older/bin" "-DPACKAGES=$older")
if is_64_bit "$build/bin/QXBackupUtility.exe"; then options+=(-DAMD64); fi
mkdir -p "$older/bin"
cp "$build"/bin/{QXBackupUtility,QXHostCheck,cabarc}.exe "$older/bin/"
echo older >>"$older/bin/QXBackupUtility.exe"
echo "An older manual" >"$older/manual.html"
touch "$older/bin/QXBackupUtility-notices.txt" "$older/bin/QXBackupUtility.cdx.json"
makensis "${options[@]}" packaging/QXBackupUtility.nsi

use_new_prefix "$prefix"
use_null_display
PACKAGES=$(winepath -w "$build/packages") wine "$build/bin/qx_installer_tests.exe"
