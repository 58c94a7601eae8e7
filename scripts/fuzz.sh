#!/usr/bin/env bash
# Builds the animation readers' fuzz target with clang and runs it for a
# bounded time over a copy of the committed corpus (the filing golden files,
# the seed drawings and every input that ever made it fail). Exits non-zero
# when it finds a crash; the input is left in the build folder's
# fuzz-findings.
#   scripts/fuzz.sh [SECONDS]   (default 60)
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
seconds="${1:-60}"
build="${KOV_FUZZ_BUILD:-$root/build-fuzz}"
san="-fsanitize=fuzzer-no-link,address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined"
CC=clang-14 CXX=clang++-14 cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DKOV_FUZZ=ON -DKOV_BUILD_GUI=OFF -DKOV_BUILD_TESTS=OFF -DKOV_BUILD_BENCH=OFF \
  -DCMAKE_C_FLAGS="$san" -DCMAKE_CXX_FLAGS="$san" >/dev/null
cmake --build "$build" -j2 --target fuzz_animation_reader

corpus="$(mktemp -d)"
trap 'rm -rf "$corpus"' EXIT
cp "$root"/tests/data/filing/*.bin "$root"/tests/data/filing/*.kdb "$root"/tests/data/fuzz-seeds/*.kdb "$corpus"/
if compgen -G "$root/tests/data/fuzz-regressions/*" >/dev/null; then
  cp "$root"/tests/data/fuzz-regressions/* "$corpus"/
fi
findings="$build/fuzz-findings"
mkdir -p "$findings"
# One process; a single allocation above 256 MB counts as a finding.
"$build/bin/fuzz_animation_reader" -max_total_time="$seconds" -rss_limit_mb=2048 -malloc_limit_mb=256 \
  -max_len=65536 -artifact_prefix="$findings/" -print_final_stats=1 "$corpus"
