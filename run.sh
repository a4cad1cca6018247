#!/usr/bin/env bash
# Builds dist/Tessera.fmu and dist/tessera and plays the drive scenario (1998 s) into out/results.csv.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
. tools/setup.sh

install_missing "${build_packages[@]}"
build gcc-release fmu tessera
mkdir -p out
dist/tessera run dist/Tessera.fmu --output-file out/results.csv "$@"
