// The volume space report at a fixed current second: expired data whose
// copy is to be kept until exactly now still counts as before the
// try-to-keep time. The layout and the selections are checked end to end
// (tests/e2e/showvol_test.cc).
#include "catalog/volume_space_report.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "platform/emmlib/test_catalog.h"
#include "util/clock.h"
#include "util/process.h"

namespace {

TEST(VolumeSpaceReportTest, TryToKeepTimeOfTheCurrentSecondIsBeforeIt) {
  emm_test::TestCatalog cat;
  EmmCid = *cat.cid();
  MasterServer = emm_test::kMaster;
  const int64_t now = 1700000000;
  const struct {
    int64_t tryToKeep;
    int64_t size;
  } copies[] = {{now - 1, 1}, {now, 20}, {now + 1, 300}};
  for (const auto& c : copies) {
    const std::string size = std::to_string(c.size);
    const int64_t copy = cat.AddCopy(cat.AddImage("client" + size, 1000), 1,
                                     "TryToKeepTime = " + std::to_string(c.tryToKeep));
    cat.AddFragment(copy, 1, "FragmentState = 3, MediaID = 'vol1', FragmentSize = " + size);
  }
  Orvantic::Stashwell::FixCurrentTime(now);
  testing::internal::CaptureStdout();
  ShowVolume(OUTPUT_SHORT, 0, "vol1", nullptr, nullptr);
  const std::string out = testing::internal::GetCapturedStdout();
  Orvantic::Stashwell::FixCurrentTime(-1);
  char row[128];
  snprintf(row, sizeof row, "\n%-18s  %12d  %12d  %12d  %12d\n", "Unclassified", 0, 320, 1, 321);
  EXPECT_NE(out.find(row), std::string::npos) << out;
}

}  // namespace
