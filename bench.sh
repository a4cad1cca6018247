#!/usr/bin/env bash
# Measures fluid properties, the model step, the FMI shell and the runner: nanoseconds, and ratios to references of the
# same run. The arguments go to the benchmark program, for example --benchmark_filter=gas.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
. tools/setup.sh

install_missing "${build_packages[@]}" libbenchmark-dev
quietly "Configuring the benchmarks" cmake --preset gcc-release -DTESSERA_BENCH=ON
quietly "Building the benchmarks" cmake --build --preset gcc-release --target tessera_bench
build/gcc-release/bench/tessera_bench "$@"
