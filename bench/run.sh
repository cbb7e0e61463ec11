#!/usr/bin/env bash
# Measures the archiver, the cutter of floppy sets and the whole program beside other tools, and writes
# docs/performance.md with its pictures.
#
#   bench/run.sh [--quick]
#
# Installs and builds what is missing. Needs about 14 GB of disk. With --quick everything is small and measured once:
# that shows whether it works, and the document goes to build/bench/docs instead.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
source scripts/common.sh

quick=
case ${1:-} in
  '') ;;
  --quick) quick=yes ;;
  *) die "usage: bench/run.sh [--quick]" ;;
esac

percent=100 rounds=3 docs=$root/docs
if [ -n "$quick" ]; then percent=4 rounds=1 docs=$root/build/bench/docs; fi
work=$root/build/bench/work
samples=$work/samples
release=$root/build/native-release/bin
windows=$root/build/windows/bin

# build FOLDER PRESET TARGET...
build() {
  local log=$work/build.log
  { cmake --preset "$2" -B "$1" -S . && ninja -C "$1" "${@:3}"; } >"$log" 2>&1 ||
    { tail -n 30 "$log" >&2; die "the build failed; see $log"; }
}

build_all() {
  local preset=windows
  [ "$(cat build/target)" = x86_64 ] && preset=windows64
  say "Building (build/native-release, build/windows)"
  build build/native native demo-data
  build build/native-release native-release cabarc demo-data bench_growth bench_pieces
  build build/windows "$preset" QXBackupUtility QX32 QX32lib QXNetDB TarsusComponents TarsusDataAccess Tarsus \
    BackupEventLog ExportRegistry ExportTable QXHostCheck cabarc bench_program bench_files
}

need_space() {
  local free
  free=$(df --output=avail -BM "$work" | tail -n 1 | tr -dc 0-9)
  [ "$free" -ge $((140 * percent + 500)) ] || die "$work needs $((140 * percent + 500)) MB of free disk; there are $free"
}

# Prints a folder in memory with room for some twenty trees; nothing where there is none.
folder_in_memory() {
  local folder=/dev/shm
  [ "$(stat -f -c %T "$folder" 2>/dev/null)" = tmpfs ] || return 0
  [ "$(df --output=avail -BM "$folder" | tail -n 1 | tr -dc 0-9)" -ge $((100 * percent)) ] || return 0
  printf '%s\n' "$folder/qx-bench.$$"
}

clean_up() {
  if [ -n "${workstation:-}" ]; then stop_wine "$workstation"; fi
  rm -rf "$memory" "$work"/{tree,small,cabinets,extracted,large,pieces,workstation}*
}

scripts/setup.sh
mkdir -p "$work"
: >"$samples"
source scripts/wine.sh
source scripts/workstation.sh
source bench/measure.sh
source bench/tree.sh
source bench/archiver.sh
source bench/program.sh
source bench/document.sh
install_tools gnuplot-nox time vmtouch # the pictures; a command's memory; what is in the cache
need_space
build_all
memory=$(folder_in_memory)
trap clean_up EXIT
clean_up

say "Making the files"
small_files "$work/small" $((200 * percent))
make_tree "$work/tree" "$percent"
say "Archiver: creating"
measure_creating
set_up_workstation
say "Archiver: extracting"
measure_extracting
say "Archiver: a large file; cutting into pieces"
measure_large_file
measure_pieces
say "Program: backup and restore against a batch file"
measure_program
say "Growth"
measure_growth
measure_xcopy
write_document "$docs"
say "Written: $docs/performance.md ($((SECONDS / 60)) min $((SECONDS % 60)) s)"
