#!/usr/bin/env bash
# Uses a finished build the way another project would: installs it to a
# temporary prefix, builds and runs tests/consumer against the installed
# package, runs the installed host once (it must find its library and the
# module file on its own), then builds and runs the same consumer with this
# checkout as its subproject.
#   scripts/consumer-check.sh [BUILD_DIR]      (default: ./build)
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="${1:-$root/build}"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
prefix="$work/prefix"
export QT_QPA_PLATFORM=offscreen
export XDG_RUNTIME_DIR="${XDG_RUNTIME_DIR:-$work}"

echo "== installing $build into a temporary prefix =="
cmake --install "$build" --prefix "$prefix" >/dev/null

echo "== consumer of the installed package =="
cmake -S "$root/tests/consumer" -B "$work/installed" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$work/installed"
"$work/installed/kovconsumer"

if [ -x "$prefix/bin/kovhost" ]; then
  echo "== installed host =="
  "$prefix/bin/kovhost" --headless --settings "$work/kovhost.ini" \
    -c "createcameraanimation 10,0,1.8 20,10,1.8 30,0,1.8 Finish" -c "save $work/a.kdw"
  test -s "$work/a.kdw"
fi

echo "== consumer with this checkout as its subproject =="
cmake -S "$root/tests/consumer" -B "$work/subproject" -G Ninja -DKOV_SOURCE_DIR="$root" >/dev/null
cmake --build "$work/subproject" --target kovconsumer -j"$(nproc)"
"$work/subproject/kovconsumer"
echo "consumer check passed"
