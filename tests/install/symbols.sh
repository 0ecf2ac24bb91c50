#!/usr/bin/env bash
# Compares what libvexel.so and libvexel-kit.so export with the lists in symbols.txt and
# symbols-kit.txt: what is missing there breaks the programs of hosts, what is new has become a
# promise.
#
# usage: symbols.sh [--update] [BUILD_FOLDER]     (build/debug; --update writes the lists)
set -euo pipefail
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
readonly here
update=
[[ ${1:-} != --update ]] || { update=1; shift; }
readonly build=${1:-$here/../../build/debug}

# Functions and data of ours, and the records behind classes; not the instances of the standard
# library's templates, which are weak and differ from build to build, nor the linker's own marks.
exported() {
  nm -DC --defined-only "$1" | cut -d ' ' -f 2- |
    sed -n -E '/ _(_bss_start|edata|end)$|typeinfo name| for (std|__gnu_cxx)::/d; s/^[TDBR] //p; s/^V (vtable|typeinfo) for /\1 for /p' |
    LC_ALL=C sort -u
}

# compare LIBRARY LIST [PATTERN]: only what matches the pattern counts.
compare() {
  local pattern=${3:-.}
  if [[ -n $update ]]; then
    exported "$build/$1" | grep "$pattern" >"$here/$2"
  else
    diff -u --label "$2" --label "$1" "$here/$2" <(exported "$build/$1" | grep "$pattern") || {
      echo "If this is meant: tests/install/symbols.sh --update" >&2
      return 1
    }
  fi
}

compare libvexel.so symbols.txt
# The records of the engine's classes show here, too, where the kit derives from them.
compare libvexel-kit.so symbols-kit.txt vexel::
