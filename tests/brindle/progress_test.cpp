#include "brindle/progress.h"

#include <gtest/gtest.h>

#include "support/recording_host.h"

namespace vexel::test {
namespace {

TEST(Progress, ShowsNothingUntilCreatedAndClosesWithItself) {
  RecordingHost host;
  host.cancelAt = 1;
  CProgressDlg unseen(0);
  unseen.SetRange(0, 9);
  unseen.StepIt();
  EXPECT_EQ(unseen.CheckCancelButton(), 0);
  EXPECT_TRUE(host.progressLog.empty());
  {
    CProgressDlg progress(0);
    progress.Create(nullptr);
    progress.SetStep(2);
    progress.SetRange(5, 9);
    progress.StepIt();
  }
  EXPECT_EQ(host.progressLog,
            (std::vector<std::string>{"open", "range 5 9", "position 7", "close"}));
}

TEST(Progress, StaysCancelled) {
  class Once : public RecordingHost {
    bool ProgressCancelled() override { return ++questions == 2; }
  } host;
  CProgressDlg progress(0);
  progress.Create(nullptr);
  for (const int cancelled : {0, 1, 1}) EXPECT_EQ(progress.CheckCancelButton(), cancelled);
}

}  // namespace
}  // namespace vexel::test
