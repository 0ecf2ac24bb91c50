#include "description.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string_view>

namespace vexel::manuals {

namespace {

using Json = nlohmann::json;

Json AnswerOf(const std::string& program, const std::string& arguments) {
  const std::string command = "'" + program + "' " + arguments;
  const std::unique_ptr<FILE, int (*)(FILE*)> pipe(::popen(command.c_str(), "r"), ::pclose);
  if (pipe == nullptr) throw std::runtime_error(command + " cannot be run");
  std::string text;
  std::array<char, 4096> part;
  for (std::size_t count = 0; (count = std::fread(part.data(), 1, part.size(), pipe.get())) > 0;) {
    text.append(part.data(), count);
  }
  Json answer = Json::parse(text, nullptr, false);
  if (answer.is_discarded()) throw std::runtime_error(command + " does not describe itself");
  return answer;
}

Option ReadOption(const Json& json) {
  Option option{.place = json.at("place"),
                .form = json.at("form"),
                .help = json.at("help"),
                .group = json.at("group"),
                .words = json.at("words").get<std::vector<std::string>>()};
  for (const std::string name : json.at("names")) option.names.push_back('-' + name);
  for (const std::string name : json.at("longNames")) option.names.push_back("--" + name);
  return option;
}

Command ReadCommand(const Json& entry, const Json& json) {
  Command command{.name = entry.at("name"),
                  .brief = entry.at("summary"),
                  .call = json.at("call"),
                  .summary = json.at("summary"),
                  .example = json.at("example")};
  for (const Json& option : json.at("options")) {
    command.options.push_back(ReadOption(option));
    if (command.options.back().help.empty()) {
      throw std::runtime_error(command.call + " has an option without a help text");
    }
  }
  return command;
}

}  // namespace

std::vector<Command> DescribeCommands(const std::string& folder) {
  const std::string vexel = folder + "/vexel";
  std::vector<Command> commands;
  for (const Json& entry : AnswerOf(vexel, "--describe")) {
    const std::string name = entry.at("name");
    std::string other = vexel;
    other.append("-").append(name);
    if (!entry.at("isOther")) {
      commands.push_back(ReadCommand(entry, AnswerOf(vexel, name + " --describe")));
    } else if (std::filesystem::exists(other)) {
      commands.push_back(ReadCommand(entry, AnswerOf(other, "--describe")));
    }
  }
  return commands;
}

Offer OfferFor(const Option& option) {
  if (!option.words.empty()) return Offer::words;
  const bool isFile = option.form == "FILE" || option.form == "FOLDER" || !option.place.empty();
  return isFile ? Offer::files : Offer::nothing;
}

}  // namespace vexel::manuals
