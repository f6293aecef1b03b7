#!/usr/bin/env bash
# Installs the SDK alone into a fresh prefix, builds the example plug-in against it from outside
# the tree (with CMake, then with pkg-config), and loads it: the checker must pass it and
# glyphor-batch must read the ITF sample with it.
#   example_plugin.sh BUILD_DIR SOURCE_DIR CHECKER BATCH SAMPLES_DIR "EXTRA_CXX_FLAGS"
set -euo pipefail
build=$1 source=$2 checker=$3 batch=$4 samples=$5 flags=${6:-}
work=$(mktemp -d "${TMPDIR:-/tmp}/glyphor-sdk-XXXXXX")
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix

cmake --install "$build" --prefix "$prefix" --component sdk >/dev/null
# The SDK, and nothing of the program, is what an outside build gets.
for f in include/glyphor/KVDecodePlugin.h include/glyphor/kit/PluginBoundary.h \
         lib/cmake/Glyphor/GlyphorConfig.cmake lib/cmake/Glyphor/GlyphorConfigVersion.cmake \
         lib/libglyphor_plugin_kit.a lib/pkgconfig/glyphor-plugin.pc; do
  [ -f "$prefix/$f" ] || { echo "missing from the SDK install: $f"; exit 1; }
done
if find "$prefix" -name 'KVDECODE_*' -o -name 'libZyrReader*' -o -name 'glyphor-batch' | grep -q .; then
  echo "the SDK install holds more than the SDK:"; find "$prefix" -type f; exit 1
fi

cmake -S "$source/examples/plugin" -B "$work/build" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" \
  -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS="-Werror $flags" >/dev/null
cmake --build "$work/build"
cmake --install "$work/build" >/dev/null
plugins=$prefix/lib/glyphor/plugins
[ -f "$plugins/KVDECODE_ExampleITF.so" ] && [ -f "$plugins/#KVDECODE_ExampleITF.ini" ]

# The conformance checker passes it, and it reads the plain ITF sample.
out=$("$checker" "$plugins/KVDECODE_ExampleITF.so") || { echo "$out"; exit 1; }
echo "$out"
echo "$out" | grep -Eq '^decode +pass +[0-9]+ images, [1-9][0-9]* with symbols' || { echo "read nothing"; exit 1; }

# Loaded into glyphor-batch from the installed plug-in folder.
printf '[Folders]\nPluginFolder=%s\nPluginSettingsFolder=%s\n' "$plugins" "$plugins" > "$work/ZyrReader.ini"
out=$("$batch" -s "$work/ZyrReader.ini" -p ExampleITF --expect "$samples/itf-plain.png" "$samples/itf-upside-down.jpg")
echo "$out"
echo "$out" | grep -Eq '^ExampleITF +2 +0 +0 ' || { echo "glyphor-batch did not read both ITF samples"; exit 1; }

# The same sources with the pkg-config file's flags.
pc() { PKG_CONFIG_PATH=$prefix/lib/pkgconfig pkg-config "$@" glyphor-plugin; }
mkdir "$work/pc"
c++ -std=c++17 -shared -fPIC -Werror -Wall $flags $(pc --cflags) "$source"/examples/plugin/*.cpp \
  -o "$work/pc/KVDECODE_ExampleITF.so" $(pc --libs)
out=$("$checker" "$work/pc/KVDECODE_ExampleITF.so" --settings "$plugins/#KVDECODE_ExampleITF.ini" "$samples/itf-plain.png")
echo "$out"
echo "$out" | grep -Eq '^decode +pass +1 images, 1 with symbols'
