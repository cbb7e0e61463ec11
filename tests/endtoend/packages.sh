#!/usr/bin/env bash
# Makes the packages of a build, and in their folder older an older one of the program.
#
#   tests/endtoend/packages.sh [BUILD_FOLDER] [--help]
build=$(realpath -m -- "${1:-build/windows}")
cd "$(dirname "$0")/../.."
source scripts/lib.sh
arguments 1 "$@"

packaging/build.sh "$build"
older=$build/packages/older
options=(-V1 -DVERSION=0.9.0 "-DMANUAL=$older/manual.html" "-DBIN=$older/bin" "-DPACKAGES=$older")
if is_64_bit "$build/bin/QXBackupUtility.exe"; then options+=(-DAMD64); fi
mkdir -p "$older/bin"
cp "$build"/bin/{QXBackupUtility,QXHostCheck,QXSetCheck,cabarc}.exe "$older/bin/"
echo older >>"$older/bin/QXBackupUtility.exe"
echo "An older manual" >"$older/manual.html"
touch "$older/bin/QXBackupUtility-notices.txt" "$older/bin/QXBackupUtility.cdx.json"
makensis "${options[@]}" packaging/QXBackupUtility.nsi
