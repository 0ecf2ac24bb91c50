// The table of everything a page can be asked for. Command-line options, URL queries and JSON all
// come from it, so that a new parameter is one entry.

#ifndef VEXEL_KIT_REQUEST_PARAMETERS_H_
#define VEXEL_KIT_REQUEST_PARAMETERS_H_

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "kit/request/request.h"

namespace vexel {

// What its values look like, where a form tells them apart: JSON has numbers, arrays and truth
// values, and of a list the commas stand between values.
enum class ParameterKind {
  flag,      // there or not
  text,      // one text
  choice,    // one of some words
  number,    // one number
  list,      // several values with commas between
  key,       // an area, "12,3"
  repeated,  // any number of areas, each given on its own
  texts,     // any number of texts, each given on its own
};

// Under which heading of a help text it stands.
enum class ParameterGroup { source, what, classes, page, publication };

struct Parameter {
  using Values = std::span<const std::string_view>;
  using Texts = std::vector<std::string>;

  std::string_view name;  // "groups": --groups 5, groups=5, "groups": 5
  ParameterKind kind;
  ParameterGroup group;
  std::string_view form;      // what a value looks like: "1..7"
  std::string_view help;      // a sentence without its full stop
  std::string_view standard;  // what holds without it; empty when `help` says so
  bool isFile;                // names a file, and so has no place in an address

  // Parameters that exclude each other are set in the order of the table, and of what was there
  // before the last one counts: a palette takes the place of colours, a way to find bounds that of
  // bounds.
  //
  // Sets the values, one for all kinds but those of several; a flag's is "1" or "0". Throws
  // an Error of kind request that does not name the parameter.
  void (*set)(Request& request, Values values);

  // The values by which `set` makes the same request; none for what holds without it.
  Texts (*get)(const Request& request);

  // The words of a choice, if they are few enough to be listed in a help text.
  std::vector<std::string_view> (*words)();
};

// Whether a parameter of that kind may have more than one value, and whether each of them is given
// on its own.
constexpr bool TakesSeveral(ParameterKind kind) {
  return kind == ParameterKind::list || kind == ParameterKind::repeated ||
         kind == ParameterKind::texts;
}
constexpr bool IsRepeated(ParameterKind kind) {
  return kind == ParameterKind::repeated || kind == ParameterKind::texts;
}

// All parameters, in the order of help texts and of the normal form of a query.
VEXEL_API std::span<const Parameter> AllParameters();

// Throws an Error with the nearest right name.
VEXEL_API const Parameter& ParameterNamed(std::string_view name);

// Sets a parameter from one text: values of a list are cut at commas, and a flag takes 1, 0, true,
// false, yes, no, on and off, and nothing for yes. Errors begin with `spelled`, the parameter as
// the user wrote it, and leave the request as it was.
VEXEL_API void SetParameter(Request& request, const Parameter& parameter, std::string_view text,
                            const std::string& spelled);

// The same from values that stand apart already.
VEXEL_API void SetParameter(Request& request, const Parameter& parameter,
                            std::span<const std::string_view> values, const std::string& spelled);

// True when both ask for the same, whichever way it was said.
VEXEL_API bool AskTheSame(const Request& a, const Request& b);

// The words for the calculations, by their numbers in the data set.
VEXEL_API std::span<const std::string_view> CalculationNames();

}  // namespace vexel

#endif  // VEXEL_KIT_REQUEST_PARAMETERS_H_
