// A stream of little-endian values without alignment, over a file of the caller's.

#ifndef VEXEL_PLATFORM_ARCHIVE_H_
#define VEXEL_PLATFORM_ARCHIVE_H_

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <type_traits>

#include "platform/export.h"
#include "platform/file.h"
#include "platform/string.h"

// Reads or writes, never both. The file stays the caller's and must outlive the archive. Reading
// past the end throws CArchiveException with the cause endOfFile; a failure of writing shows when
// the file is closed.
//
// A counted string is a length and that many bytes: the length in one byte below 255; else the
// byte 0xFF and 16 bits below 0xFFFE; else 0xFF, 0xFFFF and 32 bits. The reader also takes the mark
// 0xFF 0xFE 0xFF before a length of the same form, with 16-bit characters behind it.
class VEXEL_API CArchive {
 public:
  enum Mode { store = 0, load = 1 };

  CArchive(CFile* file, Mode mode, int bufferSize = 4096);
  CArchive(const CArchive&) = delete;
  CArchive& operator=(const CArchive&) = delete;
  ~CArchive() { Close(); }

  bool IsLoading() const noexcept { return mode_ == load; }
  bool IsStoring() const noexcept { return mode_ == store; }

  // Hands what is buffered to the file. Nothing may be stored afterwards.
  void Close() noexcept;

  // Loading: bytes of the file behind what has been read, as far as its length is known.
  std::int64_t GetBytesLeft() const noexcept {
    return file_->GetLength() - file_->GetPosition() + static_cast<std::int64_t>(filled_ - next_);
  }

  // Loading: whether the next `count` bytes have come from the file already, and cannot fail.
  bool Holds(std::size_t count) const noexcept { return count <= filled_ - next_; }

  // Reads up to `count` bytes; fewer only at the end of the file.
  std::size_t Read(void* bytes, std::size_t count);
  void Write(const void* bytes, std::size_t count);

  // Reads exactly `count` bytes or throws.
  void ReadExactly(void* bytes, std::size_t count) {
    if (Holds(count)) [[likely]] {
      std::memcpy(bytes, buffer_.get() + next_, count);
      next_ += count;
    } else if (Read(bytes, count) != count) {
      ThrowEndOfFile();
    }
  }

  template <typename T>
  requires std::is_arithmetic_v<T> CArchive& operator<<(T value) {
    const auto bytes = LittleEndian(value);
    Write(bytes.data(), bytes.size());
    return *this;
  }
  template <typename T>
  requires std::is_arithmetic_v<T> CArchive& operator>>(T& value) {
    std::array<std::byte, sizeof(T)> bytes;
    ReadExactly(bytes.data(), sizeof(T));
    value = FromLittleEndian<T>(bytes);
    return *this;
  }
  // Fixed-size values one after the other, as many as the array holds.
  template <typename T, std::size_t Count>
  CArchive& operator>>(std::array<T, Count>& values) {
    ReadExactly(values.data(), sizeof(values));
    if constexpr (std::endian::native == std::endian::big) {
      for (T& value : values)
        value = FromLittleEndian<T>(std::bit_cast<std::array<std::byte, sizeof(T)>>(value));
    }
    return *this;
  }
  CArchive& operator<<(const CString& text);
  CArchive& operator>>(CString& text);

 private:
  template <typename T>
  static std::array<std::byte, sizeof(T)> LittleEndian(T value) {
    auto bytes = std::bit_cast<std::array<std::byte, sizeof(T)>>(value);
    if constexpr (std::endian::native == std::endian::big) std::reverse(bytes.begin(), bytes.end());
    return bytes;
  }
  template <typename T>
  static T FromLittleEndian(std::array<std::byte, sizeof(T)> bytes) {
    if constexpr (std::endian::native == std::endian::big) std::reverse(bytes.begin(), bytes.end());
    return std::bit_cast<T>(bytes);
  }

  [[noreturn]] static void ThrowEndOfFile();
  void StoreLength(std::size_t length);
  std::uint32_t LoadLength(bool& wide);
  void LoadBytes(std::string& text, std::size_t length);

  CFile* file_;
  Mode mode_;
  std::size_t size_;
  std::size_t next_ = 0;    // loading: the next unread byte of the buffer
  std::size_t filled_ = 0;  // bytes in the buffer
  std::unique_ptr<char[]> buffer_;
};

#endif  // VEXEL_PLATFORM_ARCHIVE_H_
