#!/usr/bin/env bash
# Kills the program and everything it has started at every write to the destination of a small backup over an older set,
# and looks at what is left: the older set, the new one, or one without a descriptor, which no restore takes. Anything
# else is a fault.
#
#   scripts/crash.sh [--help]
cd "$(dirname "$0")/.."
source scripts/lib.sh
arguments 0 "$@"
lock_clone
scripts/setup.sh
install_tools inotify-tools
scripts/build.sh native demo-data
scripts/build.sh windows
prefix=$PWD/build/crash-workstation
wine_environment
install_workstation "$prefix" build/windows/bin 12
use_null_display
set_folder="$prefix.medium/Soak"

# One backup of the report data into the set's folder, and its restore.
run_program() { wine build/windows/bin/soak.exe 1 >build/crash.log 2>&1 </dev/null; }

# Runs the program and kills all of it at the $1-th change below the set's folder; false when the
# backup was over before.
crash_at() {
  local events=build/crash-events watcher program seen=0
  rm -f "$events"; mkfifo "$events"
  inotifywait -q -m -e modify,create,delete,close_write,moved_to "$set_folder" >"$events" 2>/dev/null &
  watcher=$!
  run_program &
  program=$!
  while [ "$seen" -lt "$1" ] && read -r -t 30 _; do seen=$((seen + 1)); done <"$events"
  wineserver -k9 2>/dev/null || true
  kill "$watcher" 2>/dev/null || true
  wait "$watcher" "$program" 2>/dev/null || true
  [ "$seen" = "$1" ]
}

# What stands in the set's folder: old, new, refused, or a fault.
verdict() {
  local archive
  if [ ! -s "$set_folder/BackupInfo.ini" ] || ! grep -q '^CABFile=.*;' "$set_folder/BackupInfo.ini"; then echo refused; return; fi
  for archive in $(sed -n 's/^CABFile=//p' "$set_folder/BackupInfo.ini" | tr -d '\r' | tr ';' ' '); do
    cabextract -qt "$set_folder/$archive" >/dev/null 2>&1 || { echo "broken: $archive"; return; }
  done
  if diff -rq "$set_folder" "$prefix.older" >/dev/null; then echo old; else echo new; fi
}

say "Making the older set"
mkdir -p "$set_folder"
run_program || die "the backup failed; see build/crash.log"
rm -rf "$prefix.older"
cp -a "$prefix.medium/Soak" "$prefix.older" 2>/dev/null || die "no set was made; see build/crash.log"
declare -A count=()
for ((n = 1; ; n++)); do
  rm -rf "$set_folder"; cp -a "$prefix.older" "$set_folder"
  rm -rf "$prefix/drive_c/users/"*/Temp/[0-9]*
  wineserver -p60 || true # it may be running already
  crash_at "$n" || break
  result=$(verdict)
  say "killed at change $n: $result"
  count[${result%%:*}]=$((${count[${result%%:*}]:-0} + 1))
done
stop_wine "$prefix"
printf '%s crashes:' "$((n - 1))"
for result in "${!count[@]}"; do printf ' %s %s' "$result" "${count[$result]}"; done
echo
[ -z "${count[broken]:-}" ]
