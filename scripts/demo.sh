#!/usr/bin/env bash
# Installs what is missing, builds everything and runs the main job: the host
# in headless mode builds the demo site and its animation from scripts and
# keeps the drawing, then produces the animation's camera cut without
# windows (rasterized frames, encoded by ffmpeg) and says where the clip is.
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
echo "== producing the camera cut of $out/demo.kdw =="
"$host" --headless --settings "$out/kovhost.ini" --produce --output "$out" "$out/demo.kdw" | tee "$out/produce.log"
clip="$(sed -n 's/^Produced //p' "$out/produce.log")"
echo "== the clip: $clip =="
