# Sourced by the scripts: Wine prefixes and how programs run in them.
#
# One pristine prefix is made once and copied for each use: copying takes a
# fraction of a second, making one takes ten.

export LC_ALL=C.UTF-8 WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml='
[ "$(cat "$root/build/target")" = i686 ] && export WINEARCH=win32

wine_base="$root/build/wine/base"

make_base_prefix() {
  [ -f "$wine_base/made" ] && return
  say "Making a Wine prefix (once)"
  rm -rf "$wine_base"
  mkdir -p "$root/build/wine"
  WINEPREFIX=$wine_base wineboot -i >/dev/null 2>&1 || die "Wine could not make a prefix"
  WINEPREFIX=$wine_base wineserver -w
  touch "$wine_base/made"
}

# Copies the pristine prefix to $1 and makes it the one that wine uses from here on.
use_new_prefix() {
  make_base_prefix
  stop_wine "$1"
  rm -rf "$1"
  mkdir -p "$(dirname "$1")"
  cp -a "$wine_base" "$1"
  export WINEPREFIX=$1
  wineserver -p60
}

# Ends whatever runs in the prefix $1.
stop_wine() {
  if [ -d "$1" ]; then WINEPREFIX=$1 wineserver -k 2>/dev/null || true; fi
}

# The null graphics driver: real windows and messages, no screen needed. The
# server starts anew, because it keeps the driver it began with.
use_null_display() {
  wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null
  restart_wine
}

restart_wine() {
  wineserver -k 2>/dev/null || true
  wineserver -w
  wineserver -p60
}
