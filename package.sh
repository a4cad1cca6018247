#!/usr/bin/env bash
# Builds a release under dist/: Tessera.fmu with the binaries of all platforms, the programs for Linux, checksums.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
. tools/setup.sh

install_missing "${build_packages[@]}" "${cross_packages[@]}"
build gcc-release fmu tessera tessera_sweep
(cd dist && sha256sum Tessera.fmu tessera tessera-sweep >SHA256SUMS)
echo "$(dist/tessera --version) is in dist/, for $(dist/tessera info | sed -n 's/^platforms *//p')."
