#include "kit/tables/csv_text.h"

#include <vexel/platform/string.h>

#include "kit/tables/blanks.h"
#include "kit/tables/separator.h"

namespace vexel {

namespace {

bool NeedsQuotes(std::string_view cell) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  return cell.find_first_of(",;\t|\"\r\n") != std::string_view::npos || BlankAtStart(cell) != 0 ||
         BlankAtEnd(cell) != 0 || cell.starts_with(kByteOrderMark) ||
         EqualNoCase(cell.substr(0, kSeparatorLine.size()), kSeparatorLine);
}

}  // namespace

void AppendCsv(std::string& to, std::string_view cell) {
  if (!NeedsQuotes(cell)) {
    to += cell;
    return;
  }
  to += '"';
  for (const char c : cell) {
    if (c == '"') to += '"';
    to += c;
  }
  to += '"';
}

}  // namespace vexel
