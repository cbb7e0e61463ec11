#!/usr/bin/env bash
# Makes the installers of the program and, marked as a demonstration, of the reference host.
#
#   packaging/build.sh [BUILD_FOLDER]
#
# BUILD_FOLDER is a build for Windows, build/windows by default; scripts/build.sh makes it. The packages
# go to its folder packages. Their version is the executable's own.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
source scripts/common.sh
source scripts/workstation.sh
# The kind of machine in an executable's header: 014c is the 32-bit one.
machine_of() {
  local header
  header=$(od -An -td4 -j60 -N4 "$1")
  od -An -tx2 -j$((header + 4)) -N2 "$1" | tr -d ' '
}

# NSIS instructions that delete the files below folder $1 and its folders where they are empty.
list_for_removal() {
  (cd "$1" && find . -type f -printf 'Delete "$INSTDIR\\%P"\n' &&
    find . -mindepth 1 -depth -type d -printf 'RMDir "$INSTDIR\\%P"\n') | tr / '\\'
}

build=$(realpath "${1:-build/windows}")
[ -f "$build/bin/QXBackupUtility.exe" ] || die "no Windows build in $build; scripts/build.sh makes one"
packages="$build/packages"
stage="$packages/host"
mkdir -p "$packages"
rm -f "$packages"/*-setup.exe

docs/manual/build.sh "$packages/manual.html"
options=(-V2 "-DBIN=$build/bin" "-DPACKAGES=$packages" "-DMANUAL=$packages/manual.html")
[ "$(machine_of "$build/bin/QXBackupUtility.exe")" = 014c ] || options+=(-DAMD64)

demo_megabytes=${demo_megabytes:-4}
lay_out_host "$stage" "$build/bin"
list_for_removal "$stage" >"$packages/host-files.nsh"
makensis "${options[@]}" packaging/QXBackupUtility.nsi
makensis "${options[@]}" "-DSTAGE=$stage" "-DFILES=$packages/host-files.nsh" packaging/ReferenceHost.nsi
rm -r "$stage" "$packages/host-files.nsh" "$packages/manual.html"
say "Packages: $(cd "$packages" && ls -sh ./*-setup.exe | tr '\n' ' ')"
