#!/usr/bin/env bash
# check.sh VEXEL BROWSER SAMPLES: opens the web page of a publication page in a browser without a
# window, with the script that uses it.
set -euo pipefail

readonly vexel=$1 browser=$2 samples=$3
readonly script=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/map_page.js
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for view in "--level 2" "--zoom 53"; do
  # shellcheck disable=SC2086  # words of their own
  "$vexel" render "$samples/us-counties.mdf" $view --quiet -o "$work/page.svg" --html "$work/page.html"
  { echo '<script>'; cat "$script"; echo '</script>'; } >>"$work/page.html"
  HOME=$work "$browser" --headless --no-sandbox --disable-gpu --disable-background-networking \
    --disable-component-update --disable-sync --no-first-run --user-data-dir="$work/profile" \
    --window-size=1000,800 --dump-dom "file://$work/page.html" >"$work/after.html" 2>"$work/talk" ||
    { cat "$work/talk" >&2; exit 1; }
  outcome=$(grep --only-matching --max-count=1 'data-outcome="[^"]*"' "$work/after.html") ||
    { echo "$view: the script did not reach its end" >&2; exit 1; }
  [[ $outcome == 'data-outcome="good"' ]] || { echo "$view: $outcome" >&2; exit 1; }
done
