#!/usr/bin/env bash
# Builds the portable code natively in build/native, and the Windows programs in build/windows for the machine that
# scripts/setup.sh has chosen.
#
#   scripts/build.sh [native [TARGET ...] | windows [TARGET ...]] [--help]
#
# Without arguments builds everything of both.
cd "$(dirname "$0")/.."
source scripts/lib.sh
arguments 1000 "$@"
lock_clone

# build FOLDER PRESET TARGET...
build() {
  local folder=$1 preset=$2 log=$1.log
  shift 2
  : >"$log"
  logged "$log" cmake --preset "$preset" -B "$folder" || die "$folder cannot be configured"
  logged "$log" ninja -C "$folder" "$@" || die "the build failed; the whole output is in $log"
}

build_native() {
  say "Building the portable code natively (build/native)"
  build build/native native "$@"
}
build_windows() {
  local preset=windows
  [ "$(windows_target)" = i686 ] || preset=windows64
  say "Building the Windows programs (build/windows, preset $preset)"
  build build/windows "$preset" "$@"
}

case ${1:-} in
  '') build_native && build_windows ;;
  native) build_native "${@:2}" ;;
  windows) build_windows "${@:2}" ;;
  *) refuse "unknown: $1" ;;
esac
