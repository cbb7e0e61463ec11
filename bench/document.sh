# Sourced by bench/run.sh: the document and its pictures, made of the figures that there are.

# row WHAT VALUE BASE RATIO [GOAL]: a line of a table. With a goal, whether the ratio keeps it.
row() {
  local goal=-
  if [ -n "${5:-}" ]; then
    goal=$(awk -v r="$4" -v g="$5" 'BEGIN { print "at most " g ": " (r <= g ? "yes" : "no") }')
  fi
  printf '| %s | %s | %s | %s | %s |\n' "$1" "$2" "$3" "$4" "$goal"
}

# compared WHAT NAME BASE LABEL [GOAL]: medians of two measurements in seconds, and their ratio.
compared() {
  if ! measured "$2" "$3"; then return; fi
  row "$1" "$(number '%.2f s' "$(median "$2")")" "$4 $(number '%.2f s' "$(median "$3")")" "$(ratio "$2" "$3")" "${5:-}"
}

# limited WHAT NAME UNIT GOAL: one figure with a limit of its own; the largest that was measured.
limited() {
  if ! measured "$2"; then return; fi
  local value
  value=$(most "$2")
  printf '| %s | %s %s | %s |\n' "$1" "$(number %.0f "$value")" "$3" \
    "$(awk -v v="$value" -v g="$4" -v u="$3" 'BEGIN { print "at most " g " " u ": " (v <= g ? "yes" : "no") }')"
}

# grown WHAT NAME COUNT: microseconds an item, at a tenth and at all.
grown() {
  if ! measured "growth.$2.tenth" "growth.$2.all"; then return; fi
  printf '| %s | %s | %s | %s | %s |\n' "$1" "$3" "$(number %.3g "$(median "growth.$2.tenth")")" \
    "$(number %.3g "$(median "growth.$2.all")")" "$(growth_ratio "$2")"
}
growth_ratio() { number %.2f "$(median "growth.$1.all")" "$(median "growth.$1.tenth")"; }

machine() {
  local memory wine
  memory=$(awk '/MemTotal/ { print $2 }' /proc/meminfo)
  wine=$(wine --version)
  printf '%s cores (%s), %s GB of memory, %s, Linux %s, %s, Wine %s' "$(nproc)" "$(uname -m)" \
    "$(number %.0f "$memory" 1048576)" "$(. /etc/os-release && printf %s "$PRETTY_NAME")" "$(uname -r | cut -d- -f1)" \
    "$(df --output=fstype "$work" | tail -n 1)" "$(sed 's/wine-\([0-9.]*\).*/\1/' <<<"$wine")"
}

# share PHASE: of the time of the watched backup.
share() {
  awk -v phase="profile.$1" '/^profile\./ { sum += $2 } $1 == phase { part = $2 }
    END { printf "%.0f %%", sum ? 100 * part / sum : 0 }' "$samples"
}

