#!/usr/bin/env bash
# run.sh BUILD_DIR: installs the build into a folder of its own, builds the consumer against that and runs it,
# by find_package and by pkg-config.
set -euo pipefail
build=$1
here=$(cd "$(dirname "$0")" && pwd)
stage=$build/install-test
rm -rf "$stage"
cmake --install "$build" --prefix "$stage/prefix" >"$stage.log"

cmake -S "$here" -B "$stage/consumer" -G Ninja -DCMAKE_PREFIX_PATH="$stage/prefix" -DCMAKE_BUILD_TYPE=Release >>"$stage.log"
cmake --build "$stage/consumer" >>"$stage.log"
expected=$'2 blobs, the largest has 80 pixels\nedge at 1.90 mm\nempty 1, some processors\n4'
[ "$("$stage/consumer/consumer")" = "$expected" ] || { echo "find_package consumer printed something else"; exit 1; }
if [ -x "$stage/consumer/consumer_view" ]; then
    [ "$(QT_QPA_PLATFORM=offscreen "$stage/consumer/consumer_view")" = "ff0000 1 1 0000ff" ] || { echo "view consumer failed"; exit 1; }
fi

libdir=$(dirname "$(find "$stage/prefix" -name ormalux.pc)")
flags=$(PKG_CONFIG_PATH=$libdir pkg-config --define-variable=prefix="$stage/prefix" --cflags --libs ormalux)
# shellcheck disable=SC2086 # the flags are words
"${CXX:-c++}" -std=c++20 "$here/main.cpp" $flags -o "$stage/by-pkg-config"
[ "$(LD_LIBRARY_PATH=$(dirname "$libdir") "$stage/by-pkg-config")" = "$expected" ] || { echo "pkg-config consumer failed"; exit 1; }
echo "the installed package serves a host by find_package and by pkg-config"
