#!/usr/bin/env bash
# Runs every benchmark program of a build, one after the other, so that all the figures come from
# one run on one machine. Each line gives a figure beside its reference (ratio, *_ms counters) or,
# for the scaling, beside the same figure at a tenth of the data (times_1x).
#   bench/run-all.sh [BUILD_DIR]      default: build/default
set -euo pipefail
build="${1:-build/default}"
export QT_QPA_PLATFORM="${QT_QPA_PLATFORM:-offscreen}"
found=0
for program in "$build"/bench/nutrovex_bench "$build"/bench/nutrovex_chart_bench \
               "$build"/bench/nutrovex_bench_*; do
    [ -x "$program" ] || continue
    found=$((found + 1))
    echo "== $(basename "$program")"
    # Qt's notes about the offscreen platform are not figures.
    "$program" --benchmark_counters_tabular=false 2>&1 |
        grep -v -e "propagateSizeHints" -e "XDG_RUNTIME_DIR"
done
if [ "$found" -eq 0 ]; then
    echo "no benchmark programs in $build/bench: build with cmake --preset default first" >&2
    exit 1
fi
