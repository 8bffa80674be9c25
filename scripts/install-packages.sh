#!/usr/bin/env bash
# install-packages.sh GROUP...: installs what a Debian 12 machine lacks of the groups build, test, python, sanitize,
# fuzz, windows, bench, demo, docs. Asks for nothing when all is there.
set -euo pipefail

declare -A groups=(
    [build]="g++ cmake ninja-build pkg-config libhwy-dev qt6-base-dev librsvg2-bin qt6-image-formats-plugins
             qt6-l10n-tools qt6-translations-l10n
             nlohmann-json3-dev libcli11-dev fonts-nanum ccache"
    [test]="libgtest-dev libgmock-dev python3 qt6-base-dev-tools xvfb openbox xdotool xclip"
    [python]="pybind11-dev python3-dev python3-numpy mypy"
    [fuzz]="clang libclang-rt-14-dev"
    [format]="clang-format-14"
    [windows]="g++-mingw-w64-x86-64-posix googletest wine wine64 icoutils"
    [windows-qt]="qt6-base-dev qt6-base-dev-tools dpkg-dev xz-utils"
    [bench]="libopencv-dev"
    [demo]="dpkg apt"
    [docs]="doxygen graphviz"
)

missing=()
for group in "$@"; do
    for package in ${groups[$group]:?unknown group $group}; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
    done
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root() { if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi; }
echo "Installing: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
as_root apt-get install -y --no-install-recommends "${missing[@]}" >/dev/null 2>&1 && exit 0
as_root apt-get update >/dev/null
as_root apt-get install -y --no-install-recommends "${missing[@]}" >/dev/null
