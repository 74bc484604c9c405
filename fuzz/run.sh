#!/bin/sh
# Builds the fuzz targets with clang in their own build directory and runs each of
# them for the given number of seconds. New inputs go to a scratch directory, so the seed
# corpus stays as committed; a crash leaves its input in the build directory.
set -eu

seconds=${1:?usage: fuzz/run.sh SECONDS}
root=$(cd "$(dirname "$0")/.." && pwd)
build=${TARN_FUZZ_BUILD_DIR:-$root/build-fuzz}

cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_CXX_COMPILER=clang++ -DTARN_BUILD_FUZZ=ON -DTARN_BUILD_TESTS=OFF >/dev/null
cmake --build "$build" --target classfile_fuzz roundtrip_fuzz -j2

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
for target in classfile_fuzz roundtrip_fuzz; do
    mkdir -p "$scratch/$target"
    # 70000 bytes leave room for lines past the 32,767-character limit.
    "$build/fuzz/$target" -max_total_time="$seconds" -max_len=70000 -timeout=10 \
        -artifact_prefix="$build/$target-" -print_final_stats=1 "$scratch/$target" "$root/fuzz/corpus"
done
