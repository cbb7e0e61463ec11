#!/usr/bin/env bash
# Checks a backup set of the demonstration workstation without any of our own tools: cabextract lists and unpacks the
# archives, and every file is compared with the workstation's.
#
#   scripts/check-set.sh SET TARSUS_FOLDER [--help]
set=$(realpath -m -- "${1:-.}") tarsus=$(realpath -m -- "${2:-.}")
cd "$(dirname "$0")/.."
source scripts/lib.sh
arguments 2 "$@"
[ $# = 2 ] || refuse "a set and a host's folder are needed"
work=$(mktemp -d)
at_exit rm -rf "$work"

for archive in "$set"/*.cab; do
  name=$(basename "$archive" .cab)
  mkdir "$work/$name"
  LC_ALL=C.UTF-8 cabextract -q -d "$work/$name" "$archive" >/dev/null || die "$name.cab cannot be read"
  printf '   %-20s %9d bytes  %4d files\n' "$name.cab" "$(stat -c %s "$archive")" "$(find "$work/$name" -type f | wc -l)"
done

# Which folder of the workstation each archived folder came from. A maintenance
# log leaves the range of its images in range.txt.
compare() {
  local archived=$work/$1 original=$tarsus/$2
  [ -d "$archived" ] || return 0
  diff -r -x range.txt "$archived" "$original" >"$work/differences" ||
    { head -n 5 "$work/differences" >&2; die "$1 differs from $2"; }
  compared=$((compared + $(find "$archived" -type f | wc -l)))
}
compared=0
compare PatientData/Patient Data/Patient
compare PatientData/Image.ddo Data/Image.ddo
compare MenuData/Menu Data/Menu
compare UserData/User User
compare ExplanationData/Explanation Data/Explanation
compare ReportData/Report Data/Report
compare ReportSetData/ReportSet Data/ReportSet
compare LogData/ClientLog ClientLog
[ "$compared" -gt 0 ] || die "nothing could be compared"
say "$compared archived files are byte for byte the workstation's"
