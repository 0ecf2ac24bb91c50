#include "arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <utility>
#include <vector>

#include "kit/files/files.h"
#include "kit/request/error.h"
#include "kit/request/hints.h"
#include "kit/request/json_request.h"
#include "kit/request/json_text.h"
#include "kit/request/parameters.h"

namespace vexel::cli {

namespace {

constexpr std::size_t kNamesWidth = 34;

CLI::callback_t Callback(const std::string& names, const Arguments::Reader& reader) {
  return [=](const std::vector<std::string>& values) {
    try {
      std::for_each(values.begin(), values.end(), reader);
    } catch (const Error& wrong) {
      if (wrong.GetKind() != Error::Kind::request) throw;
      throw WrongRequest(names.substr(names.rfind(',') + 1) + ": " + wrong.what());
    }
    return true;
  };
}

std::string_view Heading(ParameterGroup group) {
  switch (group) {
    case ParameterGroup::what:
      return "What to show";
    case ParameterGroup::classes:
      return "Groups and colours";
    case ParameterGroup::publication:
      return "The publication page (SVG, PDF, PNG)";
    default:
      return "The page";
  }
}

}  // namespace

struct Arguments::Parser {
  Parser(const std::string& ownCall, const std::string& ownSummary, const std::string& ownExample)
      : app(ownSummary, ownCall), call(ownCall), summary(ownSummary), example(ownExample) {}

  CLI::App app;
  std::string call;
  std::string summary;
  std::string example;
  std::vector<std::pair<const CLI::Option*, std::vector<std::string_view>>> words;
  std::string group = "Options";
  std::vector<std::pair<std::string, std::string*>> positionals;
  std::vector<std::pair<std::string, const std::vector<std::string>*>> lists;
};

Arguments::Arguments(const std::string& call, const std::string& summary,
                     const std::string& example)
    : parser_(std::make_unique<Parser>(call, summary, example)) {
  CLI::App& app = parser_->app;
  app.set_help_flag("-h,--help", "Print this help and exit");
  app.footer("Example:\n  " + example);
  app.get_formatter()->column_width(kNamesWidth);
  app.get_formatter()->label("Positionals", "Arguments");
  // Unknown options are told by CheckUnknown, which has a guess for each.
  app.allow_extras();
}

Arguments::~Arguments() = default;

void Arguments::Positional(const std::string& name, const std::string& help, std::string& value) {
  parser_->app.add_option(name, value, help)->type_name("");
  parser_->positionals.emplace_back(name, &value);
}

void Arguments::Positionals(const std::string& name, const std::string& help,
                            std::vector<std::string>& values, bool needed) {
  parser_->app.add_option(name, values, help)->type_name("");
  if (needed) parser_->lists.emplace_back(name, &values);
}

void Arguments::Option(const std::string& names, const std::string& kind, const std::string& help,
                       std::string& value) {
  Option(names, kind, help, [&value](std::string_view text) { value = text; });
}

void Arguments::Option(const std::string& names, const std::string& kind, const std::string& help,
                       const Reader& reader) {
  parser_->app.add_option(names, Callback(names, reader), help)
      ->type_name(kind)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast)
      ->group(parser_->group);
}

void Arguments::Repeated(const std::string& names, const std::string& kind, const std::string& help,
                         const Reader& reader) {
  parser_->app.add_option(names, Callback(names, reader), help + " (may be repeated)")
      ->type_name(kind)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
      ->group(parser_->group);
}

void Arguments::Flag(const std::string& names, const std::string& help, bool& value) {
  parser_->app.add_flag(names, value, help)->group(parser_->group);
}

void Arguments::RequestOptions(Request& request) {
  request_ = &request;
  Positional("DATA", std::string(ParameterNamed("data").help), data_);
  Option(
      "--view", "FILE",
      "Take what follows, and DATA, from a file of JSON, as --save-view writes it; its paths count"
      " from the working folder",
      [&](std::string_view name) {
        viewFile_ = name;
        ReadJson(request, ReadSettings(viewFile_),
                 IsStandard(viewFile_) ? "standard input" : viewFile_);
      });
  for (const Parameter& parameter : AllParameters()) {
    if (parameter.group == ParameterGroup::source) continue;
    Group(std::string(Heading(parameter.group)));
    RequestOption(parameter, request);
  }
}

