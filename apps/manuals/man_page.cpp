#include "man_page.h"

#include <algorithm>

namespace vexel::manuals {

namespace {

// A text as it is: no dash becomes a hyphen, no dot or quote in front of a line a request.
std::string Plain(std::string_view text) {
  std::string plain;
  for (const char c : text) {
    const bool isFirst = plain.empty() || plain.back() == '\n';
    if (isFirst && (c == '.' || c == '\'')) plain += "\\&";
    if (c == '\\') {
      plain += "\\e";
    } else if (c == '-') {
      plain += "\\-";
    } else {
      plain += c;
    }
  }
  return plain;
}

std::string Bold(std::string_view text) { return "\\fB" + Plain(text) + "\\fR"; }
std::string Italic(std::string_view text) { return "\\fI" + Plain(text) + "\\fR"; }

std::string Upper(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  });
  return text;
}

std::string Head(const std::string& name, const std::string& brief, std::string_view version) {
  return ".TH " + Upper(name) + " 1 \"\" \"Vexel " + std::string(version) + "\" Vexel\n.SH NAME\n" +
         name + " \\- " + Plain(brief) + '\n';
}

std::string Synopsis(const Command& command) {
  std::string text = ".SH SYNOPSIS\n" + Bold(command.call) + " [" + Italic("OPTIONS") + ']';
  for (const Option& option : command.options) {
    if (!option.place.empty()) text += ' ' + Italic(option.place);
  }
  return text + '\n';
}

std::string Tag(const Option& option) {
  std::string tag = option.place.empty() ? "" : Italic(option.place);
  for (const std::string& name : option.names) tag += (tag.empty() ? "" : ", ") + Bold(name);
  return tag + (option.form.empty() ? "" : ' ' + Italic(option.form));
}

// Arguments without a name first, then each group under its heading.
std::string Options(const Command& command) {
  std::string text = ".SH OPTIONS\n";
  for (const Option& option : command.options) {
    if (!option.place.empty()) text += ".TP\n" + Tag(option) + '\n' + Plain(option.help) + '\n';
  }
  std::string group;
  for (const Option& option : command.options) {
    if (!option.place.empty()) continue;
    if (option.group != group) text += ".SS " + Plain(option.group) + '\n';
    group = option.group;
    text += ".TP\n" + Tag(option) + '\n' + Plain(option.help) + '\n';
  }
  return text;
}

constexpr std::string_view kStatus =
    ".SH EXIT STATUS\n.TP\n0\nIt is done.\n.TP\n1\nIt cannot be done; standard error says why.\n"
    ".TP\n2\nIt was asked for in a wrong way.\n.TP\n3\nThe program that does it is not "
    "installed.\n";

}  // namespace

std::string PageName(const Command& command) { return "vexel-" + command.name; }

std::string ManPage(const Command& command, std::string_view version) {
  std::string page = Head(PageName(command), command.brief, version);
  page += Synopsis(command);
  page += ".SH DESCRIPTION\n" + Plain(command.summary) + '\n';
  page += Options(command);
  page += kStatus;
  page += ".SH EXAMPLES\n.nf\n" + Plain(command.example) + "\n.fi\n";
  page += ".SH SEE ALSO\n" + Bold("vexel") + "(1)\n";
  return page;
}

std::string Overview(std::span<const Command> commands, std::string_view version) {
  std::string page =
      Head("vexel", "thematic maps of areas and statistics, as pictures and web pages", version);
  page += ".SH SYNOPSIS\n" + Bold("vexel") + ' ' + Italic("COMMAND") + " [" + Italic("OPTIONS") +
          "]\n.SH COMMANDS\n";
  for (const Command& command : commands) {
    page += ".TP\n" + Bold(command.name) + '\n' + Plain(command.brief) + ", " +
            Bold(PageName(command)) + "(1)\n";
  }
  page += ".SH OPTIONS\n.TP\n" + Bold("-h") + ", " + Bold("--help") +
          "\nPrint a list of the commands and exit\n.TP\n" + Bold("--version") +
          "\nPrint the version and exit\n";
  page += kStatus;
  return page;
}

}  // namespace vexel::manuals
