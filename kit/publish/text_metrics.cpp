#include "kit/publish/text_metrics.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "kit/request/markup.h"

namespace vexel {

namespace {

constexpr char32_t kFirst = 0x20;
constexpr char32_t kLast = 0x7E;
constexpr std::size_t kCount = kLast - kFirst + 1;
constexpr double kThousandth = 0.001;

// Thousandths of an em from the blank to the tilde.
constexpr std::array<std::uint16_t, kCount> kRegular{
    317, 400, 459, 837, 636, 950, 779, 274, 390, 390, 500, 837, 317, 360,  317, 336, 636, 636, 636,
    636, 636, 636, 636, 636, 636, 636, 336, 336, 837, 837, 837, 530, 1000, 684, 686, 698, 770, 631,
    575, 774, 751, 294, 294, 655, 557, 862, 748, 787, 603, 787, 694, 634,  610, 731, 684, 988, 685,
    610, 685, 390, 336, 390, 837, 500, 500, 612, 634, 549, 634, 615, 352,  634, 633, 277, 277, 579,
    277, 974, 633, 611, 634, 634, 411, 520, 392, 633, 591, 817, 591, 591,  524, 636, 336, 636, 837};
constexpr std::array<std::uint16_t, kCount> kBold{
    348,  456, 520, 837, 695, 1001, 872, 306,  457, 457, 522, 837, 379, 415,  379, 365,
    695,  695, 695, 695, 695, 695,  695, 695,  695, 695, 399, 399, 837, 837,  837, 580,
    1000, 773, 762, 733, 830, 683,  683, 820,  836, 372, 372, 774, 637, 995,  836, 850,
    732,  850, 770, 720, 682, 812,  773, 1103, 770, 724, 725, 457, 365, 457,  837, 500,
    500,  674, 715, 592, 715, 678,  435, 715,  711, 342, 342, 665, 342, 1041, 711, 687,
    715,  715, 493, 595, 478, 711,  651, 923,  645, 651, 582, 711, 365, 711,  837};

// Ranges of other characters, ascending by their ends: what is not above `last` and not in a range
// before takes that width. Letters with marks are as wide as the widest usual ones of their script.
struct Range {
  char32_t last;
  std::uint16_t width;
};
constexpr std::array kOthers{
    Range{0x1F, 0},         // controls
    Range{0xFF, 700},       // Latin-1
    Range{0x2FF, 680},      // Latin extended, phonetic
    Range{0x36F, 0},        // combining marks
    Range{0x52F, 760},      // Greek, Cyrillic
    Range{0x5FF, 680},      // Armenian, Hebrew
    Range{0x10FF, 800},     // Arabic, scripts of India and others
    Range{0x115F, 1000},    // Hangul letters
    Range{0x200A, 800},     // Ethiopic, Cherokee ... typographic blanks
    Range{0x200F, 0},       // joiners and marks of direction
    Range{0x2015, 1000},    // dashes
    Range{0x2025, 520},     // quotation marks
    Range{0x2E7F, 1000},    // the ellipsis, symbols
    Range{0xD7FF, 1000},    // Chinese, Japanese, Korean
    Range{0xFFFF, 1000},    // private, compatibility, full width
    Range{0x10FFFF, 1000},  // the rest
};

std::uint16_t WidthOf(char32_t character, bool isBold) {
  if (character >= kFirst && character <= kLast) {
    return (isBold ? kBold : kRegular)[static_cast<std::size_t>(character - kFirst)];
  }
  const auto* range = std::find_if(kOthers.begin(), kOthers.end(),
                                   [=](const Range& each) { return character <= each.last; });
  constexpr std::uint16_t kBolder = 100;
  if (range->width == 0) return 0;
  return static_cast<std::uint16_t>(range->width + (isBold ? kBolder : 0));
}

// Widths that were added up in another order are no larger.
constexpr double kSlack = 1e-6;

// The length of the longest beginning that takes no more than the room.
std::size_t Fitting(std::string_view text, const Typeface& face, double room) {
  double width = 0.0;
  std::size_t length = 0;
  while (length < text.size()) {
    std::string_view rest = text.substr(length);
    const char32_t character = NextCharacter(rest);
    width += WidthOf(character, face.isBold) * face.size * kThousandth;
    if (width > room + kSlack) break;
    length = text.size() - rest.size();
  }
  return length;
}

// What goes into one line of a text that has more: whole words if there is one, and else a part.
std::size_t LineLength(std::string_view text, const Typeface& face, double room) {
  const std::size_t fitting = Fitting(text, face, room);
  if (fitting == text.size()) return fitting;
  const std::size_t blank = text.substr(0, fitting + 1).find_last_of(' ');
  if (blank != std::string_view::npos && blank > 0) return blank;
  std::string_view rest = text;
  NextCharacter(rest);
  return std::max(fitting, text.size() - rest.size());
}

}  // namespace

double TextWidth(std::string_view text, const Typeface& face) {
  double width = 0.0;
  while (!text.empty()) width += WidthOf(NextCharacter(text), face.isBold);
  return width * face.size * kThousandth;
}

std::string Shortened(std::string_view text, const Typeface& face, double room) {
  if (TextWidth(text, face) <= room + kSlack) return std::string(text);
  const double left = room - TextWidth(kEllipsis, face);
  if (left < 0.0) return {};
  std::string_view part = text.substr(0, Fitting(text, face, left));
  part = part.substr(0, part.find_last_not_of(" ,;-") + 1);
  return part.empty() ? std::string() : std::string(part).append(kEllipsis);
}

std::vector<std::string> Wrapped(std::string_view text, const Typeface& face, double room,
                                 std::size_t mostLines) {
  std::vector<std::string> lines;
  text = text.substr(0, text.find_last_not_of(' ') + 1);
  const auto skipBlanks = [&] {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  };
  for (skipBlanks(); !text.empty() && lines.size() < mostLines; skipBlanks()) {
    if (lines.size() + 1 == mostLines) {
      lines.push_back(Shortened(text, face, room));
      break;
    }
    const std::size_t length = LineLength(text, face, room);
    lines.emplace_back(text.substr(0, length));
    text.remove_prefix(length);
  }
  std::erase(lines, "");
  return lines;
}

}  // namespace vexel
