#include "kit/publish/svg.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <set>

#include "kit/palettes/color.h"
#include "kit/request/markup.h"
#include "kit/request/values.h"

namespace vexel {

namespace {

constexpr std::size_t kLongestNumber = 12;

// Writes a whole number behind another or a command. A minus sign parts numbers by itself.
char* WriteNumber(char* to, std::int32_t number, bool isFirst) {
  if (!isFirst && number >= 0) *to++ = ' ';
  return std::to_chars(to, to + kLongestNumber, number).ptr;
}

// "m dx dy" ... in as few characters as it takes. A path's first command is absolute, and each
// further ring begins where the last one did.
class PathWriter {
 public:
  explicit PathWriter(std::string& to) : to_(to) {}

  void Write(std::span<const GridPoint> ring) {
    // Each vertex takes two numbers, two blanks and a command at most.
    constexpr std::size_t kLongestVertex = 2 * kLongestNumber + 3;
    constexpr std::size_t kAtOnce = 128;
    std::array<char, kAtOnce * kLongestVertex + 1> part;
    char* at = part.data();
    const auto flush = [&] {
      to_.append(part.data(), at);
      at = part.data();
    };
    GridPoint here = start_;
    char command = isFirst_ ? 'M' : 'm';
    bool isNew = true;
    for (const GridPoint& point : ring) {
      const std::int32_t dx = point.x - here.x;
      const std::int32_t dy = point.y - here.y;
      here = point;
      const char wanted = isNew ? command : dy == 0 ? 'h' : dx == 0 ? 'v' : 'l';
      bool startsNumbers = wanted != last_;
      if (startsNumbers) *at++ = wanted;
      last_ = wanted;
      if (wanted != 'v') {
        at = WriteNumber(at, dx, startsNumbers);
        startsNumbers = false;
      }
      if (wanted != 'h') at = WriteNumber(at, dy, startsNumbers);
      // Numbers behind those of a move are lines already.
      if (isNew) last_ = command == 'm' ? 'l' : '\0';
      isNew = false;
      if (at - part.data() > static_cast<std::ptrdiff_t>((kAtOnce - 1) * kLongestVertex)) flush();
    }
    *at++ = 'z';
    last_ = 'z';
    isFirst_ = false;
    start_ = ring.front();
    flush();
  }

 private:
  std::string& to_;
  GridPoint start_;
  bool isFirst_ = true;
  char last_ = '\0';
};

// A number with as few decimals as a page can show.
std::string Short(double number) {
  constexpr double kParts = 100.0;
  constexpr std::size_t kLongest = 32;
  std::array<char, kLongest> text;
  const double rounded = std::round(number * kParts) / kParts;
  const auto end = std::to_chars(text.data(), text.data() + text.size(), rounded + 0.0).ptr;
  std::string_view all(text.data(), static_cast<std::size_t>(end - text.data()));
  if (all.starts_with("0.")) all.remove_prefix(1);
  return std::string(all);
}

std::string_view RoleName(TextRole role) {
  constexpr std::array<std::string_view, 5> kNames{"heading", "subtitle", "legend", "label",
                                                   "note"};
  return kNames.at(static_cast<std::size_t>(role));
}

class SvgWriter {
 public:
  explicit SvgWriter(const Drawing& drawing) : drawing_(drawing) {}

  std::string Write() {
    // Most vertices take five characters or less, and each area some more beside its texts.
    constexpr std::size_t kPerVertex = 5;
    constexpr std::size_t kPerArea = 64;
    svg_.reserve(kPerVertex * drawing_.rings.VertexCount() + kPerArea * drawing_.areas.size() +
                 drawing_.words.size());
    WriteHead();
    WriteStyles();
    WriteHatches();
    if (drawing_.background) {
      svg_ += "<rect class=\"paper\" width=\"100%\" height=\"100%\"/>\n";
    }
    WriteAreas();
    for (const OutlineShapes& outline : drawing_.outlines) WriteOutline(outline);
    WriteBoxes();
    WriteTexts();
    svg_ += "</svg>\n";
    return std::move(svg_);
  }

 private:
  void Attribute(std::string_view name, std::string_view value) {
    svg_.append(" ").append(name).append("=\"").append(value).append("\"");
  }

  void WriteHead() {
    const std::string width = std::to_string(drawing_.width);
    const std::string height = std::to_string(drawing_.height);
    svg_ += "<svg xmlns=\"http://www.w3.org/2000/svg\"";
    Attribute("width", width);
    Attribute("height", height);
    Attribute("viewBox", "0 0 " + width + ' ' + height);
    svg_ += " role=\"img\" aria-labelledby=\"title desc\">\n<title id=\"title\">";
    AppendMarkup(svg_, drawing_.title);
    svg_ += "</title>\n<desc id=\"desc\">";
    AppendMarkup(svg_, drawing_.description);
    svg_ += "</desc>\n";
  }

  bool IsUsed(const FillStyle& fill) const {
    const auto index = static_cast<std::uint16_t>(&fill - drawing_.fills.data());
    const auto has = [=](const auto& part) { return part.fill == index; };
    return std::any_of(drawing_.areas.begin(), drawing_.areas.end(), has) ||
           std::any_of(drawing_.boxes.begin(), drawing_.boxes.end(), has);
  }

  // Widths within the map are in steps of its grid.
  std::string InSteps(double width) const { return Short(width * drawing_.grid); }

