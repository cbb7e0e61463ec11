# Sourced by the scripts: how they speak, and what they share.

say() { printf '== %s\n' "$*"; }
die() { printf '!! %s\n' "$*" >&2; exit 1; }

need_root() {
  [ "$(id -u)" = 0 ] || die "this must run as root once, to $1"
}
