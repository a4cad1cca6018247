#!/usr/bin/env bash
# Line and branch coverage of the tests and the fuzzers' corpora together: coverage.sh [BUILD]. BUILD is build/coverage
# if not given.
set -euo pipefail
source=$(cd "$(dirname "$0")/../.." && pwd)
build=${1:-$source/build/coverage}
mkdir -p "$build"
cmake -S "$source" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_COMPILER=clang++ -DTESSERA_FUZZ=ON \
  "-DCMAKE_CXX_FLAGS=-fprofile-instr-generate -fcoverage-mapping -O1" >"$build/log"
cmake --build "$build" --parallel 2 --target all fuzzers >>"$build/log"

export LLVM_PROFILE_FILE="$build/profiles/%m.profraw" # %m: what runs the same binary adds up
ctest --test-dir "$build" --output-on-failure >>"$build/log" || echo "some tests fail, see $build/log" >&2
for corpus in "$source"/tests/fuzz/corpus/*; do
  "$build/tests/fuzz/${corpus##*/}" "$corpus" -runs=0 -close_fd_mask=3 2>>"$build/log"
done
llvm-profdata merge "$build"/profiles/*.profraw -o "$build/profile"

objects=()
for file in "$build"/tests/*_tests "$build"/tests/*/*_tests "$build"/tests/fuzz/*_fuzzer "$build"/dist/tessera*; do
  [ ! -x "$file" ] || [ -d "$file" ] || objects+=(-object "$file")
done
for part in fmi runtime Vk_lib apps/runner; do
  llvm-cov report -instr-profile "$build/profile" "${objects[@]}" -path-equivalence=.,"$source" "$source/$part" \
    2>>"$build/log" | awk -v part="$part" '$1 == "TOTAL" { print part ": " $10 " of the lines, " $13 " of the branches" }'
done
