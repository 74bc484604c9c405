#!/usr/bin/env bash
# Installs the Debian packages the workbench needs to build, test and run, and any
# further packages named as arguments, when any of them is missing. Safe to run
# again: it installs nothing that is there.
set -euo pipefail

packages=(
  cmake ninja-build g++ pkg-config ccache
  qt6-base-dev qt6-base-dev-tools libgl-dev
  libsqlite3-dev sqlite3
  clang clang-tidy libclang-rt-14-dev
  xvfb xauth
  librsvg2-bin
  desktop-file-utils appstream man-db bash-completion shared-mime-info libglib2.0-bin
  "$@"
)

missing=()
for package in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
done

if ((${#missing[@]})); then
  echo "Installing: ${missing[*]}"
  sudo=""
  [ "$(id -u)" -eq 0 ] || sudo="sudo"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
