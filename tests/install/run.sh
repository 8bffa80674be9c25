#!/usr/bin/env bash
# run.sh BUILD_DIR: installs the build into a folder of its own, builds the consumer against that and runs it,
# by find_package, and by pkg-config from where the folder was moved: in C++17, and in C99 by the engine alone.
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

# Installed to another prefix than was configured, and then moved: the pkg-config files go along.
mv "$stage/prefix" "$stage/moved"
libdir=$(dirname "$(find "$stage/moved" -name ormalux.pc)")
export PKG_CONFIG_PATH=$libdir LD_LIBRARY_PATH=${libdir%/*}
by_pkg_config() { # SOURCE MODULE: prints what the program prints
    # shellcheck disable=SC2046 # the flags are words
    "${CXX:-c++}" -std=c++17 -fPIC "$here/$1" $(pkg-config --cflags --libs "$2") -o "$stage/by-pkg-config"
    "$stage/by-pkg-config"
}
[ "$(by_pkg_config main.cpp ormalux)" = "$expected" ] || { echo "pkg-config consumer failed"; exit 1; }
if [ -e "$libdir/ormalux-view.pc" ] && pkg-config --exists Qt6Widgets; then
    [ "$(QT_QPA_PLATFORM=offscreen by_pkg_config view.cpp ormalux-view)" = "ff0000 1 1 0000ff" ] || { echo "pkg-config view consumer failed"; exit 1; }
fi

# The engine for a host in C, without the folders of C++ on its way.
# shellcheck disable=SC2046 # the flags are words
"${CC:-cc}" -std=c99 -pedantic -Wall -Wextra -Werror "$here/station.c" $(pkg-config --cflags --libs ormalux) -o "$stage/station"
"$stage/station" | diff "$here/station.txt" - || { echo "the station in C printed something else"; exit 1; }

# Every header stands alone in C++17, without a warning to its host; the toolkit's own are not looked at.
include=$stage/moved/include/ormalux
for header in $(cd "$include" && find . -name '*.h' | sort); do
    foreign=
    if [[ $header == ./view/* ]]; then
        pkg-config --exists Qt6Widgets || continue
        foreign=$(pkg-config --cflags Qt6Widgets | sed 's|-I|-isystem |g')
    fi
    # shellcheck disable=SC2086 # the flags are words
    echo "#include \"${header#./}\"" | "${CXX:-c++}" -x c++ -std=c++17 -fPIC -fsyntax-only -Wall -Wextra -Wpedantic -Wconversion -Werror \
        -I "$include" $foreign - || { echo "$header is no header for C++17"; exit 1; }
done
if [ -x "$stage/moved/bin/ormalux" ]; then # alone it links none of the libraries; with its module it writes any picture
    case $("$stage/moved/bin/ormalux" --version) in *"BMP only"*) kinds=bmp ;; *) kinds="bmp png" ;; esac
    printf 'BM\72\0\0\0\0\0\0\0\66\0\0\0\50\0\0\0\1\0\0\0\1\0\0\0\1\0\30\0%028d' 0 | tr 0 '\0' >"$stage/dot.bmp"
    for kind in $kinds; do
        env -u LD_LIBRARY_PATH "$stage/moved/bin/ormalux" process "$stage/dot.bmp" invert -o "$stage/out.$kind"
    done
fi
echo "the installed package serves a host by find_package, and by pkg-config where it was moved"
