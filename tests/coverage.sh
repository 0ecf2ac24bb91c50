#!/usr/bin/env bash
# coverage.sh BUILD: lists what the tests that ran in the folder BUILD reached of each file, in per cent and
# the number missed. Fails when the library or the programs (with the kit) stand below their floors.
set -euo pipefail

readonly build=$1
readonly library_floors="97 95" programs_floors="92 85"  # lines, branches

llvm-profdata merge --sparse "$build"/profiles/*.profraw -o "$build/coverage.profdata"

objects=()
for program in "$build"/libvexel.so "$build"/libvexel-kit.so "$build"/test_* "$build"/fuzz/replay_*; do
  [[ ! -x $program ]] || objects+=(-object "$program")
done
# The columns of a file: its name, then number, missed and per cent of functions, lines and branches.
llvm-cov report -instr-profile="$build/coverage.profdata" -show-region-summary=0 \
  "$build/vexel" "${objects[@]}" 2> >(grep -v 'mismatched data' >&2) |
  awk -v root="$PWD/" -v library_floors="$library_floors" -v programs_floors="$programs_floors" '
    function percent(all, missed) { return all ? 100 * (all - missed) / all : 100 }
    function row(name, lines, lines_missed, branches, branches_missed) {
      printf "%-40s %6.1f %5d %9.1f %6d\n", name, percent(lines, lines_missed), lines_missed,
        percent(branches, branches_missed), branches_missed
    }
    function total(name, floors, floor) {
      row(name, sum[name, 5], sum[name, 6], sum[name, 8], sum[name, 9])
      split(floors, floor, " ")
      if (!sum[name, 5] || percent(sum[name, 5], sum[name, 6]) < floor[1] ||
          percent(sum[name, 8], sum[name, 9]) < floor[2]) {
        printf "%s: below %d per cent of lines or %d of branches\n", name, floor[1], floor[2]
        below = 1
      }
    }
    BEGIN { printf "%-40s %12s %16s\n", "", "lines missed", "branches missed" }
    # Under ccache the names are relative to the build folder.
    { sub(/^(\.\.\/)+/, "", $1) }
    index($1, root) == 1 { $1 = substr($1, length(root) + 1) }
    index("/" $1, root) == 1 { $1 = substr($1, length(root)) }  # llvm-cov drops what all names begin with
    $1 ~ /^(src|kit|apps)\// {
      row($1, $5, $6, $8, $9)
      for (i = 5; i <= 9; ++i) sum[($1 ~ /^src/ ? "library" : "programs"), i] += $i
    }
    END {
      total("library", library_floors)
      total("programs", programs_floors)
      exit below
    }'
