#include "kit/tables/encoding.h"

#include <vexel/brindle/text.h>
#include <vexel/platform/string.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "kit/request/error.h"
#include "kit/request/hints.h"
#include "kit/request/markup.h"
#include "kit/tables/latin2_evidence.h"

namespace vexel {

namespace {

struct NamedEncoding {
  std::string_view name;
  Encoding encoding;
  std::string_view mark;  // how a file in it may begin
};

constexpr std::array kEncodings{
    NamedEncoding{"utf-8", Encoding::utf8, "\xEF\xBB\xBF"},
    NamedEncoding{"utf-16le", Encoding::utf16le, "\xFF\xFE"},
    NamedEncoding{"utf-16be", Encoding::utf16be, "\xFE\xFF"},
    NamedEncoding{"windows-1252", Encoding::windows1252, ""},
    NamedEncoding{"iso-8859-1", Encoding::latin1, ""},
    NamedEncoding{"iso-8859-2", Encoding::latin2, ""},
};

// From 0x80 on; the five bytes that windows-1252 leaves open stay control characters.
constexpr std::array<char16_t, 32> kWindows1252{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

// From 0xA0 on.
constexpr std::array<char16_t, 96> kLatin2{
    0x00A0, 0x0104, 0x02D8, 0x0141, 0x00A4, 0x013D, 0x015A, 0x00A7, 0x00A8, 0x0160, 0x015E, 0x0164,
    0x0179, 0x00AD, 0x017D, 0x017B, 0x00B0, 0x0105, 0x02DB, 0x0142, 0x00B4, 0x013E, 0x015B, 0x02C7,
    0x00B8, 0x0161, 0x015F, 0x0165, 0x017A, 0x02DD, 0x017E, 0x017C, 0x0154, 0x00C1, 0x00C2, 0x0102,
    0x00C4, 0x0139, 0x0106, 0x00C7, 0x010C, 0x00C9, 0x0118, 0x00CB, 0x011A, 0x00CD, 0x00CE, 0x010E,
    0x0110, 0x0143, 0x0147, 0x00D3, 0x00D4, 0x0150, 0x00D6, 0x00D7, 0x0158, 0x016E, 0x00DA, 0x0170,
    0x00DC, 0x00DD, 0x0162, 0x00DF, 0x0155, 0x00E1, 0x00E2, 0x0103, 0x00E4, 0x013A, 0x0107, 0x00E7,
    0x010D, 0x00E9, 0x0119, 0x00EB, 0x011B, 0x00ED, 0x00EE, 0x010F, 0x0111, 0x0144, 0x0148, 0x00F3,
    0x00F4, 0x0151, 0x00F6, 0x00F7, 0x0159, 0x016F, 0x00FA, 0x0171, 0x00FC, 0x00FD, 0x0163, 0x02D9};

char32_t CharacterOf(unsigned char byte, Encoding encoding) {
  if (encoding == Encoding::windows1252 && byte >= 0x80 && byte < 0xA0) {
    return kWindows1252[byte - 0x80U];
  }
  if (encoding == Encoding::latin2 && byte >= 0xA0) return kLatin2[byte - 0xA0U];
  return byte;
}

std::string FromOneByte(std::string_view bytes, Encoding encoding) {
  const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 16);
  while (!bytes.empty()) {
    const auto plain = static_cast<std::size_t>(
        std::find_if_not(bytes.begin(), bytes.end(), isAscii) - bytes.begin());
    text += bytes.substr(0, plain);
    bytes.remove_prefix(plain);
    if (bytes.empty()) break;
    AppendUtf8(text, CharacterOf(static_cast<unsigned char>(bytes.front()), encoding));
    bytes.remove_prefix(1);
  }
  return text;
}

std::string FromUtf16(std::string_view bytes, Encoding encoding, const std::string& name) {
  const auto refuse = [&] { return Failed(name, "is no " + std::string(NameOf(encoding))); };
  if (bytes.size() % 2 != 0) throw refuse();
  const std::size_t high = encoding == Encoding::utf16le ? 1 : 0;
  const auto unitAt = [&](std::size_t at) {
    return char32_t{static_cast<unsigned char>(bytes[at + high])} << 8U |
           static_cast<unsigned char>(bytes[at + 1 - high]);
  };
  std::string text;
  text.reserve(bytes.size() / 2);
  for (std::size_t at = 0; at < bytes.size(); at += 2) {
    char32_t code = unitAt(at);
    if (code >= 0xD800 && code < 0xE000) {
      at += 2;
      const char32_t low = code < 0xDC00 && at < bytes.size() ? unitAt(at) : 0;
      if (low < 0xDC00 || low >= 0xE000) throw refuse();
      code = 0x10000 + ((code - 0xD800) << 10U) + (low - 0xDC00);
    }
    AppendUtf8(text, code);
  }
  return text;
}

// For a text that is not UTF-8: where it stops to be.
Error NoUtf8(std::string_view text, const std::string& name) {
  std::size_t line = 1;
  for (; !text.empty(); ++line) {
    const std::size_t end = text.find('\n');
    if (!IsUtf8(text.substr(0, end)) || end == std::string_view::npos) break;
    text.remove_prefix(end + 1);
  }
  return Failed(name,
                "line " + std::to_string(line) +
                    " is no utf-8; give another --encoding, or leave it out to have it found");
}

// UTF-16 without its mark: texts of statistics are mostly ASCII.
std::optional<Encoding> LikelyUtf16(std::string_view bytes) {
  constexpr std::size_t kBeginning = 4096;
  std::array<std::size_t, 2> zeros{};
  const std::size_t end = std::min(kBeginning, bytes.size()) / 2 * 2;
  for (std::size_t i = 0; i < end; ++i) zeros[i % 2] += bytes[i] == '\0' ? 1 : 0;
  const auto isMost = [=](std::size_t count) { return count > end / 4; };
  if (zeros[0] == 0 && isMost(zeros[1])) return Encoding::utf16le;
  if (zeros[1] == 0 && isMost(zeros[0])) return Encoding::utf16be;
  return {};
}

const NamedEncoding& EntryOf(Encoding encoding) noexcept {
  return *std::find_if(kEncodings.begin(), kEncodings.end(),
                       [=](const NamedEncoding& each) { return each.encoding == encoding; });
}

}  // namespace

std::string_view NameOf(Encoding encoding) noexcept { return EntryOf(encoding).name; }

Encoding EncodingOf(std::string_view name) {
  std::array<std::string_view, kEncodings.size()> names;
  std::transform(kEncodings.begin(), kEncodings.end(), names.begin(),
                 [](const NamedEncoding& each) { return each.name; });
  const auto* found =
      std::find_if(kEncodings.begin(), kEncodings.end(),
                   [=](const NamedEncoding& each) { return EqualNoCase(each.name, name); });
  if (found != kEncodings.end()) return found->encoding;
  const std::string hint = Hint(name, names);
  throw WrongRequest("no encoding " + Quoted(name) +
                     (hint.empty() ? "; there are " + Joined(names) : hint));
}

std::optional<Encoding> MarkedEncoding(std::string_view bytes) noexcept {
  for (const NamedEncoding& each : kEncodings) {
    if (!each.mark.empty() && bytes.starts_with(each.mark)) return each.encoding;
  }
  return {};
}

Encoding LikelyEncoding(std::string_view bytes) noexcept {
  if (const auto marked = MarkedEncoding(bytes)) return *marked;
  if (const auto wide = LikelyUtf16(bytes)) return *wide;
  if (IsUtf8(bytes)) return Encoding::utf8;
  return SpeaksForLatin2(bytes) ? Encoding::latin2 : Encoding::windows1252;
}

std::string ToUtf8(std::string bytes, Encoding encoding, const std::string& name) {
  if (const auto marked = MarkedEncoding(bytes)) {
    if (marked != encoding) {
      throw Failed(name, "begins with the byte order mark of " + std::string(NameOf(*marked)) +
                             "; leave --encoding out");
    }
    bytes.erase(0, EntryOf(encoding).mark.size());
  }
  switch (encoding) {
    case Encoding::utf8:
      if (!IsUtf8(bytes)) throw NoUtf8(bytes, name);
      return bytes;
    case Encoding::utf16le:
    case Encoding::utf16be:
      return FromUtf16(bytes, encoding, name);
    default:
      return FromOneByte(bytes, encoding);
  }
}

}  // namespace vexel
