#!/usr/bin/env bash
# Runs every fuzz target for a while, starting from the committed seeds.
#   fuzz/run.sh BUILD_DIR SECONDS
# New inputs go to a scratch corpus, so the committed seeds stay as they are. A crash leaves its
# input in BUILD_DIR/fuzz-artifacts/ and fails the run.
set -euo pipefail
build="${1:?usage: fuzz/run.sh BUILD_DIR SECONDS}"
seconds="${2:?usage: fuzz/run.sh BUILD_DIR SECONDS}"
here="$(cd "$(dirname "$0")" && pwd)"
artifacts="$build/fuzz-artifacts"
mkdir -p "$artifacts"

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
    scratch="$(mktemp -d)"
    corpora=("$scratch")
    [ -d "$here/corpus/$name" ] && corpora+=("$here/corpus/$name")
    echo "== $name for ${seconds}s"
    if "$target" -max_total_time="$seconds" -rss_limit_mb=2048 -max_len=70000 -timeout=10 \
            -print_final_stats=1 -artifact_prefix="$artifacts/$name-" "${corpora[@]}" \
            2>"$build/$name.log"; then
        grep -E "stat::number_of_executed_units|stat::new_units_added" "$build/$name.log" || true
        ran=$((ran + 1))
    else
        echo "fuzz: $name failed; see $build/$name.log and $artifacts/" >&2
        tail -n 30 "$build/$name.log" >&2
        failed=$((failed + 1))
    fi
    rm -rf "$scratch"
done
echo "$ran passed, $failed failed"
[ "$failed" -eq 0 ]
