// A progress dialog with a cancel button, shown by the host.

#ifndef VEXEL_BRINDLE_PROGRESS_H_
#define VEXEL_BRINDLE_PROGRESS_H_

#include "platform/export.h"

class CWnd;

// Calls come in this order: Create, SetStatus, SetStep, SetRange, then SetPos with
// CheckCancelButton, or StepIt. An object without Create shows nothing. The dialog closes with the
// object.
class VEXEL_API CProgressDlg {
 public:
  explicit CProgressDlg(unsigned resource) noexcept { static_cast<void>(resource); }
  CProgressDlg(const CProgressDlg&) = delete;
  CProgressDlg& operator=(const CProgressDlg&) = delete;
  ~CProgressDlg();

  // Opens the dialog; the parent window is not used. Returns nonzero.
  int Create(CWnd* parent);
  void SetStatus(const char* text);
  void SetStep(int step);
  void SetRange(int lower, int upper);
  void SetPos(int position);
  void StepIt();

  // Nonzero once the user has cancelled.
  int CheckCancelButton();

 private:
  bool open_ = false;
  int step_ = 1;
  int position_ = 0;
  bool cancelled_ = false;
};

namespace vexel {

// Files tell their progress in steps of this many bytes.
inline constexpr int kBytesPerProgressStep = 1000;

}  // namespace vexel

#endif  // VEXEL_BRINDLE_PROGRESS_H_
