#!/usr/bin/env bash
# Installs what is missing, builds everything and runs all tests.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
bash "$root/scripts/install-deps.sh"
bash "$root/scripts/build.sh" "$root/build"
export QT_QPA_PLATFORM=offscreen
ctest --test-dir "$root/build" --output-on-failure -j"$(nproc)"
