#!/usr/bin/env bash
# Runs clang-tidy with the project's .clang-tidy over every source of src/; any finding
# fails the run. It has its own build directory without precompiled headers, which
# clang cannot read from GCC, so every file must also include what it uses.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="${TARN_TIDY_BUILD_DIR:-$root/build-tidy}"
"$root/scripts/setup.sh"
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON \
  -DCMAKE_EXPORT_COMPILE_COMMANDS=ON -DTARN_BUILD_TESTS=OFF >/dev/null
# The headers that uic and moc generate.
cmake --build "$build" --target tarn_store_autogen tarn_classfile_autogen tarn_core_autogen tarn_toolkit_autogen tarn_gui_autogen tarn_autogen tarnctl_autogen -j2 >/dev/null
run-clang-tidy -p "$build" -quiet -j 2 "^$root/src/"
