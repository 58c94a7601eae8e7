#!/usr/bin/env bash
# Screenshots of the desktop host's animation editor under Xvfb at three
# zoom levels, driven as a user would: the wheel over the timeline header
# zooms, a double click on it moves the current time. Writes
# docs/editor-dock-zoom-{mid,out,in}.png (or into the folder given). Needs
# xvfb-run, xdotool and imagemagick.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
out="$(realpath -m "${1:-$root/docs}")"
mkdir -p "$out"
settings="$(mktemp -d)"
trap 'rm -rf "$settings"' EXIT
xvfb-run -a -s "-screen 0 1600x1000x24" bash -c '
  "$1" --settings "$2/settings.ini" --script "$3/scripts/demo-scene.kovs" \
    -c "sun 110 18 Clear" -c "visualstyle Shaded" \
    -c "createcameraanimation 10,0,1.8 20,10,1.8 30,0,1.8 40,-5,3 Finish" \
    -c "view 0,-14,19 22,5,0 55" &
  host=$!
  sleep "${KOV_SCREENSHOT_WAIT:-20}"
  dir="$4"
  shot() { import -window root -crop 1440x262+0+500 +repage "$dir/editor-dock-zoom-$1.png"; }
  # The production panel closed, for the tracks to have the dock.
  xdotool mousemove 1416 541 click 1
  sleep 1
  # The timeline header of the editor dock, at 10 s with the default zoom.
  xdotool mousemove 960 572 click --repeat 2 1
  sleep 3
  shot mid
  xdotool click --repeat 12 5
  sleep 3
  shot out
  xdotool click --repeat 30 4
  sleep 3
  shot in
  kill "$host"
  wait "$host" || true
' _ "$root/build/bin/kovhost" "$settings" "$root" "$out"
echo "wrote $out/editor-dock-zoom-{mid,out,in}.png"