write_tables() {
  local files bytes images each few=$((4 * percent)) many=$((40 * percent))
  files=$(find "$work/tree" -type f | wc -l)
  bytes=$(du -sb "$work/tree" | cut -f1)
  images=$(find "$work/tree/workstation/Data/Image.ddo" -type f | wc -l)
  cat <<TEXT
# Performance

How fast the program and the archiver of the reference host are, beside other tools on the same machine in the same
run. This page and its pictures are written by

    bench/run.sh

which installs and builds what it needs and makes its files itself. Times are medians; ratios are medians over rounds
in which the tools took turns. Machines differ: compare ratios, not seconds.

Measured on $(date +%Y-%m-%d): $(machine).

Packed, copied and extracted are $files files, $(number %.0f "$bytes" 1e6) MB: a workstation's images,
databases, logs, small files, and data that cannot be packed any more.

## The archiver

![Times of the archiver and its peers](images/performance-archiver.svg)

| what | cabarc | beside | ratio | goal |
|---|---|---|---|---|
TEXT
  compared 'creating, all cores' create.cabarc create.gcab gcab 0.25
  compared 'creating, one core' create.cabarc1 create.gcab gcab 0.45
  compared 'creating, all cores' create.cabarc create.gzip '`tar`, `gzip -6`'
  if measured size.gcab; then
    row 'size of the cabinet' "$(number '%.1f MB' "$(median size.cabarc)" 1e6)" \
      "gcab $(number '%.1f MB' "$(median size.gcab)" 1e6)" "$(ratio size.cabarc size.gcab)" 1
  fi
  compared "creating, $((200 * percent)) small files" small.cabarc small.gcab gcab 1
  local state
  for state in cold:'set and tree not in the cache' warm:'both in the cache'; do
    compared "extracting, ${state#*:}" "${state%%:*}.cabarc" "${state%%:*}.cp" '`cp -r` of the tree' 1.2
    compared "extracting, ${state#*:}, one core" "${state%%:*}.cabarc1" "${state%%:*}.cp" '`cp -r` of the tree'
    compared "extracting, ${state#*:}" "${state%%:*}.cabarc" "${state%%:*}.gcab" '`gcab -x`' 1
    compared "extracting, ${state#*:}" "${state%%:*}.cabarc" "${state%%:*}.cabextract" cabextract 1
  done
  compared 'extracting under Wine' wine.cabarc wine.own "Wine's own \`cabarc\`" 1
  compared 'extracting under Wine' wine.cabarc wine.extrac32 "Wine's \`extrac32\`" 1
  cat <<TEXT

A cabinet made on one core and one made on all hold the same bytes; the run stops when they do not, and when an
extracted tree is not the one that was packed.

A set is restored from a disk that has not been read before, which is the first of the two states. In the second one
\`cp -r\` only moves bytes within memory; on two cores inflating them alone can take longer than that.

| memory | | goal |
|---|---|---|
TEXT
  limited "creating a cabinet of one file of $((19 * percent)) MB" large.create MiB 64
  limited 'extracting it' large.extract MiB 64
  cat <<TEXT

## The program around it

A backup and a restore of the workstation's images through the program's windows, against a batch file with the
same external commands in the same order. The two run one directly after the other, take turns in going first, and each
begins after three seconds of rest. The batch file deletes nothing, while the program also empties its staging folder.
The same bytes are measured as images of 8 MB, which is what a radiograph has, and as thousands of small ones.
The workstation, a Wine prefix, lies $workstation_on, and all of Wine runs on one processor.

| what | program | beside | ratio | goal |
|---|---|---|---|---|
TEXT
  compared 'backup, images of 8 MB' large.backup large.backup.batch 'batch file' 1.05
  compared 'restore, images of 8 MB' large.restore large.restore.batch 'batch file' 1.05
  compared "backup, $images small images" backup backup.batch 'batch file' 1.05
  compared "restore, $images small images" restore restore.batch 'batch file' 1.05
  compared 'cutting the archive into floppies' pieces.program pieces.split '`split -b 1400000`' 1
  each=$(awk -v program="$(median restore)" -v batch="$(median restore.batch)" -v files="$images" \
    'BEGIN { printf "%.0f", 1e6 * (program - batch) / files }')
  cat <<TEXT

In single rounds the ratio lay between $(range large.backup large.backup.batch) for the backup and between
$(range large.restore large.restore.batch) for the restore of large images; of small ones, between
$(range backup backup.batch) and between $(range restore restore.batch).

What the program does beyond the commands it does for each file: it counts what goes into an archive and what comes out
of it, and deletes what was gathered or unpacked, before it tells the result. So the restore of small images took
$each us a file longer than the batch file.

| the program itself, over backups and restores | |
|---|---|
| processor | $(number '%.1f %% of a core' "$(median processor)") |
| memory | $(number '%.0f MiB at most' "$(most memory)") |

While it works, another process keeps sending a message to its window and waits for the answer. A window of that
process that does nothing else shows what the machine itself adds at the same time.

| longest time without an answer | | goal |
|---|---|---|
TEXT
  limited 'during a backup' answer.backup ms 50
  limited 'during a restore' answer.restore ms 50
  printf '| an idle window meanwhile | %s ms | - |\n' "$(number %.0f "$(most answer.idle)")"
  cat <<TEXT

Where the time of one backup goes, as seen from outside, by which program runs and what is in the staging folder:

![One backup in time](images/performance-backup.svg)

| gather (\`xcopy\`) | pack (\`cabarc\`) | delete | copy (\`xcopy\`) | program |
|---|---|---|---|---|
| $(share gather) | $(share pack) | $(share delete) | $(share copy) | $(share program) |

## Growth

Microseconds an item, at a tenth of the items and at all of them. Near 1, an item of a large site costs what one of a
small site does.

![Time per item, at all against at a tenth](images/performance-growth.svg)

| loop | items | at a tenth | at all | ratio |
|---|---|---|---|---|
TEXT
  grown 'items of a job list' list $((100 * percent))
  grown 'rows of recent images' images $((1000 * percent))
  grown 'texts of the message catalogue' messages $((50 * percent))
  grown 'client-log folders, without the disk' clients $((80 * percent))
  grown 'of that, sorting their names' sorting $((80 * percent))
  grown 'client-log folders, under Wine' files.clients $((80 * percent))
  grown 'files in the staging folder, under Wine' files.staging $((200 * percent))
  cat <<TEXT

The names of client-log folders are put in order by a Shell sort, as the rules have it, which compares each name more
often the more names there are. A file costs the external \`xcopy\` under Wine $(xcopy_each few $few) us in a folder of
$few, $(xcopy_each many $many) us in a folder of $many, and $(xcopy_each spread $many) us where as many are spread
over ten folders.
TEXT
}

# What gnuplot draws: a label, a ratio and a colour a line; an empty line between groups.
bars() {
  local name base label colour
  while IFS='|' read -r name base label colour; do
    if [ -z "$name" ]; then
      echo
    elif measured "$name" "$base"; then
      printf '"%s" %s %s\n' "$label" "$(ratio "$name" "$base")" "$colour"
    fi
  done
}

draw_archiver() {
  bars >"$work/bars" <<'TEXT'
create.gcab|create.gcab|creating: gcab|0x9aa5b1
create.gzip|create.gcab|creating: tar, gzip -6|0x9aa5b1
create.cabarc1|create.gcab|creating: cabarc, one core|0x1f6fb2
create.cabarc|create.gcab|creating: cabarc|0x1f6fb2
cold.cp|cold.cp|extracting, not in the cache: cp -r|0x9aa5b1
cold.gcab|cold.cp|extracting, not in the cache: gcab|0x9aa5b1
cold.cabextract|cold.cp|extracting, not in the cache: cabextract|0x9aa5b1
cold.cabarc|cold.cp|extracting, not in the cache: cabarc|0x1f6fb2
warm.cabarc|warm.cp|extracting, in the cache: cabarc|0x1f6fb2
TEXT
  draw_bars "$1" 'Time beside gcab (creating) and cp -r (extracting); shorter is faster' 1
}

draw_growth() {
  local loop label
  while IFS='|' read -r loop label; do
    if measured "growth.$loop.all"; then printf '"%s" %s 0x1f6fb2\n' "$label" "$(growth_ratio "$loop")"; fi
  done >"$work/bars" <<'TEXT'
list|items of a job list
images|rows of recent images
messages|texts of the catalogue
clients|client-log folders, without the disk
sorting|of that, sorting
files.clients|client-log folders, under Wine
files.staging|files in staging, under Wine
TEXT
  draw_bars "$1" 'Time per item, at all items against at a tenth of them' 1.2
}

# draw_bars PICTURE TITLE LINE: bars of $work/bars, and a line that one looks for.
draw_bars() {
  gnuplot <<PLOT
set terminal svg size 760,$((90 + 26 * $(wc -l <"$work/bars"))) font 'sans-serif,12' background rgb 'white'
set output '$1'
set title '$2'
set style fill solid
set xrange [0:*]
set yrange [*:*] reverse
set grid xtics
set border 3
set tics nomirror
set rmargin 6
set key off
set arrow from $3, graph 0 to $3, graph 1 nohead dashtype 2
plot '$work/bars' using 2:0:(0):2:(\$0-0.35):(\$0+0.35):3:ytic(1) with boxxyerror linecolor rgb variable, \
  '' using 2:0:(sprintf('  %.2f', \$2)) with labels left
PLOT
}

draw_backup() {
  awk 'BEGIN { row["program"] = 4; row["gather"] = 3; row["pack"] = 2; row["delete"] = 1; row["copy"] = 0 }
       { print row[$2], $3, $4 }' "$work/spans" >"$work/bars"
  gnuplot <<PLOT
set terminal svg size 760,260 font 'sans-serif,12' background rgb 'white'
set output '$1'
set title 'One backup: what runs when'
set xlabel 'seconds'
set style fill solid
set yrange [-0.6:4.6]
set ytics ('copy (xcopy)' 0, 'delete' 1, 'pack (cabarc)' 2, 'gather (xcopy)' 3, 'program' 4)
set grid xtics
set border 3
set tics nomirror
set key off
plot '$work/bars' using 2:1:2:3:(\$1-0.35):(\$1+0.35) with boxxyerror linecolor rgb '#1f6fb2'
PLOT
}

# write_document FOLDER
write_document() {
  mkdir -p "$1/images"
  draw_archiver "$1/images/performance-archiver.svg"
  draw_growth "$1/images/performance-growth.svg"
  draw_backup "$1/images/performance-backup.svg"
  write_tables >"$1/performance.md"
}
