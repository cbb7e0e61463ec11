#!/usr/bin/env bash
# Installs what building, running and testing need, and says what it does.
#
#   scripts/setup.sh [i686 | x86_64] [--help]
#
# Does nothing, in a fraction of a second, when everything is already there. What must be installed needs root and some
# 2.3 GB below /usr and /var; building and testing need 3.5 GB below build/.
#
# The host's libraries export 32-bit stdcall names, so the 32-bit tool chain and Wine come first; where the i386
# packages cannot be installed, the 64-bit ones stand in. The choice is written to build/target ("i686" or "x86_64") and
# holds until another one is asked for.
cd "$(dirname "$0")/.."
source scripts/lib.sh
arguments 1 "$@"
[[ ${1:-i686} =~ ^(i686|x86_64)$ ]] || refuse "unknown: $1"

common=(g++ cmake ninja-build googletest xvfb openbox imagemagick x11-utils procps
        sqlite3 tcl make bzip2 cabextract gcab nsis fonts-wine fonts-liberation ca-certificates python3-markdown)
i686=(wine wine32:i386 g++-mingw-w64-i686-posix mingw-w64-tools)
x86_64=(wine wine64 g++-mingw-w64-x86-64-posix mingw-w64-tools)

# have_tools [TARGET]: those of the machine that is asked for, or of either.
have_tools() {
  local wanted="${1:-i686}[@]"
  installed "${common[@]}" "${!wanted}" || { [ $# = 0 ] && installed "${common[@]}" "${x86_64[@]}"; }
}

# What an interrupted installation has left.
mend_packages() {
  [ -n "$(dpkg --audit)" ] || return 0
  say "Ending an installation that was interrupted"
  run_packager dpkg --configure -a || true # apt-get sees to what is still missing
}

# tell_space TOOLS: says what is going to be needed, in megabytes, and where it may not be there.
tell_space() {
  local here=3500 tools=$1 folder free
  say "Building and testing take some $here MB below build/, the tools $tools MB below /usr and /var"
  [ "$(stat -c %d /usr)" != "$(stat -c %d .)" ] || here=$((here + tools))
  for folder in "/usr $tools" "$PWD $here"; do
    free=$(df --output=avail -BM "${folder% *}" | tail -n 1 | tr -dc 0-9)
    [ "$free" -ge "${folder##* }" ] || warn "${folder% *} has $free MB free, and ${folder##* } MB may be needed there"
  done
}

install_common() {
  if installed "${common[@]}"; then return; fi
  need_root "install ${common[*]}"
  say "Installing the native tools (log: build/setup.log)"
  install_from release "${common[@]}" && return
  say "The release suite alone does not do; taking all suites"
  install_from machine "${common[@]}" || not_installed "the native tools"
}

choose() { echo "$1" >build/target; }

install_64_bit_tools() {
  if ! installed "${x86_64[@]}"; then
    need_root "install ${x86_64[*]}"
    say "Installing Wine and the 64-bit Windows compiler (about 300 MB to download)"
    install_from release "${x86_64[@]}" || install_from machine "${x86_64[@]}" ||
      not_installed "the 64-bit Windows tools"
  fi
  choose x86_64
}

# install_windows_tools [TARGET]: for the machine that is asked for, else the one that was chosen before, else the
# 32-bit one, where it can be had.
install_windows_tools() {
  if [ "${1:-$(cat build/target 2>/dev/null || true)}" = x86_64 ]; then install_64_bit_tools; return; fi
  if installed "${i686[@]}"; then choose i686; return; fi
  if [ "$(id -u)" != 0 ] && installed "${x86_64[@]}"; then choose x86_64; return; fi
  need_root "install ${i686[*]}"
  say "Installing Wine and the 32-bit Windows compiler (about 450 MB to download)"
  local foreign
  foreign=$(dpkg --print-foreign-architectures)
  dpkg --add-architecture i386
  if install_from release "${i686[@]}"; then choose i686; return; fi
  say "The release suite alone does not do; taking all suites" # as on a machine that has had updates
  if install_from machine "${i686[@]}"; then choose i686; return; fi
  say "The i386 packages cannot be installed here; taking the 64-bit tools instead"
  grep -qx i386 <<<"$foreign" || dpkg --remove-architecture i386 2>>build/setup.log || true
  install_64_bit_tools
}

# fetch_source PACKAGE PROOF: the source of a library that Debian has no Windows build of, unpacked in build/PACKAGE. It
# holds the file PROOF. Needs no root.
fetch_source() {
  local package=$1 proof=$2 log=$PWD/build/setup.log
  [ ! -f "build/$package/$proof" ] || return 0
  say "Fetching the source of $package"
  [ -s build/apt/release.list ] || write_release_list
  compgen -G 'build/apt/lists/*_source_Sources*' >/dev/null || run_packager apt-get "${source_only[@]}" update ||
    die "the package lists could not be read; see build/setup.log"
  mkdir -p build/download
  (cd build/download && apt-get "${source_only[@]}" source --download-only "$package") >>"$log" 2>&1 ||
    die "the source of $package could not be fetched; see build/setup.log"
  rm -rf "build/$package.new"
  mkdir "build/$package.new"
  tar -xf "build/download/$package"_*.orig.tar.* -C "build/$package.new" --no-same-owner
  rm -rf "build/$package" && mv "build/$package.new"/* "build/$package" && rmdir "build/$package.new"
}
source_only=("${release[@]}" -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache=)

# SQLite's one file, which its source package has in pieces.
make_amalgamation() {
  [ ! -f build/sqlite3/sqlite3.c ] || return 0
  say "Putting SQLite together"
  (cd build/sqlite3 && ./configure --disable-tcl && make sqlite3.c) >>build/setup.log 2>&1 ||
    die "SQLite could not be put together; see build/setup.log"
}

lock_clone
if ! have_tools "$@"; then
  tell_space 2300
  mend_packages
  write_release_list
elif [ ! -d build/windows ]; then
  tell_space 0
fi
install_common
install_windows_tools "$@"
fetch_source libdeflate libdeflate.h
fetch_source zlib inflate.c
fetch_source sqlite3 configure
make_amalgamation
fetch_source sqliteodbc sqlite3odbc.c
say "Tools are in place; the Windows target is $(cat build/target)"
