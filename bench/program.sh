# Sourced by bench/run.sh: the program on a workstation under Wine, against the same commands in a batch file; and
# how its loops grow.

# A workstation whose patient data are the tree's images, small ones.
set_up_workstation() {
  demo_megabytes=1
  workstation=$work/workstation workstation_on='on disk'
  # A disk that is slow for a while after files have been deleted would be all that there is to see.
  if [ -n "$memory" ]; then workstation=$memory/workstation workstation_on='in memory (tmpfs)'; fi
  mkdir -p "${workstation%/*}"
  install_workstation "$workstation"
  use_null_display
  local images=$WINEPREFIX/drive_c/Tarsus/Data/Image.ddo
  rm -rf "$images"
  cp -r "$work/tree/workstation/Data/Image.ddo" "$images"
}

# For each file Wine's server and a program wake each other. On one processor that takes the same time whenever it is
# measured; on two, an idle one has to be woken first, and single figures differ by half.
keep_wine_on_one_processor() {
  wineserver -k || true
  wineserver -w
  taskset -c 0 wineserver -p60
}
wine_on_one_processor() { taskset -c 0 wine "$@"; }

measure_program() {
  keep_wine_on_one_processor
  local log=$work/program.txt
  run_bench_program "$log" $((rounds + 1)) 150
  awk '$1 == "span"' "$log" >"$work/spans"
  awk 'NF == 2 && $1 != "#"' "$log" >>"$samples"
  join_images
  run_bench_program "$log" "$rounds" 60
  awk '/^(backup|restore)/ { print "large." $0 }' "$log" >>"$samples"
}

# run_bench_program LOG ROUNDS SECONDS
run_bench_program() {
  if ! wine_on_one_processor "$windows/bench_program.exe" "$2" "$3" >"$1" 2>&1 </dev/null; then
    tail -n 5 "$1" >&2
    die "the program could not be measured; see $1"
  fi
  sed -i 's/\r$//' "$1"
  grep '^#' "$1" >&2 || true
}

# The same bytes in images as large as a radiograph, so in far fewer files.
join_images() {
  local images=$WINEPREFIX/drive_c/Tarsus/Data/Image.ddo joined=$work/tree/joined
  mkdir "$joined"
  find "$images" -type f -print0 | sort -z | xargs -0 cat |
    split -b 8M -d -a 3 --additional-suffix=.ddo - "$joined/image"
  rm -rf "$images"
  mv "$joined" "$images"
}

# The program's own work natively; with real files under Wine.
measure_growth() {
  "$release/bench_growth" "$percent" >>"$samples"
  local run
  for run in 1 2 3 4 5; do
    grow_on_files staging tenth $((20 * percent))
    grow_on_files staging all $((200 * percent))
    grow_on_files clients tenth $((8 * percent))
    grow_on_files clients all $((80 * percent))
  done
}

# grow_on_files LOOP NAME COUNT
grow_on_files() {
  local folder=$WINEPREFIX/drive_c/growth
  rm -rf "$folder"
  mkdir "$folder"
  case $1 in
    staging) (cd "$folder" && seq "$3" | xargs touch) ;;
    clients)
      (cd "$folder" && awk -v n="$3" 'BEGIN {
        for (i = 0; i < n; ++i) printf "Maintenance_PC%03d_12031509%04d\n", i / 25, i % 25
      }' | xargs mkdir)
      ;;
  esac
  sync -f "$folder"
  wine_on_one_processor "$windows/bench_files.exe" "$1" 'C:\growth\' >"$work/growth.txt" </dev/null
  note "growth.files.$1.$2" "$(tr -d '\r' <"$work/growth.txt")"
  rm -rf "$folder"
}

# How the time of the external copying command grows with the files of one folder, and of ten.
measure_xcopy() {
  local source=$WINEPREFIX/drive_c/xcopy run folder
  for run in 1 2; do
    for folder in start:1:1 few:$((4 * percent)):1 many:$((40 * percent)):1 spread:$((4 * percent)):10; do
      IFS=: read -r name files folders <<<"$folder"
      rm -rf "$source" "$source.copy"
      for ((i = 0; i < folders; ++i)); do
        mkdir -p "$source/$i"
        (cd "$source/$i" && seq "$files" | xargs touch)
      done
      timed "xcopy.$name" wine_on_one_processor cmd /c 'xcopy C:\xcopy C:\xcopy.copy\ /S /Y >nul' </dev/null
    done
  done
  rm -rf "$source" "$source.copy"
}

# xcopy_each NAME FILES: microseconds a file, without the program's start.
xcopy_each() {
  awk -v t="$(median "xcopy.$1")" -v s="$(median xcopy.start)" -v n="$2" 'BEGIN { printf "%.0f", 1e6 * (t - s) / n }'
}
