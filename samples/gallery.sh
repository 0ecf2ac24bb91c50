#!/usr/bin/env bash
# Draws pages that together show every palette, interval type, calculation and layout, each as the
# engine's GIF and as a page for publication, and an index page over them.
set -euo pipefail

if (($# != 2)); then
  echo "usage: $0 VEXEL FOLDER" >&2
  exit 2
fi
vexel=$1
folder=$2
samples=$(dirname "${BASH_SOURCE[0]}")
states=$samples/us-counties.mdf  # projected, with Alaska and Hawaii
conus=$samples/us-conus.mdf      # in degrees, so that a zoom turns the area upright
figures=""

rate="Unemployment rate 2009"
men="Cancer deaths men 1999-2003"
women="Cancer deaths women 1999-2003"

escaped() { sed -e 's/&/\&amp;/g' -e 's/</\&lt;/g' -e 's/>/\&gt;/g' -e 's/"/\&quot;/g' <<<"$1"; }

# The words as one would type them.
typed() {
  local word line=""
  for word in "$@"; do
    [[ $word =~ ^[A-Za-z0-9_./,:=+-]+$ ]] || word=\'${word//\'/\'\\\'\'}\'
    line+=" $word"
  done
  echo "${line# }"
}

# page NAME WIDTHxHEIGHT SHOWS CAPTION DATA [OPTIONS]: SHOWS is for those who cannot see the picture.
page() {
  local name=$1 size=$2 shows=$3 caption=$4
  local command=("$vexel" render "${@:5}" --size "$size" -o "$folder/$name.gif" --html "$folder/$name.html")
  echo "$folder/$name.gif"
  "${command[@]}" --quiet
  echo "$folder/$name.svg"
  "$vexel" render "${@:5}" --size "$size" --quiet -o "$folder/$name.svg" --html "$folder/$name-svg.html"
  [[ ! -x $(dirname "$vexel")/vexel-print ]] ||
    "$vexel" render "${@:5}" --size "$size" --quiet -o "$folder/$name.png"
  figures+="
<figure>
<a href=\"$name.html\"><img src=\"$name.gif\" width=\"${size%x*}\" height=\"${size#*x}\"
  alt=\"$(escaped "$shows")\"></a>
<a href=\"$name-svg.html\"><img src=\"$name.svg\" width=\"${size%x*}\" height=\"${size#*x}\"
  alt=\"The same for publication.\"></a>
<figcaption>
<p>$(escaped "$caption")</p>
<pre><code>$(escaped "$(typed "${command[@]}")")</code></pre>
</figcaption>
</figure>"
}

mkdir -p "$folder"

page counties 1000x800 \
  "Unemployment in 3,142 counties of the United States in seven colours from violet to dark red." \
  "Palette spectrum, seven groups of equal counts, six counties without data. The map is shrunk so that the legend fits below it." \
  "$states" --level 2 --var "$rate" --groups 7 --palette spectrum

page states-percent 760x820 \
  "States in five blues: unemployed as a percentage of the labour force, with boxes on four states." \
  "Percent of two variables, palette blue, value boxes. The page is high enough for the map to stand in the middle, with the legend below." \
  "$states" --level 1 --var "Unemployed 2009" --var2 "Labour force 2009" --calc percent \
  --palette blue --box 6 --box 48 --box 26 --box 12

page counties-green 800x620 \
  "Counties of the contiguous states in three greens; most are pale, few are dark." \
  "Palette green, three groups of equal widths. The map is moved up to make room for the legend." \
  "$conus" --level 2 --var "$rate" --groups 3 --intervals widths --palette green

page own-bounds 900x720 \
  "Cancer deaths of men in four reds named low, middle, high and very high; two counties in the southwest have a yellow outline." \
  "Own bounds, group names in the legend, palette red, white where data are missing, outlines of two counties." \
  "$conus" --level 2 --var "$men" --groups 4 --intervals bounds --bounds 0,200,250,300 --palette red \
  --group-names "low,middle,high,very high" --outline 6,71 --outline 4,5

page texas-difference 740x680 \
  "Counties of Texas in six yellows: cancer deaths of men less those of women; many are white." \
  "Difference of two variables, palette yellow, missing data, one county outlined. Texas is turned upright and shrunk, so that the legend fits beside it." \
  "$conus" --zoom 48 --level 2 --var "$men" --var2 "$women" --calc difference --groups 6 \
  --intervals widths --palette yellow --outline 48,43

page florida-ratio 760x560 \
  "Counties of Florida in five greys, dark where the ratio of men's to women's cancer deaths is low." \
  "Ratio of two variables, palette grey reversed. The map is moved left to make room for the legend." \
  "$conus" --zoom 12 --level 2 --var "$men" --var2 "$women" --calc ratio --palette grey --reverse

page california-change 800x1080 \
  "Counties of California in four colours by how far men's cancer deaths lie above women's." \
  "Percent change, palette spectrum reversed, two boxes. California is turned upright; on a narrow page the legend moves below it." \
  "$conus" --zoom 6 --level 2 --var "$men" --var2 "$women" --calc percent-change --groups 4 \
  --palette spectrum --reverse --box 6,75 --box 6,37

page washington 800x640 \
  "Counties of Washington in five greens with boxes on King, Spokane and Yakima; Yakima is outlined." \
  "Palette green reversed. The whole state is turned upright, outline and boxes with it." \
  "$conus" --zoom 53 --level 2 --var "$rate" --palette green --reverse --outline 53,77 \
  --box 53,33 --box 53,63 --box 53,77

page idaho 700x600 \
  "Counties of Idaho in two reds, the legend at the right." \
  "Two groups. A tall area stands in the middle, the legend beside it." \
  "$conus" --zoom 16 --level 2 --var "$rate" --groups 2 --palette red --intervals widths

page new-jersey 420x640 \
  "Counties of New Jersey in five blues, the map at the left and the legend at the right." \
  "Palette blue reversed. On a narrow page the map is shrunk and the legend stays beside it." \
  "$conus" --zoom 34 --level 2 --var "$rate" --palette blue --reverse --box 34,17

page one-group 700x500 \
  "The contiguous states, all in one grey." \
  "One group, palette grey, neither title nor legend." \
  "$conus" --level 1 --groups 1 --palette grey --no-title --no-legend

page names 700x560 \
  "Six invented areas with the names Côte d'Ivoire, Łódź, Åland, Þórshöfn, 北京 and 上海 in boxes." \
  "Names beyond ASCII. The fonts of the picture hold the letters of ISO 8859-2: Å loses its ring, Þ is spelled Th, Chinese comes as question marks. The web page has every name whole." \
  "$samples/names.mdf" --var "Bytes in UTF-8" --groups 3 --palette yellow --reverse \
  --box 1 --box 2 --box 3 --box 4 --box 5 --box 6

page natural-breaks 900x720 \
  "Counties of the contiguous states in five colours from pale yellow to dark blue, with the number of counties behind each range." \
  "Natural breaks, palette YlGnBu, numbers of areas in the legend." \
  "$conus" --level 2 --var "$rate" --intervals natural --palette YlGnBu --legend-counts

page round-bounds 900x720 \
  "Counties in four colours from dark violet to yellow, bounds at 10, 20 and 30 per cent." \
  "Round bounds, palette Viridis, open ends." \
  "$conus" --level 2 --var "$rate" --intervals round --groups 4 --palette viridis --open-ends

page standard-deviations 900x720 \
  "Counties from brown over white to purple, by how far their rate lies from the mean." \
  "Standard deviations about the mean, palette PuOr reversed." \
  "$conus" --level 2 --var "$rate" --intervals deviation --groups 7 --palette PuOr --reverse

page head-tail 900x720 \
  "Counties in reds: most are pale, the few with a large labour force dark." \
  "Head/tail breaks for a variable with many small and few large values, palette Reds." \
  "$conus" --level 2 --var "Labour force 2009" --intervals head-tail --groups 6 --palette Reds

page logarithm 900x720 \
  "Counties in seven greens by the logarithm of their labour force." \
  "Equal steps of the logarithm, palette Greens." \
  "$conus" --level 2 --var "Labour force 2009" --intervals logarithm --groups 7 --palette Greens

page midpoint 900x720 \
  "Counties in blues where women's rate is less than 75 below men's, in reds where it is more." \
  "A bound at a midpoint of 75, groups shared out to both sides, palette RdBu about it." \
  "$conus" --level 2 --var "$men" --var2 "$women" --calc difference --groups 7 --midpoint 75 \
  --palette RdBu --reverse --open-ends

page series 900x720 \
  "Counties in five colours with bounds that the maps of men and women share." \
  "Bounds found for two variables together, colours of one's own." \
  "$conus" --level 2 --var "$women" --same-bounds "$men" \
  --colors "#f7f4f9,#d4b9da,#df65b0,#ce1256,#67001f"

cat >"$folder/index.html" <<HTML
<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<title>Vexel gallery</title>
<style>
body { margin: 2em auto; max-width: 64em; padding: 0 1em; font: 1em/1.5 sans-serif; color: #222; background: #fff; }
figure { margin: 3em 0; }
img { max-width: 100%; height: auto; border: 1px solid #999; }
pre { padding: .5em; background: #f3f3f3; white-space: pre-wrap; overflow-wrap: anywhere; }
</style>
</head>
<body>
<main>
<h1>Vexel gallery</h1>
<p>Each picture leads to its web page, where every area tells its name and value. The commands run in
the folder in which these pages were drawn; the second picture is the same with .svg in place of .gif.</p>$figures
</main>
</body>
</html>
HTML
echo "$folder/index.html"
