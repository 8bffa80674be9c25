#!/usr/bin/env bash
# Cross-builds the processing module and the command line without the toolkit for Windows and runs their tests under
# Wine.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-packages.sh build windows
export WINEPREFIX=$PWD/build/mingw/wine WINEDEBUG=-all
mkdir -p "$WINEPREFIX"
cmake --workflow --preset mingw
