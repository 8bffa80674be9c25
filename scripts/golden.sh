#!/usr/bin/env bash
# golden.sh compare|regenerate|show: the kept pictures of the display, tests/golden/*.png.
#   compare     paints them anew and says which differ
#   regenerate  keeps what is painted now as the expected pictures; look at them before committing
#   show        writes a page with expected, actual and difference of each, and prints its path
# BUILD=folder chooses another build than build/dev.
set -euo pipefail
cd "$(dirname "$0")/.."
build=${BUILD:-build/dev}
results=$build/golden

paint() {
    cmake --build "$build" --target test_view_GoldenTest >/dev/null
    rm -rf "$results"
    QT_QPA_PLATFORM=offscreen QT_SCALE_FACTOR=1 "$build/tests/test_view_GoldenTest" "$@"
}

page() {
    echo '<!doctype html><meta charset="utf-8"><title>Golden pictures</title>'
    echo '<style>body{font:14px sans-serif;background:#444;color:#eee} img{image-rendering:pixelated;margin:4px}</style>'
    for picture in "$results"/*.actual.png; do
        name=$(basename "$picture" .actual.png)
        echo "<h3>$name: expected, actual, difference</h3>"
        if [ -f "$results/$name.side.png" ]; then echo "<img src=\"$name.side.png\">"
        else echo "<p>nothing of this size is kept</p><img src=\"$name.actual.png\">"; fi
    done
}

case "${1:-}" in
compare)
    paint --gtest_brief=1
    ;;
regenerate)
    paint --gtest_brief=1 >/dev/null || true
    rm -f tests/golden/*.png
    for picture in "$results"/*.actual.png; do
        cp "$picture" "tests/golden/$(basename "$picture" .actual.png).png"
    done
    git status --short tests/golden
    ;;
show)
    paint --gtest_brief=1 >/dev/null || true
    page >"$results/index.html"
    echo "$PWD/$results/index.html"
    ;;
*)
    sed -n '2,6s/^# //p' "$0"
    exit 2
    ;;
esac
