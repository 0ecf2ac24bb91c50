#include "apps/serve/answer.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <utility>

namespace vexel::serve {

namespace {

constexpr std::array kReasons{
    std::pair{Status::ok, "OK"},
    std::pair{Status::seeOther, "See Other"},
    std::pair{Status::notModified, "Not Modified"},
    std::pair{Status::badRequest, "Bad Request"},
    std::pair{Status::forbidden, "Forbidden"},
    std::pair{Status::notFound, "Not Found"},
    std::pair{Status::methodNotAllowed, "Method Not Allowed"},
    std::pair{Status::bodyTooLarge, "Payload Too Large"},
    std::pair{Status::targetTooLong, "URI Too Long"},
    std::pair{Status::headTooLarge, "Request Header Fields Too Large"},
    std::pair{Status::failed, "Internal Server Error"},
    std::pair{Status::notInstalled, "Not Implemented"},
    std::pair{Status::busy, "Service Unavailable"},
    std::pair{Status::wrongVersion, "HTTP Version Not Supported"},
};

constexpr std::size_t kLeastToPack = 512;

bool IsText(std::string_view type) {
  constexpr std::array<std::string_view, 4> kTexts{"text/", "application/json", "image/svg+xml",
                                                   "application/javascript"};
  return std::any_of(kTexts.begin(), kTexts.end(),
                     [=](std::string_view text) { return type.starts_with(text); });
}

}  // namespace

// FNV-1a in two lanes, so that different bodies meet by chance no more than they do by one of
// 128 bits.
std::string TagOf(std::string_view body) {
  constexpr std::uint64_t kPrime = 0x100000001B3;
  constexpr int kHex = 16;
  std::uint64_t first = 0xCBF29CE484222325;
  std::uint64_t second = first ^ body.size();
  for (const char c : body) {
    const auto byte = static_cast<unsigned char>(c);
    first = (first ^ byte) * kPrime;
    second = (second + byte) * kPrime ^ (second >> 29U);
  }
  std::array<char, std::size_t{2} * kHex> digits;
  char* end = std::to_chars(digits.data(), digits.data() + kHex, first, kHex).ptr;
  end = std::to_chars(end, end + kHex, second, kHex).ptr;
  return {digits.data(), end};
}

std::string_view ReasonOf(Status status) {
  const auto* found = std::find_if(kReasons.begin(), kReasons.end(),
                                   [=](const auto& each) { return each.first == status; });
  return found == kReasons.end() ? "" : found->second;
}

void Finish(Answer& answer) {
  if (answer.lasting == Lasting::never) return;
  answer.tag = TagOf(answer.body);
  if (answer.body.size() < kLeastToPack || !IsText(answer.type)) return;
  answer.zipped = Gzipped(answer.body);
  if (answer.zipped.size() >= answer.body.size()) answer.zipped.clear();
}

std::string Gzipped(std::string_view text) {
  constexpr int kLevel = 5;        // beyond it time grows faster than the text shrinks
  constexpr int kGzip = 15 + 16;   // the largest window, with gzip's frame
  constexpr int kUsualMemory = 8;  // of zlib's 1 to 9
  z_stream stream{};
  if (deflateInit2(&stream, kLevel, Z_DEFLATED, kGzip, kUsualMemory, Z_DEFAULT_STRATEGY) != Z_OK) {
    return {};
  }
  std::string packed(deflateBound(&stream, static_cast<uLong>(text.size())), '\0');
  stream.next_in = reinterpret_cast<const Bytef*>(text.data());
  stream.avail_in = static_cast<uInt>(text.size());
  stream.next_out = reinterpret_cast<Bytef*>(packed.data());
  stream.avail_out = static_cast<uInt>(packed.size());
  const bool isWhole = deflate(&stream, Z_FINISH) == Z_STREAM_END;
  packed.resize(isWhole ? stream.total_out : 0);
  packed.shrink_to_fit();
  deflateEnd(&stream);
  return packed;
}

}  // namespace vexel::serve
