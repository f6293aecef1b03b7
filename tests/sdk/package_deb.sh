#!/usr/bin/env bash
# Builds the Debian package from a release tree of its own, checks its contents and control data,
# unpacks it into a scratch root and reads a sample with the glyphor-batch it holds.
#   package_deb.sh SOURCE_DIR RELEASE_DIR SAMPLES_DIR [CMAKE_ARGS...]
set -euo pipefail
source=$1 release=$2 samples=$3
shift 3
cmake -S "$source" -B "$release" -G Ninja -DCMAKE_BUILD_TYPE=Release -DGLYPHOR_TESTS=OFF -DGLYPHOR_BENCH=OFF \
  "$@" >/dev/null
cmake --build "$release"
rm -f "$release"/glyphor_*.deb
(cd "$release" && cpack -G DEB >/dev/null)
deb=$(ls "$release"/glyphor_*.deb)
echo "$deb"

fail() { echo "$*"; exit 1; }
field() { dpkg-deb -f "$deb" "$1"; }
[ "$(field Package)" = glyphor ] || fail "Package: $(field Package)"
[ "$(field Version)" = 1.0 ] || fail "Version: $(field Version)"
[ "$(field Architecture)" = "$(dpkg --print-architecture)" ] || fail "Architecture: $(field Architecture)"
depends=$(field Depends)
echo "Depends: $depends"
for lib in libc6 libstdc++6 libqt6widgets6 libzxing libzbar0 libdmtx0b libpng16-16 libjpeg62-turbo; do
  grep -q "\b$lib" <<<"$depends" || fail "Depends lacks $lib"
done

contents=$(dpkg -c "$deb" | awk '{print $6}')
for f in usr/bin/glyphor usr/bin/glyphor-batch usr/bin/glyphor-plugin-check \
         usr/lib/libZyrReaderLowLevelAPI.so usr/lib/zyrreader-pluginhost \
         usr/lib/glyphor/plugins/KVDECODE_ZXing.so "usr/lib/glyphor/plugins/#KVDECODE_ZXing.ini" \
         usr/lib/glyphor/plugins/KVDECODE_Pdf417.so usr/lib/glyphor/plugins/KVDECODE_QRCode.so \
         usr/lib/glyphor/plugins/KVDECODE_DataMatrix.so usr/lib/glyphor/plugins/KVDECODE_ZBar.so \
         usr/include/glyphor/KVDecodePlugin.h usr/include/glyphor/kit/PluginBoundary.h \
         usr/lib/libglyphor_plugin_kit.a usr/lib/cmake/Glyphor/GlyphorConfig.cmake \
         usr/lib/pkgconfig/glyphor-plugin.pc usr/share/applications/glyphor.desktop \
         usr/share/icons/hicolor/128x128/apps/glyphor.png; do
  grep -qxF "./$f" <<<"$contents" || fail "the package lacks /$f"
done
# Nothing of the build or the tests comes along.
if grep -E 'KVDECODE_(Faulty|NotAPlugin|WrongVersion)|_tests$|/samples/' <<<"$contents"; then
  fail "test files in the package"
fi

root=$(mktemp -d "${TMPDIR:-/tmp}/glyphor-deb-XXXXXX")
trap 'rm -rf "$root"' EXIT
dpkg -x "$deb" "$root"
# From a folder without settings: the installed library finds the installed plug-ins by itself.
cd "$root"
out=$("$root/usr/bin/glyphor-batch" --plugins QRCode,ZBar --expect "$samples/qrcode-plain.png" "$samples/code128-plain.png")
echo "$out"
grep -q "GLYPHOR QR SAMPLE 42" <<<"$out" || fail "glyphor-batch from the package read nothing"
grep -Eq '^ZBar +2 +0 +0 ' <<<"$out" || fail "ZBar from the package did not read both samples"
"$root/usr/bin/glyphor-plugin-check" "$root/usr/lib/glyphor/plugins/KVDECODE_QRCode.so" "$samples/qrcode-plain.png"
