#!/usr/bin/env bash
# Builds the Windows programs and, natively, the targets given (default: all).
#
#   scripts/build.sh [NATIVE_TARGET ...]
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
source scripts/common.sh

build() {
  local folder=$1 preset=$2
  shift 2
  if ! { cmake --preset "$preset" -B "$folder" && ninja -C "$folder" "$@"; } >"$folder.log" 2>&1; then
    tail -n 40 "$folder.log" >&2
    die "the build failed; the whole output is in $folder.log"
  fi
}

windows_preset=windows
[ "$(cat build/target)" = x86_64 ] && windows_preset=windows64
say "Building the portable code natively (build/native)"
build build/native native "$@"
say "Building the Windows programs (build/windows, preset $windows_preset)"
build build/windows "$windows_preset"
