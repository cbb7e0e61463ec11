#!/usr/bin/env bash
# Installs what building, running and testing need, and says what it does.
#
#   scripts/setup.sh
#
# Does nothing, in a fraction of a second, when everything is already there.
# The host's libraries export 32-bit stdcall names, so the 32-bit tool chain
# and Wine come first; where the i386 packages cannot be installed, the 64-bit
# ones stand in. The choice is written to build/target ("i686" or "x86_64"),
# and every other script reads it there.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh
root=$PWD

common=(g++ cmake ninja-build googletest xvfb openbox imagemagick x11-utils procps
        sqlite3 bzip2 cabextract gcab nsis fonts-wine fonts-liberation ca-certificates python3-markdown)
i686=(wine wine32:i386 g++-mingw-w64-i686-posix mingw-w64-tools libsqliteodbc:i386 libodbc2:i386)
x86_64=(wine wine64 g++-mingw-w64-x86-64-posix mingw-w64-tools libsqliteodbc libodbc2)

# A sources list that names this machine's own archive and its plain release
# suite alone: the i386 index of the security suite is at times out of step
# with the amd64 one, and apt then refuses the whole i386 set.
write_release_list() {
  local uri release
  read -r uri release < <(apt-get indextargets --format '$(REPO_URI) $(RELEASE) $(COMPONENT)' \
    'Created-By: Packages' | awk '$3 == "main" && $2 !~ /-/ { print $1, $2; exit }')
  [ -n "${uri:-}" ] || die "apt knows no Debian release suite (apt-get indextargets lists none)"
  mkdir -p build/apt/lists/partial
  printf '%s %s %s main\n' deb "$uri" "$release" deb-src "$uri" "$release" >build/apt/release.list
}

release_apt() {
  apt-get -o Dir::Etc::sourceparts=/dev/null -o "Dir::Etc::sourcelist=$root/build/apt/release.list" \
    -o "Dir::State::lists=$root/build/apt/lists" -o APT::Sandbox::User=root "$@"
}

install_quietly() {
  if ! DEBIAN_FRONTEND=noninteractive "$@" </dev/null >>build/setup.log 2>&1; then
    tail -n 15 build/setup.log >&2
    return 1
  fi
}

install_common() {
  installed "${common[@]}" && return
  need_root "install ${common[*]}"
  say "Installing the native tools (log: build/setup.log)"
  install_quietly apt-get update || say "apt-get update had errors; going on with the lists that are there"
  install_quietly apt-get install -y --no-install-recommends "${common[@]}" ||
    die "the native tools could not be installed; see build/setup.log"
}

install_windows_tools() {
  if installed "${i686[@]}"; then echo i686 >build/target; return; fi
  if [ "$(cat build/target 2>/dev/null)" = x86_64 ] && installed "${x86_64[@]}"; then return; fi
  need_root "install ${i686[*]}"
  say "Installing Wine and the 32-bit Windows compiler (about 450 MB to download)"
  dpkg --add-architecture i386
  write_release_list
  if install_quietly release_apt update &&
     install_quietly release_apt install -y --no-install-recommends "${i686[@]}"; then
    echo i686 >build/target
    return
  fi
  say "The i386 packages cannot be installed here; taking the 64-bit tools instead"
  dpkg --remove-architecture i386 2>/dev/null || true
  install_quietly apt-get update || true
  install_quietly apt-get install -y --no-install-recommends "${x86_64[@]}" ||
    die "neither the 32-bit nor the 64-bit Windows tools could be installed; see build/setup.log"
  echo x86_64 >build/target
}

# The archiver's libraries are built from Debian's source packages for both
# targets: Debian has no Windows builds of them.
fetch_source() {
  local package=$1 proof=$2
  [ -f "build/$package/$proof" ] && return
  say "Fetching the source of $package"
  [ -f build/apt/release.list ] || write_release_list
  [ -n "$(ls build/apt/lists/*_source_Sources* 2>/dev/null)" ] || install_quietly release_apt update ||
    die "the package lists could not be read; see build/setup.log"
  mkdir -p build/download
  (cd build/download && release_apt source --download-only "$package") >>build/setup.log 2>&1 ||
    die "the source of $package could not be fetched; see build/setup.log"
  rm -rf "build/$package.new"
  mkdir "build/$package.new"
  tar -xf "build/download/$package"_*.orig.tar.* -C "build/$package.new" --strip-components=1
  rm -rf "build/$package" && mv "build/$package.new" "build/$package"
}

mkdir -p build
install_common
install_windows_tools
fetch_source libdeflate libdeflate.h
fetch_source zlib inflate.c
say "Tools are in place; the Windows target is $(cat build/target)"
