#!/usr/bin/env bash
# Does the program's main job on the workstation in build/workstation: an operator program works the real windows, every
# result is proved, and a screenshot of every dialog is left in build/screenshots.
#
#   scripts/demonstrate.sh [--help]
#
# ./run --unattended builds, sets the workstation up and calls this.
cd "$(dirname "$0")/.."
source scripts/lib.sh
arguments 0 "$@"

workstation=$PWD/build/workstation
medium=$workstation.medium
tarsus=$workstation/drive_c/Tarsus
screenshots=$PWD/build/screenshots

# Runs the operator program with its arguments and shows its output as it comes: through a file, because a pipe stays
# open as long as Wine's server lives.
run_operator() {
  local output=build/operator.log operator status=0
  local closing='The program has ended and started the host application'
  : >"$output"
  wine build/windows/bin/operator.exe "$screenshots" "$@" >"$output" 2>&1 </dev/null &
  operator=$!
  tail -n +1 -f --pid="$operator" "$output" | sed -u 's/\r$//'
  wait "$operator" || status=$?
  [ "$status" = 0 ] || die "the operator program ended with $status"
  # Wine answers with 0 also when its server has been killed.
  tail -n 1 "$output" | grep -qF "$closing" || die "the operator program ended before its last step"
}

# What two client workstations have dropped before the backup, each its logs in an archive of the host's archiver.
drop_client_logs() {
  local name work=$PWD/build/clients cabarc=$PWD/build/native/bin/cabarc
  rm -rf "$work"
  for name in Maintenance_XRAY1_261102073015 Maintenance_XRAY2_261103181240; do
    mkdir -p "$work/$name/Log"
    printf '[%s] The station has been switched on\r\n' "${name#*_}" >"$work/$name/Log/Station.log"
    printf '[Station]\r\nName=%s\r\n' "${name:12:5}" >"$work/$name/Station.ini"
    (cd "$work" && "$cabarc" -r -p n "$tarsus/Update/$name.cab" ".\\$name\\*.*" >/dev/null) ||
      die "the logs of a client cannot be packed"
  done
}

# The set's own checker says that it can be restored, down to the items of this workstation; of a damaged copy it tells
# what is lost, and brings back the rest. Every byte that it brings back is compared with the set's own.
check_backup_set() {
  local checker=build/native/bin/QXSetCheck work=$PWD/build/damaged archive=PatientData.cab status=0 size
  say "What QXSetCheck says of it"
  "$checker" --workstation "$tarsus/System" "$1" || die "the set is not sound"
  rm -rf "$work"
  mkdir -p "$work"
  cp -r "$1" "$work/set"
  size=$(stat -c %s "$1/$archive")
  printf 'damage' | dd of="$work/set/$archive" bs=1 seek=$((size / 2)) conv=notrunc status=none
  say "The same set with six bytes of $archive overwritten, and what is left of it"
  "$checker" --unpack "$work/left" "$work/set" >"$work/said" || status=$?
  grep -v ' whole, 0 partial, 0 lost' "$work/said"
  [ "$status" = 1 ] || die "the damage was not found"
  "$checker" --unpack "$work/whole" "$1" >/dev/null || die "the set cannot be unpacked"
  # A file that is not whole has another name, and so it stands on one side alone.
  diff -r "$work/whole" "$work/left" | grep '^Files\|^diff\|^Binary' >&2 && die "what was brought back differs"
  say "$(find "$work/left" -type f ! -name '*.partial' | wc -l) of $(find "$work/whole" -type f | wc -l) files came back whole"
}

# The clients' archives have been taken in: each unpacked whole, and no longer where it was dropped.
show_client_logs() {
  local folder name
  for folder in build/clients/*; do
    name=${folder##*/}
    diff -r "$folder" "$tarsus/ClientLog/$name" >&2 || die "$name was not unpacked as it was dropped"
    [ ! -e "$tarsus/Update/$name.cab" ] || die "$name.cab was not taken in"
    say "$name has been taken in, and saved with the logs"
  done
}

find_backup_set() {
  local descriptors=("$medium"/20*/BackupInfo.ini)
  [ -f "${descriptors[0]}" ] || die "no backup set was written to $medium"
  dirname "${descriptors[0]}"
}

# The proof that a set is one: an independent tool reads the archives, and every byte is compared with the data it came
# from.
show_backup_set() {
  say "The backup set ($1)"
  tr -d '\r' <"$1/BackupInfo.ini"
  scripts/check-set.sh "$1" "$tarsus"
  say "The operation log"
  tr -d '\r' <"$tarsus/Log/BackupUtility.log"
}

# The protected bundle must not hold a listed patient; the unprotected one shows that there was something to leave out.
show_maintenance_bundles() {
  local bundle listed work=build/bundles
  rm -rf "$work"
  say "The maintenance bundles"
  for bundle in Protected Unprotected; do
    mkdir -p "$work/$bundle"
    cabextract -q -d "$work/$bundle" "$medium/$bundle/MAINTENANCE.cab" >/dev/null ||
      die "the archive of the $bundle bundle cannot be read"
    cp "$medium/$bundle/T_TSTUDY.txt" "$work/$bundle/" || die "the $bundle bundle has no study list"
    sqlite3 "$tarsus/Database/DeleteList.db" 'SELECT PATIENT_ID FROM T_DELETE_PATIENT' >"$work/listed"
    listed=$({ grep -rlaFf "$work/listed" "$work/$bundle" || true
               find "$work/$bundle" -type f | grep -Ff "$work/listed" || true; } | sort -u | wc -l)
    printf '   %-12s %4d files, %d of them of listed patients\n' "$bundle" \
      "$(find "$work/$bundle" -type f | wc -l)" "$listed"
    [ "$bundle" = Unprotected ] || [ "$listed" = 0 ] || die "the protected bundle holds listed patients"
  done
  [ "$listed" -gt 0 ] || die "the unprotected bundle holds no listed patient, so the comparison shows nothing"
}

# restore_from_floppies SET: from a pile of floppies with the same data: the archives joined by the archiver under the
# names they have on floppies, cut by the program's own cutter, and restored disk by disk.
restore_from_floppies() {
  local pile=$PWD/build/floppies cabarc=$PWD/build/native/bin/cabarc disks archive
  rm -rf "$pile"
  mkdir -p "$pile/set"
  for archive in "$1"/*.cab; do cp "$archive" "$pile/set/${archive##*/}.tmp"; done
  cp "$1/BackupInfo.ini" "$pile/set/"
  (cd "$pile/set" && "$cabarc" -r -p n FDDivide.cab ./*.tmp >/dev/null) || die "the archives cannot be joined"
  disks=$(build/native/bin/floppy-set "$pile/set" "$pile") || die "the floppies cannot be made"
  say "The operator restores from $disks floppies"
  run_operator "$pile" "$disks"
}

lock_clone
[ -f "$workstation.whole" ] || die "there is no workstation; ./run --unattended sets it up"
wine_environment
rm -rf "$screenshots" "${medium:?}"/* # what an earlier demonstration has left there
mkdir -p "$screenshots"
say "Starting a screen of its own for the operator"
start_screen 1280x960
drop_client_logs
use_prefix "$workstation"
register_components
say "The operator works the windows"
run_operator
set=$(find_backup_set)
show_backup_set "$set"
check_backup_set "$set"
show_client_logs
show_maintenance_bundles
restore_from_floppies "$set"
say "The main job is done; $(find "$screenshots" -name '*.png' | wc -l) screenshots are in build/screenshots"
