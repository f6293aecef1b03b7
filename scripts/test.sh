#!/usr/bin/env bash
# Builds the sanitizer test tree and runs every test.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
cmake --preset test >/dev/null
cmake --build --preset test -j "$(nproc)"
ctest --preset test -j "$(nproc)"
