#include "kit/view/listener.h"

#include <vexel/messages/messages.h>

#include <algorithm>

namespace vexel {

namespace {

// The lines of a box behind each other.
std::string OneLine(std::string_view text) {
  std::string line;
  for (const char c : text) {
    if (c != '\n') {
      line += c;
    } else if (!line.empty() && line.back() != ' ') {
      line += line.back() == ':' ? " " : ": ";
    }
  }
  return line;
}

// The text behind a mark, up to the end of its line.
std::string RestOfLine(std::string_view text, std::string_view mark) {
  const std::size_t found = text.find(mark);
  if (found == std::string_view::npos) return {};
  text.remove_prefix(found + mark.size());
  return std::string(text.substr(0, text.find('\n')));
}

std::string WithCommas(std::string codes) {
  for (std::size_t at = codes.find(" / "); at != std::string::npos; at = codes.find(" / ")) {
    codes.replace(at, 3, ", ");
  }
  return codes;
}

bool TellsLostRow(std::string_view text) {
  const std::string_view known = MessageText(Message::areaNotInMap);
  return text.starts_with(known.substr(0, known.find('\n')));
}

}  // namespace

void Listener::SetSubject(const std::string& subject) {
  subject_ = subject;
  lastMessage_.clear();
}

int Listener::ShowBox(const CString& text, unsigned /*flags*/) {
  if (TellsLostRow(text.View())) {
    lostRows_.push_back({WithCommas(RestOfLine(text.View(), "AreaCodes  =  ")),
                         RestOfLine(text.View(), "Name  =  ")});
    return answerOk;
  }
  const std::string line = OneLine(text.View());
  const auto same = [](char a, char b) { return ToLowerAscii(a) == ToLowerAscii(b); };
  const bool named =
      std::search(line.begin(), line.end(), subject_.begin(), subject_.end(), same) != line.end();
  lastMessage_ = named ? line : subject_ + ": " + line;
  Tell(lastMessage_);
  return answerOk;
}

const NumberSeparators& Listener::GetSeparators() {
  if (!separators_) separators_ = DefaultSeparators();
  return *separators_;
}

CString Listener::GetProfileText(const char* section, const char* key, const char* defaultText) {
  if (!EqualNoCase(section, "intl")) return defaultText;
  const auto text = [](char c) { return c == '\0' ? CString() : CString(std::string(1, c)); };
  if (EqualNoCase(key, "sThousand")) return text(GetSeparators().thousand);
  if (EqualNoCase(key, "sDecimal")) return text(GetSeparators().decimal);
  return defaultText;
}

}  // namespace vexel
