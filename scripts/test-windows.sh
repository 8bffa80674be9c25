#!/usr/bin/env bash
# Cross-builds the processing module for Windows and runs its tests under Wine.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-packages.sh build windows
export WINEPREFIX=$PWD/build/mingw/wine WINEDEBUG=-all
mkdir -p "$WINEPREFIX"
cmake --workflow --preset mingw
