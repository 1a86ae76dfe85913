#!/usr/bin/env bash
# Installs what is missing, builds and runs every test.
#   ./test.sh          the default build (warnings as errors) and all tests
#   ./test.sh --asan   the same under AddressSanitizer and UndefinedBehaviorSanitizer
#   ./test.sh --fuzz [SECONDS] [--keep]
#                      every fuzz target for SECONDS each (default 20; clang, libFuzzer), from
#                      the seeds in fuzz/corpus and the grown corpora in the cache; with --keep
#                      what a run grows is minimised into the cache (see fuzz/run.sh), never git
set -euo pipefail
cd "$(dirname "$0")"
source tools/setup.sh

mode="${1:-default}"
case "$mode" in
    default|--default) preset=default ;;
    --asan) preset=asan ;;
    --fuzz) preset=fuzz ;;
    *) echo "usage: ./test.sh [--asan|--fuzz [SECONDS] [--keep]]" >&2; exit 2 ;;
esac

nv_install "${nv_packages[@]}"
export QT_QPA_PLATFORM=offscreen

if [ "$preset" = fuzz ]; then
    nv_install clang libclang-rt-14-dev
    nv_build fuzz
    exec fuzz/run.sh build/fuzz "${2:-${FUZZ_SECONDS:-20}}" "${3:-}"
fi

nv_build "$preset"
ctest --preset "$preset" -j2
