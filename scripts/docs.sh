#!/usr/bin/env bash
# Makes the reference of the interface, build/docs/html/index.html. Fails on any warning.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-packages.sh docs
mkdir -p build/docs
log=build/docs/warnings.txt
doxygen docs/Doxyfile >/dev/null 2>"$log" || { cat "$log" >&2; exit 1; }
if [ -s "$log" ]; then
    cat "$log" >&2
    exit 1
fi
echo "build/docs/html/index.html"
