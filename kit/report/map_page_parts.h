// The fixed markup of the web page around a publication page. "$NAME$" marks what is filled in.

#ifndef VEXEL_KIT_REPORT_MAP_PAGE_PARTS_H_
#define VEXEL_KIT_REPORT_MAP_PAGE_PARTS_H_

#include <string_view>

namespace vexel {

// Up to the style, which the next part ends.
inline constexpr std::string_view kMapPageHead = R"html(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>$TITLE$</title>
<style>)html";

// Up to the rows of the table.
inline constexpr std::string_view kMapPageBody = R"html($SWATCHES$</style>
<noscript><style>#shown{display:none}</style></noscript>
</head>
<body>
<a class="skip" href="#areas">Skip the map and go to the table</a>
<main>
<h1><bdi>$TITLE$</bdi></h1>
<p id="shown" role="status"></p>
<noscript><p>Names and values under the pointer need scripts, which are switched off here. $WITHOUT$</p></noscript>
<div class="view">
<figure>
<div id="map">
<img src="$PICTURE$" width="$WIDTH$" height="$HEIGHT$" alt="$ALTERNATIVE$">
<svg id="fade" viewBox="0 0 $GRIDWIDTH$ $GRIDHEIGHT$" preserveAspectRatio="none" aria-hidden="true"><mask id="rest" maskUnits="userSpaceOnUse" x="0" y="0" width="$GRIDWIDTH$" height="$GRIDHEIGHT$"><rect width="$GRIDWIDTH$" height="$GRIDHEIGHT$" fill="#fff"/><g id="holes"></g></mask><rect x="$MAPLEFT$" y="$MAPTOP$" width="$MAPWIDTH$" height="$MAPHEIGHT$" fill="$PAPER$" fill-opacity=".9" mask="url(#rest)"/></svg>
<svg id="lines" viewBox="0 0 $GRIDWIDTH$ $GRIDHEIGHT$" preserveAspectRatio="none" aria-hidden="true"><path class="rim"/><path class="pin"/><path class="rim"/><path class="line"/></svg>
</div>
<p class="soft" id="help" hidden>Point at an area, or tab to the map and go from area to area with the arrow keys. A click, Enter or the space bar keeps an area; Esc or a click beside the map lets it go.</p>
</figure>
<section id="legend" aria-labelledby="legend-title">
<h2 id="legend-title">$LEGEND$</h2>
<table>
<thead><tr><th scope="col">Group</th><th scope="col" class="n">Areas</th></tr></thead>
<tbody>
$LEGENDROWS$</tbody>
</table>
</section>
</div>
<section id="areas" tabindex="-1" aria-labelledby="areas-title">
<h2 id="areas-title">Areas</h2>
<details id="table"$STATE$>
<summary>Table of $AREAS$</summary>
<div class="tools" id="tools" hidden><label>Find a name <input type="search" id="filter" autocomplete="off" spellcheck="false"></label><span id="range" role="status"></span><span><button type="button" id="previous">Previous</button> <button type="button" id="next">Next</button></span></div>
<div id="rows" role="region" aria-label="Rows of the table" tabindex="0">
<table>
<caption>$TITLE$</caption>
<thead><tr><th scope="col" id="by-name">$LEVEL$</th>$WITHIN$<th scope="col" class="n" id="by-value">$VARIABLE$</th><th scope="col">Group</th></tr></thead>
<tbody>
)html";

// Up to what the script knows of the areas.
inline constexpr std::string_view kMapPageData = R"html(</tbody>
</table>
</div>
</details>
</section>
</main>
<div id="tip" aria-hidden="true" hidden></div>
<script type="application/json" id="data">)html";

// The script stands between these.
inline constexpr std::string_view kMapPageScriptBegin = "</script>\n<script>";
inline constexpr std::string_view kMapPageEnd = "</script>\n</body>\n</html>\n";

}  // namespace vexel

#endif  // VEXEL_KIT_REPORT_MAP_PAGE_PARTS_H_
