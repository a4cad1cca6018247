#!/usr/bin/env bash
# Looks on as the tests play the unit, and expects no system call in the steps: quiet_step_test.sh RELIABILITY_TESTS
set -euo pipefail
trace=$(mktemp)
trap 'rm -f "$trace"' EXIT
export ASAN_OPTIONS=detect_leaks=0 # which cannot be under a tracer

if ! strace -o "$trace" true 2>&1; then
  echo "quiet_step_test: skipped, strace is missing or may not trace"
  exit 77
fi
strace -f -o "$trace" "$1" --gtest_filter="QuietStep.*" || { echo "quiet_step_test: the tests failed" >&2; exit 1; }

# The calls behind "first", up to "last", which must have come.
calls=$(awk '/write\(1, "last/ { print "(last)"; exit } is_stepping; /write\(1, "first/ { is_stepping = 1 }' "$trace")
[ "$calls" = "(last)" ] || { printf 'quiet_step_test: calls in the steps:\n%s\n' "$(head -20 <<<"$calls")" >&2; exit 1; }
