// A request as the query of an address: "var=Births&groups=4&palette=viridis".

#ifndef VEXEL_KIT_REQUEST_QUERY_H_
#define VEXEL_KIT_REQUEST_QUERY_H_

#include <string>
#include <string_view>
#include <vector>

#include "kit/request/request.h"

namespace vexel {

// The normal form: parameters in the order of the table, what holds anyway left out, numbers in
// their shortest form, everything but letters, digits and "-._~" in UTF-8 percent-encoded, commas
// only between the values of a list. Requests that ask for the same give the same text. Files have
// no place in an address and are left out.
VEXEL_API std::string QueryText(const Request& request);

// Sets what a query says; a "?" in front, empty parts and "+" for a blank are taken. Of a parameter
// that comes more than once the last counts, unless it may be repeated. A name or a value that is
// wrong throws an Error of kind request; with `problems` it is put there and passed over instead,
// so that a page can be shown all the same.
VEXEL_API void ReadQuery(Request& request, std::string_view query,
                         std::vector<std::string>* problems = nullptr);

// Percent-encoding of all but letters, digits, "-._~" and the characters of `kept`, and back;
// decoding takes a "%" that begins no code as it is.
VEXEL_API std::string PercentEncoded(std::string_view text, std::string_view kept = "");
VEXEL_API std::string PercentDecoded(std::string_view text);

}  // namespace vexel

#endif  // VEXEL_KIT_REQUEST_QUERY_H_
