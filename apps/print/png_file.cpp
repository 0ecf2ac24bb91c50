#include "png_file.h"

#include <png.h>

#include <algorithm>
#include <array>
#include <bit>
#include <csetjmp>
#include <cstring>
#include <new>
#include <optional>
#include <vector>

#include "kit/request/error.h"

namespace vexel::print {

namespace {

// As a file has it: red, green, blue, opacity, with the colours as they are without it.
using Rgba = std::array<png_byte, 4>;

Rgba RgbaOf(std::uint32_t pixel) {
  const std::uint32_t alpha = AlphaOf(pixel);
  const auto part = [=](unsigned shift) {
    const std::uint32_t premultiplied = (pixel >> shift) & 0xFFU;
    if (alpha == kOpaque || alpha == 0) return static_cast<png_byte>(premultiplied);
    const std::uint32_t whole = (premultiplied * kOpaque + alpha / 2) / alpha;
    return static_cast<png_byte>(std::min(whole, kOpaque));
  };
  return {part(16), part(8), part(0), static_cast<png_byte>(alpha)};
}

// The colours of a picture, where they are few enough for a palette.
class Palette {
 public:
  // The number of a pixel's colour; nothing when it would be one too many.
  std::optional<png_byte> NumberOf(std::uint32_t pixel) {
    std::size_t slot = (pixel * kSpread) >> (32 - kSlotBits);
    for (; slots_[slot] != 0; slot = (slot + 1) % slots_.size()) {
      const auto number = static_cast<std::size_t>(slots_[slot] - 1);
      if (pixels_[number] == pixel) return static_cast<png_byte>(number);
    }
    if (count_ == pixels_.size()) return std::nullopt;
    pixels_[count_] = pixel;
    slots_[slot] = static_cast<std::uint16_t>(++count_);
    return static_cast<png_byte>(count_ - 1);
  }

  std::size_t Count() const { return count_; }
  std::uint32_t At(std::size_t number) const { return pixels_[number]; }

 private:
  static constexpr std::uint32_t kSpread = 0x9E3779B1;  // the golden ratio, as in D. Knuth's hashes
  static constexpr unsigned kSlotBits = 10;

  std::array<std::uint32_t, 256> pixels_{};
  std::array<std::uint16_t, 1U << kSlotBits> slots_{};  // numbers and one more; 0 is free
  std::size_t count_ = 0;
};

std::optional<Palette> PaletteOf(const Pixels& picture) {
  Palette palette;
  std::uint32_t last = ~picture.data.front();
  for (const std::uint32_t pixel : picture.data) {
    if (pixel == last) continue;
    if (!palette.NumberOf(pixel)) return std::nullopt;
    last = pixel;
  }
  return palette;
}

// Writes one file. The library leaves its functions by a jump when something goes wrong, so nothing
// that needs to be destroyed is made where they are called.
class PngWriter {
 public:
  explicit PngWriter(const Pixels& picture) : picture_(picture), palette_(PaletteOf(picture)) {
    isOpaque_ = std::all_of(picture.data.begin(), picture.data.end(),
                            [](std::uint32_t pixel) { return AlphaOf(pixel) == kOpaque; });
    row_.resize(static_cast<std::size_t>(picture.width) * 4);
    png_ = png_create_write_struct(PNG_LIBPNG_VER_STRING, this, Fail, Warn);
    if (png_ == nullptr) throw std::bad_alloc();
    info_ = png_create_info_struct(png_);
  }
  PngWriter(const PngWriter&) = delete;
  PngWriter& operator=(const PngWriter&) = delete;
  ~PngWriter() { png_destroy_write_struct(&png_, &info_); }

  std::string Write() {
    if (info_ == nullptr) throw std::bad_alloc();
    if (setjmp(png_jmpbuf(png_)) == 0) {
      png_set_write_fn(png_, this, Append, nullptr);
      WriteHead();
      for (int y = 0; y < picture_.height; ++y) WriteRow(y);
      png_write_end(png_, nullptr);
      return std::move(bytes_);
    }
    if (lacksMemory_) throw std::bad_alloc();
    throw Failed(std::string("the picture cannot be packed: ") + message_.data());
  }

