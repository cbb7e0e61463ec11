# Sourced by the scripts: how they speak, and what they share.

say() { printf '== %s\n' "$*"; }
die() { printf '!! %s\n' "$*" >&2; exit 1; }

need_root() {
  [ "$(id -u)" = 0 ] || die "this must run as root once, to $1"
}

installed() {
  local package
  for package in "$@"; do
    dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null | grep -q '^installed' || return 1
  done
}

# For the tools of one script alone, which the ordinary set-up leaves out.
install_tools() {
  installed "$@" && return
  need_root "install $*"
  say "Installing $*"
  mkdir -p build
  { apt-get update; DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "$@"; } \
    </dev/null >>build/setup.log 2>&1 || die "$* could not be installed; see build/setup.log"
}
