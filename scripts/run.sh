#!/usr/bin/env bash
# Builds Glyphor (Release) and starts it on the bundled samples.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release -j "$(nproc)"
if [ ! -x build/glyphor ]; then
  echo "Glyphor built everything there is so far; the application itself does not exist yet, so there is nothing to run."
  exit 0
fi
cd build/samples
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  exec ../glyphor "$@"
fi
echo "No display found: running the same decode headless on the samples."
exec ../glyphor-batch --jobs "$(nproc)" "$@" .
