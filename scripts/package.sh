#!/usr/bin/env bash
# Builds the Debian package: a Release build, packed by CPack with the shared
# library dependencies worked out by dpkg-shlibdeps. The package lands in
# build-release/ as tarn_VERSION_ARCH.deb. With --lint, lintian then checks it (CI
# does); lintian and its many dependencies are installed only for that.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
lint=false
case "${1:-}" in
  --lint) lint=true ;;
  "") ;;
  *) echo "usage: scripts/package.sh [--lint]" >&2; exit 2 ;;
esac
tools=(dpkg-dev file)
$lint && tools+=(lintian)
"$root/scripts/setup.sh" "${tools[@]}"
build="$root/build-release"
BUILD_DIR="$build" "$root/scripts/build.sh" Release -DTARN_BUILD_TESTS=OFF
(cd "$build" && cpack -G DEB >/dev/null)
package=$(ls -t "$build"/tarn_*.deb | head -n 1)
# Errors fail the build; warnings and notes are shown.
if $lint; then
  lintian --fail-on error "$package"
fi
echo "$package"
