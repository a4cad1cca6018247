#!/usr/bin/env bash
# Measures fluid properties, the model step, the FMI shell and the runner: nanoseconds, and ratios to references of the
# same run. The arguments go to the benchmark program, for example --benchmark_filter=gas.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
. tools/setup.sh

install_missing "${build_packages[@]}" libbenchmark-dev
quietly "Configuring the benchmarks" cmake --preset gcc-release -B build/bench -DTESSERA_BENCH=ON -DBUILD_TESTING=OFF \
  -DTESSERA_DIST_DIR=build/bench/dist -DTESSERA_REFERENCE_RESULT=OFF
quietly "Building the benchmarks" cmake --build build/bench --parallel 2 --target tessera_bench
build/bench/bench/tessera_bench "$@"
