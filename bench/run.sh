#!/usr/bin/env bash
# Measures the archiver, the cutter of floppy sets and the whole program beside other tools, and writes
# docs/performance.md with its pictures.
#
#   bench/run.sh [--quick] [--help]
#
# Installs and builds what is missing. Needs about 14 GB of disk. With --quick everything is small and measured once:
# that shows whether it works, and the document goes to build/bench/docs instead.
cd "$(dirname "$0")/.."
source scripts/lib.sh

options=() docs=$PWD/docs megabytes=14500
case ${1:-} in
  '') ;;
  --quick) options=(--quick) docs=$PWD/build/bench/docs megabytes=1100 ;;
  --help) describe && exit ;;
  *) refuse "unknown option: $1" ;;
esac
[ $# -le 1 ] || refuse "too many arguments"

work=$PWD/build/bench/work
native=$PWD/build/native-release
windows=$PWD/build/windows

build_all() {
  say "Building (build/native-release, build/windows)"
  scripts/build.sh native demo-data
  scripts/build.sh windows
  logged build/bench/build.log cmake --preset native-release -B "$native"
  logged build/bench/build.log ninja -C "$native" cabarc QXSetCheck demo-data bench_growth bench_pieces bench_walk
  logged build/bench/build.log ninja -C "$windows" bench_program bench_files
}

# free_megabytes FOLDER
free_megabytes() { df --output=avail -BM "$1" | tail -n 1 | tr -dc 0-9; }

# The workstation lies in memory where there is room: a disk that is slow for a while after files have been deleted
# would be all that there is to see.
place_workstation() {
  workstation=$work/workstation workstation_on='on disk'
  if [ "$(stat -f -c %T /dev/shm 2>/dev/null)" = tmpfs ] && [ "$(free_megabytes /dev/shm)" -ge $((megabytes * 7 / 10)) ]; then
    workstation=$(mktemp -d /dev/shm/qx-bench.XXXXXX)/workstation workstation_on='in memory (tmpfs)'
    at_exit rm -rf "${workstation%/*}"
  fi
}

lock_clone
scripts/setup.sh
install_tools python3-matplotlib time vmtouch # the pictures; a command's memory; what is in the cache
rm -rf "$work"
mkdir -p "$work"
at_exit rm -rf "$work"
[ "$(free_megabytes "$work")" -ge "$megabytes" ] ||
  die "$work needs $megabytes MB of free disk; there are $(free_megabytes "$work")"
build_all
wine_environment
place_workstation
say "Setting up a workstation, $workstation_on"
install_workstation "$workstation" build/windows/bin 1
use_null_display
/usr/bin/python3 bench/measure.py "${options[@]}" "$work" "$docs" "$native/bin" "$windows/bin" "$workstation_on"
