#!/usr/bin/env bash
# Makes the installers of the program and, marked as a demonstration, of the reference host.
#
#   packaging/build.sh [BUILD_FOLDER] [--sign=COMMAND] [--help]
#
# BUILD_FOLDER is a build for Windows, build/windows by default; scripts/build.sh makes it. The packages go to its
# folder packages. Their version is the executable's own. COMMAND is a program that signs the file whose path it is
# given, in its place: it gets each executable and library that is installed, the uninstallers, and the packages themselves.
# packaging/try-signing.sh is an example.
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

[ -f "$build/bin/QXBackupUtility.exe" ] || die "no Windows build in $build; scripts/build.sh makes one"
packages=$build/packages
stage=$packages/host
bin=$packages/bin
rm -rf "$packages"/*-setup.exe "$bin"
mkdir -p "$bin"
cp "$build"/bin/{QXBackupUtility,QXHostCheck,cabarc}.exe "$bin/"
docs/manual/build.sh "$packages/manual.html"
lay_out_host "$stage" "$build/bin" 4
need_manifest "$bin"/*.exe "$stage"/*/*.exe
options=(-V2 "-DBIN=$bin" "-DPACKAGES=$packages" "-DMANUAL=$packages/manual.html")
if is_64_bit "$build/bin/QXBackupUtility.exe"; then options+=(-DAMD64); fi
if [ -n "$sign" ]; then
  sign_all "$bin"
  sign_all "$stage"
  options+=("-DSIGN=$sign")
fi
list_for_removal "$stage" >"$packages/host-files.nsh"
makensis "${options[@]}" packaging/QXBackupUtility.nsi
makensis "${options[@]}" "-DSTAGE=$stage" "-DFILES=$packages/host-files.nsh" packaging/ReferenceHost.nsi
rm -r "$stage" "$bin" "$packages/host-files.nsh" "$packages/manual.html"
say "Packages: $(cd "$packages" && ls -sh ./*-setup.exe | tr '\n' ' ')"
