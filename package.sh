#!/usr/bin/env bash
# Builds a release under dist/: Tessera.fmu with the binaries of all platforms, the programs for Linux, checksums.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
. tools/setup.sh

install_missing "${build_packages[@]}" "${cross_packages[@]}"
build gcc-release fmu tessera tessera_sweep
platforms=$(dist/tessera info | sed -n 's/^platforms *//p')
if [ "$platforms" != "aarch64-linux, linux64, win64" ]; then
  echo "dist/Tessera.fmu is for $platforms alone; a cross compiler is missing." >&2
  exit 1
fi
(cd dist && sha256sum Tessera.fmu tessera tessera-sweep >SHA256SUMS)
version=$(dist/tessera --version)
echo "$version is in dist/, for $platforms."