 private:
  static PngWriter& Of(void* writer) { return *static_cast<PngWriter*>(writer); }

  [[noreturn]] static void Fail(png_structp png, png_const_charp message) {
    PngWriter& writer = Of(png_get_error_ptr(png));
    std::strncpy(writer.message_.data(), message, writer.message_.size() - 1);
    writer.lacksMemory_ = writer.lacksMemory_ || std::strstr(message, "memory") != nullptr;
    png_longjmp(png, 1);
  }

  static void Warn(png_structp /*png*/, png_const_charp /*message*/) {}

  static void Append(png_structp png, png_bytep bytes, png_size_t count) {
    PngWriter& writer = Of(png_get_io_ptr(png));
    try {
      writer.bytes_.append(reinterpret_cast<const char*>(bytes), count);
      return;
    } catch (const std::bad_alloc&) {
      writer.lacksMemory_ = true;
    }
    png_error(png, "no memory");
  }

  void WriteHead() {
    const int type = palette_    ? PNG_COLOR_TYPE_PALETTE
                     : isOpaque_ ? PNG_COLOR_TYPE_RGB
                                 : PNG_COLOR_TYPE_RGB_ALPHA;
    png_set_IHDR(png_, info_, static_cast<png_uint_32>(picture_.width),
                 static_cast<png_uint_32>(picture_.height), BitDepth(), type, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (palette_) SetPalette();
    // Flat colours repeat: without a filter they take less room, and no more time, than with one;
    // and what the highest levels gain is a twentieth, for three times as long.
    constexpr int kLevel = 2;
    png_set_filter(png_, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
    png_set_compression_level(png_, kLevel);
    constexpr std::size_t kBufferBytes = 1 << 16;
    png_set_compression_buffer_size(png_, kBufferBytes);
    png_write_info(png_, info_);
    if (palette_) png_set_packing(png_);
  }

  int BitDepth() const {
    if (!palette_) return 8;
    const auto bits = std::bit_width(palette_->Count() - 1);
    return static_cast<int>(
        std::bit_ceil(std::max<std::size_t>(static_cast<std::size_t>(bits), 1)));
  }

  void SetPalette() {
    std::array<png_color, 256> colors;
    std::array<png_byte, 256> alphas;
    const std::size_t count = palette_->Count();
    for (std::size_t i = 0; i < count; ++i) {
      const auto [red, green, blue, alpha] = RgbaOf(palette_->At(i));
      colors[i] = {red, green, blue};
      alphas[i] = alpha;
    }
    png_set_PLTE(png_, info_, colors.data(), static_cast<int>(count));
    if (!isOpaque_) png_set_tRNS(png_, info_, alphas.data(), static_cast<int>(count), nullptr);
  }

  void WriteRow(int y) {
    const std::uint32_t* const pixels = picture_.Row(y);
    png_byte* to = row_.data();
    const auto* const end = pixels + picture_.width;
    if (palette_) {
      for (const auto* pixel = pixels; pixel != end; ++pixel) *to++ = *palette_->NumberOf(*pixel);
    } else if (isOpaque_) {
      for (const auto* pixel = pixels; pixel != end; ++pixel) {
        *to++ = static_cast<png_byte>(*pixel >> 16);
        *to++ = static_cast<png_byte>(*pixel >> 8);
        *to++ = static_cast<png_byte>(*pixel);
      }
    } else {
      for (const auto* pixel = pixels; pixel != end; ++pixel) {
        const Rgba parts = RgbaOf(*pixel);
        to = std::copy(parts.begin(), parts.end(), to);
      }
    }
    png_write_row(png_, row_.data());
  }

  const Pixels& picture_;
  std::optional<Palette> palette_;
  bool isOpaque_ = false;
  std::vector<png_byte> row_;
  std::string bytes_;
  bool lacksMemory_ = false;
  std::array<char, 128> message_{};
  png_structp png_ = nullptr;
  png_infop info_ = nullptr;
};

}  // namespace

std::string PngBytes(const Pixels& picture) { return PngWriter(picture).Write(); }

}  // namespace vexel::print
