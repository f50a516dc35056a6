#!/usr/bin/env bash
# Builds the game and its data and makes a Debian package of them: build/release/rustpike_VERSION_ARCH.deb.
# Install it with: sudo apt install ./build/release/rustpike_*.deb
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/setup.sh

packages+=(dpkg-dev file) # which find out what libraries the program needs
ensure_packages
build release rustpike data
(cd build/release && cpack -G DEB)
