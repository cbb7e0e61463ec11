#!/usr/bin/env bash
# Backs up and restores many times in one run of the program and tells whether it grows.
#
#   scripts/soak.sh [ROUNDS]
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
source scripts/common.sh

scripts/setup.sh
scripts/build.sh demo-data
source scripts/wine.sh
source scripts/workstation.sh
install_workstation "$root/build/soak-workstation"
use_null_display
result=0
wine build/windows/bin/soak.exe "${1:-200}" >build/soak.log 2>&1 </dev/null || result=$?
stop_wine "$root/build/soak-workstation"
cat build/soak.log
exit "$result"
