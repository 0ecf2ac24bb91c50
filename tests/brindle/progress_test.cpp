#include "brindle/progress.h"

#include <gtest/gtest.h>

#include "support/recording_host.h"

namespace vexel::test {
namespace {

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
