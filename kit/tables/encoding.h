// The encodings in which tables of statistics come.

#ifndef VEXEL_KIT_TABLES_ENCODING_H_
#define VEXEL_KIT_TABLES_ENCODING_H_

#include <vexel/platform/export.h>

#include <optional>
#include <string>
#include <string_view>

namespace vexel {

enum class Encoding { utf8, utf16le, utf16be, windows1252, latin1, latin2 };

// "utf-8", "utf-16le", "windows-1252", "iso-8859-2" ...
VEXEL_API std::string_view NameOf(Encoding encoding) noexcept;

// The encoding of a name, in any letter case; another name throws an Error of kind request that
// lists them.
VEXEL_API Encoding EncodingOf(std::string_view name);

// What a byte order mark at the beginning says; nothing without one.
VEXEL_API std::optional<Encoding> MarkedEncoding(std::string_view bytes) noexcept;

// The mark, or UTF-8 where the bytes are valid, and otherwise a guess: UTF-16 where every other
// byte of the beginning is zero, windows-1252, or iso-8859-2 where letters stand as they do in
// Czech, Polish or Hungarian words and not as in western ones.
VEXEL_API Encoding LikelyEncoding(std::string_view bytes) noexcept;

// The bytes as UTF-8 without a byte order mark. What is no text in that encoding throws an Error of
// kind failure that begins with `name`.
VEXEL_API std::string ToUtf8(std::string bytes, Encoding encoding, const std::string& name);

}  // namespace vexel

#endif  // VEXEL_KIT_TABLES_ENCODING_H_
