// The palettes as text and as JSON.

#include <algorithm>

#include "kit/palettes/palettes.h"

namespace vexel {

namespace {

std::string_view KindText(PaletteKind kind) {
  switch (kind) {
    case PaletteKind::kRainbow:
      return "rainbow";
    case PaletteKind::kSequential:
      return "sequential";
    case PaletteKind::kDiverging:
      return "diverging";
  }
  return {};
}

std::string Padded(std::string_view text, std::size_t width) {
  std::string padded(text);
  padded.resize(std::max(width, text.size()), ' ');
  return padded;
}

// Two blanks for each colour on a background of it (ISO 8613-6), and back to the usual one.
std::string Bar(std::span<const std::uint32_t> colors) {
  std::string bar;
  for (const std::uint32_t color : colors) {
    bar += "\x1B[48;2;" + std::to_string(color & 0xFFU) + ';' +
           std::to_string((color >> 8U) & 0xFFU) + ';' + std::to_string((color >> 16U) & 0xFFU) +
           "m  ";
  }
  return bar + "\x1B[0m";
}

// No text of a palette has a character that JSON escapes.
std::string Quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

std::string JsonRow(const Palette& palette, int numClasses) {
  std::string row = Quoted(std::to_string(numClasses)) + ": [";
  std::string_view separator;
  for (const std::uint32_t color : ColorsOf(palette, numClasses)) {
    row.append(separator).append(Quoted(ColorText(color)));
    separator = ", ";
  }
  return row + ']';
}

std::string JsonPalette(const Palette& palette) {
  std::string text = "    {\n      \"name\": " + Quoted(palette.name) +
                     ",\n      \"kind\": " + Quoted(KindText(palette.kind)) +
                     ",\n      \"colorBlindSafe\": " + (palette.colorBlindSafe ? "true" : "false") +
                     ",\n      \"colors\": {";
  std::string_view separator = "\n        ";
  for (int numClasses = 1; numClasses <= kMostPaletteClasses; ++numClasses) {
    text.append(separator).append(JsonRow(palette, numClasses));
    separator = ",\n        ";
  }
  return text + "\n      }\n    }";
}

}  // namespace

std::string PalettesText(bool color) {
  std::size_t nameWidth = 0;
  for (const Palette& palette : Palettes()) nameWidth = std::max(nameWidth, palette.name.size());
  std::string text;
  for (const Palette& palette : Palettes()) {
    if (color) text += Bar(ColorsOf(palette, kMostPaletteClasses)) + "  ";
    text += Padded(palette.name, nameWidth + 2);
    if (palette.colorBlindSafe) {
      text += Padded(KindText(palette.kind), 12) + "colour-blind safe\n";
    } else {
      text.append(KindText(palette.kind)).append("\n");
    }
  }
  return text;
}

std::string PalettesJson() {
  std::string text = "{\n  \"palettes\": [";
  std::string_view separator = "\n";
  for (const Palette& palette : Palettes()) {
    text.append(separator).append(JsonPalette(palette));
    separator = ",\n";
  }
  return text + "\n  ]\n}\n";
}

}  // namespace vexel
