// The arguments of one sub-command: what it takes, its help text, and reading them.

#ifndef VEXEL_APPS_VEXEL_ARGUMENTS_H_
#define VEXEL_APPS_VEXEL_ARGUMENTS_H_

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "kit/request/request.h"

namespace vexel {
struct Parameter;
}  // namespace vexel

namespace vexel::cli {

// For the build alone, which makes manual pages and completions of it: instead of any other
// argument it has a command describe itself as JSON.
inline constexpr std::string_view kDescribe = "--describe";

// Options may stand before, between and behind the other arguments; "--" ends them. Of an option
// that is given more than once the last counts, unless each is wanted. Everything declared here
// writes to variables of the caller's, which must outlive Parse.
class Arguments {
 public:
  // Takes the value of an option; an Error from it gets the option's name in front.
  using Reader = std::function<void(std::string_view text)>;

  // `call` is how one calls the sub-command: "vexel info".
  Arguments(const std::string& call, const std::string& summary, const std::string& example);
  Arguments(const Arguments&) = delete;
  Arguments& operator=(const Arguments&) = delete;
  ~Arguments();

  // An argument without a name of its own; all of them must be given, in this order.
  void Positional(const std::string& name, const std::string& help, std::string& value);

  // Arguments without a name, the last ones; at least one, unless none are `needed`.
  void Positionals(const std::string& name, const std::string& help,
                   std::vector<std::string>& values, bool needed = true);

  // An option with a value, its names as in "-o,--output". `kind` says in the help text what the
  // value looks like.
  void Option(const std::string& names, const std::string& kind, const std::string& help,
              std::string& value);
  void Option(const std::string& names, const std::string& kind, const std::string& help,
              const Reader& reader);

  // The same where each of several counts.
  void Repeated(const std::string& names, const std::string& kind, const std::string& help,
                const Reader& reader);
  void Flag(const std::string& names, const std::string& help, bool& value);

  // DATA and an option for every parameter of a page, and --view, which reads a request from a file
  // and gives way to the other options.
  void RequestOptions(Request& request);

  // The file of --view after Parse; empty when there is none.
  const std::string& ViewFile() const { return viewFile_; }

  // Options declared from here on stand under this heading in the help text.
  void Group(const std::string& heading);

  // Reads everything behind the name of the sub-command, which is argv[0]. False when help or a
  // description was asked for: it has been printed then. Throws an Error of kind request.
  bool Parse(int argc, const char* const* argv);

 private:
  struct Parser;

  void Describe() const;
  void RequestOption(const Parameter& parameter, Request& request);
  void CheckUnknown() const;
  void FindData();
  void CheckPositionals() const;

  std::unique_ptr<Parser> parser_;
  std::string viewFile_;
  Request* request_ = nullptr;
  std::string data_;
};

}  // namespace vexel::cli

#endif  // VEXEL_APPS_VEXEL_ARGUMENTS_H_
