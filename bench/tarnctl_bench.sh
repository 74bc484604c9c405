#!/usr/bin/env bash
# tarnctl beside the sqlite3 shell doing the same rows in the same run:
#   export of 30,000 classes   vs  an ordered ".mode csv" select of the same rows
#   import of 30,000 classes   vs  ".import" of the same rows as CSV into the same STRICT table
#   start-up of "tarnctl list" on 10,000 configurations  vs  the shell listing them
# Prints median wall time over RUNS runs, peak RSS, and the ratio ours/shell.
# Usage: bench/tarnctl_bench.sh [RUNS]   (builds a release tarnctl into build-bench/)
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
runs="${1:-5}"
BUILD_DIR="$root/build-bench" "$root/scripts/build.sh" Release -DTARN_BUILD_TESTS=OFF >/dev/null
tarnctl="$root/build-bench/src/tarnctl"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

# One timed run of a command after PREPARE (untimed): "microseconds peak-KiB".
timed() {
  local prepare="$1" command="$2" start end
  eval "$prepare"
  start=$(date +%s%N)
  /usr/bin/time -f %M -o "$work/rss" bash -c "$command" >/dev/null
  end=$(date +%s%N)
  echo "$(((end - start) / 1000)) $(tail -n 1 "$work/rss")"
}

# Ours and the shell's take turns, $runs times each, so both meet the same load.
# Prints the median time and the peak memory of each: "ours-us ours-KiB shell-us shell-KiB".
measure() {
  local prepare="$1" ours="$2" shell="$3" o=() s=() op=0 sp=0 run
  for ((i = 0; i < runs; i++)); do
    run=($(timed "$prepare" "$ours")); o+=("${run[0]}"); ((run[1] > op)) && op=${run[1]}
    run=($(timed "$prepare" "$shell")); s+=("${run[0]}"); ((run[1] > sp)) && sp=${run[1]}
  done
  local middle=$(((runs + 1) / 2))
  echo "$(printf '%s\n' "${o[@]}" | sort -n | sed -n "${middle}p") $op" \
    "$(printf '%s\n' "${s[@]}" | sort -n | sed -n "${middle}p") $sp"
}

report() {
  local label="$1" figures=($2)
  awk -v l="$label" -v o="${figures[0]}" -v om="${figures[1]}" -v s="${figures[2]}" -v sm="${figures[3]}" 'BEGIN {
    printf "| %s | %.1f ms | %d MiB | %.1f ms | %d MiB | %.2f |\n", l, o / 1000, om / 1024, s / 1000, sm / 1024, o / s }'
}

# One data directory with 30,000 classes under "Big" and 10,000 configurations.
base="$work/base"
"$tarnctl" --data-dir "$base" init >/dev/null
sqlite3 "$base/tarn_dat.db" <<'SQL'
insert into package (package_name) values ('Big');
with recursive n(i) as (select 1 union all select i + 1 from n where i < 30000)
insert into classdef (package_name, class_name, class_num, skin_name1, skin_name2, model_name,
  w1, w2, w3, w4, w5, w6, w7, w8, w9, w10, g1, g2, g3, max_speed, max_health, max_armor,
  i1, i2, i3, i4, i5, i6, i7, i8, i9, s1, s2, s3, s4, s5, s6, s7, s8, s9, s10, s11, s12, s13, s14, s15,
  s16, s17, s18, s19, s20, s21, decoyskin, maxbullets, maxshells, maxrockets, maxgrenades, maxcells, maxslugs)
select 'Big', 'Class ' || i, i, 'red' || i % 7, 'blue' || i % 7, 'model' || i % 13,
  1, 2 + i % 9, 3, 4, 0, 0, 0, 0, 0, 0, i % 5, 1, 0, 200 + i % 100, 100, 50,
  i % 2, 1, 0, 0, 1, 0, 0, 0, 0, 1, 0, i % 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1,
  i % 3, 100, 50, 25, 10, 100, 10 from n;
with recursive n(i) as (select 1 union all select i + 1 from n where i < 10000)
insert into package (package_name) select printf('config %05d', i) from n;
SQL
"$tarnctl" --data-dir "$base" export Big "$work/big.class" --unprotected
sqlite3 "$base/tarn_dat.db" ".mode csv" \
  "select * from classdef where package_name = 'Big' order by package_name,class_num" >"$work/big.csv"
# An empty store of the same schema for each import run.
empty="$work/empty"
"$tarnctl" --data-dir "$empty" init >/dev/null
fresh="rm -rf '$work/run'; cp -r '$empty' '$work/run'"

echo "| work | tarnctl | peak | sqlite3 shell | peak | ratio |"
echo "|---|---|---|---|---|---|"
report "export 30,000 classes" \
  "$(measure : "'$tarnctl' --data-dir '$base' export Big '$work/out.class' --unprotected" \
    "sqlite3 '$base/tarn_dat.db' '.mode csv' \"select * from classdef where package_name = 'Big' order by package_name,class_num\" > '$work/out.csv'")"
report "import 30,000 classes" \
  "$(measure "$fresh" "'$tarnctl' --data-dir '$work/run' import '$work/big.class' Imported" \
    "sqlite3 '$work/run/tarn_dat.db' '.import --csv $work/big.csv classdef'")"
imported=$(sqlite3 "$work/run/tarn_dat.db" "select count(*) from classdef where package_name = 'Big'")
[ "$imported" -eq 30000 ] || { echo "the shell's import stored $imported rows, not 30000" >&2; exit 1; }
report "list 10,001 configurations" \
  "$(measure : "'$tarnctl' --data-dir '$base' list" \
    "sqlite3 '$base/tarn_dat.db' 'select package_name from package order by package_name'")"
