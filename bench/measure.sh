# Sourced by bench/run.sh: taking times and reading them again. Every figure is a line "NAME NUMBER" in the file
# $samples; a repeated measurement has several lines of one name.

note() { printf '%s %s\n' "$1" "$2" >>"$samples"; }

# Whether there are figures of all these names: a tool that is not installed leaves none.
measured() {
  local name
  for name in "$@"; do grep -q "^$name " "$samples" || return 1; done
}

# timed NAME COMMAND...: notes the command's seconds. Earlier steps' data reach the disk first, so that they do not
# slow this one down.
timed() {
  local name=$1 start
  shift
  sync -f "$work"
  start=$(date +%s%N)
  "$@" >/dev/null
  note "$name" "$(awk -v a="$start" -v b="$(date +%s%N)" 'BEGIN { printf "%.4f", (b - a) / 1e9 }')"
}

# repeat_within SECONDS COMMAND...: runs it $rounds times, but begins no more rounds after SECONDS.
repeat_within() {
  local end=$((SECONDS + $1)) round
  for ((round = 0; round == 0 || (round < rounds && SECONDS < end); ++round)); do "${@:2}"; done
}

# statistic median|most NAME
statistic() {
  awk -v name="$2" '$1 == name { print $2 }' "$samples" | sort -n |
    if [ "$1" = most ]; then tail -n 1; else middle %.6f; fi
}
median() { statistic median "$1"; }
most() { statistic most "$1"; }
# middle FORMAT: the median of sorted lines.
middle() { awk -v f="$1\n" '{ v[NR] = $1 } END { printf f, (v[int((NR + 1) / 2)] + v[int(NR / 2) + 1]) / 2 }'; }

# quotients NAME BASE: of measurements that were taken in the same round, sorted.
quotients() {
  awk -v name="$1" -v base="$2" '
    $1 == name { a[++n] = $2 }
    $1 == base { b[++m] = $2 }
    END { for (i = 1; i <= n && i <= m; ++i) printf "%.3f\n", a[i] / b[i] }' "$samples" | sort -n
}
ratio() { quotients "$1" "$2" | middle %.3f; }
range() { quotients "$1" "$2" | awk 'NR == 1 { least = $1 } END { print least " and " $1 }'; }

# number FORMAT VALUE [DIVISOR]
number() { awk -v f="$1" -v v="$2" -v d="${3:-1}" 'BEGIN { printf f, v / d }'; }
