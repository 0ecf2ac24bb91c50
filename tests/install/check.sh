#!/usr/bin/env bash
# Looks at the library as whoever compiles against it does: installs it below the build tree and
# builds the program in host/ outside of the project. ctest starts it, once for each check.
#
# usage: check.sh CHECK BUILD_FOLDER LIBDIR [COMPILER]
set -euo pipefail
readonly check=$1 build=$2 libdir=$3 compiler=${4:-g++}
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
readonly here source=$here/../.. work=$build/install_test
readonly prefix=$work/prefix decoys=$work/decoys out=$work/$check-$compiler
readonly include=$prefix/include

fail() { echo "$*" >&2; exit 1; }

public_headers() { (cd "$include/vexel" && find . -name '*.h' -printf '%P\n'); }

# The installed tree, and beside it a trap under the name that each header has inside the project.
check_tree() {
  rm -rf "$work"
  cmake --install "$build" --prefix "$prefix" >/dev/null
  local header
  for header in $(public_headers); do
    mkdir -p "$decoys/$(dirname "$header")"
    echo '#error "a header of the host was taken for one of the library"' >"$decoys/$header"
  done
  [[ -e $decoys/map/rect.h ]] || fail "nothing is installed"
}

run_host() { "$1" "$source/samples" "$out"; }

# compile_host FLAG...
compile_host() {
  "$compiler" -std=c++20 -Wall -Wextra -Wpedantic -Werror -I "$here/host/own" -I "$decoys" \
    "$here/host/host.cpp" "$@" -Wl,-rpath,"$prefix/$libdir" -o "$out/host"
  run_host "$out/host"
}

check_plain() { compile_host -I "$include" -L "$prefix/$libdir" -lvexel; }

check_pkgconfig() {
  local flags
  read -ra flags < <(PKG_CONFIG_PATH=$prefix/$libdir/pkgconfig pkg-config --cflags --libs vexel)
  compile_host "${flags[@]}"
}

# The short program of the README, with the kit by pkg-config and by find_package.
check_kit() {
  local flags
  read -ra flags < <(PKG_CONFIG_PATH=$prefix/$libdir/pkgconfig pkg-config --cflags --libs vexel-kit)
  "$compiler" -std=c++20 -Wall -Wextra -Wpedantic -Werror -I "$here/host/own" -I "$decoys" \
    "$source/docs/example.cpp" "${flags[@]}" -Wl,-rpath,"$prefix/$libdir" -o "$out/example"
  ln -sfn "$source/samples" "$out/samples"
  (cd "$out" && rm -f counties.gif && ./example && [[ -s counties.gif ]]) || fail "no page"
  configure_host -DCMAKE_PREFIX_PATH="$prefix" -DHOST_EXAMPLE="$source/docs/example.cpp"
  cmake --build "$out" --target example -- --quiet
}

# configure_host OPTION...
configure_host() {
  cmake -S "$here/host" -B "$out" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" \
    -DHOST_DECOYS="$decoys" "$@" >/dev/null
}

check_package() {
  configure_host -DCMAKE_PREFIX_PATH="$prefix"
  cmake --build "$out" -- --quiet
  run_host "$out/host"
}

# Compiles and does not link, which would build the whole library once more.
check_subdirectory() {
  configure_host -DVEXEL_SOURCE_DIR="$source"
  cmake --build "$out" --target CMakeFiles/host.dir/host.cpp.o -- --quiet
  local targets
  targets=$(ninja -C "$out" -t targets all)
  grep -q 'libvexel\.so' <<<"$targets" || fail "there is no library"
  ! grep -E '(^|[/ ])(vexel_host|test_|replay_|vexel_example)' <<<"$targets" ||
    fail "the host builds more than the library"
  (cd "$out" && ctest -N) | grep -q 'Total Tests: 0' || fail "the host gets tests of ours"
  DESTDIR=$out/root cmake --install "$out" >/dev/null
  [[ ! -e $out/root ]] || fail "the host installs what is ours"
}

# One header alone, in C++20 and before. The first error ends the compilation.
check_header() {
  local compile=("$compiler" -fsyntax-only -I "$include" -x c++ -) text="#include <vexel/$1>"
  "${compile[@]}" -std=c++20 -Wall -Wextra -Wpedantic -Werror <<<"$text" || fail "vexel/$1 needs more"
  ("${compile[@]}" -std=c++17 -Wfatal-errors <<<"$text" 2>&1 || true) |
    grep -q "error:.*Vexel's headers need C++20" || fail "vexel/$1 does not say that it needs C++20"
}

check_headers() {
  export -f check_header fail
  export compiler include
  public_headers | xargs -P 2 -I '{}' bash -c 'check_header {}'
}

mkdir -p "$out"
"check_$check"
