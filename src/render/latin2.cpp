#include "render/latin2.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace vexel {

namespace {

// The upper part of ISO 8859-2, from byte 0xA0 on.
constexpr int kFirstUpper = 0xA0;
constexpr std::array<char32_t, 96> kUpper{
    0x00A0, 0x0104, 0x02D8, 0x0141, 0x00A4, 0x013D, 0x015A, 0x00A7, 0x00A8, 0x0160, 0x015E, 0x0164,
    0x0179, 0x00AD, 0x017D, 0x017B, 0x00B0, 0x0105, 0x02DB, 0x0142, 0x00B4, 0x013E, 0x015B, 0x02C7,
    0x00B8, 0x0161, 0x015F, 0x0165, 0x017A, 0x02DD, 0x017E, 0x017C, 0x0154, 0x00C1, 0x00C2, 0x0102,
    0x00C4, 0x0139, 0x0106, 0x00C7, 0x010C, 0x00C9, 0x0118, 0x00CB, 0x011A, 0x00CD, 0x00CE, 0x010E,
    0x0110, 0x0143, 0x0147, 0x00D3, 0x00D4, 0x0150, 0x00D6, 0x00D7, 0x0158, 0x016E, 0x00DA, 0x0170,
    0x00DC, 0x00DD, 0x0162, 0x00DF, 0x0155, 0x00E1, 0x00E2, 0x0103, 0x00E4, 0x013A, 0x0107, 0x00E7,
    0x010D, 0x00E9, 0x0119, 0x00EB, 0x011B, 0x00ED, 0x00EE, 0x010F, 0x0111, 0x0144, 0x0148, 0x00F3,
    0x00F4, 0x0151, 0x00F6, 0x00F7, 0x0159, 0x016F, 0x00FA, 0x0171, 0x00FC, 0x00FD, 0x0163, 0x02D9,
};

// One character for each code point from `first` on: the base letter of a Latin letter, the plain
// form of a sign. A dot stands for none, and for those that the set itself holds the entry is not
// looked at.
struct Plain {
  char32_t first;
  std::string_view characters;
};

constexpr std::array kPlain{
    Plain{0x00A0, " !c...|...a\"...-..23.u.*.1o\"...."},
    Plain{0x00C0,
          "AAAAAA.CEEEEIIIIDNOOOOO.OUUUUY..aaaaaa.ceeeeiiiidnooooo.ouuuuy.y"
          "AaAaAaCcCcCcCcDdDdEeEeEeEeEeGgGgGgGgHhHhIiIiIiIiIi..JjKkkLlLlLlL"
          "lLlNnNnNn.NnOoOoOo..RrRrRrSsSsSsSsTtTtTtUuUuUuUuUuUuWwYyYZzZzZzs"},
    Plain{0x0180,
          "bB....O..DD....EEFfG...IKkl..N.OOo..Pp......TtTUu.VYyZz........."
          ".............AaIiOoUuUuUuUuUueAaAa..GgGgKkOoOo..j...Gg..NnAa..Oo"
          "AaAaEeEeIiIiOoOoRrRrUuUuSsTt..HhN...ZzAaEeOoOoOoOoYy...j..ACcLT."
          "...BU.EeJj..RrYy...bo.dd.e.e....g.......i.........n..o.........."
          ".........u......"},
    Plain{0x02B9, "'\"'''''......^.'...................~"},
    Plain{0x1E00,
          "AaBbBbBbCcDdDdDdDdDdEeEeEeEeEeFfGgHhHhHhHhHhIiIiKkKkKkLlLlLlLlMm"
          "MmMmNnNnNnNnOoOoOoOoPpPpRrRrRrRrSsSsSsSsSsTtTtTtTtUuUuUuUuUuVvVv"
          "WwWwWwWwWwXxXxYyZzZzZzhtwy.s....AaAaAaAaAaAaAaAaAaAaAaAaEeEeEeEe"
          "EeEeEeEeIiIiOoOoOoOoOoOoOoOoOoOoOoOoUuUuUuUuUuUuUuYyYyYyYy......"},
    Plain{0x2000,
          "           .....------|_''''\"\"\"\"++*............ ..'\".....<>....."
          "..../.......................... "},
};

// What is spelled with other characters, or with a dot.
struct Spelling {
  char32_t code;
  std::string_view text;
};

// The Romanian letters with a comma below are drawn as those with a cedilla, which the set has.
constexpr std::array kSpellings{
    Spelling{0x00A3, "GBP"},  Spelling{0x00A5, "JPY"},  Spelling{0x00A9, "(c)"},
    Spelling{0x00AE, "(R)"},  Spelling{0x00B1, "+/-"},  Spelling{0x00BC, "1/4"},
    Spelling{0x00BD, "1/2"},  Spelling{0x00BE, "3/4"},  Spelling{0x00C6, "AE"},
    Spelling{0x00DE, "Th"},   Spelling{0x00E6, "ae"},   Spelling{0x00FE, "th"},
    Spelling{0x0132, "IJ"},   Spelling{0x0133, "ij"},   Spelling{0x0149, "'n"},
    Spelling{0x0152, "OE"},   Spelling{0x0153, "oe"},   Spelling{0x01C4, "DZ"},
    Spelling{0x01C5, "Dz"},   Spelling{0x01C6, "dz"},   Spelling{0x01C7, "LJ"},
    Spelling{0x01C8, "Lj"},   Spelling{0x01C9, "lj"},   Spelling{0x01CA, "NJ"},
    Spelling{0x01CB, "Nj"},   Spelling{0x01CC, "nj"},   Spelling{0x01E2, "AE"},
    Spelling{0x01E3, "ae"},   Spelling{0x01F1, "DZ"},   Spelling{0x01F2, "Dz"},
    Spelling{0x01F3, "dz"},   Spelling{0x01FC, "AE"},   Spelling{0x01FD, "ae"},
    Spelling{0x0218, "\xAA"}, Spelling{0x0219, "\xBA"}, Spelling{0x021A, "\xDE"},
    Spelling{0x021B, "\xFE"}, Spelling{0x1E9E, "SS"},   Spelling{0x2026, "..."},
    Spelling{0x20AC, "EUR"},  Spelling{0x2116, "No"},   Spelling{0x2122, "TM"},
    Spelling{0x2212, "-"},    Spelling{0x2260, "<>"},   Spelling{0x2264, "<="},
    Spelling{0x2265, ">="},   Spelling{0x3000, " "},    Spelling{0xFB00, "ff"},
    Spelling{0xFB01, "fi"},   Spelling{0xFB02, "fl"},
};

// Characters without a width: combining marks, joiners, marks of direction and of byte order.
struct Range {
  char32_t first;
  char32_t last;
};

constexpr std::array kUnseen{
    Range{0x0300, 0x036F}, Range{0x1AB0, 0x1AFF}, Range{0x1DC0, 0x1DFF}, Range{0x200B, 0x200F},
    Range{0x202A, 0x202E}, Range{0x2060, 0x2064}, Range{0x20D0, 0x20FF}, Range{0xFE00, 0xFE0F},
    Range{0xFE20, 0xFE2F}, Range{0xFEFF, 0xFEFF},
};

constexpr std::string_view kUnknown = "?";

std::string_view PlainForm(char32_t code) {
  for (const Plain& block : kPlain) {
    if (code < block.first || code - block.first >= block.characters.size()) continue;
    const std::string_view form = block.characters.substr(code - block.first, 1);
    if (form != ".") return form;
  }
  return kUnknown;
}

// What is drawn for a character beyond ASCII that is not of the set.
std::string_view Substitute(char32_t code) {
  const auto* spelling = std::find_if(kSpellings.begin(), kSpellings.end(),
                                      [=](const Spelling& entry) { return entry.code == code; });
  if (spelling != kSpellings.end()) return spelling->text;
  const bool unseen = std::any_of(kUnseen.begin(), kUnseen.end(), [=](const Range& range) {
    return code >= range.first && code <= range.last;
  });
  return unseen ? std::string_view() : PlainForm(code);
}

void AppendDrawn(char32_t code, std::string& drawn) {
  const auto* found = std::find(kUpper.begin() + 1, kUpper.end(), code);
  if (found == kUpper.end()) {
    drawn.append(Substitute(code));
  } else {
    drawn += static_cast<char>(kFirstUpper + (found - kUpper.begin()));
  }
}

struct Decoded {
  char32_t code;
  std::size_t length;  // in bytes; 0 when there is no character
};

// The length that a first byte tells, with the bits of the code that it holds.
Decoded FromFirstByte(unsigned char byte) {
  if (byte >= 0xF0 && byte < 0xF8) return {byte & 0x07U, 4};
  if (byte >= 0xE0 && byte < 0xF0) return {byte & 0x0FU, 3};
  if (byte >= 0xC0 && byte < 0xE0) return {byte & 0x1FU, 2};
  return {0, 0};
}

// The character beyond ASCII that the text begins with.
Decoded Decode(std::string_view text) {
  constexpr std::array<char32_t, 5> kLeast{0, 0, 0x80, 0x800, 0x10000};
  auto [code, length] = FromFirstByte(static_cast<unsigned char>(text.front()));
  if (length == 0 || length > text.size()) return {0, 0};
  for (const char c : text.substr(1, length - 1)) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte & 0xC0) != 0x80) return {0, 0};
    code = code << 6 | (byte & 0x3FU);
  }
  const bool isSurrogate = code >= 0xD800 && code < 0xE000;
  if (code < kLeast[length] || code > 0x10FFFF || isSurrogate) return {0, 0};
  return {code, length};
}

}  // namespace

std::string DrawnText(std::string_view utf8) {
  std::string drawn;
  drawn.reserve(utf8.size());
  while (!utf8.empty()) {
    const bool isAscii = static_cast<unsigned char>(utf8.front()) < 0x80;
    const Decoded decoded = isAscii ? Decoded{0, 0} : Decode(utf8);
    if (decoded.length == 0) {
      drawn += utf8.front();
    } else {
      AppendDrawn(decoded.code, drawn);
    }
    utf8.remove_prefix(std::max<std::size_t>(decoded.length, 1));
  }
  return drawn;
}

}  // namespace vexel
