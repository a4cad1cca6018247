#!/usr/bin/env bash
# Fuzzes: run.sh SECONDS [BUILD]. Each fuzzer runs for so many seconds on a copy of its corpus. BUILD is where the preset
# clang-asan-ubsan was built, build/clang-asan-ubsan if not given. On a fault the input that shows it is kept, and named.
set -euo pipefail
[ $# -ge 1 ] || { sed -n '2,3s/^# //p' "$0" >&2; exit 2; }
seconds=$1
here=$(cd "$(dirname "$0")" && pwd)
build=${2:-$here/../../build/clang-asan-ubsan}
work=$(mktemp -d)

for fuzzer in interface_fuzzer fluid_file_fuzzer runner_fuzzer; do
  mkdir -p "$work/$fuzzer" "$work/temporary"
  cp "$here/corpus/$fuzzer"/* "$work/$fuzzer/"
  log="$work/$fuzzer.log"
  if ! TMPDIR="$work/temporary" "$build/tests/fuzz/$fuzzer" "$work/$fuzzer" -max_total_time="$seconds" -timeout=25 \
    -rss_limit_mb=1024 -malloc_limit_mb=256 -max_len=4000 -close_fd_mask=3 -artifact_prefix="$work/$fuzzer-" \
    -print_final_stats=1 2>"$log"; then
    tail -n 40 "$log" >&2
    echo "$fuzzer: a fault; the input is $(ls "$work/$fuzzer-"* | head -n 1)" >&2
    exit 1
  fi
  edges=$(grep -o 'cov: [0-9]*' "$log" | tail -n 1)
  executions=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
  echo "$fuzzer: $executions executions, corpus of $(ls "$work/$fuzzer" | wc -l), ${edges#cov: } edges"
done
rm -r "$work"
