// The kit as the engine's host: hears what the engine has to say and keeps it.

#ifndef VEXEL_KIT_VIEW_LISTENER_H_
#define VEXEL_KIT_VIEW_LISTENER_H_

#include <vexel/platform/host.h>
#include <vexel/platform/profile.h>
#include <vexel/platform/remark.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kit/request/error.h"

namespace vexel {

// A row of a data file whose area the map does not have.
struct LostRow {
  std::string codes;  // "12, 3"
  std::string name;
  int line = 0;
};

// Answers OK to every message. Messages and remarks go on as one line each to Tell and Doubt; rows
// without an area are kept instead of told one by one. A program derives from this to show messages
// and progress.
class VEXEL_API Listener : public CHost {
 public:
  int ShowMessage(const MessageInfo& message) override;
  void Remark(const RemarkInfo& remark) override;

  // The separators of numbers: the ones set, else those of DefaultSeparators.
  CString GetProfileText(const char* section, const char* key, const char* defaultText) override;

  // What the engine is about to work on, by the name that the user knows; it stands before every
  // message that does not hold it, and before every remark. Forgets the last message.
  void SetSubject(const std::string& subject);

  // The last message since then, with its subject; empty when there has been none.
  const std::string& GetLastMessage() const { return lastMessage_; }
  bool HasSpoken() const { return !lastMessage_.empty(); }

  // An error with that message, which has been told already.
  Error LastError() const { return Failed(lastMessage_).SetTold(); }

  void SetSeparators(const NumberSeparators& separators) { separators_ = separators; }
  const NumberSeparators& GetSeparators();

  // Whether a text map should show its progress, by CHost's operations.
  virtual bool ShowsProgress() const { return false; }

  const std::vector<LostRow>& GetLostRows() const { return lostRows_; }

  // How many remarks there were, and the sentences of the first.
  std::size_t GetRemarkCount() const { return remarkCount_; }
  const std::vector<std::string>& GetFirstRemarks() const { return firstRemarks_; }

 protected:
  virtual void Tell(const std::string& /*message*/) {}
  virtual void Doubt(const RemarkInfo& /*remark*/, const std::string& /*sentence*/) {}
  virtual NumberSeparators DefaultSeparators() const { return {}; }

 private:
  std::string subject_;
  std::string lastMessage_;
  std::vector<LostRow> lostRows_;
  std::size_t remarkCount_ = 0;
  std::vector<std::string> firstRemarks_;
  std::optional<NumberSeparators> separators_;
};

// Makes a host the current one of the thread for as long as the object lives.
class CurrentHost {
 public:
  explicit CurrentHost(CHost& host) : before_(CHost::SetCurrent(&host)) {}
  CurrentHost(const CurrentHost&) = delete;
  CurrentHost& operator=(const CurrentHost&) = delete;
  ~CurrentHost() { CHost::SetCurrent(before_); }

 private:
  CHost* before_;
};

}  // namespace vexel

#endif  // VEXEL_KIT_VIEW_LISTENER_H_
