# Sourced by ./run: the workstation in build/workstation, opened for a person or
# worked by the operator program.

workstation="$root/build/workstation"

prepare_workstation() {
  if [ -n "$keep" ] && [ -d "$workstation/drive_c/Tarsus" ]; then
    export WINEPREFIX=$workstation
    register_components
    return
  fi
  say "Setting up the demonstration workstation (build/workstation)"
  install_workstation "$workstation"
}

program='C:\Tarsus\Program\QXBackupUtility.exe'

open_for_a_person() {
  say "Demonstration users"
  printf '   %-20s %-16s %s\n' Name Password Right
  awk -F '\t' '{ printf "   %-20s %-16s %s\n", $1, $3, $4 }' "$demo/databases/users.tsv"
  say "Opening the program; its removable drive E: is the folder $workstation.medium"
  wine "$program"
  wineserver -w
}

demonstrate() {
  local display
  rm -rf "$root/build/screenshots"
  mkdir -p "$root/build/screenshots"
  rm -rf "$workstation.medium"/* # what an earlier demonstration has left there, with --keep
  say "Starting a screen of its own for the operator"
  display=$(start_screen)
  trap stop_screen EXIT
  export DISPLAY=$display
  restart_wine # on this screen
  register_components
  say "The operator works the windows"
  run_operator "$root/build/screenshots" || die "the demonstration failed"
  show_backup_set
  show_maintenance_bundles
  restore_from_floppies
}

# Runs the operator program and shows its output as it comes. Through a file: a
# pipe stays open as long as Wine's server lives.
run_operator() {
  local output="$root/build/operator.log" operator
  : >"$output"
  wine "$root/build/windows/bin/operator.exe" "$@" >"$output" 2>&1 </dev/null &
  operator=$!
  tail -n +1 -f --pid=$operator "$output" | tr -d '\r'
  wait "$operator"
}

# Starts Xvfb, of the size $1 where it is given, with a window manager (without
# one, closed windows linger) and prints the display's name.
start_screen() {
  local number=90 size=${1:-1280x960}
  while [ -e "/tmp/.X11-unix/X$number" ] || [ -e "/tmp/.X$number-lock" ]; do number=$((number + 1)); done
  Xvfb ":$number" -screen 0 "${size}x24" -nolisten tcp >/dev/null 2>&1 &
  echo $! >"$root/build/screen.pid"
  local tries=100
  until [ -e "/tmp/.X11-unix/X$number" ]; do
    tries=$((tries - 1)); [ $tries -gt 0 ] || die "Xvfb does not start"
    sleep 0.05
  done
  DISPLAY=":$number" openbox >/dev/null 2>&1 &
  echo ":$number"
}

stop_screen() {
  stop_wine "$workstation"
  kill "$(cat "$root/build/screen.pid")" 2>/dev/null || true
}

# A pile of floppies of the same set: the archives joined by the archiver under
# the names they have on floppies, cut by the program's own cutter, and restored
# disk by disk.
restore_from_floppies() {
  local pile="$root/build/floppies" disks archive
  rm -rf "$pile"
  mkdir -p "$pile/set"
  for archive in "$(backup_set)"/*.cab; do cp "$archive" "$pile/set/$(basename "$archive").tmp"; done
  cp "$(backup_set)/BackupInfo.ini" "$pile/set/"
  (cd "$pile/set" && "$root/build/native/bin/cabarc" -r -p n FDDivide.cab ./*.tmp >/dev/null) ||
    die "the archives cannot be joined"
  disks=$("$root/build/native/bin/floppy-set" "$pile/set" "$pile") || die "the floppies cannot be made"
  say "The operator restores from $disks floppies"
  run_operator "$root/build/screenshots" "$pile" "$disks" || die "the restore from floppies failed"
}

backup_set() {
  dirname "$(find "$workstation.medium"/20* -name BackupInfo.ini | head -n 1)"
}

# The protected bundle must not hold a listed patient; the unprotected one shows
# that there was something to leave out.
show_maintenance_bundles() {
  local bundle listed work="$root/build/bundles"
  rm -rf "$work"
  say "The maintenance bundles"
  for bundle in Protected Unprotected; do
    mkdir -p "$work/$bundle"
    LC_ALL=C.UTF-8 cabextract -q -d "$work/$bundle" "$workstation.medium/$bundle/MAINTENANCE.cab" >/dev/null ||
      die "the archive of the $bundle bundle cannot be read"
    cp "$workstation.medium/$bundle/T_TSTUDY.txt" "$work/$bundle/" || die "the $bundle bundle has no study list"
    sqlite3 "$workstation/drive_c/Tarsus/Database/DeleteList.db" 'SELECT PATIENT_ID FROM T_DELETE_PATIENT' >"$work/listed"
    listed=$( (grep -rlaFf "$work/listed" "$work/$bundle"; find "$work/$bundle" -type f | grep -Ff "$work/listed") |
      sort -u | wc -l) || true
    printf '   %-12s %4d files, %d of them of listed patients\n' "$bundle" \
      "$(find "$work/$bundle" -type f | wc -l)" "$listed"
    [ "$bundle" = Unprotected ] || [ "$listed" = 0 ] || die "the protected bundle holds listed patients"
  done
  [ "$listed" -gt 0 ] || die "the unprotected bundle holds no listed patient, so the comparison shows nothing"
}

# The set that was written, and the proof that it is one: an independent tool
# reads the archives, and every byte is compared with the data it came from.
show_backup_set() {
  local set
  set=$(backup_set)
  [ -f "$set/BackupInfo.ini" ] || die "no backup set was written to $workstation.medium"
  say "The backup set ($set)"
  tr -d '\r' <"$set/BackupInfo.ini"
  "$root/scripts/check-set.sh" "$set" "$workstation/drive_c/Tarsus"
  say "The operation log"
  tr -d '\r' <"$workstation/drive_c/Tarsus/Log/BackupUtility.log"
  say "Screenshots: $(cd "$root" && ls build/screenshots/*.png | wc -l) in build/screenshots"
}
