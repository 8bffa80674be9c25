#!/usr/bin/env bash
# build-windows-qt.sh: cross-builds the parts of Qt that the display module needs for MinGW, once, from Debian's
# source package into a cache outside the tree, and prints its folder. Some 15 minutes on two processors.
set -euo pipefail
cache=${ORMALUX_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/ormalux}/windows-qt-6.4.2
if [ -f "$cache/complete" ]; then
    echo "$cache/prefix"
    exit 0
fi
"$(dirname "$0")/install-packages.sh" build windows windows-qt >&2
work=$cache/work
rm -rf "$work" "$cache/prefix"
mkdir -p "$work/lists/partial"

# The source entries stand in a file of their own: the machine's lists stay as they are.
sources=$work/sources.list
sed -n 's/^deb \(\[[^]]*\] \)\{0,1\}/deb-src [trusted=yes] /p' /etc/apt/sources.list 2>/dev/null >"$sources" || true
for file in /etc/apt/sources.list.d/*.sources; do
    [ -f "$file" ] || continue
    awk '/^URIs:/{u=$2} /^Suites:/{$1="";s=$0} /^Components:/{$1="";c=$0} /^$/{emit()} END{emit()}
         function emit(  i,n,p){ if(u){n=split(s,p," "); for(i=1;i<=n;i++) print "deb-src [trusted=yes] " u " " p[i] " " c; u=""}}' \
        "$file" >>"$sources"
done
options=(-o "Dir::Etc::sourcelist=$sources" -o Dir::Etc::sourceparts=- -o "Dir::State::lists=$work/lists")
set +e # in a condition the steps inside would not stop at a failure
(
    set -e
    cd "$work"
    apt-get "${options[@]}" update
    apt-get "${options[@]}" source --download-only qt6-base qt6-imageformats
    for module in base imageformats; do
        mkdir "source-$module"
        tar xf qt6-${module}_*.orig.tar.* -C "source-$module" --strip-components=1
    done
    cat >toolchain.cmake <<'T'
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
T
    features=()
    for feature in sql dbus tabletevent printsupport network opengl vulkan concurrent xml; do
        features+=("-DFEATURE_$feature=OFF")
    done
    host_cmake=$(dirname "$(dirname "$(find /usr/lib -path '*cmake/Qt6/Qt6Config.cmake' | head -1)")")
    cmake -S source-base -B build -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$cache/prefix" \
        -DCMAKE_TOOLCHAIN_FILE="$work/toolchain.cmake" -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR="$host_cmake" \
        -DQT_FORCE_BUILD_TOOLS=OFF -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF -DINPUT_opengl=no \
        -DFEATURE_testlib=ON "${features[@]}"
    cmake --build build
    cmake --install build
    # TIFF files are read by a plugin of a module of its own.
    cmake -S source-imageformats -B build-imageformats -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_INSTALL_PREFIX="$cache/prefix" -DCMAKE_TOOLCHAIN_FILE="$cache/prefix/lib/cmake/Qt6/qt.toolchain.cmake" \
        -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR="$host_cmake" -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF
    cmake --build build-imageformats
    cmake --install build-imageformats
) >"$cache/log" 2>&1
status=$?
set -e
[ $status -eq 0 ] || { tail -30 "$cache/log" >&2; exit 1; }
rm -rf "$work"
touch "$cache/complete"
echo "$cache/prefix"
