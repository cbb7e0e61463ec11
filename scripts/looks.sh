#!/usr/bin/env bash
# Pictures of every window in every look, for the eye: build/looks/CATALOGUE-DPI-LOOK/NAME.png
# and a sheet of each in build/looks/CATALOGUE-DPI-LOOK.png.
#
#   scripts/looks.sh [CATALOGUE-DPI-LOOK[-POINTS] ...] [--help]
#
# CATALOGUE is english or german, or either with a "+" behind it: with captions half as long again. LOOK is themed
# or classic. POINTS is the configured size of the fonts. Without arguments: both catalogues, at 96, 144 and 192
# dots per inch, themed and classic; with the longer captions at 96. High contrast cannot be seen here: Wine does not
# tell programs of it.
cd "$(dirname "$0")/.."
source scripts/lib.sh
arguments 1000 "$@"

workstation=$PWD/build/looks-workstation
host_key='HKLM\SOFTWARE\Orvantis\TARSUS\BackupUtility'

# Sets a value of the registry: KEY NAME TYPE DATA.
set_value() { wine_quietly reg add "$1" /v "$2" /t "$3" /d "$4" /f; }

# lengthen TABLE: captions, and the words on the message dialog's buttons, become half as long again.
lengthen() {
  sqlite3 "$database/Language.db" "UPDATE $1 SET String = String || ' ' || substr(String, 1, length(String) / 2)
    WHERE ID BETWEEN 66001 AND 66070 OR ID BETWEEN 66080 AND 67003"
}

# Gives the workstation the catalogue $1, $2 dots per inch, the look $3 and fonts of $4 points.
dress() {
  local dialog edge theme=0 table=MSG_${1^^} database=$WINEPREFIX/drive_c/Tarsus/Database
  table=${table%+}
  [ "$3" != themed ] || theme=1
  [ -f "$database/Language.db.whole" ] || cp "$database/Language.db" "$database/Language.db.whole"
  cp "$database/Language.db.whole" "$database/Language.db"
  [[ $1 != *+ ]] || lengthen "$table"
  sqlite3 "$database/System.db" "UPDATE T_CONFIG SET VALUE = 'LANG:$table' WHERE NAME = 'MsgTableName'"
  set_value 'HKCU\Control Panel\Desktop' LogPixels REG_DWORD "$2"
  set_value 'HKCU\Software\Microsoft\Windows\CurrentVersion\ThemeManager' ThemeActive REG_SZ $theme
  set_value "$host_key" BUFontSizeSS REG_DWORD "$4"
  set_value "$host_key" BUFontSizeS REG_DWORD "$4"
  for dialog in UserAuthentication MainMenu Backup SelectFolder Restore Maintenance Jobs; do
    for edge in Left Top; do # each dialog stands in the middle again
      wine reg delete "$host_key" /v "dlg$dialog$edge" /f >/dev/null 2>&1 || true
    done
  done
  restart_wine
  register_components
}

take_pictures() {
  local catalogue dpi look points target=$PWD/build/looks/$1
  IFS=- read -r catalogue dpi look points <<<"$1"
  say "$1"
  rm -rf "$target"
  mkdir -p "$target"
  dress "$catalogue" "$dpi" "$look" "${points:-9}"
  # Through a file: a pipe stays open as long as Wine's server lives.
  rm -f "$target.log"
  logged "$target.log" wine build/windows/bin/looks.exe "$target" || die "$1: the operator got stuck"
  (cd "$target" && montage -background '#405060' -geometry +8+8 -tile 4x \
    {sign-in,menu,backup,destination,browser,question,done,menu-after,past-jobs,source,restore,warning}.png \
    {stopped,maintenance}.png "$target.png")
}

[ $# -gt 0 ] || set -- {english,german}-{96,144,192}-{themed,classic} {english,german}+-96-themed
lock_clone
scripts/setup.sh
scripts/build.sh native demo-data
scripts/build.sh windows
say "Setting up a workstation (build/looks-workstation)"
wine_environment
install_workstation "$workstation" build/windows/bin 2
start_screen 1920x1440
for each in "$@"; do take_pictures "$each"; done
say "Pictures in build/looks"
