#!/usr/bin/env bash
# Renders the editor's icons from their SVG sources to 64 px PNGs; pictures
# that guide a dialog (pitch_yaw_roll) keep the size their SVG gives.
#   scripts/icons.sh            writes editor/icons/*.png
#   scripts/icons.sh SHEET.png  also writes a contact sheet of them at 32 px
#                               on a light and on a dark background
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
icons="$root/editor/icons"
for svg in "$icons"/*.svg; do
  case "$(basename "$svg")" in
    pitch_yaw_roll.svg) rsvg-convert "$svg" -o "${svg%.svg}.png" ;;
    *) rsvg-convert -w 64 -h 64 "$svg" -o "${svg%.svg}.png" ;;
  esac
  # Fixed PNG bytes keep the committed files unchanged when nothing was redrawn.
  convert "${svg%.svg}.png" -strip -define png:exclude-chunks=date,time "${svg%.svg}.png"
done
[ $# -ge 1 ] || exit 0
tmp="$(mktemp -d)"
trap 'rm -rf "$tmp"' EXIT
for bg in '#f4f4f4' '#2b2b2b'; do
  montage "$icons"/*.png -resize 32x32 -background "$bg" -geometry +8+8 -tile x1 "$tmp/${bg#\#}.png"
done
convert "$tmp/f4f4f4.png" "$tmp/2b2b2b.png" -append "$1"
