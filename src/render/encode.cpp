// The compression of a GIF: a string of pixels that has been met before is written as one code.
// Each string is one met before and one more pixel, so that pairs of a code and a pixel tell them
// all.

#include "render/encode.h"

#include <gd.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace vexel {

namespace {

constexpr int kMostCodeBits = 12;
constexpr int kMostCodes = 1 << kMostCodeBits;

// Codes of growing width, packed from the lowest bit on into blocks that begin with their length.
class CodeWriter {
 public:
  CodeWriter(std::vector<unsigned char>& bytes, int firstWidth)
      : bytes_(bytes), firstWidth_(firstWidth) {
    BeginBlock();
    ResetWidth();
  }

  // `nextCode` is the code that the next new string gets: the width follows it.
  void Put(int code, int nextCode) {
    PutBits(code);
    if (nextCode <= mostOfWidth_) return;
    ++width_;
    mostOfWidth_ = width_ == kMostCodeBits ? kMostCodes : (1 << width_) - 1;
  }

  // The code that says: all strings are forgotten.
  void PutClear(int code) {
    PutBits(code);
    ResetWidth();
  }

  void Finish() {
    if (held_ > 0) PutByte();
    if (BlockLength() == 0) {
      bytes_.pop_back();
    } else {
      EndBlock();
    }
  }

 private:
  static constexpr std::size_t kBlockLength = 254;

  void ResetWidth() {
    width_ = firstWidth_;
    mostOfWidth_ = (1 << width_) - 1;
  }

  void PutBits(int code) {
    bits_ |= static_cast<std::uint32_t>(code) << held_;
    for (held_ += width_; held_ >= 8; held_ -= 8) PutByte();
  }

  void PutByte() {
    bytes_.push_back(static_cast<unsigned char>(bits_));
    bits_ >>= 8;
    if (BlockLength() == kBlockLength) {
      EndBlock();
      BeginBlock();
    }
  }

  std::size_t BlockLength() const { return bytes_.size() - block_ - 1; }
  void BeginBlock() {
    block_ = bytes_.size();
    bytes_.push_back(0);
  }
  void EndBlock() { bytes_[block_] = static_cast<unsigned char>(BlockLength()); }

  std::vector<unsigned char>& bytes_;
  int firstWidth_;
  int width_ = 0;
  int mostOfWidth_ = 0;
  std::uint32_t bits_ = 0;
  int held_ = 0;
  std::size_t block_ = 0;  // where the block at work begins
};

// The strings met, by code and pixel.
//
// gd keeps the pairs in a hash table and takes the pair of twice 0 for an empty place when it looks
// past it for another: now and then it forgets that pair. Since its bytes are to be matched, so
// must this one, which the table `places_` serves. Looking up goes by `codes_` alone.
class Strings {
 public:
  explicit Strings(int pixelBits)
      : pixelBits_(pixelBits), codes_(std::size_t{kMostCodes} << pixelBits) {
    places_.fill(kEmpty);
  }

  // Goes on from the string of `code` as long as there is a string for it and the next pixel.
  // Returns the first pixel that leads to none, or `end`, and leaves the code of what it has
  // passed.
  const unsigned char* Follow(const unsigned char* pixel, const unsigned char* end,
                              int& code) const {
    const std::uint16_t* const codes = codes_.data();
    const int shift = pixelBits_;
    auto current = static_cast<std::size_t>(code);
    for (; pixel != end; ++pixel) {
      const std::size_t longer = codes[current << shift | *pixel];
      if (longer == 0) break;
      current = longer;
    }
    code = static_cast<int>(current);
    return pixel;
  }

  void Add(int code, int pixel, int newCode) {
    const std::int32_t pair = (pixel << kMostCodeBits) + code;
    std::int32_t& place = places_[PlaceFor(code, pixel)];
    if (place == 0) codes_[0] = 0;
    place = pair;
    const std::size_t index = IndexOf(code, pixel);
    codes_[index] = static_cast<std::uint16_t>(newCode);
    used_[numUsed_++] = static_cast<std::uint32_t>(index);
  }

