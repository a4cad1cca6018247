#!/usr/bin/env bash
# builds_agree.sh PLAYER LIBRARY FOLDER SECONDS BUILD...
#
# Builds the unit anew as each BUILD says ("g++ -O0"), under the folder, plays its scenario for so many seconds, and
# compares every digit of the outputs with those of the library: they may not depend on compiler and optimisation.
set -euo pipefail
source=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
player=$1 library=$2 folder=$3 seconds=$4
shift 4

mkdir -p "$folder"
"$player" "$library" "$folder/expected.csv" "$seconds" >/dev/null
for build in "$@"; do
  name=${build// /}
  read -r compiler flags <<<"$build"
  cmake -S "$source" -B "$folder/$name" -G Ninja -DCMAKE_BUILD_TYPE=None -DCMAKE_CXX_COMPILER="$compiler" \
    -DCMAKE_CXX_FLAGS="$flags" -DBUILD_TESTING=OFF -DTESSERA_ALL_PLATFORMS=OFF >/dev/null
  cmake --build "$folder/$name" --parallel 2 --target Tessera
  "$player" "$folder/$name/packaging/Tessera.so" "$folder/$name.csv" "$seconds" >/dev/null
  if ! cmp "$folder/expected.csv" "$folder/$name.csv"; then
    echo "$build: other digits than $library has" >&2
    exit 1
  fi
done
echo "$# builds agree in every digit over $seconds s."
