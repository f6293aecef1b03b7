#!/usr/bin/env bash
# Installs every Debian package Glyphor needs to build, test and run. Safe to run again:
# it only calls apt-get when something is missing.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config
  qt6-base-dev qt6-base-dev-tools libgl-dev
  libzxing-dev zxing-cpp-tools libzbar-dev libdmtx-dev dmtx-utils
  libjpeg62-turbo-dev libpng-dev
  libgtest-dev libgmock-dev googletest libbenchmark-dev
  clang libclang-rt-dev
  libxml2-utils
  xvfb xauth openbox xdotool imagemagick
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
echo "Installing: ${missing[*]}"
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
