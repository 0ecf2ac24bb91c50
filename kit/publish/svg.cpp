#include "kit/publish/svg.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <set>
#include <utility>

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

// Whether the first letter of a text that has a direction runs from right to left (the Unicode
// Bidirectional Algorithm, rules P2 and P3, for the blocks of such scripts).
bool RunsLeftward(std::string_view text) {
  constexpr std::array<std::pair<char32_t, char32_t>, 4> kLeftward{
      {{0x590, 0x8FF}, {0xFB1D, 0xFDFF}, {0xFE70, 0xFEFF}, {0x10800, 0x10FFF}}};
  while (!text.empty()) {
    const char32_t character = NextCharacter(text);
    const auto holds = [=](const auto& block) {
      return character >= block.first && character <= block.second;
    };
    if (std::any_of(kLeftward.begin(), kLeftward.end(), holds)) return true;
    const char32_t lower = character | 0x20U;
    const bool isPunctuation = character >= 0x2000 && character < 0x2C00;
    if ((lower >= U'a' && lower <= U'z') || (character >= 0xC0 && !isPunctuation)) return false;
  }
  return false;
}

// A name for the document that others have not: made from what it holds (FNV-1a), so that the same
// drawing has the same one.
std::string ScopeOf(const Drawing& drawing) {
  std::uint32_t hash = 0x811C9DC5U;
  const auto mix = [&](std::uint32_t value) { hash = (hash ^ value) * 0x01000193U; };
  const auto mixText = [&](std::string_view text) {
    for (const char c : text) mix(static_cast<unsigned char>(c));
  };
  mixText(drawing.title);
  mixText(drawing.words);
  for (const FillStyle& fill : drawing.fills) mix(fill.color);
  for (const TextLine& text : drawing.texts) mixText(text.text);
  mix(static_cast<std::uint32_t>(drawing.width));
  mix(static_cast<std::uint32_t>(drawing.height));
  mix(drawing.background.value_or(hash));
  constexpr int kHex = 16;
  constexpr std::size_t kDigits = 8;
  std::array<char, kDigits> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + kDigits, hash, kHex).ptr;
  return "map-" + std::string(digits.data(), end);
}

class SvgWriter {
 public:
  explicit SvgWriter(const Drawing& drawing) : drawing_(drawing), scope_(ScopeOf(drawing)) {}

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
    Attribute("id", scope_);
    svg_ += " role=\"img\"";
    Attribute("aria-labelledby", scope_ + "-title " + scope_ + "-desc");
    svg_ += ">\n<title";
    Attribute("id", scope_ + "-title");
    svg_ += '>';
    AppendMarkup(svg_, drawing_.title);
    svg_ += "</title>\n<desc";
    Attribute("id", scope_ + "-desc");
    svg_ += '>';
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

  // A rule of the style sheet, for this document alone: a page may hold several.
  void Rule(const std::string& selector, const std::string& declarations) {
    svg_ += '#' + scope_ + ' ' + selector + '{' + declarations + "}\n";
  }

  std::string HatchOf(std::string_view where, const FillStyle& fill) const {
    return scope_ + '-' + std::string(where) + '-' + fill.name;
  }

  void WriteStyles() {
    svg_ += "<style>\n";
    Rule("text",
         "font-family:\"Helvetica Neue\",Helvetica,Arial,\"Liberation Sans\",sans-serif;"
         "white-space:pre");
    Rule(".bold", "font-weight:bold");
    Rule(".halo", "paint-order:stroke;stroke-linejoin:round");
    if (drawing_.background) Rule(".paper", "fill:" + ColorText(*drawing_.background));
    const bool hasLine = drawing_.areaLine.has_value();
    Rule(".areas", "stroke-linejoin:round;stroke-width:" + InSteps(drawing_.areaLineWidth) +
                       (hasLine ? ";stroke:" + ColorText(*drawing_.areaLine) : ""));
    for (const FillStyle& fill : drawing_.fills) {
      if (!IsUsed(fill)) continue;
      const std::string color = ColorText(fill.color);
      Rule('.' + fill.name,
           "fill:" + (fill.hatch ? "url(#" + HatchOf("hatch", fill) + ')' : color) +
               (!hasLine    ? ";stroke:" + color
                : fill.line ? ";stroke:" + ColorText(*fill.line)
                            : ""));
    }
    std::set<std::string_view> seen;
    for (const OutlineShapes& outline : drawing_.outlines) {
      if (!seen.insert(outline.name).second) continue;
      Rule(".line-" + outline.name,
           "fill:none;stroke-linejoin:round;stroke:" + ColorText(outline.stroke.color) +
               ";stroke-width:" + InSteps(outline.stroke.width));
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
        Attribute("id", HatchOf(isInMap ? "hatch" : "swatch", fill));
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
    svg_ += "<g class=\"areas\"" + MapTransform() + ">\n";
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
      if (fill.hatch) style += ";fill:url(#" + HatchOf("swatch", fill) + ')';
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
      // From right to left a line still has its anchor where it would be otherwise.
      const bool isLeftward = RunsLeftward(text.text);
      if (isLeftward) Attribute("direction", "rtl");
      if (text.anchor == TextAnchor::middle) {
        Attribute("text-anchor", "middle");
      } else if ((text.anchor == TextAnchor::end) != isLeftward) {
        Attribute("text-anchor", "end");
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
  std::string scope_;
  std::string svg_;
};

}  // namespace

void AppendPath(std::string& to, const Drawing& drawing, const RingRange& range) {
  PathWriter writer(to);
  for (std::uint32_t i = range.first; i < range.end; ++i) writer.Write(drawing.rings.Ring(i));
}

std::string SvgText(const Drawing& drawing) { return SvgWriter(drawing).Write(); }

}  // namespace vexel
