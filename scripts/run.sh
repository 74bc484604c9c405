#!/usr/bin/env bash
# Sets up what is missing, builds the workbench and starts it. Extra arguments go
# to the workbench, for example: scripts/run.sh --data-dir ~/mymod/tarn
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
"$root/scripts/setup.sh"
BUILD_DIR="$root/build-release" "$root/scripts/build.sh" RelWithDebInfo -DTARN_BUILD_TESTS=OFF
exec "$root/build-release/src/tarn" "$@"
