#!/usr/bin/env bash
# Sets up what is missing, builds everything and runs the whole test suite.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
"$root/scripts/setup.sh"
BUILD_DIR="$root/build" "$root/scripts/build.sh" Debug -DCMAKE_COMPILE_WARNING_AS_ERROR=ON
QT_QPA_PLATFORM=offscreen ctest --test-dir "$root/build" --output-on-failure -j"$(nproc)"
