#!/usr/bin/env bash
# Runs the acceptance kit dry: under Wine, in a new prefix, with one of some cases of each test program. Shows that the
# kit itself is in order. What only Windows can answer stays unanswered.
#
#   scripts/acceptance.sh [BUILD_FOLDER] [--help]
#
# Leaves the report in build/acceptance.html.
build=$(realpath -m -- "${1:-$(dirname "$0")/../build/windows}")
cd "$(dirname "$0")/.."
source scripts/lib.sh
arguments 1 "$@"
lock_clone
wine_environment
prefix=$PWD/build/acceptance-prefix
kit=$prefix/drive_c/QXAcceptance

packaging/acceptance.sh "$build" >build/acceptance.log 2>&1 || die "the kit cannot be made; see build/acceptance.log"
use_new_prefix "$prefix"
for drive in e:medium f:foreign; do
  rm -rf "$prefix.${drive#*:}"
  mkdir "$prefix.${drive#*:}"
  ln -sfn "$prefix.${drive#*:}" "$prefix/dosdevices/${drive%:*}:"
  wine_quietly reg add 'HKLM\Software\Wine\Drives' /v "${drive%:*}:" /d floppy /f
done
echo BACKUP >"$prefix.medium/.windows-label"
use_null_display
cp -r build/acceptance/kit "$kit"
status=0
# Through a file, because a pipe stays open as long as Wine's server lives.
wine "$kit/acceptance.exe" --yes --part 40 >build/acceptance.out 2>&1 </dev/null || status=$?
tr -d '\r' <build/acceptance.out
cp "$kit/report.html" build/acceptance.html
grep -q ' not answered' build/acceptance.out || die "the kit did not come to its end"
[ "$status" = 0 ] || die "the kit found $status things wrong; see build/acceptance.html"
