#!/usr/bin/env bash
# Installs the Debian packages the project needs to build, test and run.
# Idempotent, and silent when everything is already present.
set -euo pipefail

packages=(
  build-essential cmake ninja-build git pkg-config
  qtbase5-dev qtbase5-dev-tools libqt5opengl5-dev
  libocct-foundation-dev libocct-modeling-data-dev libocct-modeling-algorithms-dev libocct-data-exchange-dev libocct-visualization-dev libtbb-dev
  libassimp-dev
  libgtest-dev libgmock-dev
  ffmpeg xvfb xauth dbus-daemon
  clang-14 libclang-rt-14-dev
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

if [ "$(id -u)" -ne 0 ]; then
  echo "install-deps: missing packages: ${missing[*]} (run as root to install them)" >&2
  exit 1
fi

echo "install-deps: installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
apt-get update -qq
apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
