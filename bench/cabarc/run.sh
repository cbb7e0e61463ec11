#!/usr/bin/env bash
# Compares cabarc with gcab, cabextract and "cp -r" on a tree of about 175 MB that it makes: 20,000 small files, images,
# logs, and data that cannot be packed.
#
#   bench/cabarc/run.sh PATH/TO/cabarc [RUNS]     (5 runs; gcab and cabextract must be installed)
#
# Prints the median time of each step in milliseconds, and its ratio to the step that it is measured against. The steps
# of a run are taken in turn, so that a slow moment of the machine falls on all of them.
set -euo pipefail
export LC_ALL=C

cabarc=$(realpath "${1:?which cabarc?}")
runs=${2:-5}
for tool in gcab cabextract taskset; do
  command -v "$tool" >/dev/null || { echo "$tool is missing" >&2; exit 1; }
done
work=$(mktemp -d "${TMPDIR:-/tmp}/cabarc-bench.XXXXXX")
trap 'rm -rf "$work"' EXIT

small_files() {
  awk 'BEGIN {
    srand(1)
    for (i = 0; i < 20000; ++i) {
      if (i % 500 == 0) { folder = "small/" i / 500; system("mkdir -p " folder) }
      file = folder "/record" i ".ini"
      print "[Record" i "]\nPatient=" int(rand() * 1e9) > file
      for (lines = int(rand() * 120); lines > 0; --lines) print "Value" lines "=" int(rand() * 1e6) "," rand() > file
      close(file)
    }
  }'
}

# A smooth picture with a little noise, 4 MB; the others are made of it, each begun elsewhere.
images() {
  mkdir images
  awk 'BEGIN {
    srand(2)
    for (y = 0; y < 2048; ++y)
      for (x = 0; x < 2048; ++x) printf "%c", 1 + int(110 + 60 * sin(x / 50) + 40 * cos(y / 70) + rand() * 6)
  }' >images/0.ddo
  for i in $(seq 20); do
    { tail -c +$((i * 98765)) images/0.ddo; head -c $((i * 98765 - 1)) images/0.ddo; } >images/"$i".ddo
  done
}

logs() {
  mkdir logs
  for i in 1 2 3; do
    awk -v i="$i" 'BEGIN {
      srand(i)
      for (n = 0; n < 250000; ++n)
        printf "%08d,%d,Information,Restore of folder %d ended\n", n, rand() * 1e5, rand() * 99
    }' >logs/"$i".log
  done
}

packed_already() { mkdir packed; cat images/[1-9].ddo | gzip -1 >packed/study.gz; }

# step NAME COMMAND...: runs it in an empty folder "out" and notes its time.
step() {
  local name=$1 start
  shift
  rm -rf "$work/out"
  mkdir "$work/out"
  start=$(date +%s%N)
  "$@" >/dev/null
  echo $((($(date +%s%N) - start) / 1000)) >>"$work/times.$name"
}

gcab_create() {
  (cd "$work/tree" && find . -type f -printf '%P\n' | sort | tr '\n' '\0' |
    xargs -0 -x -s 2000000 gcab -cz "$work/gcab.cab")
}
cabarc_create() { (cd "$work/tree" && "${@:2}" "$cabarc" -r -p n "$work/$1.cab" '*.*'); }
gcab_extract() { (cd "$work/out" && gcab -x "$work/ours.cab"); }

median() { sort -n "$work/times.$1" | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }
row() {
  awk -v n="$1" -v t="$(median "$1")" -v b="$(median "$2")" -v o="$2" \
    'BEGIN { printf "%-22s %9.0f ms   %6.3f of %s\n", n, t / 1000, t / b, o }'
}

mkdir "$work/tree"
(cd "$work/tree" && small_files && images && logs && packed_already)
printf 'tree: %s files, %s\n' "$(find "$work/tree" -type f | wc -l)" "$(du -sh --apparent-size "$work/tree" | cut -f1)"

for _ in $(seq "$runs"); do
  rm -f "$work"/*.cab
  step gcab-create gcab_create
  step cabarc-create cabarc_create ours
  step cabarc-create-1core cabarc_create one taskset -c 0
  cmp "$work/ours.cab" "$work/one.cab"
  step cp cp -r "$work/tree" "$work/out"
  step gcab-extract gcab_extract
  step cabextract cabextract -q -d "$work/out" "$work/ours.cab"
  step cabarc-extract-1core taskset -c 0 "$cabarc" -r -p X "$work/ours.cab" "$work/out/"
  step cabarc-extract "$cabarc" -r -p X "$work/ours.cab" "$work/out/"
done
diff -r "$work/tree" "$work/out"

row cabarc-create gcab-create
row cabarc-create-1core gcab-create
row cabarc-extract cp
row cabarc-extract-1core cp
row cabarc-extract gcab-extract
row cabarc-extract cabextract
awk -v a="$(stat -c %s "$work/ours.cab")" -v b="$(stat -c %s "$work/gcab.cab")" \
  'BEGIN { printf "%-22s %9d bytes %5.3f of gcab\n", "size", a, a / b }'
