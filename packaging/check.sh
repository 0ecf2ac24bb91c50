#!/usr/bin/env bash
# Looks through the packages, installs them, uses what they bring as their users do, and removes them:
# nothing may be left. Needs root.
#
# usage: check.sh FOLDER_OF_PACKAGES WORK_FOLDER
set -euo pipefail
packages=$(readlink -f "$1") work=$(readlink -m "$2")
sources=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
readonly packages work sources

fail() { echo "package check: $*" >&2; exit 1; }

names() {
  local package
  for package in "$packages"/*.deb; do dpkg-deb --field "$package" Package; done
}

# Everything that stands where packages may put something.
installed_files() { find /usr /etc -xdev \( -iname '*vexel*' -o -path '*/vexel/*' \) | sort; }

lint() {
  lintian --allow-root --fail-on error,warning --tag-display-limit 0 "$packages"/*.deb
}

use_programs() {
  vexel --version
  vexel render "$sources/samples/us-counties.mdf" --quiet -o page.svg
  vexel render "$sources/samples/us-counties.mdf" --quiet -o page.png
  vexel import "$sources/samples/tutorial/counties.shp" --quiet --key geoid --name name -o own
  [[ -s page.svg && -s page.png && -s own.map ]] || fail "a program has not done its work"
  use_server
  local page
  for page in vexel vexel-render vexel-import; do
    [[ -e /usr/share/man/man1/$page.1.gz ]] || fail "there is no manual page of $page"
  done
}

# One page of it, asked for as a browser would.
use_server() {
  vexel serve "$sources/samples/us-counties.mdf" --port 0 --log none >address &
  local server=$! address='' line=''
  for _ in $(seq 100); do
    read -r address <address && break
    sleep 0.1
  done
  address=${address#http://}
  address=${address%/}
  exec 3<>"/dev/tcp/${address%:*}/${address#*:}"
  printf 'GET /us-counties HTTP/1.1\r\nHost: %s\r\nConnection: close\r\n\r\n' "$address" >&3
  read -r line <&3
  exec 3>&-
  kill "$server"
  wait "$server" || fail "the server ends with $?"
  [[ $line == "HTTP/1.1 200 OK"* ]] || fail "the server answers \"$line\""
}

use_library() {
  ln -sfn "$sources/samples" samples
  local flags
  read -ra flags < <(pkg-config --cflags --libs vexel-kit)
  g++ -std=c++20 "$sources/docs/example.cpp" "${flags[@]}" -o example
  ./example
  cat >CMakeLists.txt <<'TEXT'
cmake_minimum_required(VERSION 3.25)
project(host LANGUAGES CXX)
find_package(vexel REQUIRED)
add_executable(host "${EXAMPLE}")
target_link_libraries(host PRIVATE vexel::kit)
TEXT
  cmake -S . -B host -DEXAMPLE="$sources/docs/example.cpp" >/dev/null
  cmake --build host >/dev/null
  rm counties.gif
  host/host
  [[ -s counties.gif ]] || fail "the example draws nothing"
}

((EUID == 0)) || fail "needs root"
before=$(installed_files)
[[ -z $(dpkg-query --show --showformat='${db:Status-Status} ' $(names) 2>/dev/null | grep -w installed) ]] ||
  fail "one of the packages is installed already"
lint
rm -rf "$work"
mkdir -p "$work"
cd "$work"
trap 'dpkg --purge $(names) >/dev/null' EXIT
apt-get install --yes --no-install-recommends "$packages"/*.deb >install.log 2>&1 ||
  { cat install.log >&2; fail "they do not install"; }
use_programs
use_library
trap - EXIT
dpkg --purge $(names) >/dev/null
after=$(installed_files)
[[ $after == "$before" ]] || fail "something is left: $after"
echo "package check: $(names | wc -l) packages are as they should be"
