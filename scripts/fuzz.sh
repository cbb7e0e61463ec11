#!/usr/bin/env bash
# Fuzzes every target of tests/fuzz, two at a time, and prints what came of it.
#
#   scripts/fuzz.sh [SECONDS [TARGET...]] [--help]      (60 seconds for each target)
#
# Installs clang where it is missing. What is learnt stays in build/fuzz/corpus and is the start of the next run. An
# input that breaks a rule is made as small as it gets and put into tests/fuzz/found; it fails the ordinary tests from
# then on, until the fault is mended. Ends with 1 when there was one.
cd "$(dirname "$0")/.."
source scripts/lib.sh
arguments 100 "$@"
seconds=${1:-60}
shift || true
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(wildcards job_file descriptor command_line cabinet cabinet_structure salvage backup_set)
build=$PWD/build/fuzz
tests=$PWD/tests/fuzz

longest_input() {
  case $1 in
    wildcards) echo 120 ;;
    descriptor) echo 800 ;;
    cabinet | cabinet_structure) echo 6000 ;;
    salvage | backup_set) echo 32 ;;
    *) echo 2000 ;;
  esac
}

# fuzz TARGET: returns at once when a rule breaks, with the input in $work.
fuzz() {
  local target=$1 inputs=("$build/corpus/$1" "$tests/seeds/$1")
  local options=(-rss_limit_mb=1024 -timeout=20 -print_final_stats=1 -use_value_profile=1)
  options+=(-max_total_time="$seconds" -max_len="$(longest_input "$target")" -artifact_prefix="$work/$target/")
  [ ! -f "$tests/dictionaries/$target" ] || options+=(-dict="$tests/dictionaries/$target")
  [ ! -d "$tests/found/$target" ] || inputs+=("$tests/found/$target")
  mkdir -p "$build/corpus/$target" "$work/$target" "$work/tmp"
  TMPDIR=$work/tmp nice "$build/bin/fuzz_$target" "${options[@]}" "${inputs[@]}" \
    >"$build/$target.log" 2>&1
}

# What broke a rule, made smaller for a while, goes to tests/fuzz/found.
keep_findings() {
  local target=$1 found small
  for found in "$work/$target"/*; do
    [ -f "$found" ] || continue
    small=$work/small
    TMPDIR=$work/tmp "$build/bin/fuzz_$target" -minimize_crash=1 -max_total_time=20 -exact_artifact_path="$small" \
      "$found" >/dev/null 2>&1 || true
    [ -f "$small" ] || small=$found
    mkdir -p "$tests/found/$target"
    cp "$small" "$tests/found/$target/$(sha1sum "$small" | cut -c1-12)"
    rm -f "$work/small"
  done
}

report() {
  awk -v target="$1" -v findings="$2" '
    $1 ~ /^#/ && /cov:/ { for (i = 1; i < NF; ++i) { if ($i == "cov:") cov = $(i + 1); if ($i == "corp:") corpus = $(i + 1) } }
    /stat::number_of_executed_units/ { runs = $2 }
    /stat::average_exec_per_sec/ { rate = $2 }
    /stat::peak_rss_mb/ { memory = $2 }
    END { sub("/.*", "", corpus)
          printf "%-17s %10d runs %7d/s %6d edges %6d inputs kept %5d MiB %3d findings\n",
            target, runs, rate, cov, corpus, memory, findings }' "$build/$1.log"
}

lock_clone
scripts/setup.sh
install_tools clang libclang-rt-14-dev
say "Building the fuzz targets (build/fuzz)"
: >"$build.log"
logged "$build.log" cmake --preset fuzz || die "the fuzz targets cannot be configured"
logged "$build.log" cmake --build --preset fuzz -- -j2 || die "the fuzz targets do not build; see $build.log"
fast=/dev/shm # extracting needs a quick disk
[ -w $fast ] || fast=${TMPDIR:-/tmp}
work=$(mktemp -d "$fast/qx-fuzz.XXXXXX")
at_exit rm -rf "$work"

say "Fuzzing ${#targets[@]} targets, $seconds s each"
fuzzers=()
for target in "${targets[@]}"; do
  while [ "$(jobs -rp | wc -l)" -ge 2 ]; do wait -n || true; done
  fuzz "$target" &
  fuzzers+=("$!")
done
wait "${fuzzers[@]}" || true # and not for the holder of the clone's lock
total=0
for target in "${targets[@]}"; do
  keep_findings "$target"
  findings=$(find "$work/$target" -type f | wc -l)
  report "$target" "$findings"
  grep -q 'stat::number_of_executed_units' "$build/$target.log" || die "fuzz_$target did not run; see $build/$target.log"
  total=$((total + findings))
done
[ "$total" -eq 0 ] || die "$total inputs broke a rule; they are in tests/fuzz/found"
