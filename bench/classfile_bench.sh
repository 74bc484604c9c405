#!/usr/bin/env bash
# Our class file export and import beside the sqlite3 shell on the same rows, in one run:
#   export  vs  an ordered ".mode csv" select of the configuration's rows
#   import  vs  ".import --csv" of those rows into the same STRICT classdef table
#   export where the slot tracking changes every row  vs  the same update, then the select
#   Make Copy  vs  the same INSERT ... SELECT;  delete  vs  the same two DELETEs
#   the backup of both stores  vs  the shell's .backup of each (the works above make none)
# at each size, so that the peak memory shows whether it grows with the file.
# Prints the median wall time of RUNS runs (each a whole process, ours and the
# shell's taking turns), the peak RSS and the ratio ours/shell.
# Usage: bench/classfile_bench.sh [RUNS] [CLASSES...]   (default: 5 runs; 3000 and 30000 classes)
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
runs="${1:-5}"
shift || true
sizes=("$@")
((${#sizes[@]})) || sizes=(3000 30000)
build="$root/build-bench"
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DTARN_BUILD_BENCH=ON -DTARN_BUILD_TESTS=OFF >/dev/null
cmake --build "$build" --target classfile_bench -j2 >/dev/null
bench="$build/bench/classfile_bench"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

# One run of COMMAND: "microseconds peak-KiB".
once() {
  local start end
  start=$(date +%s%N)
  /usr/bin/time -f %M -o "$work/rss" bash -c "exec $1" >/dev/null
  end=$(date +%s%N)
  echo "$(((end - start) / 1000)) $(tail -n 1 "$work/rss")"
}

median() { sort -n | sed -n "$(((runs + 1) / 2))p"; }

# Runs OURS and SHELL in turn, $runs times each, PREPARE (untimed) before every run,
# so that a change of load on the machine falls on both; prints one table row.
compare() {
  local label="$1" prepare="$2" ours="$3" shell="$4" o=() s=() op=0 sp=0 t m
  for ((i = 0; i < runs; i++)); do
    eval "$prepare"
    read -r t m <<<"$(once "$ours")"
    o+=("$t")
    ((m > op)) && op=$m
    eval "$prepare"
    read -r t m <<<"$(once "$shell")"
    s+=("$t")
    ((m > sp)) && sp=$m
  done
  awk -v l="$label" -v o="$(printf '%s\n' "${o[@]}" | median)" -v om="$op" \
    -v s="$(printf '%s\n' "${s[@]}" | median)" -v sm="$sp" 'BEGIN {
    printf "| %s | %.1f ms | %.1f MiB | %.1f ms | %.1f MiB | %.2f |\n", l, o / 1000, om / 1024, s / 1000, sm / 1024, o / s }'
}

select_rows="select * from classdef where package_name = 'Bench' order by package_name,class_num"
echo "| work | ours | peak | sqlite3 shell | peak | time ratio |"
echo "|---|---|---|---|---|---|"
for classes in "${sizes[@]}"; do
  base="$work/base$classes"
  "$bench" generate "$base" "$classes"
  "$bench" export "$base" "$work/in$classes.class"
  sqlite3 "$base/tarn_dat.db" ".mode csv" "$select_rows" >"$work/in$classes.csv"
  fresh="rm -rf '$work/run'; cp -r '$base' '$work/run'"
  compare "export $classes classes" : "'$bench' export '$base' '$work/out.class'" \
    "sqlite3 '$base/tarn_dat.db' '.mode csv' \"$select_rows\" > '$work/out.csv'"
  compare "import $classes classes" "$fresh" "'$bench' import '$work/run' '$work/in$classes.class' Imported" \
    "sqlite3 '$work/run/tarn_dat.db' '.import --csv $work/in$classes.csv classdef'"

  # Slots hold ids no picker offers in a varied pattern (each slot on a share of the rows
  # of its own), so the tracking rewrites different slots from row to row.
  stale="$work/stale$classes"
  cp -r "$base" "$stale"
  assignments=""
  n=2
  for c in w{2..10} g{1..3}; do
    assignments+="$c = case when rowid % $n = 0 then 999 else $c end, "
    n=$((n + 1))
  done
  sqlite3 "$stale/tarn_dat.db" "update classdef set ${assignments%, }"
  cp -r "$stale" "$work/probe"
  "$bench" export "$work/probe" "$work/probe.class"
  # The shell's script: each changed row's tracked slots, in one transaction, then the select.
  {
    echo "begin;"
    sqlite3 "$work/probe/tarn_dat.db" "attach '$stale/tarn_dat.db' as stale; select 'update classdef set ' || \
      $(for c in w{2..10} g{1..3}; do printf "'%s = ' || p.%s || ', ' || " "$c" "$c"; done | sed "s/ || ', ' || $//") \
      || ' where rowid = ' || p.rowid || ';' from classdef p join stale.classdef s on s.rowid = p.rowid \
      where p.package_name = 'Bench' and ($(for c in w{2..10} g{1..3}; do printf "p.%s is not s.%s or " "$c" "$c"; done | sed 's/ or $//')) \
      order by p.package_name, p.class_num"
    echo "commit;"
    echo ".mode csv"
    echo "$select_rows;"
  } >"$work/tracking$classes.sql"
  rm -rf "$work/probe"
  restale="rm -rf '$work/run'; cp -r '$stale' '$work/run'"
  compare "export $classes classes, tracking varied slots" "$restale" "'$bench' export '$work/run' '$work/out.class'" \
    "sqlite3 '$work/run/tarn_dat.db' < '$work/tracking$classes.sql' > '$work/out.csv'"

  # 1,000 weapons in the pickers, nothing to track.
  armoury="$work/armoury$classes"
  "$bench" generate-armoury "$armoury" "$classes" 1000
  compare "export $classes classes, 1000 weapons" : "'$bench' export '$armoury' '$work/out.class'" \
    "sqlite3 '$armoury/tarn_dat.db' '.mode csv' \"$select_rows\" > '$work/out.csv'"

  columns="$(sqlite3 "$base/tarn_dat.db" "select group_concat(name, ', ') from pragma_table_info('classdef') where name <> 'package_name'")"
  compare "Make Copy of $classes classes" "$fresh" "'$bench' copy '$work/run' Copy" \
    "sqlite3 '$work/run/tarn_dat.db' \"begin; insert into package (package_name) values ('Copy'); insert into classdef (package_name, $columns) select 'Copy', $columns from classdef where package_name = 'Bench'; commit;\""
  compare "delete $classes classes" "$fresh" "'$bench' delete '$work/run'" \
    "sqlite3 '$work/run/tarn_dat.db' \"begin; delete from package where package_name = 'Bench'; delete from classdef where package_name = 'Bench'; commit;\""
  # The backup a delete, a restore or an import under a name in use makes first (both stores),
  # beside the shell's .backup of the two stores.
  compare "backup of $classes classes" "$fresh" "'$bench' backup '$work/run'" \
    "sqlite3 '$work/run/tarn_dat.db' \".backup '$work/run/dat.bak'\" && sqlite3 '$work/run/tarn_ref.db' \".backup '$work/run/ref.bak'\""
done
