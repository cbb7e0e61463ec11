# Sourced by bench/run.sh: the files that are packed, copied and restored. The same call always makes the same bytes.

# make_tree FOLDER PERCENT: about 340 MB at 100 percent. Images of a workstation, databases, logs, 5,000 small files,
# and data that cannot be packed any more; no folder with more than 500 files. Needs small_files to have run.
make_tree() {
  local tree=$1 percent=$2
  "$release/demo-data" "$tree/workstation" $((200 * percent / 100)) >/dev/null
  databases "$tree/databases" $((2000 * percent))
  logs "$tree/logs" $((3500 * percent))
  mkdir "$tree/packed" "$tree/small"
  find "$tree/workstation/Data/Image.ddo" -name '*1.ddo' -print0 | sort -z | xargs -0 cat |
    gzip -n -1 >"$tree/packed/studies.gz"
  cp -r "$work/small/"[0-9] "$tree/small/"
  find "$tree" -type d -empty -delete # which a cabinet does not hold
}

# small_files FOLDER COUNT: 500 to a folder, up to 5 KB each.
small_files() {
  mkdir -p "$1"
  (cd "$1" && awk -v count="$2" 'BEGIN {
    srand(1)
    for (i = 0; i < count; ++i) {
      if (i % 500 == 0) { folder = i / 500; system("mkdir -p " folder) }
      file = folder "/record" i ".ini"
      print "[Record" i "]\nPatient=" int(rand() * 1e9) > file
      for (lines = int(rand() * 120); lines > 0; --lines) print "Value" lines "=" int(rand() * 1e6) "," rand() > file
      close(file)
    }
  }')
}

# databases FOLDER ROWS
databases() {
  local name
  mkdir -p "$1"
  for name in Patient Study Image; do
    sqlite3 "$1/$name.db" "PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF;
      CREATE TABLE entry(id INTEGER PRIMARY KEY, number TEXT, name TEXT, dose REAL, remark TEXT);
      WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < $2)
      INSERT INTO entry SELECT i, printf('%s-%08d', '$name', i * 7919 % 1000003), hex(i * 104729 % 65537) || ' Person',
        i * 37 % 1009 / 7.0, CASE i % 3 WHEN 0 THEN 'normal finding, series reviewed' ELSE 'exposure ' || i * i END
      FROM n; CREATE INDEX by_number ON entry(number);" >/dev/null
  done
}

# logs FOLDER LINES
logs() {
  local i
  mkdir -p "$1"
  for i in 1 2 3; do
    awk -v i="$i" -v lines="$2" 'BEGIN {
      srand(i)
      for (n = 0; n < lines; ++n)
        printf "[2026/11/%02d %08d] [Information] %d: image of folder %d stored\n", n % 28, n, rand() * 1e5, rand() * 99
    }' >"$1/$i.log"
  done
}
