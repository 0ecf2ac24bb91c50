// Pieces of JSON for texts too long to build a tree of.

#ifndef VEXEL_APPS_VEXEL_JSON_TEXT_H_
#define VEXEL_APPS_VEXEL_JSON_TEXT_H_

#include <optional>
#include <string>
#include <string_view>

#include "brindle/areastruct.h"

namespace vexel::cli {

// Appends a string with its quotes. Bytes that are no UTF-8 become U+FFFD.
void AppendJson(std::string& to, std::string_view text);

// Appends a number so that it reads back as the same double; null for nothing.
void AppendJson(std::string& to, std::optional<double> number);

// Appends the codes of a key up to the deepest set one, as an array.
void AppendJson(std::string& to, const CAreaStruct& key);

// "#RRGGBB" for a colour of the form 0x00BBGGRR.
std::string ColorText(unsigned long color);

}  // namespace vexel::cli

#endif  // VEXEL_APPS_VEXEL_JSON_TEXT_H_
