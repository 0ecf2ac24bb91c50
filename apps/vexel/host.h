// What the library sees of its user: a terminal.

#ifndef VEXEL_APPS_VEXEL_HOST_H_
#define VEXEL_APPS_VEXEL_HOST_H_

#include <chrono>
#include <csignal>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/host.h"
#include "platform/profile.h"

namespace vexel::cli {

// Writes "vexel: " and the text as one line to standard error. What would upset a terminal is
// replaced.
void Say(std::string_view text);

// A row of a data file whose area the map does not have.
struct LostRow {
  std::string codes;  // "12, 3"
  std::string name;
};

// Boxes become lines on standard error, and OK is the answer. Rows without an area are gathered
// instead of told one by one. A progress bar shows on a terminal once a load has taken a while; an
// interrupt from the keyboard cancels that load, and at any other time ends the program.
class CliHost : public CHost {
 public:
  int ShowBox(const CString& text, unsigned flags) override;

  void OpenProgress() override;
  void SetProgressText(const CString& text) override { progressText_ = text.View(); }
  void SetProgressRange(int lower, int upper) override;
  void SetProgressPosition(int position) override;
  bool ProgressCancelled() override;
  void CloseProgress() override;

  // The separators of numbers: the ones set, else those of the user's locale.
  CString GetProfileText(const char* section, const char* key, const char* defaultText) override;

  // What the library is about to work on; messages that do not name it get it in front. Forgets
  // whether there has been a message.
  void SetSubject(const std::string& subject);
  bool HasSpoken() const { return spoken_; }

  void SetSeparators(const NumberSeparators& separators) { separators_ = separators; }
  const NumberSeparators& GetSeparators();

  // Whether progress is wanted; it also takes a terminal.
  void SetProgressWanted(bool wanted) { progressWanted_ = wanted; }
  bool ShowsProgress() const;

  const std::vector<LostRow>& GetLostRows() const { return lostRows_; }

 private:
  void DrawBar(int percent) const;
  void ClearBar();

  std::string subject_;
  bool spoken_ = false;
  std::vector<LostRow> lostRows_;
  std::optional<NumberSeparators> separators_;

  bool progressWanted_ = true;
  std::string progressText_;
  int lower_ = 0;
  int upper_ = 0;
  int percent_ = 0;  // last looked at
  bool barShown_ = false;
  void (*beforeProgress_)(int) = SIG_ERR;  // what an interrupt does otherwise
  std::chrono::steady_clock::time_point opened_;
};

}  // namespace vexel::cli

#endif  // VEXEL_APPS_VEXEL_HOST_H_
