#!/usr/bin/env bash
# Builds the Debian package: a Release build, packed by CPack with the shared
# library dependencies worked out by dpkg-shlibdeps, then checked by lintian.
# The package lands in build-release/ as tarn_VERSION_ARCH.deb.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
"$root/scripts/setup.sh"
if ! command -v lintian >/dev/null || ! command -v dpkg-shlibdeps >/dev/null; then
  sudo=""
  [ "$(id -u)" -eq 0 ] || sudo="sudo"
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends lintian dpkg-dev file
fi
build="$root/build-release"
BUILD_DIR="$build" "$root/scripts/build.sh" Release -DTARN_BUILD_TESTS=OFF
(cd "$build" && cpack -G DEB >/dev/null)
package=$(ls -t "$build"/tarn_*.deb | head -n 1)
# Errors fail the build; warnings and notes are shown.
lintian --fail-on error "$package"
echo "$package"
