// Every catalog query a report opens is released on its way out, and every
// list it fetches is freed: after each report no query handle is still open
// (a dropped release fails here in every build), and a dropped free leaves
// memory that the sanitizer build's leak check reports when this test ends.
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>

#include "catalog/backlog_report.h"
#include "catalog/lifecycle_image_list.h"
#include "catalog/list.h"
#include "catalog/list_replicas.h"
#include "catalog/volume_space_report.h"
#include "platform/emmlib/test_catalog.h"
#include "util/process.h"

namespace {

TEST(QueryReleaseTest, ReportsLeaveNoQueryOpen) {
  emm_test::TestCatalog cat;
  EmmCid = *cat.cid();
  MasterServer = emm_test::kMaster;
  cat.Exec(
      "INSERT INTO SLP_StorageService (StorageServiceName, VersionNumber) "
      "VALUES ('slp1', 1)");
  for (int i = 1; i <= 3; ++i) {
    const int64_t image = cat.AddImage("client" + std::to_string(i), 1000 * i,
                                       "StorageServiceName = 'slp1', StorageServiceState = 1, "
                                       "StorageServiceVersionNumber = 1");
    const int64_t copy = cat.AddCopy(image, 1, "DataFormat = 2, CopyState = 2, Replica = 1");
    cat.AddFragment(copy, 1, "FragmentState = 3, MediaID = 'vol1', FragmentSize = 10");
    const std::string key = std::to_string(copy);
    cat.Exec("INSERT INTO DBM_ImageSnapshot (ImageCopyKey, SnapshotName) VALUES (" + key +
             ", 'snap'); INSERT INTO DBM_ImageReplicationDestination (ImageCopyKey, "
             "TargetMachineKey) VALUES (" +
             key + ", 2)");
  }
  const int everyRecord = 15;
  const long version = 1;
  const struct {
    const char* name;
    std::function<void()> run;
  } reports[] = {
      {"list",
       [&] {
         List(OUTPUT_SHORT, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
              nullptr, nullptr, 0, -1, everyRecord, nullptr, 0, nullptr, TIME_RANGE_NONE, 0);
       }},
      {"stlilist",
       [&] {
         LifeCycleImageList(OUTPUT_USER, "slp1", &version, nullptr, nullptr, nullptr, nullptr,
                            nullptr, nullptr, nullptr, nullptr);
       }},
      {"report",
       [] {
         LifeCycleReport(OUTPUT_SHORT, nullptr, -1, nullptr, nullptr, nullptr, nullptr, nullptr);
       }},
      {"showvol", [] { ShowVolume(OUTPUT_SHORT, 0, "vol1", nullptr, nullptr); }},
      {"repllist", [] { ListReplicas(OUTPUT_USER, 0); }},
  };
  for (const auto& report : reports) {
    testing::internal::CaptureStdout();
    report.run();
    EXPECT_NE(testing::internal::GetCapturedStdout(), "") << report.name;
    // Handles are handed out in order and never reused.
    for (uint64_t handle = 1; handle <= 100; ++handle) {
      EXPECT_EQ(emmlib_ReleaseImageResultHandle(cat.cid(), handle), EMMLIB_INVALID_HANDLE)
          << report.name << " left query " << handle << " open";
    }
  }
}

}  // namespace
