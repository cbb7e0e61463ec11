#!/usr/bin/env bash
# Makes a Wine prefix with a small host, registers the components there, and
# runs the tests in it.
#
#   run.sh TarsusComponents.dll PREFIX TESTS.exe [ARGUMENT ...]
#
# The removable drive A: is the folder PREFIX.medium.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
source "$root/scripts/common.sh"
source "$root/scripts/wine.sh"
server=$1 prefix=$2 tests=$3
shift 3

rm -rf "$prefix" "$prefix.medium"
use_new_prefix "$prefix"
trap 'stop_wine "$prefix"' EXIT
mkdir -p "$prefix.medium"
# Before the first program: a drive's kind is fixed when Wine first sees it.
ln -sfn "$prefix.medium" "$prefix/dosdevices/a:"

host="$prefix/drive_c/Host"
mkdir -p "$host/System" "$host/Log"
sqlite3 "$host/Host.db" <"$here/host.sql"
sqlite3 "$host/DeleteList.db" <"$here/deleteList.sql"
cp "$here/Directory.ini" "$host/System/"

use_null_display
# The display is chosen when the desktop starts, which the command above has done already.
wineserver -k
key='HKLM\SOFTWARE\Orvantis\TARSUS'
wine reg add "$key" /v PathAppl /d 'C:\Host' /f >/dev/null
wine regsvr32 /s "$(winepath -w "$server")"
wine "$tests" "$@"
