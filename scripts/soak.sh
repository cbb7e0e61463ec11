#!/usr/bin/env bash
# Backs up and restores many times in one run of the program and tells whether it grows.
#
#   scripts/soak.sh [ROUNDS] [--help]      (200 rounds)
cd "$(dirname "$0")/.."
source scripts/lib.sh
arguments 1 "$@"
lock_clone
scripts/setup.sh
scripts/build.sh native demo-data
scripts/build.sh windows
wine_environment
install_workstation "$PWD/build/soak-workstation" build/windows/bin 12
use_null_display
result=0
wine build/windows/bin/soak.exe "${1:-200}" >build/soak.log 2>&1 </dev/null &
await "$!" || result=$?
cat build/soak.log
exit "$result"
