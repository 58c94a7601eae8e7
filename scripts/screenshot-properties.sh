#!/usr/bin/env bash
# Takes a screenshot of the desktop host's Properties dock under Xvfb,
# driven as a user would: the dock widened, the camera track of a new camera
# animation chosen in the editor, the dock scrolled to the track's first
# sub-track. Writes docs/properties-camera-track.png (or the PNG given).
# Needs xvfb-run, xdotool and imagemagick.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
out="$(realpath -m "${1:-$root/docs/properties-camera-track.png}")"
settings="$(mktemp -d)"
trap 'rm -rf "$settings"' EXIT
xvfb-run -a -s "-screen 0 1600x1000x24" bash -c '
  "$1" --settings "$2/settings.ini" --script "$3/scripts/demo-scene.kovs" \
    -c "createcameraanimation 10,0,1.8 20,10,1.8 30,0,1.8 Finish" &
  host=$!
  sleep "${KOV_SCREENSHOT_WAIT:-20}"
  # The separator between the viewport and the dock, dragged to the left.
  xdotool mousemove 1136 300 sleep 0.3 mousedown 1 sleep 0.3 mousemove 1120 300 sleep 0.3 \
    mousemove 900 300 sleep 0.3 mouseup 1
  sleep 1
  # "Camera Track" in the editor: the palette lists the selected track.
  xdotool mousemove 115 616 click 1
  sleep 2
  xdotool mousemove 1150 300 click 5 click 5 click 5
  sleep 1
  import -window root -crop 536x480+904+20 +repage "$4"
  kill "$host"
  wait "$host" || true
' _ "$root/build/bin/kovhost" "$settings" "$root" "$out"
echo "wrote $out"
