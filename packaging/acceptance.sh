#!/usr/bin/env bash
# Makes the acceptance kit: one executable that a person starts on a clean Windows, to see there what Wine cannot show.
#
#   packaging/acceptance.sh [BUILD_FOLDER] [--help]
#
# BUILD_FOLDER is a build for Windows, build/windows by default; scripts/build.sh makes it. build/acceptance/kit then
# holds the kit unpacked, and QXAcceptance.exe beside it the same as one file. What it does and what it leaves is told in
# docs/acceptance.md.
build=$(realpath -m -- "${1:-$(dirname "$0")/../build/windows}")
cd "$(dirname "$0")/.."
source scripts/lib.sh
arguments 1 "$@"

[ -f "$build/bin/acceptance.exe" ] || die "no Windows build in $build; scripts/build.sh makes one"
output=$PWD/build/acceptance kit=$PWD/build/acceptance/kit

tests/endtoend/packages.sh "$build"
rm -rf "$output"
catalogue=reference-host/demo/catalogue # where the tests look for it, from their current folder
mkdir -p "$kit/bin" "$kit/contract" "$kit/$catalogue"
cp -r "$build/packages" "$kit/packages"
cp "$build/bin/acceptance.exe" "$kit/"
for program in QXBackupUtility QXHostCheck cabarc windows_questions windows_tests qx_endtoend_tests qx_installer_tests \
  QXSetCheck soak format-stand-in archiver-stand-in; do
  cp "$build/bin/$program.exe" "$kit/bin/"
done
cp "$build"/tests/contract/host/* "$kit/contract/"
cp "$catalogue"/*.tsv "$kit/$catalogue/"
prefix=i686
options=(-V2 "-DKIT=$kit" "-DOUT=$output/QXAcceptance.exe")
if is_64_bit "$build/bin/acceptance.exe"; then prefix=x86_64 options+=(-DAMD64); fi
find "$kit" -name '*.exe' ! -path '*/packages/*' ! -name QXBackupUtility.exe -exec "$prefix-w64-mingw32-strip" {} +
makensis "${options[@]}" packaging/Acceptance.nsi
say "Acceptance kit: $(ls -sh "$output/QXAcceptance.exe")"
