#!/usr/bin/env bash
# translations.sh [--check]: gathers the visible texts of the display module and of the viewer into the translation
# files and lists those that still lack English; fails when there are any. --check changes no file.
set -euo pipefail
cd "$(dirname "$0")/.."
lupdate=$(command -v lupdate || echo /usr/lib/qt6/bin/lupdate)
if [ ! -x "$lupdate" ]; then
    scripts/install-packages.sh build
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0
gather() {
    local file=$1 target=$1
    shift
    if [ "${check:-}" = yes ]; then
        target=$work/${file##*/}
        cp "$file" "$target"
    fi
    scripts/gather-texts.py "$lupdate" "$target" "$@" || failed=1
}
[ "${1:-}" = --check ] && check=yes
gather res/translations/ormalux_en.ts view tools
gather app/translations/ormalux-view_en.ts app
exit $failed
