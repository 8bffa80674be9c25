#!/usr/bin/env bash
# check-exports.sh LIBRARY: fails when the module exports anything but its interface.
# The record arrays' storage is a template in a public header, so the memory behind it belongs to the interface.
# The last line of names is what the display's tools explain a result with: they draw what the module looked at.
set -euo pipefail
library=$1
foreign=$(nm -DC --defined-only "$library" | cut -c20- |
    grep -vE '^(vtable for |typeinfo for |typeinfo name for |non-virtual thunk to )?(CKest[A-Za-z0-9]*|C[A-Za-z]+Array|CStdlib|CDrawButton2|CTipWnd)(::.*)?$' |
    grep -vE '^ormalux::(setImagePainters\(|color::|(allocate|resize|free)Block\()' |
    grep -vE '^ormalux::((LineWalk|EdgeTable|BlobFinder)::|(gaugeLine|edgeThreshold|blobRegion|levelsOfColor|bandCount|bandOf|editArea|editChannels|readingOrder)\()' |
    grep -vE '^ormalux_(version|recipe_(open|parse|set|run|close)|result_(verdict|json|image|free))$' || true)
if [ -n "$foreign" ]; then
    printf '%s exports more than its interface:\n%s\n' "$library" "$foreign" | head -40
    exit 1
fi
echo "$library: only the interface is exported"
