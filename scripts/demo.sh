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
    real=yes
    board=$work/board.jpg
    part=(--roi 252,207,272,226 --threshold 145)
    agree=0.7
    blobs=("$work/detect_blob.png" --threshold 20 --max-size 400x400)
else
    real=no
    echo "The pictures of opencv-doc cannot be fetched; a board drawn by our own program stands in for them."
    build/release/demo/ormalux-draw-board "$work/drawn-board.png"
    board=$work/drawn-board.png
    part=(--roi 256,236,287,267 --threshold 140)
    agree=0.8
    blobs=("$board" --threshold 170)
fi

show "$ormalux" info "$board"
show "$ormalux" source cut "$board" "${part[@]}" --object white -o "$work/part.mcs"
show "$ormalux" source show "$work/part.mcs"
show "$ormalux" match "$board" --source "$work/part.mcs" --threshold 90..200 --min-yield "$agree" \
    --annotate "$work/parts.png"
show "$ormalux" blobs "${blobs[@]}" --object white --min-size 10x10 --sort left --annotate "$work/blobs.png"
if [ $real = yes ]; then
    page=$work/imageTextN.png
    plate=$work/licenseplate_motion.jpg
    show "$ormalux" blobs "$page" --threshold 128 --object black --min-size 3x6 --max-size 40x40 \
        --annotate "$work/page.png" | head -4
    show "$ormalux" gauge point "$plate" --line 300,330,300,470 --polarity bright-dark --annotate "$work/plate-points.png"
    show "$ormalux" gauge line "$board" --box 335,335,385,425 --direction vertical --polarity bright-dark \
        --annotate "$work/chip-edge.png"
    show build/release/demo/ormalux-read-digits "$work/digits.png"
fi

# The viewer on the board with the parts that were found.
"$ormalux" match "$board" --source "$work/part.mcs" --threshold 90..200 --min-yield "$agree" --json >"$work/parts.json"
viewer=(build/release/app/ormalux-view "$board" --overlays "$work/parts.json")
show "${viewer[@]}" --grab "$work/window.png"
printf '\nLook at the pictures in %s: the boxes sit on the parts.\n' "$work"
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    show "${viewer[@]}"
else
    printf 'There is no display; %s shows what the viewer would.\n' "$work/window.png"
fi
