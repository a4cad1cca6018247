#!/usr/bin/env bash
# Builds everything and runs the tests.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
. tools/setup.sh

install_missing "${build_packages[@]}"
build gcc-release
test_preset gcc-release
