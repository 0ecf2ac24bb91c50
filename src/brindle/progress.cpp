#include "brindle/progress.h"

#include "platform/host.h"

CProgressDlg::~CProgressDlg() {
  if (open_) CHost::GetCurrent().CloseProgress();
}

int CProgressDlg::Create(CWnd* /*parent*/) {
  CHost::GetCurrent().OpenProgress();
  open_ = true;
  return 1;
}

void CProgressDlg::SetStatus(const char* text) {
  if (open_) CHost::GetCurrent().SetProgressText(text);
}

void CProgressDlg::SetStep(int step) { step_ = step; }

void CProgressDlg::SetRange(int lower, int upper) {
  position_ = lower;
  if (open_) CHost::GetCurrent().SetProgressRange(lower, upper);
}

void CProgressDlg::SetPos(int position) {
  position_ = position;
  if (open_) CHost::GetCurrent().SetProgressPosition(position);
}

void CProgressDlg::StepIt() { SetPos(position_ + step_); }

int CProgressDlg::CheckCancelButton() {
  cancelled_ = cancelled_ || (open_ && CHost::GetCurrent().ProgressCancelled());
  return cancelled_ ? 1 : 0;
}
