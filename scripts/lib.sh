# What the commands share. Each of them goes to the root of the clone, which stays the current folder, and sources this
# file. Functions are told what they work on; beyond that they know build/ below the current folder, where everything
# lies that is not in the repository, and the environment that `wine_environment` and `use_new_prefix` set for Wine.

set -Eeuo pipefail

# --- Speaking, failing, ending ---

say() { printf '== %s\n' "$*"; }
warn() { printf '!! %s\n' "$*" >&2; }
die() {
  why_stopped=$*
  warn "$why_stopped"
  exit 1
}

# Why the command stops, for those that say it last; empty as long as nothing is wrong.
why_stopped=

# Whatever fails without having been expected to is named, also when its output goes to a file: once, not again by each
# function that it makes fail.
name_failure() {
  case $2 in "$failed_command" | 'return '*) return ;; esac
  failed_command=$2
  why_stopped="$3: failed with $1: ${2%%$'\n'*}"
  warn "$why_stopped"
}
failed_command=
trap 'name_failure "$?" "$BASH_COMMAND" "${BASH_SOURCE[0]}:$LINENO"' ERR

# at_exit COMMAND...: runs it when this script ends, in whichever way; the last one first.
at_exit() { exit_commands+=("$(printf '%q ' "$@")"); }
exit_commands=()
run_exit_commands() {
  local status=$? index
  set +e
  trap - ERR
  trap '' INT TERM
  for ((index = ${#exit_commands[@]} - 1; index >= 0; --index)); do eval "${exit_commands[index]}"; done
  exit "$status"
}
trap run_exit_commands EXIT

# await JOB: waits for what has been started with `env --default-signal=INT ... &`, so that Ctrl-C ends this script at
# once. The shell hears it while it waits for a job, but only after the end of a program in the foreground, and Wine's
# programs take no notice of it. The job's output is redirected where it is started, not here, where it would hide what
# is said of the interruption.
await() {
  local status=0
  awaited=$1
  wait "$awaited" || status=$?
  awaited=
  return "$status"
}
awaited=
awaited_to_the_end= # set for the package manager, which must end what it has begun
interrupt() {
  why_stopped=interrupted
  warn interrupted
  trap '' INT TERM
  if [ -n "$awaited" ]; then
    kill -INT "$awaited" 2>/dev/null || true
    if [ -n "$awaited_to_the_end" ]; then
      warn "waiting until the package manager has ended what it has begun"
      wait "$awaited" || true
    fi
  fi
  exit "$1"
}
trap 'interrupt 130' INT
trap 'interrupt 143' TERM

end_process() { kill "$1" 2>/dev/null; }

# logged LOG PROGRAM...: runs a program with its output at the end of a file; when it fails, names it and shows the last
# lines.
logged() {
  local log=$1 status=0
  shift
  env --default-signal=INT,QUIT "$@" >>"$log" 2>&1 </dev/null &
  await "$!" || status=$?
  [ "$status" != 0 ] || return 0
  tail -n 20 "$log" >&2
  why_stopped="failed with $status: $* (output: $log)"
  warn "$why_stopped"
  return "$status"
}

# --- The command line ---

# Prints what a script says of itself: the comment that it begins with.
describe() { sed -n '2,${/^#/!q;s/^# \{0,1\}//p}' "$this_script"; }
this_script=$0
[[ $0 = /* ]] || this_script=$OLDPWD/$0

refuse() {
  describe >&2
  warn "$1"
  exit 2
}

# arguments MOST "$@": for a script without options and with at most MOST arguments.
arguments() {
  local most=$1 argument
  shift
  for argument in "$@"; do
    case $argument in
      --help) describe && exit ;;
      -*) refuse "unknown option: $argument" ;;
    esac
  done
  [ $# -le "$most" ] || refuse "too many arguments"
}

# --- The clone ---

# Stops where build/ cannot be written.
need_build_folder() {
  mkdir -p build 2>/dev/null && [ -w build ] || die "$PWD/build cannot be written by $(id -un)"
}

# Stops where something in build/ cannot be written, such as what another user has built there.
need_own_build() {
  local obstacle
  obstacle=$(find build ! -user "$(id -u)" ! -type l ! -writable -print -quit 2>/dev/null) || true
  [ -z "$obstacle" ] ||
    die "$PWD/$obstacle cannot be written by $(id -un): give the clone to that user, or remove its folder build"
}

# Makes this the only command at work in the clone, together with those that it starts.
lock_clone() {
  local ready
  [ "${QX_LOCKED:-}" != "$PWD" ] || return 0
  need_build_folder
  # The lock is a process of its own: a file that this shell held open would be held by every Wine server, too.
  exec {ready}< <(exec flock -n -o build/lock sh -c "echo \$\$; exec tail --pid=$$ -f /dev/null >/dev/null")
  read -r -u "$ready" lock_holder ||
    die "another command is at work in this clone: $(cat build/lock). Wait for its end, or end it"
  exec {ready}<&-
  at_exit unlock_clone
  need_own_build
  echo "${0##*/}, process $$" >build/lock
  export QX_LOCKED=$PWD
}
unlock_clone() {
  end_process "$lock_holder"
  flock -w 5 build/lock true
}

# copy_clone FOLDER: makes a clone of its own with the sources as they stand here. What has been built there stays.
copy_clone() {
  local library
  mkdir -p "$1/build"
  find "$1" -mindepth 1 -maxdepth 1 ! -name build -exec rm -rf {} +
  tar -c --exclude=./build --exclude=./.git . | tar -x -C "$1"
  for library in "${fetched[@]}"; do
    [ -d "$1/build/$library" ] || [ ! -d "build/$library" ] || cp -aL "build/$library" "$1/build/"
  done
}

# Libraries that Debian has no Windows build of; scripts/setup.sh fetches their sources.
fetched=(libdeflate zlib sqlite3 sqliteodbc)

# --- What is released ---

# The version of all that is built.
project_version() { sed -nE 's/^project\(.* VERSION ([0-9.]+).*/\1/p' CMakeLists.txt; }

# The date of what is built, in seconds since 1970: its commit's, so that whoever builds the commit again has the same.
source_date() {
  echo "${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct 2>/dev/null || stat -c %Y CMakeLists.txt)}"
}

# --- Packages ---

installed() {
  local package
  for package in "$@"; do
    dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null | grep -q '^installed' || return 1
  done
}

need_root() {
  [ "$(id -u)" = 0 ] || die "this must run as root once, to $1"
}

# run_packager PROGRAM...: apt-get or dpkg, with its output in build/setup.log. Ctrl-C ends it as soon as the system is in
# order: apt-get alone is told of it, and not the dpkg that it has started.
run_packager() {
  local status=0
  awaited_to_the_end=yes
  setsid env --default-signal=INT,QUIT DEBIAN_FRONTEND=noninteractive "$@" >>build/setup.log 2>&1 </dev/null &
  await "$!" || status=$?
  awaited_to_the_end=
  return "$status"
}
not_installed() {
  tail -n 15 build/setup.log >&2
  die "$* could not be installed; see build/setup.log"
}

# Writes a sources list that names this machine's own archive and its plain release suite alone. What it installs is of
# one version for amd64 and i386, as the i386 packages demand; of the update suites, one architecture's index can be
# ahead of the other's.
write_release_list() {
  local uri release
  read -r uri release < <(apt-get indextargets --format '$(REPO_URI) $(RELEASE) $(COMPONENT)' \
    'Created-By: Packages' | awk '$3 == "main" && $2 !~ /-/ { print $1, $2; exit }') ||
    die "apt knows no Debian release suite (apt-get indextargets lists none)"
  mkdir -p build/apt/lists/partial
  printf '%s %s %s main\n' deb "$uri" "$release" deb-src "$uri" "$release" >build/apt/release.list
}

release=(-o Dir::Etc::sourceparts=/dev/null -o "Dir::Etc::sourcelist=$PWD/build/apt/release.list"
         -o "Dir::State::lists=$PWD/build/apt/lists" -o APT::Sandbox::User=root)

# install_from release|machine PACKAGE...: from the release suite alone, or from all that the machine knows.
install_from() {
  local sources=()
  if [ "$1" = release ]; then sources=("${release[@]}"); fi
  shift
  run_packager apt-get "${sources[@]}" update || say "apt-get update had errors; going on with the lists that are there"
  run_packager apt-get "${sources[@]}" install -y --no-install-recommends "$@"
}

# For the tools of one script alone, which the ordinary set-up leaves out. From the release suite first, as there: a newer
# library for amd64 alone would cost the i386 packages.
install_tools() {
  if installed "$@"; then return; fi
  need_root "install $*"
  say "Installing $*"
  [ -s build/apt/release.list ] || write_release_list
  install_from release "$@" && return
  say "The release suite alone does not do; taking all suites"
  install_from machine "$@" || not_installed "$@"
}

# --- Wine and Windows ---

# is_64_bit EXECUTABLE: by the kind of machine in its header, where 014c is the 32-bit one.
is_64_bit() {
  local header
  header=$(od -An -td4 -j60 -N4 "$1")
  [ "$(od -An -tx2 -j$((header + 4)) -N2 "$1" | tr -d ' ')" != 014c ]
}

# What the Windows programs are built for: i686 or x86_64.
windows_target() {
  [ -s build/target ] || die "the tools are not set up; scripts/setup.sh does it"
  cat build/target
}

# The environment of everything that runs under Wine. Its home is below build/: programs leave files there.
wine_environment() {
  local target
  target=$(windows_target)
  # The display's key lies in the true home.
  if [ -z "${XAUTHORITY:-}" ] && [ -f "${HOME:-}/.Xauthority" ]; then export XAUTHORITY=$HOME/.Xauthority; fi
  unset XDG_CONFIG_HOME XDG_DATA_HOME XDG_CACHE_HOME XDG_STATE_HOME XDG_RUNTIME_DIR WINEARCH WINEPREFIX
  export HOME=$PWD/build/home LC_ALL=C.UTF-8 WINEDEBUG=-all
  export WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe='
  if [ "$target" = i686 ]; then export WINEARCH=win32; fi
  mkdir -p "$HOME"
}

# The pristine prefix, made once and copied for each use: copying takes a fraction of a second, making ten. It belongs
# to this place, user and version, and bears its mark when it is whole.
make_base_prefix() {
  local base=$PWD/build/wine/base mark
  mark="$PWD, user $(id -u), $(wine --version)"
  [ "$(cat "$base/whole" 2>/dev/null)" != "$mark" ] || return 0
  say "Making a Wine prefix (once)"
  rm -rf build/wine
  mkdir -p build/wine
  at_exit stop_wine "$base.new"
  logged build/wine/base.log env -u DISPLAY -u WAYLAND_DISPLAY WINEPREFIX="$base.new" wineboot -i ||
    die "Wine could not make a prefix"
  logged build/wine/base.log env WINEPREFIX="$base.new" wineserver -w
  remove_socket "$base.new"
  echo "$mark" >"$base.new/whole"
  mv "$base.new" "$base"
}

# use_new_prefix PREFIX: makes it a copy of the pristine prefix, and the one that wine uses from here on. What runs in it
# ends with this script.
use_new_prefix() {
  make_base_prefix
  stop_wine "$1"
  rm -rf "$1" "$1.log"
  mkdir -p "$(dirname "$1")"
  cp -a build/wine/base "$1"
  rm "$1/whole"
  use_prefix "$1"
}

# use_prefix PREFIX: goes on with one that there is.
use_prefix() {
  at_exit stop_wine "$1"
  export WINEPREFIX=$1
  restart_wine
}

# stop_wine PREFIX: ends whatever runs there.
stop_wine() {
  [ -d "$1" ] || return 0
  if WINEPREFIX=$1 wineserver -k 2>/dev/null; then WINEPREFIX=$1 wineserver -w; fi
  remove_socket "$1"
}

# remove_socket PREFIX: the server's socket lies in a folder of the temporary folder that the prefix names. It would stay
# there for ever, and a copy of the prefix would name the same.
remove_socket() {
  local name
  [ -f "$1/wineserver" ] || return 0
  name=$(cat "$1/wineserver")
  [[ $name != wine-?????? ]] || rm -rf "${TMPDIR:-/tmp}/$name"
  rm -f "$1/wineserver"
}

# Starts Wine's server anew; it stays for a minute after its last program. One that is just ending may still hold the
# prefix, and the new one then goes away with 2.
restart_wine() {
  local try
  for try in {1..20}; do
    stop_wine "$WINEPREFIX"
    wineserver -p60 && return
    sleep "0.$try"
  done
  die "Wine's server does not start in $WINEPREFIX"
}

# wine_quietly ARGUMENT...: runs a program whose output is of interest only when it fails.
wine_quietly() { logged "$WINEPREFIX.log" wine "$@"; }

# The null graphics driver: real windows and messages, no screen needed. The server starts anew, because it keeps the
# driver it began with. A program that dies must not wait for somebody to close the debugger's dialog.
use_null_display() {
  wine_quietly reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f
  wine_quietly reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f
  restart_wine
}

# start_screen SIZE: a screen of its own, which programs use from here on and which ends with this script. With a window
# manager: without one, closed windows linger.
start_screen() {
  local ready number
  exec {ready}< <(exec Xvfb -displayfd 1 -screen 0 "${1}x24" -nolisten tcp 2>build/screen.log)
  at_exit end_process "$!"
  read -r -t 30 -u "$ready" number || die "Xvfb does not start; see build/screen.log"
  exec {ready}<&-
  export DISPLAY=:$number
  openbox >/dev/null 2>&1 &
}

# --- The demonstration workstation: a Wine prefix with the reference host, its data and the program ---

# lay_out_host TARGET BIN MEGABYTES: the host's files in the folder that becomes C:\Tarsus, with the executables of the
# folder BIN and images of some size.
lay_out_host() {
  local target=$1 bin=$2 demo=reference-host/demo
  rm -rf "$target"
  mkdir -p "$target/Program" "$target/System"
  build/native/bin/demo-data "$target" "$3" >/dev/null
  cp -r "$demo/System/." "$target/System/"
  install_ansi "$target/System" "$demo"/System/*.ini
  "$demo/databases/build.sh" "$target"
  cp "$bin"/{QX32,QX32lib,QXNetDB,TarsusComponents,TarsusDataAccess,sqlite3odbc}.dll "$target/Program/"
  cp "$bin/cabarc.exe" "$target/Program/"
  cp "$bin"/{Tarsus,BackupEventLog,ExportRegistry,ExportTable}.exe "$target/System/"
  cp -r "$demo/Temp" "$target/"
}

# install_ansi FOLDER FILE...: copies text files in the code page and with the line ends that the host reads.
install_ansi() {
  local folder=$1 file
  shift
  for file in "$@"; do
    sed 's/\r*$/\r/' "$file" | iconv -f UTF-8 -t CP1252 >"$folder/${file##*/}"
  done
}

# mark_for_tests PREFIX [FOLDER...]: marks the machine in PREFIX, the profiles of its users and these folders as made
# for tests, by a word that no other machine has. Without the marks no test program changes anything
# (tools/operator/TestMachine.h).
mark_for_tests() {
  local prefix=$1 word folder
  shift
  word=$(od -An -N16 -tx1 /dev/urandom | tr -d ' \n')
  echo "$word" >"$prefix/drive_c/windows/.test-machine"
  for folder in "$prefix"/drive_c/users/* "$@"; do echo "$word" >"$folder/.test-folder"; done
}

# install_workstation PREFIX BIN MEGABYTES: files, registry, components, and removable drives A:, E: and F:. The medium
# in E:, the folder PREFIX.medium, is labelled as the program's; the one in F:, PREFIX.foreign, is not. PREFIX.whole says
# that all of it is there.
install_workstation() {
  local prefix=$1 bin=$2 drive drives
  rm -f "$prefix.whole"
  use_new_prefix "$prefix"
  lay_out_host "$prefix/drive_c/Tarsus" "$bin" "$3"
  cp "$bin"/{QXBackupUtility,QXHostCheck}.exe "$prefix/drive_c/Tarsus/Program/"
  docs/manual/build.sh "$prefix/drive_c/Tarsus/Program/QXBackupUtility.html"
  drives=$prefix/drive_c/drives.reg
  printf 'Windows Registry Editor Version 5.00\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Wine\\Drives]\r\n' >"$drives"
  for drive in e:medium f:foreign a:floppy; do
    rm -rf "$prefix.${drive#*:}"
    mkdir -p "$prefix.${drive#*:}"
    ln -sfn "$prefix.${drive#*:}" "$prefix/dosdevices/${drive%:*}:"
    printf '"%s:"="floppy"\r\n' "${drive%:*}" >>"$drives"
  done
  echo BACKUP >"$prefix.medium/.windows-label"
  mark_for_tests "$prefix" "$prefix/drive_c/Tarsus" "$prefix.medium" "$prefix.foreign"
  wine_quietly regedit /S 'C:\drives.reg' "$(winepath -w reference-host/demo/registry.reg)"
  rm "$drives"
  restart_wine # the server looks at a drive's kind and label when it starts
  register_components
  touch "$prefix.whole"
}

# copy_workstation FROM TO: of a workstation that has been stopped; with media of its own.
copy_workstation() {
  local part
  rm -rf "$2" "$2".*
  for part in '' .medium .foreign .floppy .whole; do cp -a "$1$part" "$2$part"; done
  for part in e:medium f:foreign a:floppy; do ln -sfn "$PWD/$2.${part#*:}" "$2/dosdevices/${part%:*}:"; done
}

# Wine puts its own data-access classes back whenever it updates a prefix, so this runs at every start.
register_components() {
  wine_quietly regsvr32 /s 'C:\Tarsus\Program\TarsusComponents.dll' || die "the host's components are not registered"
  wine_quietly regsvr32 /s 'C:\Tarsus\Program\TarsusDataAccess.dll' || die "the data access is not registered"
}
