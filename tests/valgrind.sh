#!/usr/bin/env bash
# valgrind.sh BUILD UNIT RUNNER
#
# Valgrind's memcheck looks on at the tests in the build folder, and at the runner as it plays 20 s of the unit's
# scenario, which stand for the runs of minutes.
set -euo pipefail
build=$1 unit=$2 runner=$3

check() {
  valgrind --quiet --error-exitcode=9 --leak-check=full --errors-for-leak-kinds=definite,indirect "$@"
}
for tests in runtime_tests fluid_tests unit_tests runner/runner_tests sweep/sweep_tests; do
  check "$build/tests/$tests" --gtest_brief=1
done
check "$build/tests/fmu/fmu_tests" --gtest_brief=1 '--gtest_filter=-*AllocatesNothing*' # which counts for itself
check "$runner" run "$unit" --stop-time 20 --output-file "$build/valgrind.csv" --quiet