  void Clear() {
    places_.fill(kEmpty);
    for (; numUsed_ > 0; --numUsed_) codes_[used_[numUsed_ - 1]] = 0;
  }

 private:
  static constexpr int kPlaces = 5003;
  static constexpr int kPixelShift = 4;
  static constexpr std::int32_t kEmpty = -1;

  std::size_t IndexOf(int code, int pixel) const {
    return static_cast<std::size_t>(code) << pixelBits_ | static_cast<std::size_t>(pixel);
  }

  std::size_t PlaceFor(int code, int pixel) const {
    int place = (pixel << kPixelShift) ^ code;
    if (At(place) == kEmpty) return static_cast<std::size_t>(place);
    const int step = place == 0 ? 1 : kPlaces - place;
    do {
      place -= step;
      if (place < 0) place += kPlaces;
    } while (At(place) > 0);
    return static_cast<std::size_t>(place);
  }
  std::int32_t At(int place) const { return places_[static_cast<std::size_t>(place)]; }

  int pixelBits_;
  std::vector<std::uint16_t> codes_;
  std::array<std::int32_t, kPlaces> places_;
  std::array<std::uint32_t, kMostCodes> used_;
  std::size_t numUsed_ = 0;
};

void PutPixels(const gdImageStruct& image, int pixelBits, int codeBits,
               std::vector<unsigned char>& bytes) {
  const int clear = 1 << codeBits;
  const int end = clear + 1;
  int nextCode = clear + 2;
  Strings strings(pixelBits);
  CodeWriter writer(bytes, codeBits + 1);
  writer.PutClear(clear);
  const auto addAndRestart = [&](int code, int pixel) {
    writer.Put(code, nextCode);
    if (nextCode < kMostCodes) {
      strings.Add(code, pixel, nextCode++);
    } else {
      strings.Clear();
      nextCode = clear + 2;
      writer.PutClear(clear);
    }
    return pixel;
  };
  int code = image.pixels[0][0];
  for (int y = 0; y < image.sy; ++y) {
    const unsigned char* pixel = image.pixels[y] + (y == 0 ? 1 : 0);
    const unsigned char* const rowEnd = image.pixels[y] + image.sx;
    for (;;) {
      pixel = strings.Follow(pixel, rowEnd, code);
      if (pixel == rowEnd) break;
      code = addAndRestart(code, *pixel++);
    }
  }
  writer.Put(code, nextCode);
  writer.Put(end, nextCode);
  writer.Finish();
}

void PutNumber(int number, std::vector<unsigned char>& bytes) {
  bytes.push_back(static_cast<unsigned char>(number & 0xFF));
  bytes.push_back(static_cast<unsigned char>(number >> 8));
}

}  // namespace

std::vector<unsigned char> EncodeGif(const gdImageStruct& image) {
  constexpr unsigned char kHasPalette = 0x80;
  const auto lastColor = static_cast<unsigned>(image.colorsTotal - 1);
  const int pixelBits = std::max(1, static_cast<int>(std::bit_width(lastColor)));
  std::vector<unsigned char> bytes{'G', 'I', 'F', '8', '7', 'a'};
  PutNumber(image.sx, bytes);
  PutNumber(image.sy, bytes);
  const int depth = pixelBits - 1;
  bytes.push_back(static_cast<unsigned char>(kHasPalette | depth << 4 | depth));
  bytes.insert(bytes.end(), {0, 0});  // background colour, shape of a pixel
  for (int i = 0; i < 1 << pixelBits; ++i) {
    for (const int part : {image.red[i], image.green[i], image.blue[i]}) {
      bytes.push_back(static_cast<unsigned char>(part));
    }
  }
  bytes.push_back(',');
  bytes.insert(bytes.end(), 4, 0);  // at the corner
  PutNumber(image.sx, bytes);
  PutNumber(image.sy, bytes);
  bytes.push_back(0);
  const int codeBits = std::max(2, pixelBits);
  bytes.push_back(static_cast<unsigned char>(codeBits));
  PutPixels(image, pixelBits, codeBits, bytes);
  bytes.insert(bytes.end(), {0, ';'});
  return bytes;
}

}  // namespace vexel
