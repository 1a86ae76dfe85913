#!/usr/bin/env bash
# Runs every fuzz target for a while, starting from the seeds and named regressions in
# fuzz/corpus/ (kept in git) and from the grown corpus in the cache folder.
#   fuzz/run.sh BUILD_DIR SECONDS [--keep]
# New inputs go to a scratch corpus. With --keep, each target's grown corpus in the cache becomes
# the minimised union of itself and what the run found; the files in git never change. The cache
# is $NUTROVEX_FUZZ_CACHE, else ${XDG_CACHE_HOME:-~/.cache}/nutrovex/fuzz, one folder a target.
# A crash leaves its input in BUILD_DIR/fuzz-artifacts/ and fails the run: to keep it as a
# regression, copy it into fuzz/corpus/TARGET/ under a name that says what it found.
set -euo pipefail
build="${1:?usage: fuzz/run.sh BUILD_DIR SECONDS [--keep]}"
seconds="${2:?usage: fuzz/run.sh BUILD_DIR SECONDS [--keep]}"
keep="${3:-}"
here="$(cd "$(dirname "$0")" && pwd)"
cache="${NUTROVEX_FUZZ_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/nutrovex/fuzz}"
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
    grown="$cache/$name"
    mkdir -p "$grown"
    scratch="$(mktemp -d)"
    echo "== $name for ${seconds}s"
    if "$target" -max_total_time="$seconds" "${options[@]}" -print_final_stats=1 \
            -artifact_prefix="$artifacts/$name-" "$scratch" "$grown" "$committed" \
            2>"$build/$name.log"; then
        grep -E "stat::number_of_executed_units|stat::new_units_added" "$build/$name.log" || true
        ran=$((ran + 1))
        if [ "$keep" = --keep ]; then
            merged="$(mktemp -d)"
            "$target" -merge=1 "${options[@]}" "$merged" "$committed" "$grown" "$scratch" \
                2>"$build/$name.merge.log"
            # The committed files need no copy in the cache (merged inputs are named by their
            # SHA-1).
            known=" $(cd "$committed" && sha1sum -- * 2>/dev/null | cut -d' ' -f1 | tr '\n' ' ')"
            rm -rf "$grown"
            mkdir -p "$grown"
            for f in "$merged"/*; do
                [ -e "$f" ] || continue
                case "$known" in *" $(basename "$f") "*) continue ;; esac
                cp "$f" "$grown"/
            done
            rm -rf "$merged"
            echo "   grown corpus in $grown: $(ls "$grown" | wc -l) inputs, $(du -sh "$grown" | cut -f1)"
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
