#!/usr/bin/env bash
# windows.sh: builds everything for Windows with MinGW: both modules, the command line, the viewer; runs every test, the
# display's too, under Wine; leaves build/windows/Ormalux, a folder that runs on a Windows machine as it is. The
# toolkit is cross-built once into a cache (build-windows-qt.sh, some 15 minutes).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-packages.sh build test windows
qt=$(scripts/build-windows-qt.sh)
export ORMALUX_WINDOWS_QT=$qt
ORMALUX_HOST_QT_CMAKE=$(dirname "$(dirname "$(find /usr/lib -path '*cmake/Qt6/Qt6Config.cmake' | head -1)")")
export ORMALUX_HOST_QT_CMAKE
build=build/windows
folder=$build/Ormalux

cmake --preset windows >/dev/null
cmake --build --preset windows

# The folder: programs, modules, the toolkit with its plugins, the compiler's libraries.
rm -rf "$folder"
mkdir -p "$folder"/{platforms,imageformats,styles,translations}
cp "$build"/bin/{ormalux,ormalux-view}.exe "$build"/bin/lib{Ormalux,OrmaluxView,ormalux-pictures}.dll "$folder"
cp "$qt"/bin/Qt6{Core,Gui,Widgets}.dll "$folder"
cp "$qt"/plugins/platforms/q{windows,offscreen}.dll "$folder/platforms"
cp "$qt"/plugins/imageformats/*.dll "$folder/imageformats"
cp "$qt"/plugins/styles/*.dll "$folder/styles"
cp /usr/share/qt6/translations/qtbase_ko.qm "$folder/translations"
compiler=$(dirname "$(x86_64-w64-mingw32-g++-posix -print-file-name=libstdc++-6.dll)")
cp "$compiler"/{libstdc++-6,libgcc_s_seh-1}.dll "$folder"
cp "$(x86_64-w64-mingw32-g++-posix -print-file-name=libwinpthread-1.dll)" "$folder"
cp README.md LICENSE "$folder"
cp /usr/share/common-licenses/LGPL-3 "$folder/LICENSE.Qt"
printf '[Paths]\nPlugins = .\n' >"$folder/qt.conf"

# Every DLL that is not Windows' own lies in the folder; api-ms-win-* are names of Windows' interfaces, not files.
system=$(find /usr/lib -path '*wine/x86_64-windows/*.dll' -printf '%f\n')
for file in "$folder"/*.exe "$folder"/*.dll "$folder"/*/*.dll; do
    for dll in $(x86_64-w64-mingw32-objdump -p "$file" | sed -n 's/.*DLL Name: //p'); do
        [[ $dll = api-ms-win-* ]] || [ -f "$folder/$dll" ] || grep -qix "$dll" <<<"$system" || { echo "$file needs $dll, which is missing"; exit 1; }
    done
done

# The tests find the libraries where the folder has them.
export WINEPREFIX=$PWD/$build/wine WINEDEBUG=-all
mkdir -p "$WINEPREFIX"
wine=$(command -v wine64 || command -v wine)
WINEPATH=$("$wine" winepath -w "$PWD/$folder" 2>/dev/null | tr -d '\r')
export WINEPATH
export WINEQT_PLUGIN_PATH=$WINEPATH # Wine hands a variable of the toolkit on without the prefix, and not else
# Wine has no Korean face: the tests take those that they have on Linux.
mkdir -p "$build/fonts"
cp /usr/share/fonts/truetype/nanum/NanumGothic{,Bold}.ttf /usr/share/fonts/truetype/dejavu/DejaVuSans{,-Bold}.ttf \
    "$build/fonts"
WINEQT_QPA_FONTDIR=$("$wine" winepath -w "$PWD/$build/fonts" 2>/dev/null | tr -d '\r')
export WINEQT_QPA_FONTDIR
cp "$qt"/bin/Qt6Test.dll "$build/bin"
ctest --preset windows "$@"
rm -rf "$build/smoke"
mkdir -p "$build/smoke/그림"
timeout 120 "$wine" "$folder/ormalux-view.exe" --grab "$build/smoke/그림/창.png" --size 800x600 >/dev/null
[ -s "$build/smoke/그림/창.png" ] || { echo "the viewer of the folder does not start"; exit 1; }
timeout 120 "$wine" "$folder/ormalux.exe" info "$build/smoke/그림/창.png" >/dev/null
du -sh "$folder"
