#!/usr/bin/env bash
# Line and branch coverage of the tests and the fuzzers' corpora together: coverage.sh [BUILD]. BUILD is build/coverage
# if not given.
set -euo pipefail
source=$(cd "$(dirname "$0")/../.." && pwd)
build=${1:-$source/build/coverage}
mkdir -p "$build"
cmake -S "$source" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_COMPILER=clang++ -DTESSERA_FUZZ=ON \
  "-DCMAKE_CXX_FLAGS=-fprofile-instr-generate -fcoverage-mapping -O1 -fsanitize=fuzzer-no-link" >"$build/log"
cmake --build "$build" --parallel 2 --target all fuzzers >>"$build/log"

export LLVM_PROFILE_FILE="$build/profiles/%m.profraw" # %m: what runs the same binary adds up
ctest --test-dir "$build" --output-on-failure >>"$build/log" || echo "some tests fail, see $build/log" >&2
for corpus in "$source"/tests/fuzz/corpus/*; do
  "$build/tests/fuzz/${corpus##*/}" "$corpus" -runs=0 -close_fd_mask=3 2>>"$build/log"
done
llvm-profdata-14 merge "$build"/profiles/*.profraw -o "$build/profile"

objects=()
for file in "$build"/tests/*_tests "$build"/tests/*/*_tests "$build"/tests/fuzz/*_fuzzer "$build"/dist/tessera*; do
  [ ! -x "$file" ] || [ -d "$file" ] || objects+=(-object "$file")
done
llvm-cov-14 export -summary-only -instr-profile "$build/profile" "${objects[@]}" 2>>"$build/log" | python3 -c '
import json, sys
files = json.load(sys.stdin)["data"][0]["files"]
for part in ("fmi", "runtime", "Vk_lib", "apps/runner"):
    parts = [f["summary"] for f in files if f"./{part}/" in f["filename"]]
    for kind in ("lines", "branches"):
        covered, count = (sum(p[kind][key] for p in parts) for key in ("covered", "count"))
        print(f"{part}: {covered} of {count} {kind}, {100 * covered / max(count, 1):.1f} %")'
