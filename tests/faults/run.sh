#!/usr/bin/env bash
# Fault campaign: tests/faults/run.sh [BUILD_DIR] [PATCH...]; label with --label or FAULT_LABEL.
set -euo pipefail
exec python3 "$(dirname "$0")/campaign.py" "$@"
