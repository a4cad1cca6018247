#!/usr/bin/env bash
# Runs the commands of the guides, in a folder of its own: guide_test.sh SOURCE_FOLDER DELIVERABLE...
#
# Commands are the blocks marked ```sh, files the blocks marked ```toml, whose first line is "# NAME".
set -euo pipefail
source_folder=$1
shift
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir "$folder/dist" "$folder/docs" "$folder/out"  # as ./run.sh leaves them
ln -s "$@" "$folder/dist"
ln -s "$source_folder/docs/sweep.slurm" "$folder/docs"
cd "$folder"

fail() {
  echo "guide_test: $*" >&2
  exit 1
}

# mpirun refuses root, and more processes than cores, unless it is told; the MPI library keeps memory to its end.
export OMPI_ALLOW_RUN_AS_ROOT=1 OMPI_ALLOW_RUN_AS_ROOT_CONFIRM=1 OMPI_MCA_rmaps_base_oversubscribe=1
export ASAN_OPTIONS=detect_leaks=0

# What stands in for Slurm: it plays the batch file with one task.
sbatch() { SLURM_NTASKS=1 bash "$@"; }

# The blocks of a guide as one script.
script_of() {
  awk '
    /^```/ && kind { if (kind == "toml") print "END_OF_FILE"; kind = ""; next }
    /^```/ { kind = substr($0, 4); if (kind == "") kind = "text"; begins = 1; next }
    kind == "toml" && begins { print "cat >" $2 " <<\"END_OF_FILE\"" }
    kind == "sh" || kind == "toml" { print }
    { begins = 0 }' "$1"
}

for guide in README.md docs/guide.md; do
  script_of "$source_folder/$guide" >script
  commands='^[^`|#]*dist/tessera'  # not in a table, a sentence or a comment
  grep -q "$commands" script || fail "$guide has no commands in blocks of sh"
  diff <(grep "$commands" script) <(grep "$commands" "$source_folder/$guide") ||
    fail "$guide has commands outside of blocks of sh"

  echo "== $guide"
  trap 'echo "guide_test: $guide: \"$BASH_COMMAND\" failed" >&2' ERR
  source ./script
  trap - ERR

  for result in $(grep -oE -- '(-o|--output-file) [^ ]+' script | cut -d ' ' -f 2); do
    [ -s "$result" ] || fail "$guide: there is no $result"
  done
done
complete -p tessera >/dev/null || fail "there is no completion"
[ "$(wc -l <out/base.csv)" -eq 302 ] || fail "out/base.csv has not the rows that the guide tells"
[ "$(grep -c ',ok,' out/ambient/results.csv)" -eq 9 ] || fail "out/ambient has not the points that the guide tells"
cmp out/spread/results.csv out/cluster/results.csv || fail "the batch file gives other results than mpirun"
