// Pieces of JSON for texts too long to build a tree of.

#ifndef VEXEL_KIT_REQUEST_JSON_TEXT_H_
#define VEXEL_KIT_REQUEST_JSON_TEXT_H_

#include <vexel/brindle/areastruct.h>

#include <optional>
#include <string>
#include <string_view>

namespace vexel {

// Appends a string with its quotes. Bytes that are no UTF-8 become U+FFFD.
VEXEL_API void AppendJson(std::string& to, std::string_view text);

// Appends a number so that it reads back as the same double; null for nothing.
VEXEL_API void AppendJson(std::string& to, std::optional<double> number);

// Appends the codes of a key up to the deepest set one, as an array.
VEXEL_API void AppendJson(std::string& to, const CAreaStruct& key);

}  // namespace vexel

#endif  // VEXEL_KIT_REQUEST_JSON_TEXT_H_