void Arguments::RequestOption(const Parameter& parameter, Request& request) {
  const std::string name = "--" + std::string(parameter.name);
  std::string help(parameter.help);
  if (parameter.words != nullptr) help += ": " + Joined(parameter.words());
  if (!parameter.standard.empty()) help += " [" + std::string(parameter.standard) + ']';
  const auto set = [&parameter, &request, name](const std::vector<std::string>& values) {
    const std::vector<std::string_view> views(values.begin(), values.end());
    if (IsRepeated(parameter.kind)) {
      SetParameter(request, parameter, views, name);
    } else {
      SetParameter(request, parameter, views.back(), name);
    }
    return true;
  };
  if (parameter.kind == ParameterKind::flag) {
    parser_->app
        .add_flag_callback(
            name, [=] { set({"1"}); }, help)
        ->group(parser_->group);
    return;
  }
  const bool isRepeated = IsRepeated(parameter.kind);
  const CLI::Option* const option =
      parser_->app
          .add_option(name, CLI::callback_t(set), help + (isRepeated ? " (may be repeated)" : ""))
          ->type_name(std::string(parameter.form))
          ->multi_option_policy(isRepeated ? CLI::MultiOptionPolicy::TakeAll
                                           : CLI::MultiOptionPolicy::TakeLast)
          ->group(parser_->group);
  if (parameter.words != nullptr) parser_->words.emplace_back(option, parameter.words());
}

void Arguments::Group(const std::string& heading) { parser_->group = heading; }

// What manual pages and completions are made of.
void Arguments::Describe() const {
  JsonWriter json;
  json.BeginObject();
  json.Member("call", parser_->call);
  json.Member("summary", parser_->summary);
  json.Member("example", parser_->example);
  json.Name("options");
  json.BeginArray();
  for (const CLI::Option* option : std::as_const(parser_->app).get_options()) {
    json.BeginObject();
    json.Member("names", option->get_snames());
    json.Member("longNames", option->get_lnames());
    json.Member("place", option->get_positional() ? option->get_name(true) : "");
    json.Member("form", option->get_items_expected_max() == 0 ? "" : option->get_type_name());
    json.Member("help", option->get_description());
    json.Member("group", option->get_group());
    const auto words = std::find_if(parser_->words.begin(), parser_->words.end(),
                                    [=](const auto& entry) { return entry.first == option; });
    json.Name("words");
    json.BeginArray();
    if (words != parser_->words.end()) {
      for (const std::string_view word : words->second) json.Value(word);
    }
    json.EndArray();
    json.EndObject();
  }
  json.EndArray();
  json.EndObject();
  std::puts(std::move(json).Take().c_str());
}

bool Arguments::Parse(int argc, const char* const* argv) {
  if (argc == 2 && std::string_view(argv[1]) == kDescribe) {
    Describe();
    return false;
  }
  CLI::App& app = parser_->app;
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp&) {
    std::fputs(app.help().c_str(), stdout);
    return false;
  } catch (const CLI::ParseError& error) {
    throw WrongRequest(error.what());
  }
  CheckUnknown();
  FindData();
  CheckPositionals();
  return true;
}

void Arguments::CheckUnknown() const {
  const std::vector<std::string> unknown = parser_->app.remaining();
  if (unknown.empty()) return;
  const auto isOption = [](const std::string& text) { return text.size() > 1 && text[0] == '-'; };
  const auto option = std::find_if(unknown.begin(), unknown.end(), isOption);
  if (option == unknown.end()) throw WrongRequest("unexpected argument \"" + unknown.front() + '"');

  const std::string name = option->substr(0, option->find('='));
  std::vector<std::string> names;
  for (const CLI::Option* known : std::as_const(parser_->app).get_options()) {
    for (const std::string& longName : known->get_lnames()) names.push_back("--" + longName);
  }
  const std::vector<std::string_view> views(names.begin(), names.end());
  throw WrongRequest("unknown option " + name + Hint(name, views));
}

// DATA counts for more than what a view says of it. Where the view has said it and an argument is
// missing, the first is no DATA.
void Arguments::FindData() {
  if (request_ == nullptr) return;
  const auto& positionals = parser_->positionals;
  if (!request_->data.empty() && positionals.size() == 2 && positionals.back().second->empty()) {
    positionals.back().second->swap(data_);
  }
  if (data_.empty()) data_ = request_->data;
  request_->data = data_;
}

void Arguments::CheckPositionals() const {
  for (const auto& [name, value] : parser_->positionals) {
    if (value->empty()) throw WrongRequest(name + " is missing");
  }
  for (const auto& [name, values] : parser_->lists) {
    if (values->empty()) throw WrongRequest(name + " is missing");
  }
}

}  // namespace vexel::cli