  void WriteStyles() {
    svg_ +=
        "<style>\n"
        "text{font-family:\"Helvetica Neue\",Helvetica,Arial,\"Liberation Sans\",sans-serif;"
        "white-space:pre}\n"
        ".bold{font-weight:bold}\n"
        ".halo{paint-order:stroke;stroke-linejoin:round}\n";
    if (drawing_.background) svg_ += ".paper{fill:" + ColorText(*drawing_.background) + "}\n";
    const bool hasLine = drawing_.areaLine.has_value();
    svg_ += "#areas{stroke-linejoin:round;stroke-width:" + InSteps(drawing_.areaLineWidth);
    if (hasLine) svg_ += ";stroke:" + ColorText(*drawing_.areaLine);
    svg_ += "}\n";
    for (const FillStyle& fill : drawing_.fills) {
      if (!IsUsed(fill)) continue;
      const std::string color = ColorText(fill.color);
      svg_ += '.' + fill.name + "{fill:" + (fill.hatch ? "url(#hatch-" + fill.name + ')' : color);
      if (!hasLine) svg_ += ";stroke:" + color;
      svg_ += "}\n";
    }
    std::set<std::string_view> seen;
    for (const OutlineShapes& outline : drawing_.outlines) {
      if (!seen.insert(outline.name).second) continue;
      svg_ += ".line-" + outline.name +
              "{fill:none;stroke-linejoin:round;stroke:" + ColorText(outline.stroke.color) +
              ";stroke-width:" + InSteps(outline.stroke.width) + "}\n";
    }
    svg_ += "</style>\n";
  }

  void WriteHatches() {
    for (const FillStyle& fill : drawing_.fills) {
      if (!fill.hatch || !IsUsed(fill)) continue;
      // In pixels of the page, wherever it fills something.
      svg_ += "<defs>\n";
      for (const bool isInMap : {false, true}) {
        const double scale = isInMap ? drawing_.grid : 1.0;
        const double step = drawing_.hatchStep * scale;
        const std::string size = Short(step);
        svg_ += "<pattern";
        Attribute("id", (isInMap ? "hatch-" : "swatch-") + fill.name);
        Attribute("width", size);
        Attribute("height", size);
        svg_ += " patternUnits=\"userSpaceOnUse\" patternTransform=\"rotate(45)\"><rect";
        Attribute("width", size);
        Attribute("height", size);
        Attribute("fill", ColorText(fill.color));
        svg_ += "/><rect";
        Attribute("width", Short(step * kHatchWidth));
        Attribute("height", size);
        Attribute("fill", ColorText(*fill.hatch));
        svg_ += "/></pattern>\n";
      }
      svg_ += "</defs>\n";
    }
  }

  std::string MapTransform() const {
    return drawing_.grid == 1 ? ""
                              : " transform=\"scale(" + NumberText(1.0 / drawing_.grid) + ")\"";
  }

  void WriteAreas() {
    svg_ += "<g id=\"areas\"" + MapTransform() + ">\n";
    for (const AreaShape& area : drawing_.areas) {
      if (area.rings.first == area.rings.end) continue;
      svg_ += "<path";
      Attribute("class", drawing_.fills[area.fill].name);
      Attribute("data-key", drawing_.Of(area.key));
      svg_ += " d=\"";
      AppendPath(svg_, drawing_, area.rings);
      svg_ += "\"><title>";
      AppendMarkup(svg_, drawing_.Of(area.name));
      svg_ += ": ";
      AppendMarkup(svg_, drawing_.Of(area.value));
      svg_ += "</title></path>\n";
    }
    svg_ += "</g>\n";
  }

  void WriteOutline(const OutlineShapes& outline) {
    svg_ += "<path";
    Attribute("class", "line-" + outline.name);
    svg_ += MapTransform() + " d=\"";
    AppendPath(svg_, drawing_, outline.rings);
    svg_ += "\"/>\n";
  }

  void WriteBoxes() {
    for (const PageBox& box : drawing_.boxes) {
      const FillStyle& fill = drawing_.fills[box.fill];
      svg_ += "<rect";
      Attribute("class", fill.name);
      Attribute("x", Short(box.left));
      Attribute("y", Short(box.top));
      Attribute("width", Short(box.width));
      Attribute("height", Short(box.height));
      std::string style =
          "stroke:" + ColorText(box.stroke.color) + ";stroke-width:" + Short(box.stroke.width);
      if (fill.hatch) style += ";fill:url(#swatch-" + fill.name + ')';
      Attribute("style", style);
      svg_ += "/>\n";
    }
  }

  void WriteTexts() {
    for (const TextLine& text : drawing_.texts) {
      svg_ += "<text";
      std::string classes(RoleName(text.role));
      if (text.isBold) classes += " bold";
      if (text.halo) classes += " halo";
      Attribute("class", classes);
      Attribute("x", Short(text.x));
      Attribute("y", Short(text.y));
      Attribute("font-size", Short(text.size));
      Attribute("fill", ColorText(text.color));
      if (text.anchor != TextAnchor::start) {
        Attribute("text-anchor", text.anchor == TextAnchor::middle ? "middle" : "end");
      }
      if (text.halo) {
        Attribute("stroke", ColorText(*text.halo));
        Attribute("stroke-width", Short(text.size * kHaloWidth));
      }
      svg_ += '>';
      AppendMarkup(svg_, text.text);
      svg_ += "</text>\n";
    }
  }

  const Drawing& drawing_;
  std::string svg_;
};

}  // namespace

void AppendPath(std::string& to, const Drawing& drawing, const RingRange& range) {
  PathWriter writer(to);
  for (std::uint32_t i = range.first; i < range.end; ++i) writer.Write(drawing.rings.Ring(i));
}

std::string SvgText(const Drawing& drawing) { return SvgWriter(drawing).Write(); }

}  // namespace vexel
