#!/usr/bin/env bash
# Takes a screenshot of the desktop host under Xvfb: the demo site in a low
# morning sun, shaded, with a camera animation's path, written to the PNG
# given (default docs/desktop-viewport.png). Needs xvfb-run and imagemagick.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
out="$(realpath -m "${1:-$root/docs/desktop-viewport.png}")"
settings="$(mktemp -d)"
trap 'rm -rf "$settings"' EXIT
xvfb-run -a -s "-screen 0 1600x1000x24" bash -c '
  "$1" --settings "$2/settings.ini" --script "$3/scripts/demo-scene.kovs" \
    -c "sun 110 18 Clear" -c "visualstyle Shaded" \
    -c "createcameraanimation 10,0,1.8 20,10,1.8 30,0,1.8 Finish" \
    -c "view 0,-14,19 22,5,0 55" &
  host=$!
  sleep "${KOV_SCREENSHOT_WAIT:-20}"
  import -window root -crop 1440x900+0+0 +repage "$4"
  kill "$host"
  wait "$host" || true
' _ "$root/build/bin/kovhost" "$settings" "$root" "$out"
echo "wrote $out"
