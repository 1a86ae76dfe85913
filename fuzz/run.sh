#!/usr/bin/env bash
# Runs every fuzz target for a while, starting from the committed corpora.
#   fuzz/run.sh BUILD_DIR SECONDS [--keep]
# New inputs go to a scratch corpus. With --keep, each target's committed corpus is replaced by the
# minimised union of itself and what the run grew, so later test runs replay the new inputs too.
# A crash leaves its input in BUILD_DIR/fuzz-artifacts/ and fails the run.
set -euo pipefail
build="${1:?usage: fuzz/run.sh BUILD_DIR SECONDS [--keep]}"
seconds="${2:?usage: fuzz/run.sh BUILD_DIR SECONDS [--keep]}"
keep="${3:-}"
here="$(cd "$(dirname "$0")" && pwd)"
artifacts="$build/fuzz-artifacts"
mkdir -p "$artifacts"
options=(-rss_limit_mb=2048 -max_len=70000 -timeout=10)

failed=0
ran=0
for source in "$here"/fuzz_*.cpp; do
    name="$(basename "$source" .cpp)"
    target="$build/fuzz/$name"
    if [ ! -x "$target" ]; then
        echo "fuzz: $target is not built" >&2
        failed=$((failed + 1))
        continue
    fi
    committed="$here/corpus/$name"
    mkdir -p "$committed"
    scratch="$(mktemp -d)"
    echo "== $name for ${seconds}s"
    if "$target" -max_total_time="$seconds" "${options[@]}" -print_final_stats=1 \
            -artifact_prefix="$artifacts/$name-" "$scratch" "$committed" 2>"$build/$name.log"; then
        grep -E "stat::number_of_executed_units|stat::new_units_added" "$build/$name.log" || true
        ran=$((ran + 1))
        if [ "$keep" = --keep ]; then
            merged="$(mktemp -d)"
            "$target" -merge=1 "${options[@]}" "$merged" "$committed" "$scratch" \
                2>"$build/$name.merge.log"
            rm -rf "$committed"
            mkdir -p "$committed"
            cp "$merged"/* "$committed"/ 2>/dev/null || true
            rm -rf "$merged"
            echo "   corpus: $(ls "$committed" | wc -l) inputs, $(du -sh "$committed" | cut -f1)"
        fi
    else
        echo "fuzz: $name failed; see $build/$name.log and $artifacts/" >&2
        tail -n 30 "$build/$name.log" >&2
        failed=$((failed + 1))
    fi
    rm -rf "$scratch"
done
echo "$ran passed, $failed failed"
[ "$failed" -eq 0 ]
