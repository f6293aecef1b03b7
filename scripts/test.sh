#!/usr/bin/env bash
# Builds the sanitizer test tree and runs every test.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
cmake --preset test >/dev/null
cmake --build --preset test -j "$(nproc)"
# A temporary folder of this run's own, so that two checkouts testing at once do not share files.
TMPDIR="$(mktemp -d -t glyphor-tests-XXXXXX)"
export TMPDIR TEST_TMPDIR="$TMPDIR"
trap 'rm -rf "$TMPDIR"' EXIT
ctest --preset test -j "$(nproc)" -LE package
# The Debian package builds a release tree of its own, with the whole machine.
ctest --preset test -L package
