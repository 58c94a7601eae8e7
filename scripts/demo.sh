#!/usr/bin/env bash
# Installs what is missing, builds everything and runs the main job: the host
# in headless mode builds the demo site, creates camera animations over it,
# saves the drawing, opens it again and lists what it holds.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
bash "$root/scripts/install-deps.sh"
bash "$root/scripts/build.sh" "$root/build"
export QT_QPA_PLATFORM=offscreen
export XDG_RUNTIME_DIR="${XDG_RUNTIME_DIR:-$(mktemp -d)}"
out="$root/out"
mkdir -p "$out"
host="$root/build/bin/kovhost"
"$host" --headless --settings "$out/kovhost.ini" --script "$root/scripts/demo-scene.kovs" \
  --script "$root/scripts/demo.kovs" -c "save $out/demo.kdw"
echo "== opening $out/demo.kdw again =="
"$host" --headless --settings "$out/kovhost.ini" "$out/demo.kdw" -c list
