#!/usr/bin/env bash
# The main job, from a fresh machine: installs what is missing, builds, takes a component of a photographed board
# as a template, finds its siblings and writes the annotated picture; then the blobs of another picture.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-packages.sh build
cmake --preset release -DORMALUX_BUILD_TESTS=OFF >/dev/null
cmake --build --preset release
ormalux=build/release/cli/ormalux
work=build/demo
mkdir -p "$work"

# Debian's package opencv-doc holds real pictures; nothing of it is kept but five of them, in the build folder.
fetch() {
    local pictures=(board.jpg detect_blob.png licenseplate_motion.jpg digits.png imageTextN.png) name
    for name in "${pictures[@]}"; do [ -s "$work/$name" ] || break; name=; done
    [ -z "$name" ] && return 0
    local temporary
    temporary=$(mktemp -d)
    chmod 755 "$temporary"
    (cd "$temporary" && { apt-get download opencv-doc || { apt-get update && apt-get download opencv-doc; }; } &&
        dpkg -x opencv-doc_*.deb unpacked) >/dev/null 2>&1 || { rm -rf "$temporary"; return 1; }
    for name in "${pictures[@]}"; do
        find "$temporary/unpacked" -path '*/data/*' -name "$name*" -exec cp {} "$work/" \; -quit
    done
    [ -s "$work/board.jpg.gz" ] && gunzip -f "$work"/*.gz
    rm -rf "$temporary"
    [ -s "$work/board.jpg" ]
}

show() { printf '\n$ %s\n' "$*"; "$@"; }

if fetch; then
    board=$work/board.jpg
    part=(--roi 251,204,277,231 --object white)
    range=90..200
    blobs=("$work/detect_blob.png" --threshold 40 --object white --min-size 10x10 --sort left)
else
    echo "The pictures of opencv-doc cannot be fetched; using a board drawn by our own program instead."
    build/release/demo/ormalux-draw-board "$work/drawn-board.png"
    board=$work/drawn-board.png
    part=(--roi 256,236,288,268 --object white)
    range=90..200
    blobs=("$board" --threshold 170 --object white --min-size 8x8 --sort left)
fi

show "$ormalux" info "$board"
show "$ormalux" source cut "$board" "${part[@]}" --threshold 128 -o "$work/part.mcs"
show "$ormalux" source show "$work/part.mcs"
show "$ormalux" match "$board" --source "$work/part.mcs" --threshold "$range" --min-yield 0.75 --annotate "$work/parts.png"
show "$ormalux" blobs "${blobs[@]}" --annotate "$work/blobs.png"
printf '\nLook at %s and %s: the boxes sit on the parts.\n' "$work/parts.png" "$work/blobs.png"
