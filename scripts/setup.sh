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
  libxml2-utils python3
  libjs-chart.js chromium-headless-shell
  dpkg-dev file
  xvfb xauth openbox xdotool imagemagick
  fonts-wqy-microhei
  locales
)

# A second locale for the tests that check output stays the same whatever the user's locale.
test_locale=de_DE.UTF-8
have_locale() { locale -a 2>/dev/null | grep -qix 'de_DE.utf8'; }

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && have_locale && exit 0

sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
if [ ${#missing[@]} -ne 0 ]; then
  echo "Installing: ${missing[*]}"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
if ! have_locale; then
  echo "Generating locale $test_locale"
  $sudo sed -i "s/^# *\($test_locale UTF-8\)/\1/" /etc/locale.gen
  grep -q "^$test_locale UTF-8" /etc/locale.gen || echo "$test_locale UTF-8" | $sudo tee -a /etc/locale.gen >/dev/null
  $sudo locale-gen >/dev/null
fi
