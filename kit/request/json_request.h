// A request as JSON: {"data": "counties.mdf", "var": "Births", "groups": 4, "zoom": [12, 3]}.

#ifndef VEXEL_KIT_REQUEST_JSON_REQUEST_H_
#define VEXEL_KIT_REQUEST_JSON_REQUEST_H_

#include <string>
#include <string_view>

#include "kit/request/request.h"

namespace vexel {

// An object with a member for each parameter that says something, in the order of the table. Its
// lines after the first begin with `indent`; there is no line end behind it.
VEXEL_API std::string JsonText(const Request& request, std::string_view indent = "");

// Sets what the object in `text` says. Text is UTF-8; a byte order mark is skipped. Anything wrong
// throws an Error of kind failure that begins with `file` and the number of the line.
VEXEL_API void ReadJson(Request& request, std::string_view text, const std::string& file);

}  // namespace vexel

#endif  // VEXEL_KIT_REQUEST_JSON_REQUEST_H_
