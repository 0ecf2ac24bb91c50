#include "completion.h"

#include <string_view>

namespace vexel::manuals {

namespace {

std::string Joined(std::span<const std::string> texts, std::string_view between) {
  std::string whole;
  for (const std::string& text : texts) {
    whole.append(&text == texts.data() ? "" : between).append(text);
  }
  return whole;
}

std::string Replaced(std::string_view text, std::string_view what, std::string_view by) {
  std::string replaced;
  for (std::size_t at = text.find(what); at != std::string_view::npos; at = text.find(what)) {
    replaced.append(text.substr(0, at)).append(by);
    text.remove_prefix(at + what.size());
  }
  return replaced.append(text);
}

// In single quotes: those of the text are closed, escaped and opened again.
std::string Quoted(std::string_view text) { return "'" + Replaced(text, "'", R"('\'')") + "'"; }

// The first sentence, and of it what stands before a list of words.
std::string Brief(const Option& option) {
  std::string_view text = option.help;
  if (!option.words.empty()) text = text.substr(0, text.find(": "));
  return std::string(text.substr(0, text.find("; ")));
}

std::string NamesOf(std::span<const Command> commands) {
  std::string names;
  for (const Command& command : commands)
    names.append(names.empty() ? "" : " ").append(command.name);
  return names;
}

// One case of bash for an option with a value.
std::string BashValue(const Option& option) {
  const std::string begin = "        " + Joined(option.names, "|") + ") ";
  switch (OfferFor(option)) {
    case Offer::words:
      return begin + "COMPREPLY=($(compgen -W " + Quoted(Joined(option.words, " ")) +
             " -- \"$word\")); return ;;\n";
    case Offer::files:
      return begin + "COMPREPLY=($(compgen -f -- \"$word\")); return ;;\n";
    default:
      return begin + "return ;;\n";
  }
}

}  // namespace

std::string BashCompletion(std::span<const Command> commands) {
  std::string text =
      "# bash completion for vexel\n"
      "_vexel() {\n"
      "  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]}\n"
      "  local command=${COMP_WORDS[1]} options=\n"
      "  COMPREPLY=()\n"
      "  if ((COMP_CWORD == 1)); then\n"
      "    COMPREPLY=($(compgen -W '" +
      NamesOf(commands) +
      " help --help --version' -- \"$word\"))\n"
      "    return\n"
      "  fi\n"
      "  case $command in\n"
      "    help)\n"
      "      COMPREPLY=($(compgen -W '" +
      NamesOf(commands) +
      "' -- \"$word\"))\n"
      "      return ;;\n";
  for (const Command& command : commands) {
    text += "    " + command.name + ")\n      case $before in\n";
    std::string names;
    for (const Option& option : command.options) {
      if (option.names.empty()) continue;
      names.append(names.empty() ? "" : " ").append(Joined(option.names, " "));
      if (!option.form.empty()) text += BashValue(option);
    }
    text += "      esac\n      options='" + names + "' ;;\n";
  }
  return text +
         "  esac\n"
         "  if [[ $word == -* ]]; then\n"
         "    COMPREPLY=($(compgen -W \"$options\" -- \"$word\"))\n"
         "  else\n"
         "    COMPREPLY=($(compgen -f -- \"$word\"))\n"
         "  fi\n"
         "}\n"
         "complete -o filenames -F _vexel vexel\n";
}

std::string ZshCompletion(std::span<const Command> commands) {
  // What _arguments gives a meaning to within a description or a word.
  const auto escaped = [](std::string_view text) {
    std::string safe = Replaced(text, "\\", "\\\\");
    for (const std::string_view mark : {"[", "]", ":"}) {
      safe = Replaced(safe, mark, '\\' + std::string(mark));
    }
    return safe;
  };
  std::string text =
      "#compdef vexel\n"
      "local -a commands\n"
      "commands=(\n";
  for (const Command& command : commands) {
    text += "  " + Quoted(command.name + ':' + escaped(command.brief)) + '\n';
  }
  text +=
      ")\n"
      "if ((CURRENT == 2)); then\n"
      "  _describe command commands\n"
      "  return\n"
      "fi\n"
      "local name=$words[2]\n"
      "shift words\n"
      "((CURRENT--))\n"
      "case $name in\n"
      "  help) _describe command commands ;;\n";
  for (const Command& command : commands) {
    text += "  " + command.name + ")\n    _arguments -S";
    for (const Option& option : command.options) {
      for (const std::string& name : option.names) {
        std::string spec = "*" + name + '[' + escaped(Brief(option)) + ']';
        if (!option.form.empty()) {
          spec += ':' + escaped(option.form) + ':';
          if (OfferFor(option) == Offer::words)
            spec += '(' + escaped(Joined(option.words, " ")) + ')';
          if (OfferFor(option) == Offer::files) spec += "_files";
        }
        text += " \\\n      " + Quoted(spec);
      }
    }
    text += " \\\n      '*:file:_files' ;;\n";
  }
  return text + "esac\n";
}

std::string FishCompletion(std::span<const Command> commands) {
  // Within single quotes of fish only these two mean anything.
  const auto quoted = [](std::string_view text) {
    return "'" + Replaced(Replaced(text, "\\", "\\\\"), "'", "\\'") + "'";
  };
  std::string text;
  for (const Command& command : commands) {
    text += "complete -c vexel -n __fish_use_subcommand -f -a " + command.name + " -d " +
            quoted(command.brief) + '\n';
  }
  for (const Command& command : commands) {
    for (const Option& option : command.options) {
      if (option.names.empty()) continue;
      text += "complete -c vexel -n '__fish_seen_subcommand_from " + command.name + "'";
      for (const std::string& name : option.names) {
        text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
      }
      if (!option.form.empty()) text += OfferFor(option) == Offer::files ? " -r -F" : " -x";
      if (!option.words.empty()) text += " -a " + quoted(Joined(option.words, " "));
      text += " -d " + quoted(Brief(option)) + '\n';
    }
  }
  return text;
}

}  // namespace vexel::manuals
