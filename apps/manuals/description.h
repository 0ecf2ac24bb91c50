// What a command says of itself.

#ifndef VEXEL_APPS_MANUALS_DESCRIPTION_H_
#define VEXEL_APPS_MANUALS_DESCRIPTION_H_

#include <string>
#include <vector>

namespace vexel::manuals {

struct Option {
  std::vector<std::string>
      names{};        // with their dashes; none for an argument that stands for itself
  std::string place;  // the name of such an argument
  std::string form;   // what the value looks like; empty for a flag
  std::string help;
  std::string group;
  std::vector<std::string> words;  // all that the value may be, where they are few
};

struct Command {
  std::string name;   // "render"
  std::string brief;  // in a list of commands
  std::string call;   // "vexel render"
  std::string summary;
  std::string example;
  std::vector<Option> options{};
};

// Asks the programs in a folder. Commands whose program has not been built are left out. Throws
// std::runtime_error for one that does not describe itself, or that has an option without a help
// text.
std::vector<Command> DescribeCommands(const std::string& folder);

// What completions can offer for a value.
enum class Offer { nothing, files, words };
Offer OfferFor(const Option& option);

}  // namespace vexel::manuals

#endif  // VEXEL_APPS_MANUALS_DESCRIPTION_H_
