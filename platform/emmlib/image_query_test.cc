// Tests of the image query: row order and shape, the filters and summary
// rows that end-to-end tests do not reach, batch boundaries of the raw fetch,
// the list-shape fetch, handles, and the query plan of the listing statement.
#include <cstring>
#include <string>
#include <vector>

#include "platform/emmlib/image_query.h"
#include "platform/emmlib/test_catalog.h"

namespace {

using emm_test::kMaster;
using emm_test::TestCatalog;

// Filters of the copy-type-and-format query; an image state of 0 is none.
struct QueryArgs {
  const char* master = kMaster;
  const char* mediaId = nullptr;
  const char* mediaServer = nullptr;
  int imageState = 0;
};

// The rows of that query, each "backup id/copy/fragment/media id/residence",
// blank-separated.
std::string Rows(TestCatalog& cat, const QueryArgs& a) {
  uint64_t handle = 0;
  EXPECT_EQ(0u, emmlib_ImageQueryCopyTypeAndFormatExecute(
                    cat.cid(), 3, a.master, nullptr, nullptr, a.mediaId, nullptr, a.mediaServer, 0,
                    0, nullptr, 0, 0, a.imageState != 0 ? &a.imageState : nullptr, nullptr, 0, -1,
                    nullptr, &handle));
  std::string text;
  for (const Legacy_ImageView& r : cat.RawRows(handle)) {
    text += std::string(text.empty() ? "" : " ") + r.image.BackupID + "/" +
            std::to_string(r.copy.CopyNumber) + "/" + std::to_string(r.fragment.FragmentNumber) +
            "/" + r.fragment.MediaID + "/" + r.copy.Residence;
  }
  EXPECT_EQ(0u, emmlib_ReleaseImageResultHandle(cat.cid(), handle));
  return text;
}

// Starts the plain image query of this master at `level`.
unsigned Execute(int* cid, int level, uint64_t* handle) {
  return emmlib_ImageQueryExecute(cid, level, kMaster, nullptr, nullptr, nullptr, nullptr, nullptr,
                                  0, 0, 0, 0, 0, nullptr, handle);
}

// Rows in listing order: backup time, backup id, copy, fragment; an image
// without copies and a copy without fragments give one row each. The
// fields themselves are what the listing's end-to-end tests print.
TEST(ImageQuery, RowsComeInListingOrderWithoutASort) {
  TestCatalog cat;
  // Inserted out of order: later backup first, two images at one time, copy
  // and fragment numbers reversed.
  int64_t late = cat.AddImage("zeta", 2000);
  cat.AddCopy(late, 2, "Residence = 'tape_stu'");
  int64_t c1 = cat.AddCopy(late, 1);
  cat.AddFragment(c1, 2, "MediaID = 'A00002'");
  cat.AddFragment(c1, 1, "MediaID = 'A00001'");
  cat.AddImage("beta", 1000);
  cat.AddCopy(cat.AddImage("alpha", 1000), 1);
  cat.AddImage("gamma", 1500, "", 2);  // another master's image

  const std::string all = Rows(cat, QueryArgs());
  EXPECT_EQ(all,
            "alpha_1000/1/0// beta_1000/0/0// zeta_2000/1/1/A00001/ zeta_2000/1/2/A00002/ "
            "zeta_2000/2/0//tape_stu");
  // The master is matched by any of its aliases, letter case ignored; an
  // unknown master selects nothing.
  EXPECT_EQ(all, Rows(cat, {"MASTER1"}));
  EXPECT_EQ("", Rows(cat, {"nowhere"}));

  // The listing's index gives that order without a sort.
  emm::ImageFilter filter;
  filter.master = kMaster;
  emm::Params params;
  std::string sql = "EXPLAIN QUERY PLAN " + emm::BuildImageQuerySql(filter, 1, &params);
  const std::unique_ptr<sqldb::Statement> st = cat.db()->Prepare(sql);
  ASSERT_TRUE(st) << cat.db()->LastError();
  ASSERT_EQ(sqldb::Code::kOk, params.BindAll(st.get()));
  std::string plan;
  while (st->Step() == sqldb::Code::kRow) plan.append(st->CurrentRow().Bytes(3)).append("\n");
  EXPECT_EQ(std::string::npos, plan.find("TEMP B-TREE")) << plan;
  EXPECT_NE(std::string::npos, plan.find("DBM_Image_Listing")) << plan;
}

// The filters the end-to-end tests of list, stlilist, showvol and report do
// not reach, and the summary rows (level 1).
TEST(ImageQuery, FiltersAndSummaryRows) {
  TestCatalog cat;
  // 1: complete, SLP gold, fragments on disk1/ms1 and A00001/ms2.
  int64_t i1 = cat.AddImage("c1", 100, "StorageServiceName = 'gold', StorageServiceState = 3");
  cat.AddFragment(cat.AddCopy(i1, 1), 1, "MediaID = 'disk1', MediaServer = 'ms1'");
  cat.AddFragment(cat.AddCopy(i1, 2), 1, "MediaID = 'A00001', MediaServer = 'ms2'");
  // 2: in process and inactive, SLP silver; 3: unmanaged; 4: deleted.
  int64_t i2 = cat.AddImage("c2", 200,
                            "StorageServiceName = 'silver', StorageServiceState = 2,"
                            " StorageServiceIsInactive = 1");
  cat.AddFragment(cat.AddCopy(i2, 1), 1, "MediaID = 'disk2'");
  cat.AddImage("c3", 400);
  cat.AddImage("c3", 500, "StorageServiceName = 'gold', StorageServiceState = 4");

  // Media id and server must match one fragment; state 4 stands for
  // inactive or deleted.
  EXPECT_EQ("", Rows(cat, {kMaster, "disk1", "ms2"}));
  EXPECT_EQ("c2_200/1/1/disk2/ c3_500/0/0//", Rows(cat, {kMaster, nullptr, nullptr, 4}));

  // Detail level 1: the rows of the managed images, as summary rows that
  // hold what the full rows hold of the fields they carry.
  auto summary = [](const Legacy_ImageView& r) {
    return std::string(r.image.BackupID) + "|" + r.image.SLPName + "|" +
           std::to_string(r.image.SLPVersion) + "|" + std::to_string(r.image.SLPState) + "|" +
           std::to_string(r.copy.CopyKey) + "|" + std::to_string(r.copy.CopyNumber) + "|" +
           std::to_string(r.copy.CopyState) + "|" + std::to_string(r.fragment.FragmentKey) + "|" +
           std::to_string(r.fragment.FragmentSize);
  };
  std::vector<std::string> want, got;
  for (int level : {3, 1}) {
    uint64_t handle = 0;
    ASSERT_EQ(0u, Execute(cat.cid(), level, &handle));
    for (const Legacy_ImageView& r : cat.RawRows(handle)) {
      if (level == 1) {
        got.push_back(summary(r));
      } else if (r.image.SLPName[0] != '\0') {
        want.push_back(summary(r));
      }
    }
    EXPECT_EQ(0u, emmlib_ReleaseImageResultHandle(cat.cid(), handle));
  }
  EXPECT_EQ(want, got);
}

// Rows of one image (and copy) take those parts from the row before them,
// exactly as reading the columns (batches of one) gives them: each batch goes
// into a buffer of one byte value, so that a text copied short shows. A batch
// comes with 0 while it has rows, every fetch after the last with end of data.
TEST(ImageQuery, RawFetchRepeatsImageAndCopyExactly) {
  TestCatalog cat;
  const std::string longText(300, 'x');  // cut to its field
  for (int i = 0; i < 3; ++i) {
    int64_t image = cat.AddImage(
        "client" + std::to_string(i), 100 + i,
        "PolicyName = 'policy" + std::string(i, 'p') + "', StorageServiceName = '" +
            (i == 1 ? longText : "slp") + "', ClassificationID = 'class" + std::to_string(i) +
            "', OriginMasterServer = 'origin', OriginMasterServerID = X'0102', TimeInProcess = " +
            std::to_string(7 + i));
    for (int c = 1; c <= i + 1; ++c) {
      int64_t copy = cat.AddCopy(image, c,
                                 "Residence = 'stu" + std::string(c * 5, 'r') +
                                     "', DestinationID = 'dest', JobID = " + std::to_string(c));
      for (int f = 1; f <= 3 - c; ++f) {
        cat.AddFragment(copy, f, "MediaID = 'm" + std::to_string(f) + "', FragmentID = 'id'");
      }
    }
  }
  cat.AddImage("nocopy", 200);
  // The rows; each fetch's status and count in `trace`.
  std::string trace;
  auto fetch = [&](unsigned batch) {
    uint64_t handle = 0;
    EXPECT_EQ(0u, Execute(cat.cid(), 3, &handle));
    std::vector<Legacy_ImageView> all;
    trace.clear();
    for (unsigned status = 0, ends = 0; ends < 2;) {
      std::vector<Legacy_ImageView> buffer(batch);
      memset(static_cast<void*>(buffer.data()), 0xab, batch * sizeof buffer[0]);
      unsigned count = batch;
      status = emmlib_ImageQueryFetchRaw(cat.cid(), 3, handle, &count, buffer.data());
      trace += (status == EMMLIB_END_OF_DATA ? "end" : std::to_string(status)) + "/" +
               std::to_string(count) + " ";
      if (status != 0) ++ends;
      all.insert(all.end(), buffer.begin(), buffer.begin() + count);
    }
    emmlib_ReleaseImageResultHandle(cat.cid(), handle);
    return all;
  };
  const std::vector<Legacy_ImageView> single = fetch(1);
  ASSERT_EQ(10u, single.size());
  EXPECT_EQ(256u, strlen(single[4].image.SLPName));
  for (unsigned batch : {3u, 500u, 5u}) {
    const std::vector<Legacy_ImageView> rows = fetch(batch);
    ASSERT_EQ(single.size(), rows.size());
    for (size_t i = 0; i < rows.size(); ++i) {
      EXPECT_EQ(0, memcmp(&single[i], &rows[i], sizeof rows[i]))
          << "batch " << batch << " row " << i;
    }
  }
  EXPECT_EQ("0/5 0/5 end/0 end/0 ", trace);  // the rows end on a batch
}

// Batches of whole images, at each level: images alone (1), with their
// copies (2), with their fragments too (3); lifecycle rows (a query of level
// 2) bring copies at most.
TEST(ImageQuery, ListFetchBuildsImagesCopiesAndFragmentsFromAHandle) {
  TestCatalog cat;
  for (int i = 0; i < 3; ++i) {
    int64_t image = cat.AddImage("c", 100 + i);
    for (int c = 1; c <= 2; ++c) {
      int64_t copy = cat.AddCopy(image, c);
      for (int f = 1; f <= c; ++f) cat.AddFragment(copy, f);
    }
  }
  const std::string full = " |c1 s0 f1: |c2 s0 f1: f2:\n";
  const std::vector<std::string> copies = {"c_100 |c1 s0 |c2 s0\nc_101 |c1 s0 |c2 s0\n",
                                           "c_102 |c1 s0 |c2 s0\n", ""};
  static const struct {
    int query;
    int level;
    std::vector<std::string> batches;  // of two images; an empty one ends
  } cases[] = {
      {3, 3, {"c_100" + full + "c_101" + full, "c_102" + full, ""}},
      {3, 2, copies},
      {3, 1, {"c_100\nc_101\n", "c_102\n", ""}},
      {2, 3, copies},
  };
  uint64_t handle = 0;
  for (const auto& c : cases) {
    ASSERT_EQ(0u, Execute(cat.cid(), c.query, &handle));
    std::vector<std::string> batches;
    for (size_t b = 0; b < c.batches.size(); ++b) {
      unsigned count = 2;
      EMM_Image* list = nullptr;
      ASSERT_EQ(0u, emmlib_ImageQueryFetch(cat.cid(), c.level, handle, &count, &list));
      batches.push_back(TestCatalog::Describe(list));
      emmlib_FreeImage_List(&list);
      EXPECT_EQ(nullptr, list);
    }
    EXPECT_EQ(c.batches, batches) << "query " << c.query << " level " << c.level;
    emmlib_ReleaseImageResultHandle(cat.cid(), handle);
  }

  // Bad arguments and handles.
  EXPECT_EQ(EMMLIB_INVALID_ARGUMENT, Execute(nullptr, 3, &handle));
  int unknownCid = 999;
  EXPECT_EQ(EMMLIB_NOT_CONNECTED, Execute(&unknownCid, 3, &handle));
  EXPECT_EQ(EMMLIB_INVALID_ARGUMENT, Execute(cat.cid(), 4, &handle));

  // Summary rows (level 1) come only flat, lifecycle rows (2) only as lists.
  ASSERT_EQ(0u, Execute(cat.cid(), 1, &handle));
  unsigned count = 1;
  EMM_Image* list = nullptr;
  EXPECT_EQ(EMMLIB_INVALID_ARGUMENT, emmlib_ImageQueryFetch(cat.cid(), 3, handle, &count, &list));
  EXPECT_EQ(0u, emmlib_ReleaseImageResultHandle(cat.cid(), handle));
  ASSERT_EQ(0u, Execute(cat.cid(), 2, &handle));
  Legacy_ImageView row;
  EXPECT_EQ(EMMLIB_INVALID_ARGUMENT, emmlib_ImageQueryFetchRaw(cat.cid(), 3, handle, &count, &row));
  EXPECT_EQ(0u, emmlib_ReleaseImageResultHandle(cat.cid(), handle));

  ASSERT_EQ(0u, Execute(cat.cid(), 3, &handle));
  count = 1;
  EXPECT_EQ(EMMLIB_INVALID_ARGUMENT, emmlib_ImageQueryFetchRaw(cat.cid(), 1, handle, &count, &row));
  EXPECT_EQ(0u, emmlib_ReleaseImageResultHandle(cat.cid(), handle));
  EXPECT_EQ(EMMLIB_INVALID_HANDLE, emmlib_ReleaseImageResultHandle(cat.cid(), handle));
  EXPECT_EQ(EMMLIB_INVALID_HANDLE, emmlib_ImageQueryFetchRaw(cat.cid(), 3, handle, &count, &row));

  // A snapshot handle is not an image query.
  ASSERT_EQ(0u, emmlib_QueryActiveSnapshotInfo(cat.cid(), 1, kMaster, 0, nullptr, -1, 0, &handle));
  EXPECT_EQ(EMMLIB_INVALID_HANDLE, emmlib_ImageQueryFetch(cat.cid(), 3, handle, &count, &list));
  EXPECT_EQ(0u, emmlib_ReleaseImageResultHandle(cat.cid(), handle));
}

}  // namespace
