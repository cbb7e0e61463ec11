# Sourced by bench/run.sh: cabarc beside the peers that are installed, natively and under Wine.

have() { command -v "$1" >/dev/null; }

gcab_create() {
  (cd "$1" && find . -type f -printf '%P\n' | sort | tr '\n' '\0' | xargs -0 -x -s 2000000 gcab -cz "$2")
}
# cabarc_create TREE CABINET [COMMAND THAT RUNS IT...]
cabarc_create() { (cd "$1" && "${@:3}" "$release/cabarc" -r -p n "$2" '*.*'); }
tar_gzip() { tar -cf - -C "$1" . | gzip -6 >"$2"; }

# The steps of a round are taken in turn, so that a slow moment of the machine falls on all of them.
creating_round() {
  local tree=$work/tree cabinets=$work/cabinets
  rm -rf "$cabinets" && mkdir "$cabinets"
  if have gcab; then timed create.gcab gcab_create "$tree" "$cabinets/gcab.cab"; fi
  timed create.cabarc cabarc_create "$tree" "$cabinets/ours.cab"
  timed create.cabarc1 cabarc_create "$tree" "$cabinets/one.cab" taskset -c 0
  cmp "$cabinets/ours.cab" "$cabinets/one.cab" # the same bytes for any number of threads
  if have gcab; then timed small.gcab gcab_create "$work/small" "$cabinets/small-gcab.cab"; fi
  timed small.cabarc cabarc_create "$work/small" "$cabinets/small.cab"
}

measure_creating() {
  repeat_within 60 creating_round
  timed create.gzip tar_gzip "$work/tree" "$work/cabinets/gzip"
  note size.cabarc "$(stat -c %s "$work/cabinets/ours.cab")"
  if have gcab; then note size.gcab "$(stat -c %s "$work/cabinets/gcab.cab")"; fi
}

# extracted NAME COMMAND...: times a command that puts the tree into the new folder $out. What is there stays until
# all rounds are over: some disks are slow for a while after files have been deleted.
extracted() {
  out=$folder/out.$((++outputs))
  mkdir "$out"
  if [ "${1%%.*}" = cold ]; then sync -f "$folder" && vmtouch -q -e "$work/tree" "$cabinet"; fi
  timed "$@"
}
copy_tree() { cp -r "$work/tree" "$out/"; }
by_cabarc() { "$@" "$release/cabarc" -r -p X "$cabinet" "$out/"; }
by_gcab() { (cd "$out" && gcab -x "$cabinet"); }
by_cabextract() { cabextract -q -d "$out" "$cabinet"; }

# extracting_round cold|warm
extracting_round() {
  extracted "$1.cp" copy_tree
  extracted "$1.cabarc" by_cabarc
  if have gcab; then extracted "$1.gcab" by_gcab; fi
  if have cabextract; then extracted "$1.cabextract" by_cabextract; fi
  extracted "$1.cabarc1" by_cabarc taskset -c 0
}

# Wine's own archivers extract by the system's cabinet library.
dos() { printf 'Z:%s' "${1//\//\\}"; }
by_wine_cabarc() { wine "$1" -r -p X "$(dos "$cabinet")" "$(dos "$out")\\" </dev/null; }
by_extrac32() { wine 'C:\windows\system32\extrac32.exe' /Y /E /L "$(dos "$out")" "$(dos "$cabinet")" </dev/null; }
wine_round() {
  extracted wine.own by_wine_cabarc 'C:\windows\system32\cabarc.exe'
  extracted wine.extrac32 by_extrac32
  extracted wine.cabarc by_wine_cabarc "$windows/cabarc.exe"
}

measure_extracting() {
  local folder=$work/extracted cabinet=$work/cabinets/ours.cab outputs=0 out
  mkdir -p "$folder"
  repeat_within 30 extracting_round cold
  repeat_within 30 extracting_round warm
  diff -r "$work/tree" "$out"
  repeat_within 40 wine_round
  diff -r "$work/tree" "$out"
}

# One file of nearly 2 GB: images here and there, nothing in between.
measure_large_file() {
  local folder=$work/large bytes=$((19000000 * percent)) at
  mkdir -p "$folder/in" "$folder/out"
  truncate -s "$bytes" "$folder/in/study.raw"
  for at in 0 1 2 3; do
    dd if="$work/cabinets/ours.cab" of="$folder/in/study.raw" bs=1M seek=$((at * bytes / 4 / 1048576)) \
      conv=notrunc status=none
  done
  (cd "$folder/in" &&
    /usr/bin/time -f %M -o "$folder/create" "$release/cabarc" -r -p n "$folder/large.cab" study.raw >/dev/null)
  /usr/bin/time -f %M -o "$folder/extract" "$release/cabarc" -r -p X "$folder/large.cab" "$folder/out/" >/dev/null
  cmp "$folder/in/study.raw" "$folder/out/study.raw"
  note large.create "$(number %.1f "$(cat "$folder/create")" 1024)"
  note large.extract "$(number %.1f "$(cat "$folder/extract")" 1024)"
  rm -rf "$folder"
}

# The program's own cutter of floppy sets against split.
measure_pieces() {
  local folder=$work/pieces
  mkdir -p "$folder"
  cp "$work/cabinets/ours.cab" "$folder/FDDivide.cab"
  for _ in $(seq $((2 * rounds + 1))); do
    rm -f "$folder"/FDDivide0* "$folder"/FDDivide[1-9]* "$folder"/split*
    timed pieces.split split -b 1400000 -a 4 -d "$folder/FDDivide.cab" "$folder/split"
    timed pieces.program "$release/bench_pieces" "$folder"
  done
  cmp <(cat "$folder"/FDDivide[0-9]*) "$folder/FDDivide.cab"
  rm -rf "$folder"
}
