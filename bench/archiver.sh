# Sourced by bench/run.sh: cabarc beside the peers that are installed, natively and under Wine.

have() { command -v "$1" >/dev/null; }

gcab_create() {
  (cd "$1" && find . -type f -printf '%P\n' | sort | tr '\n' '\0' | xargs -0 -x -s 2000000 gcab -cz "$2")
}
# cabarc_create TREE CABINET [COMMAND THAT RUNS IT...]
cabarc_create() { (cd "$1" && "${@:3}" "$release/cabarc" -r -p n "$2" '*.*'); }
gcab_extract() { (cd "$2" && gcab -x "$1"); }
tar_gzip() { tar -cf - -C "$1" . | gzip -6 >"$2"; }

# The steps of a round are taken in turn, so that a slow moment of the machine falls on all of them.
measure_creating() {
  local tree=$work/tree cabinets=$work/cabinets
  for _ in $(seq "$rounds"); do
    rm -rf "$cabinets" && mkdir "$cabinets"
    if have gcab; then timed create.gcab gcab_create "$tree" "$cabinets/gcab.cab"; fi
    timed create.cabarc cabarc_create "$tree" "$cabinets/ours.cab"
    timed create.cabarc1 cabarc_create "$tree" "$cabinets/one.cab" taskset -c 0
    timed create.gzip tar_gzip "$tree" "$cabinets/gzip"
    cmp "$cabinets/ours.cab" "$cabinets/one.cab" # the same bytes for any number of threads
    if have gcab; then timed small.gcab gcab_create "$work/small" "$cabinets/small-gcab.cab"; fi
    timed small.cabarc cabarc_create "$work/small" "$cabinets/small.cab"
  done
  note size.cabarc "$(stat -c %s "$cabinets/ours.cab")"
  if have gcab; then note size.gcab "$(stat -c %s "$cabinets/gcab.cab")"; fi
}

# measure_extracting NAME FOLDER: below FOLDER, which names the kind of memory it lies on.
measure_extracting() {
  local name=$1 folder=$2 cabinet=$2/ours.cab
  mkdir -p "$folder"
  cp -r "$work/tree" "$folder/tree"
  cp "$work/cabinets/ours.cab" "$cabinet"
  for _ in $(seq $((2 * rounds - 1))); do
    into "$folder/out" "$name.cp" cp -r "$folder/tree" "$folder/out/"
    into "$folder/out" "$name.cabarc" "$release/cabarc" -r -p X "$cabinet" "$folder/out/"
    if have gcab; then into "$folder/out" "$name.gcab" gcab_extract "$cabinet" "$folder/out"; fi
    if have cabextract; then into "$folder/out" "$name.cabextract" cabextract -q -d "$folder/out" "$cabinet"; fi
    into "$folder/out" "$name.cabarc1" taskset -c 0 "$release/cabarc" -r -p X "$cabinet" "$folder/out/"
  done
  diff -r "$folder/tree" "$folder/out"
  rm -rf "$folder"
}

# The Windows program under Wine and the native peers, on the same disk.
measure_extracting_under_wine() {
  local folder=$work/wine
  mkdir -p "$folder"
  for _ in $(seq "$rounds"); do
    into "$folder/out" wine.cabarc \
      wine "$windows/cabarc.exe" -r -p X "$(dos "$work/cabinets/ours.cab")" "$(dos "$folder/out")\\"
    into "$folder/out" wine.cp cp -r "$work/tree" "$folder/out/"
    if have gcab; then into "$folder/out" wine.gcab gcab_extract "$work/cabinets/ours.cab" "$folder/out"; fi
    if have cabextract; then
      into "$folder/out" wine.cabextract cabextract -q -d "$folder/out" "$work/cabinets/ours.cab"
    fi
  done
  rm -rf "$folder"
}
dos() { printf 'Z:%s' "${1//\//\\}"; }

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
