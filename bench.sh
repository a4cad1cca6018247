#!/usr/bin/env bash
# Measures fluid properties and the model step: nanoseconds, and ratios to references of the same run. The arguments
# go to the benchmark program, for example --benchmark_filter=gas.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
. tools/setup.sh

install_missing "${build_packages[@]}" libbenchmark-dev
quietly "Configuring the benchmarks" cmake --preset gcc-release -B build/bench -DTESSERA_BENCH=ON -DBUILD_TESTING=OFF
quietly "Building the benchmarks" cmake --build build/bench --parallel 2 --target tessera_bench
build/bench/bench/tessera_bench "$@"
