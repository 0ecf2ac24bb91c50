#include "kit/view/columns.h"

#include <vexel/brindle/text.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "kit/request/error.h"
#include "kit/request/hints.h"
#include "kit/request/values.h"

namespace vexel {

namespace {

std::vector<std::string_view> VariableNames(const CVELAData& data,
                                            std::vector<CVELAString>& storage) {
  for (int i = 0; i < data.GetNumVars(); ++i) storage.push_back(data.GetVarName(i));
  std::vector<std::string_view> names;
  names.reserve(storage.size());
  for (const CVELAString& name : storage) names.push_back(name.View());
  return names;
}

}  // namespace

int ColumnOf(const CVELAData& data, const std::string& option, std::string_view text) {
  std::vector<CVELAString> storage;
  const std::vector<std::string_view> names = VariableNames(data, storage);
  const auto exact = std::find(names.begin(), names.end(), text);
  if (exact != names.end()) {
    if (std::find(exact + 1, names.end(), text) == names.end()) {
      return static_cast<int>(exact - names.begin());
    }
    throw WrongRequest(option + ": there are several variables " + Quoted(text) +
                       "; give the number of one");
  }

  const auto same = [=](std::string_view name) { return EqualNoCase(name, text); };
  const auto close = std::find_if(names.begin(), names.end(), same);
  if (close != names.end() && std::find_if(close + 1, names.end(), same) == names.end()) {
    return static_cast<int>(close - names.begin());
  }
  const std::optional<int> number = ParseInt(text);
  if (number && *number >= 1 && *number <= data.GetNumVars()) return *number - 1;

  std::string problem = option + ": there is no variable \"" + std::string(text) + '"';
  const std::string hint = Hint(text, names);
  throw WrongRequest(problem + (hint.empty() ? "; there are " + Joined(names) : hint));
}

}  // namespace vexel
