#!/usr/bin/env bash
# Makes the installers of the program and, marked as a demonstration, of the reference host.
#
#   packaging/build.sh [BUILD_FOLDER] [--help]
#
# BUILD_FOLDER is a build for Windows, build/windows by default; scripts/build.sh makes it. The packages
# go to its folder packages. Their version is the executable's own.
build=$(realpath -m -- "${1:-$(dirname "$0")/../build/windows}")
cd "$(dirname "$0")/.."
source scripts/lib.sh
arguments 1 "$@"

# NSIS instructions that delete the files below folder $1 and its folders where they are empty.
list_for_removal() {
  (cd "$1" && find . -type f -printf 'Delete "$INSTDIR\\%P"\n' &&
    find . -mindepth 1 -depth -type d -printf 'RMDir "$INSTDIR\\%P"\n') | tr / '\\'
}

[ -f "$build/bin/QXBackupUtility.exe" ] || die "no Windows build in $build; scripts/build.sh makes one"
packages=$build/packages
stage=$packages/host
mkdir -p "$packages"
rm -f "$packages"/*-setup.exe

docs/manual/build.sh "$packages/manual.html"
options=(-V2 "-DBIN=$build/bin" "-DPACKAGES=$packages" "-DMANUAL=$packages/manual.html")
if is_64_bit "$build/bin/QXBackupUtility.exe"; then options+=(-DAMD64); fi
lay_out_host "$stage" "$build/bin" 4
list_for_removal "$stage" >"$packages/host-files.nsh"
makensis "${options[@]}" packaging/QXBackupUtility.nsi
makensis "${options[@]}" "-DSTAGE=$stage" "-DFILES=$packages/host-files.nsh" packaging/ReferenceHost.nsi
rm -r "$stage" "$packages/host-files.nsh" "$packages/manual.html"
say "Packages: $(cd "$packages" && ls -sh ./*-setup.exe | tr '\n' ' ')"
