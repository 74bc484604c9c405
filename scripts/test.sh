#!/usr/bin/env bash
# Sets up what is missing, builds everything and runs the whole test suite.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
"$root/scripts/setup.sh"
BUILD_DIR="$root/build" "$root/scripts/build.sh" Debug -DCMAKE_COMPILE_WARNING_AS_ERROR=ON
# The suite runs in a home of its own, which it must leave empty: every test keeps to its
# own temporary folders.
home="$(mktemp -d)"
trap 'rm -rf "$home"' EXIT
env -u XDG_CONFIG_HOME -u XDG_DATA_HOME -u XDG_CACHE_HOME -u XDG_STATE_HOME -u XDG_RUNTIME_DIR \
  HOME="$home" QT_QPA_PLATFORM=offscreen ctest --test-dir "$root/build" --output-on-failure -j"$(nproc)"
left="$(find "$home" -mindepth 1 | head -n 5)"
if [ -n "$left" ]; then
  echo "The tests wrote into the home they were given:" >&2
  echo "$left" >&2
  exit 1
fi
