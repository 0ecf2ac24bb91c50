#!/usr/bin/env bash
# Compares what libvexel.so exports with the list in symbols.txt: what is missing there breaks the
# programs of hosts, what is new has become a promise.
#
# usage: symbols.sh [--update] [BUILD_FOLDER]     (build/debug; --update writes the list)
set -euo pipefail
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
readonly here
update=
[[ ${1:-} != --update ]] || { update=1; shift; }
library=${1:-$here/../../build/debug}/libvexel.so

# Functions and data of ours, and the records behind classes; not the instances of the standard
# library's templates, which are weak and differ from build to build, nor the linker's own marks.
exported() {
  nm -DC --defined-only "$1" | cut -d ' ' -f 2- |
    sed -n -E '/ _(_bss_start|edata|end)$|typeinfo name/d; s/^[TDBR] //p; s/^V (vtable|typeinfo) for /\1 for /p' |
    LC_ALL=C sort -u
}

if [[ -n $update ]]; then
  exported "$library" >"$here/symbols.txt"
else
  diff -u --label "symbols.txt" --label "$library" "$here/symbols.txt" <(exported "$library") || {
    echo "If this is meant: tests/install/symbols.sh --update" >&2
    exit 1
  }
fi
