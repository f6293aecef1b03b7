#!/usr/bin/env bash
# The HTML report in a real browser: glyphor-batch writes it for the generated samples compared
# with a baseline run, a headless browser loads it from disk with the network off, the charts
# draw, the console stays silent, and a screenshot is taken.
#   report_browser_test.sh GLYPHOR_BATCH SAMPLES_DIR BROWSER
set -euo pipefail
batch="$1" samples="$2" browser="$3"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

"$batch" -s "$samples/ZyrReader.ini" -p ZXing,QRCode -f json --no-progress "$samples" >"$work/base.json"
status=0
"$batch" -s "$samples/ZyrReader.ini" -p ZXing,QRCode,Pdf417 --no-progress --baseline "$work/base.json" \
  --report "$work/report" "$samples" >/dev/null || status=$?
[ "$status" -eq 0 ] || { echo "glyphor-batch exited with $status"; exit 1; }
page="$work/report/index.html"
grep -q '<polygon points=' "$page" || { echo "no outlines in the thumbnails"; exit 1; }
grep -q 'Against the baseline' "$page" || { echo "no baseline table"; exit 1; }

run_browser() {
  timeout 120 "$browser" --headless --no-sandbox --disable-gpu --no-first-run --disable-background-networking \
    --disable-component-update --disable-sync --user-data-dir="$work/profile-$1" --enable-logging=stderr --v=0 \
    --window-size=1280,1400 "${@:2}" "file://$page"
}
run_browser dom --dump-dom >"$work/dom.html" 2>"$work/dom.log"
if grep -E ':CONSOLE|Uncaught' "$work/dom.log"; then
  echo "the page wrote to the console"
  exit 1
fi
grep -q 'data-charts="2"' "$work/dom.html" || { echo "the charts did not draw"; grep -o '<body[^>]*>' "$work/dom.html"; exit 1; }
run_browser shot --screenshot="$work/report.png" >/dev/null 2>"$work/shot.log"
size=$(stat -c %s "$work/report.png")
[ "$size" -gt 20000 ] || { echo "screenshot of $size bytes"; exit 1; }
if [ -n "${REPORT_SCREENSHOT:-}" ]; then cp "$work/report.png" "$REPORT_SCREENSHOT"; fi
echo "report drawn, screenshot $size bytes"
