#!/usr/bin/env bash
# Shows that a build repeats: makes the Windows programs and their packages twice, one after the other, in clones of
# different names and under different settings, and compares every executable, both packages and their bills of
# materials byte by byte.
#
#   scripts/reproduce.sh [--help]
#
# The clones are build/reproduce/one and build/reproduce/elsewhere/two; they are built from nothing, which takes a
# quarter of an hour. What differs is named, with the place of the first byte, and makes the command fail.
cd "$(dirname "$0")/.."
source scripts/lib.sh
arguments 0 "$@"

first=build/reproduce/one second=build/reproduce/elsewhere/two

# build_in CLONE: everything that a package is made of, by no compiler's cache.
build_in() {
  say "Building in $1"
  (cd "$1" && export CCACHE_DISABLE=1 && scripts/build.sh windows && scripts/build.sh native demo-data &&
    packaging/build.sh) || die "$1 cannot be built"
}

compare() {
  local file same=0 different=0 place
  for file in "$first"/build/windows/{bin/*.exe,bin/*.dll,packages/*.*}; do
    file=${file#"$first"/}
    if place=$(cmp "$first/$file" "$second/$file" 2>&1); then
      same=$((same + 1))
    else
      different=$((different + 1))
      warn "$file: ${place##*, }"
    fi
  done
  say "$same files are the same, $different differ"
  [ "$different" = 0 ] && [ "$same" -gt 0 ]
}

lock_clone
scripts/setup.sh
SOURCE_DATE_EPOCH=$(source_date)
export SOURCE_DATE_EPOCH
rm -rf build/reproduce
for clone in "$first" "$second"; do # both of the same sources, whatever is changed here meanwhile
  copy_clone "$clone"
  cp build/target "$clone/build/"
done
TZ=Asia/Tokyo build_in "$first"
(umask 077 && LC_ALL=C TZ=America/Lima build_in "$second")
compare || die "the two builds differ"
