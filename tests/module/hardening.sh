#!/usr/bin/env bash
# hardening.sh FILE...: fails when a library or program lacks what cmake/OrmaluxHardening.cmake asks for.
set -euo pipefail
failed=0

missing() {
    echo "$1: $2"
    failed=1
}

for file in "$@"; do
    headers=$(readelf -Wl "$file")
    dynamic=$(readelf -Wd "$file")
    symbols=$(readelf -W --dyn-syms "$file")
    grep -q GNU_RELRO <<<"$headers" || missing "$file" "no RELRO"
    grep -qE 'FLAGS.*NOW' <<<"$dynamic" || missing "$file" "symbols are bound late (no BIND_NOW)"
    grep -qE 'GNU_STACK.* RW ' <<<"$headers" || missing "$file" "its stack is executable"
    grep -qE 'LOAD.* RWE ' <<<"$headers" && missing "$file" "a part is writable and executable"
    grep -q 'TEXTREL' <<<"$dynamic" && missing "$file" "its code is relocated"
    readelf -Wh "$file" | grep -q 'Type: *DYN' || missing "$file" "stands at a fixed address"
    grep -q '__stack_chk_fail' <<<"$symbols" || missing "$file" "no stack protector"
    # Who calls nothing that could be checked has nothing to show; std::to_string hands vsnprintf on by its address.
    if ! grep -qE '__[a-z]+_chk' <<<"${symbols//__stack_chk_fail/}" &&
        grep -qE 'UND (v?f?printf|v?sprintf|snprintf|fread|read|realpath)(@|$)' <<<"$symbols"; then
        missing "$file" "no checked functions (FORTIFY)"
    fi
    # The property note is not there to look at: the compiler's own start files have none on some systems, and the
    # linker then drops it. The landing marks of indirect calls (endbr64) stand in the code all the same.
    if readelf -Wh "$file" | grep -q 'X86-64'; then
        marks=$(LC_ALL=C grep -aoP '\xf3\x0f\x1e\xfa' "$file" | wc -l)
        [ "$marks" -gt 20 ] || missing "$file" "no control-flow protection ($marks marks)"
    fi
done
[ "$failed" = 0 ] && echo "hardened: $*"
exit "$failed"
