#!/usr/bin/env bash
# Configures and builds into BUILD_DIR (default build/) with the given build type.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build_dir="${BUILD_DIR:-$root/build}"
build_type="${1:-Debug}"
shift || true
cmake -S "$root" -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE="$build_type" "$@" >/dev/null
cmake --build "$build_dir" -j"$(nproc)"
