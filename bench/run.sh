#!/usr/bin/env bash
# run.sh BUILD [ARGS]: runs the benchmarks that stand built in the folder BUILD, then compares whole
# processes. ARGS go to Google Benchmark.
set -euo pipefail

readonly build=$1
readonly samples=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/../samples
readonly view=(--groups 5 --intervals counts --palette blue
  --var "Unemployment rate 2009" --size 800x600 --quiet)

# In memory where that is possible: a disk that flushes in between says nothing of the library.
[[ -n ${TMPDIR:-} || ! -w /dev/shm ]] || TMPDIR=/dev/shm
work=$(mktemp -d -p "${TMPDIR:-/tmp}")
trap 'rm -rf "$work"' EXIT
export TMPDIR=$work

"$build/vexel_bench" "${@:2}"

# render DATA MAP LEVEL [MEDIUM]: the command into the array `command`.
render() {
  command=("$build/vexel" render "$1" --map "$2" "${view[@]}" --level "$3" -o "$work/page.${4:-gif}")
}

# publish TIMES NAME DATA MAP LEVEL FLOOR: the publication page in each medium, beside the floor.
publish() {
  local comparison=() medium media=(svg)
  [[ ! -x $build/vexel-print ]] || media+=(png pdf)
  for medium in "${media[@]}"; do
    render "$3" "$4" "$5" "$medium"
    comparison+=("publication page ${medium^^}, compiled map $2" "${command[@]}" --)
  done
  "$build/vexel_cold" "$1" "${comparison[@]}" \
    "plain gd, the same polygons" "$build/vexel_floor" "$6" "$work/floor.gif"
}

echo
"$build/vexel_bench" --prepare="$work"
render "$samples/us-counties.mdf" "$work/counties-1.mpc" 2
"$build/vexel_cold" 41 "render, compiled map /1" "${command[@]}" -- \
  "the same with its web page" "${command[@]}" --html "$work/page.html" -- \
  "start alone (vexel --version)" "$build/vexel" --version -- \
  "plain gd, the same polygons" "$build/vexel_floor" "$work/page-1" "$work/floor.gif"
echo
render "$work/counties-32.mdf" "$work/counties-32.mpc" 3
"$build/vexel_cold" 11 "render, compiled map /32" "${command[@]}" -- \
  "the same with its web page" "${command[@]}" --html "$work/page.html" -- \
  "plain gd, the same polygons" "$build/vexel_floor" "$work/page-32" "$work/floor.gif"
echo
publish 21 /1 "$samples/us-counties.mdf" "$work/counties-1.mpc" 2 "$work/page-1"
echo
publish 7 /32 "$work/counties-32.mdf" "$work/counties-32.mpc" 3 "$work/page-32"
echo
render "$work/counties-16.mdf" "$work/counties-16.map" 3
"$build/vexel_cold" 5 "render, text map /16" "${command[@]}"
echo "the text map /16 is $(($(stat --format=%s "$work/counties-16.map") / 1048576)) MiB"
echo
echo "plain gd, /1 and /32"
"$build/vexel_floor" --loop 21 "$work/page-1" "$work/floor.gif"
"$build/vexel_floor" --loop 5 "$work/page-32" "$work/floor.gif"
