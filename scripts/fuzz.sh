#!/usr/bin/env bash
# fuzz.sh [SECONDS]: builds the fuzzers and lets each run so long (60); finds go to build/fuzz/finds.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-packages.sh build fuzz
cmake --workflow --preset fuzz
mkdir -p build/fuzz/finds
run() {
    local name
    name=$(basename "$1")
    mkdir -p "build/fuzz/corpus/$name"
    "$1" -max_total_time="$2" -timeout=20 -rss_limit_mb=4096 -max_len=65536 -verbosity=0 -print_final_stats=1 \
        -artifact_prefix="build/fuzz/finds/$name-" "build/fuzz/corpus/$name" >"build/fuzz/$name.log" 2>&1 ||
        { tail -40 "build/fuzz/$name.log"; return 1; }
    echo "$name: $(sed -n 's/stat::number_of_executed_units: *//p' "build/fuzz/$name.log") executions, no finding"
}
export -f run
find build/fuzz/fuzz -maxdepth 1 -name '*_fuzzer' -type f -print0 | sort -z |
    xargs -0 -P 2 -I{} bash -c 'run {} '"${1:-60}"
