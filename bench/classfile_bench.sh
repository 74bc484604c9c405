#!/usr/bin/env bash
# Our class file export and import beside the sqlite3 shell on the same rows, in one run:
#   export  vs  an ordered ".mode csv" select of the configuration's rows
#   import  vs  ".import --csv" of those rows into the same STRICT classdef table
# at each size, so that the peak memory shows whether it grows with the file.
# Prints the median wall time of RUNS runs (each a whole process), the peak RSS and
# the ratio ours/shell.
# Usage: bench/classfile_bench.sh [RUNS] [CLASSES...]   (default: 5 runs; 3000 and 30000 classes)
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
runs="${1:-5}"
shift || true
sizes=("${@:-3000 30000}")
sizes=(${sizes[*]})
build="$root/build-bench"
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DTARN_BUILD_BENCH=ON -DTARN_BUILD_TESTS=OFF >/dev/null
cmake --build "$build" --target classfile_bench -j2 >/dev/null
bench="$build/bench/classfile_bench"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

# Median microseconds and peak KiB of COMMAND over $runs runs, PREPARE (untimed) before each.
measure() {
  local prepare="$1" command="$2" times=() peak=0 start end rss
  for ((i = 0; i < runs; i++)); do
    eval "$prepare"
    start=$(date +%s%N)
    /usr/bin/time -f %M -o "$work/rss" bash -c "exec $command" >/dev/null
    end=$(date +%s%N)
    times+=($(((end - start) / 1000)))
    rss=$(tail -n 1 "$work/rss")
    ((rss > peak)) && peak=$rss
  done
  echo "$(printf '%s\n' "${times[@]}" | sort -n | sed -n "$(((runs + 1) / 2))p") $peak"
}

report() {
  local label="$1" ours=($2) shell=($3)
  awk -v l="$label" -v o="${ours[0]}" -v om="${ours[1]}" -v s="${shell[0]}" -v sm="${shell[1]}" 'BEGIN {
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
  report "export $classes classes" \
    "$(measure : "'$bench' export '$base' '$work/out.class'")" \
    "$(measure : "sqlite3 '$base/tarn_dat.db' '.mode csv' \"$select_rows\" > '$work/out.csv'")"
  report "import $classes classes" \
    "$(measure "$fresh" "'$bench' import '$work/run' '$work/in$classes.class' Imported")" \
    "$(measure "$fresh" "sqlite3 '$work/run/tarn_dat.db' '.import --csv $work/in$classes.csv classdef'")"
done
