#!/usr/bin/env bash
# Makes the installers of the program and, marked as a demonstration, of the reference host.
#
#   packaging/build.sh [BUILD_FOLDER] [--sign=COMMAND] [--help]
#
# BUILD_FOLDER is a build for Windows, build/windows by default; scripts/build.sh makes it. The packages go to its
# folder packages; their version is the executable's own, and the 64-bit ones have x64 in their names. Each holds the
# notices of what it has of others, and a bill of materials in CycloneDX's form, which also stands beside it. All that a
# package holds bears the date of the commit, so that the same build makes the same packages.
#
# COMMAND is a program that signs the file whose path it is given, in its place: it gets each executable and library
# that is installed, the uninstallers, and the packages themselves. packaging/try-signing.sh is an example.
cd "$(dirname "$0")/.."
source scripts/lib.sh

build=build/windows sign=
for argument in "$@"; do
  case $argument in
    --sign=?*) sign=$(cd "$OLDPWD" && realpath -- "${argument#*=}") ;;
    --help) describe && exit ;;
    -*) refuse "unknown option: $argument" ;;
    *) build=$(cd "$OLDPWD" && realpath -m -- "$argument") ;;
  esac
done
build=$(realpath -m -- "$build")

# NSIS instructions that delete the files below folder $1 and its folders where they are empty.
list_for_removal() {
  (cd "$1" && find . -type f -printf 'Delete "$INSTDIR\\%P"\n' &&
    find . -mindepth 1 -depth -type d -printf 'RMDir "$INSTDIR\\%P"\n') | tr / '\\'
}

# Without a manifest Windows gives an executable the rights and redirections of old times.
need_manifest() {
  local file
  for file in "$@"; do
    grep -qa requestedExecutionLevel "$file" || die "$file has no manifest"
  done
}

# sign_all FOLDER: what is in it and below.
sign_all() {
  local file
  while IFS= read -r file; do "$sign" "$file" || die "$file could not be signed"; done \
    < <(find "$1" -name '*.exe' -o -name '*.dll')
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

cp "$build"/bin/{QXBackupUtility,QXHostCheck,QXSetCheck,cabarc}.exe "$program"
docs/manual/build.sh "$program/QXBackupUtility.html"
lay_out_host "$stage" "$build/bin" 4
need_manifest "$program"/*.exe "$stage"/*/*.exe
options=(-V2 "-DBIN=$program" "-DPACKAGES=$packages" "-DMANUAL=$program/QXBackupUtility.html")
if [ -n "$machine" ]; then options+=(-DAMD64); fi
if [ -n "$sign" ]; then
  sign_all "$program"
  sign_all "$stage"
  options+=("-DSIGN=$sign")
fi
tell_contents QXBackupUtility "$program" "$program"
tell_contents ReferenceHost "$stage" "$stage/Program"
list_for_removal "$stage" >"$packages/host-files.nsh"
find "$program" "$stage" -exec touch -d "@$SOURCE_DATE_EPOCH" {} +

makensis "${options[@]}" packaging/QXBackupUtility.nsi
makensis "${options[@]}" "-DSTAGE=$stage" "-DFILES=$packages/host-files.nsh" packaging/ReferenceHost.nsi
rm -r "$program" "$stage" "$packages/host-files.nsh"
say "Packages: $(cd "$packages" && ls -sh ./*-setup.exe | tr '\n' ' ')"
