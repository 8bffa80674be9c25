#!/usr/bin/env bash
# Fails when a source is not formatted; `scripts/check-format.sh --fix` formats it.
set -euo pipefail
cd "$(dirname "$0")/.."
mode=(--dry-run -Werror)
[ "${1:-}" = --fix ] && mode=(-i)
git ls-files -z '*.cpp' '*.h' | xargs -0 "$(command -v clang-format-14 || command -v clang-format)" "${mode[@]}"
