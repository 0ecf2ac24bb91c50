// A host that remembers what the library said to it.

#ifndef VEXEL_TESTS_SUPPORT_RECORDING_HOST_H_
#define VEXEL_TESTS_SUPPORT_RECORDING_HOST_H_

#include <deque>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "messages/remarks.h"
#include "platform/host.h"

namespace vexel::test {

// The current host for as long as it lives.
class RecordingHost : public CHost {
 public:
  struct Box {
    std::string text;
    unsigned flags;
  };

  RecordingHost() : before_(SetCurrent(this)) {}
  ~RecordingHost() override { SetCurrent(before_); }

  std::deque<int> answers;                     // to the next boxes; OK when there are none left
  std::map<std::string, std::string> profile;  // section intl, by key; else the default is given
  int cancelAt = 0;                            // the question, from 1, to which the answer is yes

  std::vector<Box> boxes;
  std::vector<std::string> facts;  // of each message: number, file, line and the rest, "|" between
  std::vector<std::string> reasons;    // why the system refused, of each message
  std::vector<std::string> sentences;  // of all remarks
  std::string remarks;  // each as "line name: area; column; text found > what it is taken for" + \n
  std::vector<int> positions;
  std::vector<std::string> progressLog;
  int questions = 0;
  int waitCursors = 0;  // now shown
  int waits = 0;        // ever begun
  bool progressOpen = false;

  int ShowBox(const CString& text, unsigned flags) override {
    boxes.push_back({std::string(text.View()), flags});
    if (answers.empty()) return answerOk;
    const int answer = answers.front();
    answers.pop_front();
    return answer;
  }

  int ShowMessage(const MessageInfo& message) override {
    std::string all = std::to_string(message.number);
    for (const std::string_view fact : {message.file, message.area, message.name, message.found}) {
      all.append("|").append(fact);
    }
    facts.push_back(all + '|' + std::to_string(message.line));
    reasons.emplace_back(message.reason);
    return CHost::ShowMessage(message);
  }

  void Remark(const RemarkInfo& remark) override {
    std::string told = std::to_string(remark.line) + ' ';
    told.append(RemarkEntryOf(remark.kind).name).append(": ").append(remark.area).append("; ");
    if (remark.column > 0) told.append(std::to_string(remark.column)).append(" ");
    told.append(remark.columnName).append("; ").append(remark.found);
    if (!remark.taken.empty()) told.append(" > ").append(remark.taken);
    if (remark.expected > 0 || remark.counted > 0) {
      told.append(" ").append(std::to_string(remark.counted)).append("/") +=
          std::to_string(remark.expected);
    }
    remarks.append(told).append("\n");
    sentences.push_back(RemarkSentence(remark));
  }
  std::string TakeRemarks() { return std::exchange(remarks, {}); }

  void OpenProgress() override {
    progressOpen = true;
    progressLog.emplace_back("open");
  }
  void SetProgressText(const CString& text) override {
    progressLog.push_back("text " + std::string(text.View()));
  }
  void SetProgressRange(int lower, int upper) override {
    progressLog.push_back("range " + std::to_string(lower) + ' ' + std::to_string(upper));
  }
  void SetProgressPosition(int position) override {
    positions.push_back(position);
    progressLog.push_back("position " + std::to_string(position));
  }
  bool ProgressCancelled() override { return ++questions >= cancelAt && cancelAt > 0; }
  void CloseProgress() override {
    progressOpen = false;
    progressLog.emplace_back("close");
  }

  void BeginWaitCursor() override {
    ++waitCursors;
    ++waits;
  }
  void EndWaitCursor() override { --waitCursors; }

  CString GetProfileText(const char* section, const char* key, const char* defaultText) override {
    const auto found = profile.find(key);
    return std::string_view(section) != "intl" || found == profile.end() ? defaultText
                                                                         : found->second.c_str();
  }

 private:
  CHost* before_;
};

}  // namespace vexel::test

#endif  // VEXEL_TESTS_SUPPORT_RECORDING_HOST_H_
