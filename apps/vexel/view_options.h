// What a page shall show, as the command line says it.

#ifndef VEXEL_APPS_VEXEL_VIEW_OPTIONS_H_
#define VEXEL_APPS_VEXEL_VIEW_OPTIONS_H_

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "arguments.h"
#include "brindle/areastruct.h"
#include "platform/profile.h"

namespace vexel::cli {

struct ViewOptions {
  std::string data;
  std::string map;  // empty: the one that the data file names
  int width = 800;
  int height = 600;
  std::string variable;  // empty: the first
  std::string secondVariable;
  std::optional<int> calculation;
  std::optional<int> groups;
  std::optional<int> intervals;
  std::vector<double> bounds;
  int palette = 1;
  bool reverse = false;
  std::optional<int> level;
  std::optional<CAreaStruct> zoom;
  std::vector<CAreaStruct> outlines;
  std::vector<CAreaStruct> boxes;
  std::vector<std::string> groupNames;
  bool noTitle = false;
  bool noLegend = false;
  bool quiet = false;
  std::optional<NumberSeparators> separators;
};

// Declares the data file and all of these.
void AddViewOptions(Arguments& arguments, ViewOptions& options);

// Checks what only shows when all options are known, and settles `groups` and `intervals`. Throws
// UsageError.
void Settle(ViewOptions& options);

// The words for the calculations, by their numbers in the data set.
std::span<const std::string_view> CalculationNames();

// "12,3", throwing UsageError for what is no key; and the way back, with any text between codes.
CAreaStruct ParseKey(std::string_view text);
std::string KeyText(const CAreaStruct& key, std::string_view between = ",");

// The whole text as a number; nothing when it is none.
std::optional<int> ParseInt(std::string_view text);

// The text cut at each mark.
std::vector<std::string_view> Split(std::string_view text, char mark);

}  // namespace vexel::cli

#endif  // VEXEL_APPS_VEXEL_VIEW_OPTIONS_H_
