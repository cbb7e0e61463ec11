#!/usr/bin/env bash
# Measures a backup and a restore against the same commands in one batch file.
#
#   bench/backup/run.sh [ROUNDS [MEGABYTES]]
#
# ./run or ./test must have built everything before.
set -euo pipefail
cd "$(dirname "$0")/../.."
root=$PWD
source scripts/common.sh
source scripts/wine.sh
source scripts/workstation.sh
rounds=${1:-5}
demo_megabytes=${2:-60}
ninja -C build/windows bench_backup >/dev/null
say "Setting up a workstation with $demo_megabytes MB of images (build/bench-workstation)"
install_workstation "$root/build/bench-workstation"
use_null_display
say "Measuring $rounds rounds"
wine build/windows/bin/bench_backup.exe "$rounds" >build/bench-backup.txt 2>&1 </dev/null || true
tr -d '\r' <build/bench-backup.txt
stop_wine "$root/build/bench-workstation"
