#!/bin/sh
# check_reproducible.sh [CMAKE_OPTION...]
#
# Builds Tessera.fmu from two copies of the source tree, in folders, a time zone, a locale and with file times of their
# own, and compares the bytes. Without the reference result, a run of the very binaries that are compared, and without
# other platforms.
set -eu

source=$(cd "$(dirname "$0")/.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

build() { # build FOLDER [CMAKE_OPTION...]
  folder=$1
  shift
  mkdir -p "$folder"
  tar -C "$source" --exclude=./.git --exclude=./build --exclude=./dist --exclude=./out -cf - . | tar -C "$folder" -mxf -
  if ! { cmake -S "$folder" -B "$folder/build" -DCMAKE_BUILD_TYPE=Release -DBUILD_TESTING=OFF \
    -DTESSERA_REFERENCE_RESULT=OFF -DTESSERA_ALL_PLATFORMS=OFF "$@" &&
    cmake --build "$folder/build" --target fmu --parallel 2; } >"$work/log" 2>&1; then
    cat "$work/log"
    exit 1
  fi
}

one="$work/one"
other="$work/another one/further down"
(export TZ=UTC LC_ALL=C && build "$one" "$@")
(export TZ=EAST-9 LC_ALL=C.UTF-8 && umask 077 && build "$other" "$@")

if ! cmp "$one/build/dist/Tessera.fmu" "$other/build/dist/Tessera.fmu"; then
  echo "Tessera.fmu depends on where or when it is built; the same sources must give the same bytes."
  exit 1
fi
echo "Both builds gave the same $(wc -c <"$one/build/dist/Tessera.fmu") bytes."
