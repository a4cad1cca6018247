#!/usr/bin/env bash
# Builds dist/Tessera.fmu, dist/tessera and dist/tessera-sweep, plays the drive scenario (1998 s) into out/results.csv
# and draws it in out/report.html.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
. tools/setup.sh

install_missing "${build_packages[@]}"
build gcc-release fmu tessera tessera_sweep

# The results go to out/results.csv, unless the options for the run name another file.
results='' previous=''
for option in "$@"; do
  [ "$previous" != --output-file ] || results=$option
  [[ $option != --output-file=* ]] || results=${option#*=}
  previous=$option
done
[ -n "$results" ] || { results=out/results.csv && set -- --output-file "$results" "$@"; }

mkdir -p out
dist/tessera run dist/Tessera.fmu "$@"
if [[ $results == *.csv && -f $results ]]; then
  dist/tessera report "$results" -o out/report.html
fi
