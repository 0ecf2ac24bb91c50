// What the library sees of its user: a terminal.

#ifndef VEXEL_APPS_VEXEL_HOST_H_
#define VEXEL_APPS_VEXEL_HOST_H_

#include <chrono>
#include <csignal>
#include <initializer_list>
#include <string>
#include <string_view>

#include "kit/view/listener.h"

namespace vexel::cli {

// Writes the program's name and the text, which may come in parts, as one line to standard error.
// What would upset a terminal is replaced. Takes no memory, so that it can tell that there is none.
void Say(std::initializer_list<std::string_view> parts) noexcept;
inline void Say(std::string_view text) noexcept { Say({text}); }

// Messages become lines on standard error. A progress bar shows on a terminal once a load has taken
// a while; an interrupt from the keyboard cancels that load, and at any other time ends the
// program.
class CliHost : public Listener {
 public:
  void OpenProgress() override;
  void SetProgressText(const CString& text) override { progressText_ = text.View(); }
  void SetProgressRange(int lower, int upper) override;
  void SetProgressPosition(int position) override;
  bool ProgressCancelled() override;
  void CloseProgress() override;

  // Whether progress is wanted; it also takes a terminal.
  void SetProgressWanted(bool wanted) { progressWanted_ = wanted; }
  bool ShowsProgress() const override;

  // The first messages are printed as they come; this tells how many more there were, and the last
  // of them when it is the one that ended the command.
  void TellOfMoreMessages(bool endsWithOne) const;

  // The first few remarks of the readers are printed as they come, unless that is not wanted; this
  // tells how many more there were.
  void SetRemarksWanted(bool wanted) { remarksWanted_ = wanted; }
  void TellOfMoreRemarks() const;

 private:
  void Tell(const std::string& message) override;
  void Doubt(const RemarkInfo& remark, const std::string& sentence) override;
  NumberSeparators DefaultSeparators() const override;  // those of the user's locale
  void DrawBar(int percent) const;
  void ClearBar();

  std::size_t messageCount_ = 0;
  bool progressWanted_ = true;
  bool remarksWanted_ = true;
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
