#!/usr/bin/env bash
# Installs what is missing, builds everything and runs the main job: the host
# in headless mode.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
bash "$root/scripts/install-deps.sh"
bash "$root/scripts/build.sh" "$root/build"
export QT_QPA_PLATFORM=offscreen
"$root/build/bin/kovhost" --headless "$@"
