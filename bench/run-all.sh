#!/usr/bin/env bash
# Runs every benchmark program of a build, one after the other, so that all the figures come from
# one run on one machine, then prints them as one table: each figure's min, median and max over
# its repetitions, beside its reference and ratio, its target and the load average of the machine
# while it ran. The figures that depend on how a process starts (the loads, SQLite, the tool, the
# program's start) are taken in fresh processes.
#   bench/run-all.sh [BUILD_DIR] [FILTER]     default: build/default, every benchmark
# REPETITIONS (default 5) repeats the benchmarks that do not choose their own count.
set -euo pipefail
build="${1:-build/default}"
filter="${2:-.}"
export QT_QPA_PLATFORM="${QT_QPA_PLATFORM:-offscreen}"
results="$(mktemp -d)"
trap 'rm -rf "$results"' EXIT
found=0
for program in "$build"/bench/nutrovex_bench "$build"/bench/nutrovex_chart_bench \
               "$build"/bench/nutrovex_bench_*; do
    [ -x "$program" ] || continue
    name="$(basename "$program")"
    [ "$name" = nutrovex_bench_table ] && continue
    found=$((found + 1))
    echo "== $name (load average: $(cut -d' ' -f1-3 /proc/loadavg))"
    # Qt's notes about the offscreen platform are not figures.
    "$program" --benchmark_filter="$filter" --benchmark_repetitions="${REPETITIONS:-5}" \
        --benchmark_display_aggregates_only=true --benchmark_counters_tabular=false \
        --benchmark_out="$results/$name.json" --benchmark_out_format=json 2>&1 |
        grep -v -e "propagateSizeHints" -e "XDG_RUNTIME_DIR" || true
done
if [ "$found" -eq 0 ]; then
    echo "no benchmark programs in $build/bench: build with cmake --preset default first" >&2
    exit 1
fi
echo
"$build"/bench/nutrovex_bench_table "$results"/*.json
