#!/bin/sh
# Licence cards at 600 dpi (30 generated JPEGs): the Pdf417 and ZXing plug-ins through
# glyphor-batch against zxing-cpp's ZXingReader on the same files in the same run, alternating.
# Reports how many of the 30 each reads and the wall time per image, load included.
# Usage: bench/licence-cards/run.sh [ROUNDS]   (release build in build/, ZXingReader installed)
set -eu
root=$(cd "$(dirname "$0")/../.." && pwd)
build=$root/build
rounds=${1:-3}
cards=$build/licence-cards
cmake --build "$build" --target glyphor-batch glyphor_sample_generator glyphor_samples KVDECODE_Pdf417 \
    KVDECODE_ZXing zyrreader-pluginhost >/dev/null
rm -rf "$cards" && mkdir -p "$cards"
"$build/glyphor_sample_generator" "$cards" --licence-cards
settings=$build/samples/ZyrReader.ini
now() { date +%s%N; }

# glyphor-batch PLUGIN: passes of 30 and ms per image for one process over the folder.
batch() {
    start=$(now)
    passed=$("$build/glyphor-batch" -s "$settings" -p "$1" --expect -f csv "$cards" 2>/dev/null | tr -d '\r' |
        grep -c ',pass$' || true)
    echo "$1 $passed $(( ($(now) - start) / 30000000 ))"
}

# ZXingReader: one process per file (load included), bytes compared with the expected text.
reader() {
    passed=0
    start=$(now)
    for image in "$cards"/*.jpg; do
        if ZXingReader -format PDF417 -bytes "$image" 2>/dev/null | cmp -s - "${image%.jpg}.txt"; then
            passed=$((passed + 1))
        fi
    done
    echo "ZXingReader $passed $(( ($(now) - start) / 30000000 ))"
}

uptime
echo "reader read-of-30 ms-per-image"
i=0
while [ "$i" -lt "$rounds" ]; do
    batch Pdf417
    reader
    batch ZXing
    i=$((i + 1))
done
uptime
