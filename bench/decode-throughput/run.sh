#!/usr/bin/env bash
# Decode throughput over the generated sample images: glyphor-batch with the ZXing plug-in
# (one job and two jobs) against zxing-cpp's own command-line reader, ZXingReader, given the same
# files in one call each, in the same run. Prints images per second and the ratios.
#
#   bench/decode-throughput/run.sh [BUILD_FOLDER]     (default: build, the release preset's)
#
# ROUNDS (default 5) repeats the sample set in each tool's file list; REPEATS (default 3) runs each
# tool that many times, interleaved, and keeps its best time, which is the least disturbed by
# other work on the machine.
set -euo pipefail

here="$(cd "$(dirname "$0")" && pwd)"
build="$(cd "${1:-$here/../../build}" && pwd)"
rounds="${ROUNDS:-5}"
repeats="${REPEATS:-3}"
batch="$build/glyphor-batch"
samples="$build/samples"

for needed in "$batch" "$build/plugins/KVDECODE_ZXing.so" "$samples/ZyrReader.ini"; do
  if [ ! -e "$needed" ]; then
    echo "missing $needed: build the release preset first (cmake --preset release && cmake --build --preset release)" >&2
    exit 2
  fi
done
if ! command -v ZXingReader >/dev/null; then
  echo "ZXingReader not found: install Debian's zxing-cpp-tools (scripts/setup.sh does)" >&2
  exit 2
fi

mapfile -t candidates < <(find "$samples" -maxdepth 1 -type f \( -name '*.png' -o -name '*.jpg' -o -name '*.bmp' \) | sort)
# ZXingReader aborts the whole call on some images (zxing-cpp 1.4 asserts when one call finds two
# equal linear symbols, as in two-upce.png); those are left out of both tools' lists.
images=(); left_out=()
for f in "${candidates[@]}"; do
  if (ZXingReader -noscale -1 "$f" >/dev/null 2>&1) 2>/dev/null; then images+=("$f"); else left_out+=("$(basename "$f")"); fi
done
files=()
for ((r = 0; r < rounds; r++)); do files+=("${images[@]}"); done
count=${#files[@]}

# The plug-in's settings: every format, try harder, try rotated, no downscaling (zxing-cpp 1.4
# aborts on some multi-symbol linear images when downscaling), local-average binariser; these are
# also ZXingReader's defaults once -noscale is given.
run_batch1() { "$batch" --settings "$samples/ZyrReader.ini" --plugins ZXing --no-progress "${files[@]}"; }
run_batch2() { "$batch" --settings "$samples/ZyrReader.ini" --plugins ZXing --no-progress --jobs 2 "${files[@]}"; }
run_zxing() { ZXingReader -noscale -1 "${files[@]}"; }

measure() { # command... ; prints "wall cpu" in seconds (cpu: user + system of the command)
  local TIMEFORMAT='%R %U %S' times
  times=$( { time "$@" >/dev/null 2>"$tmp/stderr"; } 2>&1 ) || { echo "$1 failed:" >&2; cat "$tmp/stderr" >&2; exit 1; }
  echo "$times" | awk '{ printf "%.3f %.3f", $1, $2 + $3 }'
}
best() { # "wall cpu" "wall cpu"|"" ; keeps the pair with the smaller wall time
  if [ -z "$2" ]; then echo "$1"; else echo "$1 $2" | awk '{ print ($1 < $3) ? $1 " " $2 : $3 " " $4 }'; fi
}
tmp="$(mktemp -d)"
trap 'rm -rf "$tmp"' EXIT

# Same files, same answers: how many of the distinct images each tool read something from.
read_batch=$("$batch" --settings "$samples/ZyrReader.ini" --plugins ZXing --no-progress "${images[@]}" |
  awk 'NR > 1 && /ms  / && !/\[NO DATA\]$/ { n++ } END { print n + 0 }')
read_zxing=$(ZXingReader -noscale -1 "${images[@]}" | awk '$2 != "None" { seen[$1] = 1 } END { n = 0; for (k in seen) n++; print n }')

best1=; best2=; bestz=
for ((i = 0; i < repeats; i++)); do
  bestz=$(best "$(measure run_zxing)" "$bestz")
  best1=$(best "$(measure run_batch1)" "$best1")
  best2=$(best "$(measure run_batch2)" "$best2")
done

echo "Decode throughput: ${#images[@]} sample images x $rounds = $count files per call, best of $repeats"
echo "(cores: $(nproc), load average: $(cut -d' ' -f1-3 /proc/loadavg))"
[ ${#left_out[@]} -eq 0 ] || echo "left out, ZXingReader aborts on them: ${left_out[*]}"
echo "$bestz $best1 $best2" | awk -v n="$count" -v rz="$read_zxing" -v ra="$read_batch" -v u="${#images[@]}" '{
  z = $1; a = $3; b = $5
  printf "  %-32s %7.2f s wall %7.1f images/s  (%.1f images per CPU second)\n", "ZXingReader -noscale", z, n / z, n / $2
  printf "  %-32s %7.2f s wall %7.1f images/s  (%.1f images per CPU second)  %.2f x ZXingReader (CPU: %.2f x)\n", "glyphor-batch -p ZXing", a, n / a, n / $4, z / a, $2 / $4
  printf "  %-32s %7.2f s wall %7.1f images/s  (%.1f images per CPU second)  %.2f x ZXingReader, %.2f x one job\n", "glyphor-batch -p ZXing --jobs 2", b, n / b, n / $6, z / b, a / b
  printf "  images read: glyphor-batch %d of %d, ZXingReader %d of %d\n", ra, u, rz, u
}'
