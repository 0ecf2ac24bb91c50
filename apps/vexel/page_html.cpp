#include "page_html.h"

#include <string_view>

namespace vexel::cli {

namespace {

// Text for an element or a quoted attribute.
std::string Escaped(std::string_view text) {
  std::string escaped;
  escaped.reserve(text.size());
  for (const char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      case '\'':
        escaped += "&#39;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

constexpr std::string_view kStyle = R"(<style>
:root { color-scheme: light; }
body { margin: 1.5rem auto; max-width: 70rem; padding: 0 1rem; background: #fff; color: #1c1c28;
  font: 100%/1.45 system-ui, sans-serif; }
h1 { font-size: 1.25rem; margin: 0 0 .75rem; }
figure { margin: 0; overflow-x: auto; }
img { display: block; border: 1px solid #d8d8e0; }
area { cursor: pointer; }
#shown { position: sticky; top: 0; padding: .5rem .75rem; margin: 0 0 .75rem; min-height: 1.45em;
  background: #eef1f8; border-left: .3rem solid #3b4cc0; }
#shown b { font-variant-numeric: tabular-nums; }
table { border-collapse: collapse; margin-top: 1rem; }
caption { text-align: left; font-weight: 600; padding: .25rem 0; }
th, td { padding: .15rem .75rem .15rem 0; border-bottom: 1px solid #e4e4ec; text-align: left;
  font-weight: 400; }
thead th { font-weight: 600; }
td:last-child, thead th:last-child { text-align: right; font-variant-numeric: tabular-nums; }
tr:target, tr.chosen { background: #fff3c4; }
</style>
)";

// The link of an area line calls show() with the key as a query string. Codes that are not set have
// a mark; the rest is the id of the area's row in the table, which has the name and the value.
constexpr std::string_view kScript = R"(<script>
const shown = document.getElementById('shown');
function rowOf(query) {
  const codes = [...query.matchAll(/&A(\d)=(-?\d+)/g)];
  const key = Array(8).fill('0');
  for (const [, level, code] of codes) key[level] = code;
  while (key.length && key[key.length - 1] === '-99999999') key.pop();
  return document.getElementById('k' + key.join('_'));
}
function tell(row) {
  if (!row) return;
  shown.textContent = row.cells[0].textContent + ': ';
  shown.append(Object.assign(document.createElement('b'), { textContent: row.cells[1].textContent }));
}
function show(query) {
  const row = rowOf(query);
  document.querySelectorAll('tr.chosen').forEach((old) => old.classList.remove('chosen'));
  if (!row) return;
  tell(row);
  row.classList.add('chosen');
  row.scrollIntoView({ block: 'center' });
}
for (const area of document.querySelectorAll('area')) {
  const row = rowOf(area.getAttribute('href'));
  area.alt = row ? row.cells[0].textContent + ': ' + row.cells[1].textContent : '';
}
for (const event of ['mouseover', 'focusin']) {
  document.getElementById('areas').addEventListener(event, (e) => {
    if (e.target.matches('area')) tell(rowOf(e.target.getAttribute('href')));
  });
}
</script>
)";

// A node's name with that of the area around it, which tells areas of one name apart.
std::string FullName(const CMapOb& node) {
  std::string name(node.GetName().View());
  const CMapOb* around = node.GetParent();
  if (around != nullptr && around->GetLevel() > 0)
    name.append(", ").append(around->GetName().View());
  return name;
}

}  // namespace

void WritePageHead(CStdioFile& file, View& view, const ViewOptions& options,
                   const std::string& picture) {
  const std::string title = Escaped(view.map.GenerateTitle().View());
  const std::string width = std::to_string(options.width);
  const std::string height = std::to_string(options.height);
  file.WriteString(
      "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>" +
      title + "</title>\n");
  file.WriteString(kStyle);
  file.WriteString("</head>\n<body>\n<main>\n<h1>" + title +
                   "</h1>\n<p id=\"shown\" role=\"status\">Point at an area to see its value.</p>\n"
                   "<figure>\n<img src=\"" +
                   Escaped(picture) + "\" width=\"" + width + "\" height=\"" + height +
                   "\" alt=\"Map: " + title +
                   ". All values stand in the table below.\" usemap=\"#areas\">\n</figure>\n"
                   "<map name=\"areas\" id=\"areas\">\n");
}

void WritePageTail(CStdioFile& file, CliHost& host, View& view) {
  const std::string variable = Escaped(SubjectOf(view));
  file.WriteString(
      "</map>\n<table>\n<caption>" + variable +
      "</caption>\n<thead><tr><th scope=\"col\">Area</th><th scope=\"col\">Value</th></tr>"
      "</thead>\n<tbody>\n");
  std::string row;
  for (const CMapOb* area : view.areas) {
    row = "<tr id=\"k" + KeyText(area->GetArea(), "_") + "\"><th scope=\"row\">" +
          Escaped(FullName(*area)) + "</th><td>" +
          Escaped(ValueText(view, *area, host.GetSeparators(), "<no data>")) + "</td></tr>\n";
    file.WriteString(row);
  }
  file.WriteString("</tbody>\n</table>\n</main>\n");
  file.WriteString(kScript);
  file.WriteString("</body>\n</html>\n");
}

}  // namespace vexel::cli
