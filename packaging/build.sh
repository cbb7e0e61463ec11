#!/usr/bin/env bash
# Makes the installers of the program and, marked as a demonstration, of the reference host.
#
#   packaging/build.sh [BUILD_FOLDER] [--help]
#
# BUILD_FOLDER is a build for Windows, build/windows by default; scripts/build.sh makes it. The packages go to its
# folder packages; their version is the executable's own, and the 64-bit ones have x64 in their names. Each holds the
# notices of what it has of others, and a bill of materials in CycloneDX's form, which also stands beside it. All that a
# package holds bears the date of the commit, so that the same build makes the same packages.
build=$(realpath -m -- "${1:-$(dirname "$0")/../build/windows}")
cd "$(dirname "$0")/.."
source scripts/lib.sh
arguments 1 "$@"

# NSIS instructions that delete the files below folder $1 and its folders where they are empty.
list_for_removal() {
  (cd "$1" && find . -type f -printf 'Delete "$INSTDIR\\%P"\n' &&
    find . -mindepth 1 -depth -type d -printf 'RMDir "$INSTDIR\\%P"\n') | tr / '\\'
}

# tell_contents NAME FOLDER OUTPUT: adds to a package's files in FOLDER its notices and its bill of materials, in the
# folder OUTPUT below it, and leaves the bill beside the package, too.
tell_contents() {
  local name=$1 output=$3/$1 programs
  mapfile -t programs < <(find "$2" -name '*.exe' -o -name '*.dll')
  /usr/bin/python3 packaging/contents.py "$build" "$SOURCE_DATE_EPOCH" "$name" "$version" "$output" "${programs[@]}"
  cp "$output.cdx.json" "$packages/$name-$version$machine.cdx.json"
}

[ -f "$build/bin/QXBackupUtility.exe" ] || die "no Windows build in $build; scripts/build.sh makes one"
packages=$build/packages
program=$packages/program
stage=$packages/host
rm -rf "$packages"
mkdir -p "$program"
version=$(project_version) machine=''
if is_64_bit "$build/bin/QXBackupUtility.exe"; then machine=-x64; fi
SOURCE_DATE_EPOCH=$(source_date)
export SOURCE_DATE_EPOCH
export LC_ALL=C.UTF-8 # makensis dies of names that the locale has no letters for

cp "$build"/bin/{QXBackupUtility,QXHostCheck,cabarc}.exe "$program"
docs/manual/build.sh "$program/QXBackupUtility.html"
tell_contents QXBackupUtility "$program" "$program"
lay_out_host "$stage" "$build/bin" 4
tell_contents ReferenceHost "$stage" "$stage/Program"
list_for_removal "$stage" >"$packages/host-files.nsh"
find "$program" "$stage" -exec touch -d "@$SOURCE_DATE_EPOCH" {} +

options=(-V2 "-DBIN=$program" "-DPACKAGES=$packages" "-DMANUAL=$program/QXBackupUtility.html")
if [ -n "$machine" ]; then options+=(-DAMD64); fi
makensis "${options[@]}" packaging/QXBackupUtility.nsi
makensis "${options[@]}" "-DSTAGE=$stage" "-DFILES=$packages/host-files.nsh" packaging/ReferenceHost.nsi
rm -r "$program" "$stage" "$packages/host-files.nsh"
say "Packages: $(cd "$packages" && ls -sh ./*-setup.exe | tr '\n' ' ')"
