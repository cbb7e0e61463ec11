#!/usr/bin/env bash
# Makes a Wine prefix with a small host, registers the components there, and runs the tests in it.
#
#   tests/reference-host-components/run.sh TarsusComponents.dll PREFIX TESTS.exe [ARGUMENT ...]
#
# The removable drive A: is the folder PREFIX.medium.
server=$(realpath "$1") prefix=$(realpath -m "$2") tests=$(realpath "$3")
shift 3
cd "$(dirname "$0")/../.."
source scripts/lib.sh
wine_environment

use_new_prefix "$prefix"
# Before the first program: a drive's kind is fixed when Wine first sees it.
rm -rf "$prefix.medium"
mkdir -p "$prefix.medium"
ln -sfn "$prefix.medium" "$prefix/dosdevices/a:"

host=$prefix/drive_c/Host
given=tests/reference-host-components
mkdir -p "$host/System" "$host/Log"
sqlite3 "$host/Host.db" <$given/host.sql
# The demonstration's texts too.
sqlite3 "$host/Host.db" <reference-host/demo/databases/language.sql
for language in english german; do
  sqlite3 "$host/Host.db" ".mode tabs" ".import reference-host/demo/catalogue/$language.tsv MSG_${language^^}"
done
sqlite3 "$host/DeleteList.db" <$given/deleteList.sql
cp $given/Directory.ini "$host/System/"

mark_for_tests "$prefix" "$host" "$prefix.medium"
wine_quietly reg add 'HKLM\Software\Wine\Drives' /v a: /d floppy /f # the server looks at it when it starts anew
use_null_display
wine_quietly reg add 'HKLM\SOFTWARE\Orvantis\TARSUS' /v PathAppl /d 'C:\Host' /f
wine_quietly regsvr32 /s "$(winepath -w "$server")"
wine "$tests" "$@"
