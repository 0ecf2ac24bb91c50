#include "kit/view/listener.h"

#include <vexel/messages/messages.h>
#include <vexel/messages/remarks.h>

#include <algorithm>
#include <utility>

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

// Whether one text holds another, in whatever letter case.
bool Holds(std::string_view text, std::string_view part) {
  const auto same = [](char a, char b) { return ToLowerAscii(a) == ToLowerAscii(b); };
  return std::search(text.begin(), text.end(), part.begin(), part.end(), same) != text.end();
}

}  // namespace

void Listener::SetSubject(const std::string& subject) {
  subject_ = subject;
  lastMessage_.clear();
}

int Listener::ShowMessage(const MessageInfo& message) {
  if (message.number == static_cast<int>(Message::areaNotInMap)) {
    lostRows_.push_back({std::string(message.area), std::string(message.name), message.line});
    return answerOk;
  }
  std::string line = OneLine(message.text.View());
  if (!message.area.empty() && !Holds(line, message.area)) {
    line.append(" (area ").append(message.area).append(")");
  }
  if (!message.reason.empty()) line.append(": ").append(message.reason);
  if (!Holds(line, subject_)) {
    const std::string place = message.line > 0 ? ':' + std::to_string(message.line) : "";
    line.insert(0, subject_ + place + ": ");
  }
  lastMessage_ = std::move(line);
  Tell(lastMessage_);
  return answerOk;
}

void Listener::Remark(const RemarkInfo& remark) {
  constexpr std::size_t kKept = 20;
  RemarkInfo named = remark;
  if (!subject_.empty()) named.file = subject_;
  const std::string sentence = RemarkSentence(named);
  ++remarkCount_;
  if (firstRemarks_.size() < kKept) firstRemarks_.push_back(sentence);
  Doubt(named, sentence);
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
