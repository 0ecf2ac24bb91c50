#include "platform/archive.h"

#include <algorithm>
#include <string>
#include <utility>

#include "platform/exceptions.h"

namespace {

constexpr std::size_t kByteLimit = 0xFF;                // lengths below stand in one byte
constexpr std::size_t kWordLimit = 0xFFFE;              // lengths below stand in 16 bits
constexpr std::uint16_t kWideMark = 0xFFFE;             // behind 0xFF: 16-bit characters follow
constexpr std::uint16_t kLongMark = 0xFFFF;             // behind 0xFF: a 32-bit length follows
constexpr std::size_t kChunk = std::size_t{64} * 1024;  // how far memory runs ahead of the bytes

// Appends a code point as UTF-8.
void AppendUtf8(std::string& text, char32_t code) {
  const auto tail = [](char32_t bits) { return static_cast<char>(0x80U | (bits & 0x3FU)); };
  if (code < 0x80) {
    text += static_cast<char>(code);
  } else if (code < 0x800) {
    text += {static_cast<char>(0xC0U | (code >> 6U)), tail(code)};
  } else if (code < 0x10000) {
    text += {static_cast<char>(0xE0U | (code >> 12U)), tail(code >> 6U), tail(code)};
  } else {
    text +=
        {static_cast<char>(0xF0U | (code >> 18U)), tail(code >> 12U), tail(code >> 6U), tail(code)};
  }
}

constexpr bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
constexpr bool IsLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

// 16-bit characters, low byte first, as UTF-8. A surrogate without its half becomes U+FFFD.
std::string Utf16ToUtf8(const std::string& bytes) {
  const auto unitAt = [&](std::size_t index) {
    const auto low = static_cast<unsigned char>(bytes[2 * index]);
    const auto high = static_cast<unsigned char>(bytes[2 * index + 1]);
    return static_cast<char16_t>(low | (high << 8U));
  };
  const std::size_t count = bytes.size() / 2;
  std::string text;
  text.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const char16_t unit = unitAt(i);
    if (IsHighSurrogate(unit) && i + 1 < count && IsLowSurrogate(unitAt(i + 1))) {
      const char32_t low = unitAt(++i);
      AppendUtf8(text, 0x10000U + ((char32_t{unit} - 0xD800U) << 10U) + (low - 0xDC00U));
    } else {
      AppendUtf8(text, IsHighSurrogate(unit) || IsLowSurrogate(unit) ? 0xFFFD : char32_t{unit});
    }
  }
  return text;
}

}  // namespace

CArchive::CArchive(CFile* file, Mode mode, int bufferSize)
    : file_(file),
      mode_(mode),
      size_(static_cast<std::size_t>(std::max(bufferSize, 16))),
      buffer_(std::make_unique_for_overwrite<char[]>(size_)) {}

void CArchive::Close() noexcept {
  if (IsStoring() && filled_ > 0) file_->Write(buffer_.get(), filled_);
  filled_ = next_ = 0;
}

std::size_t CArchive::Read(void* bytes, std::size_t count) {
  char* to = static_cast<char*>(bytes);
  const std::size_t buffered = std::min(count, filled_ - next_);
  std::memcpy(to, buffer_.get() + next_, buffered);
  next_ += buffered;
  std::size_t total = buffered;
  if (total == count) return total;
  // Large blocks go past the buffer; small ones fill it again first.
  if (count - total >= size_) return total + file_->Read(to + total, count - total);
  filled_ = file_->Read(buffer_.get(), size_);
  next_ = std::min(count - total, filled_);
  std::memcpy(to + total, buffer_.get(), next_);
  return total + next_;
}

void CArchive::ThrowEndOfFile() {
  throw CArchiveException(CArchiveException::endOfFile, "the stream ends early");
}

void CArchive::Write(const void* bytes, std::size_t count) {
  if (filled_ + count > size_) {
    file_->Write(buffer_.get(), filled_);
    filled_ = 0;
  }
  if (count >= size_) {
    file_->Write(bytes, count);
  } else {
    std::memcpy(buffer_.get() + filled_, bytes, count);
    filled_ += count;
  }
}

void CArchive::StoreLength(std::size_t length) {
  if (length < kByteLimit) {
    *this << static_cast<std::uint8_t>(length);
  } else if (length < kWordLimit) {
    *this << std::uint8_t{0xFF} << static_cast<std::uint16_t>(length);
  } else {
    *this << std::uint8_t{0xFF} << kLongMark << static_cast<std::uint32_t>(length);
  }
}

std::uint32_t CArchive::LoadLength(bool& wide) {
  wide = false;
  for (;;) {
    std::uint8_t byte = 0;
    *this >> byte;
    if (byte < kByteLimit) return byte;
    std::uint16_t word = 0;
    *this >> word;
    if (word == kLongMark) {
      std::uint32_t length = 0;
      *this >> length;
      return length;
    }
    if (word != kWideMark || wide) return word;
    wide = true;
  }
}

void CArchive::LoadBytes(std::string& text, std::size_t length) {
  text.clear();
  while (text.size() < length) {
    const std::size_t before = text.size();
    text.resize(before + std::min(kChunk, length - before));
    ReadExactly(text.data() + before, text.size() - before);
  }
}

CArchive& CArchive::operator<<(const CString& text) {
  StoreLength(text.View().size());
  Write(text.GetString(), text.View().size());
  return *this;
}

CArchive& CArchive::operator>>(CString& text) {
  bool wide = false;
  const std::size_t length = LoadLength(wide);
  if (!wide && length <= filled_ - next_) {
    text.Assign({buffer_.get() + next_, length});
    next_ += length;
    return *this;
  }
  std::string bytes;
  LoadBytes(bytes, wide ? 2 * length : length);
  text = CString(wide ? Utf16ToUtf8(bytes) : std::move(bytes));
  return *this;
}
