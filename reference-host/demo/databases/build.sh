#!/usr/bin/env bash
# Makes the demonstration workstation's databases.
#
#   reference-host/demo/databases/build.sh OUTDIR
#
# OUTDIR is the host's root, "C:\Tarsus", as this system names it. The databases
# go to its folder Database, the small ones that sign-in compacts to Config and
# Param; all are SQLite files, those ending in .mdb too. What is there already
# is replaced. Where OUTDIR holds patients and images (Data/Patient, Data/Image.ddo),
# the databases name just these; else they name those that demo-data makes with
# its default size. Times are relative to now, or, for whoever makes a package, to
# SOURCE_DATE_EPOCH: then the same bytes come at any time.
#
# The users stand in users.tsv: display name, user ID, password, and the right
# none, backup, restore, both or full (privileged).
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
[ $# = 1 ] || { echo "usage: build.sh OUTDIR" >&2; exit 2; }
root=$1
now="'now', 'localtime'"
[ -z "${SOURCE_DATE_EPOCH:-}" ] || now=$(date -u -d "@$SOURCE_DATE_EPOCH" "+'%F %T'")
mkdir -p "$root/Database" "$root/Config" "$root/Param"
databases=$(cd "$root/Database" && pwd)

make_database() { # FILE SCHEMA
  rm -f "$1" "$1-journal"
  sed "s/'now', 'localtime'/$now/" "$here/$2.sql" | sqlite3 -bail -batch "$1"
}

# A text as a literal of SQL.
quoted() { printf "'%s'" "${1//\'/\'\'}"; }

import() { # DATABASE FILE TABLE
  sqlite3 -bail -batch "$1" ".mode tabs" ".import '$2' $3"
}

add_users() {
  local name id password right salt hash kind order=0
  while IFS=$'\t' read -r name id password right; do
    order=$((order + 1))
    salt=$(printf 'salt of %s' "$id" | sha256sum | cut -c 1-16)
    hash=$(printf '%s%s' "$salt" "$password" | sha256sum | cut -d ' ' -f 1)
    kind=1
    [ "$right" != full ] || kind=6
    sqlite3 -bail -batch "$databases/Users.db" \
      "INSERT INTO T_MUSER VALUES ($(quoted "$id"), $(quoted "$name"), $order, $kind, '$salt', '$hash');"
    case $right in backup | both) grant "$id" 2601 ;; esac
    case $right in restore | both) grant "$id" 2801 ;; esac
    sqlite3 -bail -batch "$databases/UserData.db" \
      "INSERT INTO T_MUSER(USER_ID, DISP_NAME) VALUES ($(quoted "$id"), $(quoted "$name"));"
  done <"$here/users.tsv"
}

grant() { # USER-ID FUNCTION-CODE
  sqlite3 -bail -batch "$databases/Users.db" "INSERT INTO T_FUNCTION_RIGHT VALUES ($(quoted "$1"), $2);"
}

# Takes the patients' names from their files.
take_patients() {
  local file id name
  for file in "$root"/Data/Patient/*/patient.ini; do
    [ -f "$file" ] || continue
    id=$(sed -n 's/^ID=//p' "$file" | tr -d '\r')
    name=$(sed -n 's/^Name=//p' "$file" | tr -d '\r')
    printf 'UPDATE T_TPATIENT SET PATIENT_NAME = %s WHERE PATIENT_ID = %s;\n' "$(quoted "$name")" "$(quoted "$id")"
  done | { echo 'BEGIN;'; cat; echo 'COMMIT;'; } | sqlite3 -bail -batch "$databases/Patient.db"
}

# Takes the images from the folder. An image's number decides its study, so that it
# belongs to a study of the patient in its name.
take_images() {
  local file number
  [ -d "$root/Data/Image.ddo" ] || return 0
  {
    echo "BEGIN; DELETE FROM T_TDATA_FILE WHERE URL LIKE 'file://C:%.ddo';"
    (cd "$root/Data/Image.ddo" && find . -name '*_[0-9]*.ddo' | sort) | while IFS= read -r file; do
      number=${file##*_}
      number=$((10#${number%.ddo}))
      file=${file#./}
      printf "INSERT INTO T_TDATA_FILE(STUDY_SEQ, URL) VALUES (%d, %s);\n" $((number % 240 + 1)) \
        "$(quoted "file://C:\\Tarsus\\Data\\Image.ddo\\${file//\//\\}")"
    done
    echo 'COMMIT;'
  } | sqlite3 -bail -batch "$databases/Study.db"
}

name_listed_patients() {
  sqlite3 -bail -batch "$databases/DeleteList.db" "ATTACH $(quoted "$databases/Patient.db") AS Patient;
    UPDATE T_DELETE_PATIENT SET PATIENT_NAME =
      (SELECT PATIENT_NAME FROM Patient.T_TPATIENT P WHERE P.PATIENT_ID = T_DELETE_PATIENT.PATIENT_ID);"
}

for schema in System Language Users Network Audit Patient Study UserData:user-data DeleteList:delete-list; do
  name=${schema%:*}
  file=${schema#*:}
  make_database "$databases/$name.db" "${file,,}"
done
for name in Config/Equipment Config/Exposure Param/Viewer Param/Print; do
  make_database "$root/$name.mdb" settings
done
import "$databases/Language.db" "$here/../catalogue/english.tsv" MSG_ENGLISH
import "$databases/Language.db" "$here/../catalogue/german.tsv" MSG_GERMAN
add_users
take_patients
take_images
name_listed_patients
