// Tests of the image query: row order and shape, every filter, batch
// boundaries of the raw fetch, the list-shape fetch, handles, and the query
// plan of the listing statement.
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "platform/emmlib/image_query.h"
#include "platform/emmlib/test_catalog.h"

namespace {

using emm_test::TestCatalog;

// Runs the copy-type-and-format query with `configure` applied to a default
// argument set and returns the backup ids of its rows, one per image.
struct QueryArgs {
  const char* master = emm_test::kMaster;
  const char* backupId = nullptr;
  const char* client = nullptr;
  const char* mediaId = nullptr;
  const char* storageServer = nullptr;
  const char* mediaServer = nullptr;
  const short* fragState = nullptr;
  const int* imageState = nullptr;
  const int* copyType = nullptr;
  const char* slpName = nullptr;
  int level = 3;
  int earliest = 0, latest = 0, jobId = 0;
};

std::vector<std::string> ImagesOf(TestCatalog& cat, const QueryArgs& a,
                                  std::vector<Legacy_ImageView>* rows = nullptr) {
  uint64_t handle = 0;
  EXPECT_EQ(0u, emmlib_ImageQueryCopyTypeAndFormatExecute(
                    cat.cid(), a.level, a.master, a.backupId, a.client, a.mediaId,
                    a.storageServer, a.mediaServer, a.earliest, a.latest, a.fragState, 0,
                    a.jobId, a.imageState, a.copyType, 0, -1, a.slpName, &handle));
  std::vector<Legacy_ImageView> all = cat.RawRows(handle);
  EXPECT_EQ(0u, emmlib_ReleaseImageResultHandle(cat.cid(), handle));
  std::vector<std::string> ids;
  for (const Legacy_ImageView& r : all) {
    if (ids.empty() || ids.back() != r.image.BackupID) ids.push_back(r.image.BackupID);
  }
  if (rows != nullptr) *rows = all;
  return ids;
}

TEST(ImageQuery, RowsComeInListingOrderWithEveryPart) {
  TestCatalog cat;
  // Inserted out of order: later backup first, two images at one time, copy
  // and fragment numbers reversed.
  int64_t late = cat.AddImage("zeta", 2000, "PolicyName = 'pol', StorageServiceName = 'slp1',"
                                           " StorageServiceState = 2, StorageServiceIsInactive = 1,"
                                           " CreatedDateTime = 1000000000");
  int64_t c2 = cat.AddCopy(late, 2, "CopyType = 1, Residence = 'tape_stu', CopyState = 3");
  int64_t c1 = cat.AddCopy(late, 1, "ExpireTime = 99, DataFormat = 2");
  cat.AddFragment(c1, 2, "MediaID = 'A00002', FragmentSize = 20");
  cat.AddFragment(c1, 1, "MediaID = 'A00001', FragmentSize = 10");
  (void)c2;
  cat.AddImage("beta", 1000);           // no copy at all
  int64_t a = cat.AddImage("alpha", 1000);
  cat.AddCopy(a, 1);                    // a copy without fragments
  cat.AddImage("gamma", 1500, "", 2);   // another master's image

  std::vector<Legacy_ImageView> rows;
  std::vector<std::string> ids = ImagesOf(cat, QueryArgs(), &rows);
  EXPECT_EQ((std::vector<std::string>{"alpha_1000", "beta_1000", "zeta_2000"}), ids);
  ASSERT_EQ(5u, rows.size());

  EXPECT_NE(0u, rows[0].copy.CopyKey);
  EXPECT_EQ(0u, rows[0].fragment.FragmentKey);
  EXPECT_EQ(0u, rows[1].copy.CopyKey);
  EXPECT_STREQ("", rows[1].copy.Residence);

  const Legacy_ImageView& r = rows[2];
  EXPECT_STREQ("master1.example.com", r.image.MasterServer);
  EXPECT_STREQ("zeta", r.image.ClientName);
  EXPECT_STREQ("pol", r.image.PolicyName);
  EXPECT_EQ(2 | 8, r.image.SLPState);
  EXPECT_EQ(1000000000, r.image.CreatedDateTime);
  EXPECT_EQ(1, r.copy.CopyNumber);
  EXPECT_EQ(99, r.copy.ExpireTime);
  EXPECT_EQ(2, r.copy.DataFormat);
  EXPECT_STREQ("zeta_2000", r.copy.BackupID);
  EXPECT_STREQ("master1.example.com", r.fragment.MasterServer);
  EXPECT_EQ(1, r.fragment.CopyNumber);
  EXPECT_EQ(1, r.fragment.FragmentNumber);
  EXPECT_STREQ("A00001", r.fragment.MediaID);
  EXPECT_EQ(2, rows[3].fragment.FragmentNumber);
  EXPECT_EQ(2, rows[4].copy.CopyNumber);
  EXPECT_STREQ("tape_stu", rows[4].copy.Residence);
  EXPECT_EQ(0u, rows[4].fragment.FragmentKey);

  // The master is matched by any of its aliases, letter case ignored; an
  // unknown master selects nothing.
  QueryArgs alias;
  alias.master = "MASTER1";
  EXPECT_EQ(3u, ImagesOf(cat, alias).size());
  QueryArgs unknown;
  unknown.master = "nowhere";
  EXPECT_TRUE(ImagesOf(cat, unknown).empty());
}

TEST(ImageQuery, FiltersSelectImagesOrCopies) {
  TestCatalog cat;
  // 1: complete, SLP gold, disk fragment on dd1/ms1, duplicate copy on tape.
  int64_t i1 = cat.AddImage("c1", 100, "StorageServiceName = 'gold', StorageServiceState = 3");
  int64_t i1c1 = cat.AddCopy(i1, 1, "CopyType = 0, JobID = 11");
  cat.AddFragment(i1c1, 1, "MediaID = 'disk1', StorageServer = 'dd1', MediaServer = 'ms1'");
  int64_t i1c2 = cat.AddCopy(i1, 2, "CopyType = 1, JobID = 12");
  cat.AddFragment(i1c2, 1, "MediaID = 'A00001', MediaServer = 'ms2', MediaType = 2,"
                           " FragmentState = 3");
  // 2: in process and inactive, SLP silver.
  int64_t i2 = cat.AddImage("c2", 200, "StorageServiceName = 'silver', StorageServiceState = 2,"
                                       " StorageServiceIsInactive = 1");
  cat.AddFragment(cat.AddCopy(i2, 1), 1, "MediaID = 'disk2', StorageServer = 'dd2'");
  // 3: not started, SLP gold.
  int64_t i3 = cat.AddImage("c1", 300, "StorageServiceName = 'gold', StorageServiceState = 1");
  cat.AddCopy(i3, 1, "CopyType = 3");
  // 4: unmanaged; 5: deleted.
  cat.AddImage("c3", 400);
  cat.AddImage("c3", 500, "StorageServiceName = 'gold', StorageServiceState = 4");

  struct Case {
    const char* name;
    QueryArgs args;
    std::vector<std::string> want;
  };
  static const int kState1 = 1, kState3 = 3, kState10 = 10, kIncomplete = 8, kInactive = 4;
  static const int kDuplicate = 1, kReplicate = 3;
  static const short kFragExpired = 3;
  std::vector<Case> cases;
  cases.reserve(32);
  auto add = [&](const char* name, std::vector<std::string> want) {
    cases.push_back({name, QueryArgs(), std::move(want)});
    return &cases.back().args;
  };
  add("none", {"c1_100", "c2_200", "c1_300", "c3_400", "c3_500"});
  add("backup id", {"c1_300"})->backupId = "c1_300";
  add("client", {"c1_100", "c1_300"})->client = "c1";
  add("media id", {"c1_100"})->mediaId = "A00001";
  add("storage server", {"c2_200"})->storageServer = "dd2";
  add("media server", {"c1_100"})->mediaServer = "ms2";
  add("fragment state", {"c1_100"})->fragState = &kFragExpired;
  add("image state 1", {"c1_300"})->imageState = &kState1;
  add("image state 3", {"c1_100"})->imageState = &kState3;
  add("image state 10", {"c2_200"})->imageState = &kState10;
  add("incomplete", {"c2_200", "c1_300", "c3_400", "c3_500"})->imageState = &kIncomplete;
  add("inactive or deleted", {"c2_200", "c3_500"})->imageState = &kInactive;
  add("copy type", {"c1_100"})->copyType = &kDuplicate;
  add("copy type replicate", {"c1_300"})->copyType = &kReplicate;
  add("slp name", {"c1_100", "c1_300", "c3_500"})->slpName = "gold";
  add("managed only", {"c1_100", "c2_200", "c1_300", "c3_500"})->level = 1;
  add("job id", {"c1_100"})->jobId = 12;
  QueryArgs* range = add("backup time range", {"c2_200", "c1_300"});
  range->earliest = 200;
  range->latest = 300;
  QueryArgs* both = add("media id and server must match one fragment", {});
  both->mediaId = "disk1";
  both->mediaServer = "ms2";

  for (const Case& c : cases) {
    EXPECT_EQ(c.want, ImagesOf(cat, c.args)) << c.name;
  }

  // A copy filter returns only the copies that pass; a volume filter returns
  // the image whole.
  std::vector<Legacy_ImageView> rows;
  QueryArgs dup;
  dup.copyType = &kDuplicate;
  ImagesOf(cat, dup, &rows);
  ASSERT_EQ(1u, rows.size());
  EXPECT_EQ(2, rows[0].copy.CopyNumber);
  QueryArgs media;
  media.mediaId = "A00001";
  ImagesOf(cat, media, &rows);
  EXPECT_EQ(2u, rows.size());
}

TEST(ImageQuery, RawFetchCrossesBatchesInsideOneImage) {
  TestCatalog cat;
  int64_t image = cat.AddImage("big", 100);
  int64_t copy = cat.AddCopy(image, 1);
  cat.Exec("WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM n WHERE x < 1201)"
           " INSERT INTO DBM_ImageFragment (ImageCopyKey, FragmentNumber)"
           " SELECT " + std::to_string(copy) + ", x FROM n");
  cat.AddFragment(cat.AddCopy(cat.AddImage("small", 200), 1), 1);

  uint64_t handle = 0;
  ASSERT_EQ(0u, emmlib_ImageQueryExecute(cat.cid(), 3, emm_test::kMaster, nullptr, nullptr,
                                         nullptr, nullptr, nullptr, 0, 0, 0, 0, 0, nullptr,
                                         &handle));
  std::vector<Legacy_ImageView> buffer(500);
  std::vector<unsigned> counts;
  int expectFragment = 1;
  for (;;) {
    unsigned count = 500;
    unsigned status = emmlib_ImageQueryFetchRaw(cat.cid(), 3, handle, &count, buffer.data());
    if (status == EMMLIB_END_OF_DATA) break;
    ASSERT_EQ(0u, status);
    counts.push_back(count);
    for (unsigned i = 0; i < count && expectFragment <= 1201; ++i) {
      ASSERT_EQ(expectFragment++, buffer[i].fragment.FragmentNumber);
      ASSERT_STREQ("big_100", buffer[i].image.BackupID);
    }
  }
  EXPECT_EQ((std::vector<unsigned>{500, 500, 202}), counts);
  // Once at the end, every further fetch says so.
  unsigned count = 500;
  EXPECT_EQ(EMMLIB_END_OF_DATA,
            emmlib_ImageQueryFetchRaw(cat.cid(), 3, handle, &count, buffer.data()));
  EXPECT_EQ(0u, count);
  EXPECT_EQ(0u, emmlib_ReleaseImageResultHandle(cat.cid(), handle));
}

// Rows of one image (and copy) take those parts from the row before them;
// they must be exactly what reading the columns gives. Each batch goes into
// a buffer filled with one byte value, so that whole rows compare byte for
// byte and a text copied without its last byte or NUL shows; batches of one
// row read every part from the columns.
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
  auto fetch = [&](unsigned batch) {
    uint64_t handle = 0;
    EXPECT_EQ(0u, emmlib_ImageQueryExecute(cat.cid(), 3, emm_test::kMaster, nullptr, nullptr,
                                           nullptr, nullptr, nullptr, 0, 0, 0, 0, 0, nullptr,
                                           &handle));
    std::vector<Legacy_ImageView> all;
    for (;;) {
      std::vector<Legacy_ImageView> buffer(batch);
      memset(static_cast<void*>(buffer.data()), 0xab, batch * sizeof buffer[0]);
      unsigned count = batch;
      if (emmlib_ImageQueryFetchRaw(cat.cid(), 3, handle, &count, buffer.data()) != 0) break;
      all.insert(all.end(), buffer.begin(), buffer.begin() + count);
    }
    emmlib_ReleaseImageResultHandle(cat.cid(), handle);
    return all;
  };
  const std::vector<Legacy_ImageView> single = fetch(1);
  ASSERT_EQ(10u, single.size());
  EXPECT_EQ(256u, strlen(single[4].image.SLPName));
  for (unsigned batch : {3u, 500u}) {
    const std::vector<Legacy_ImageView> rows = fetch(batch);
    ASSERT_EQ(single.size(), rows.size());
    for (size_t i = 0; i < rows.size(); ++i) {
      EXPECT_EQ(0, memcmp(&single[i], &rows[i], sizeof rows[i])) << "batch " << batch << " row " << i;
    }
  }
}

TEST(ImageQuery, RawFetchEndingExactlyOnABatch) {
  TestCatalog cat;
  for (int i = 0; i < 4; ++i) cat.AddCopy(cat.AddImage("c", 100 + i), 1);
  uint64_t handle = 0;
  ASSERT_EQ(0u, emmlib_ImageQueryExecute(cat.cid(), 3, emm_test::kMaster, nullptr, nullptr,
                                         nullptr, nullptr, nullptr, 0, 0, 0, 0, 0, nullptr,
                                         &handle));
  std::vector<Legacy_ImageView> buffer(2);
  std::vector<unsigned> statuses;
  for (int i = 0; i < 3; ++i) {
    unsigned count = 2;
    statuses.push_back(emmlib_ImageQueryFetchRaw(cat.cid(), 3, handle, &count, buffer.data()));
    statuses.push_back(count);
  }
  EXPECT_EQ((std::vector<unsigned>{0, 2, 0, 2, EMMLIB_END_OF_DATA, 0}), statuses);
  emmlib_ReleaseImageResultHandle(cat.cid(), handle);
}

TEST(ImageQuery, ListFetchBuildsImagesCopiesAndFragments) {
  TestCatalog cat;
  for (int i = 0; i < 3; ++i) {
    int64_t image = cat.AddImage("c", 100 + i);
    for (int c = 1; c <= 2; ++c) {
      int64_t copy = cat.AddCopy(image, c);
      for (int f = 1; f <= c; ++f) cat.AddFragment(copy, f);
    }
  }
  uint64_t handle = 0;
  ASSERT_EQ(0u, emmlib_ImageQueryExecute(cat.cid(), 3, emm_test::kMaster, nullptr, nullptr,
                                         nullptr, nullptr, nullptr, 0, 0, 0, 0, 0, nullptr,
                                         &handle));
  // Batches of two images: 2, 1, then an empty batch with status 0.
  std::vector<unsigned> counts;
  for (int i = 0; i < 3; ++i) {
    unsigned count = 2;
    EMM_Image* list = nullptr;
    ASSERT_EQ(0u, emmlib_ImageQueryFetch(cat.cid(), 3, handle, &count, &list));
    counts.push_back(count);
    unsigned images = 0;
    for (EMM_Image* image = list; image != nullptr; image = image->next, ++images) {
      std::string shape;
      for (EMM_ImageCopy* c = image->copies; c != nullptr; c = c->next) {
        shape += std::to_string(c->CopyNumber) + ":";
        for (EMM_ImageFragment* f = c->fragments; f != nullptr; f = f->next) {
          shape += std::to_string(f->FragmentNumber);
        }
        shape += " ";
      }
      EXPECT_EQ("1:1 2:12 ", shape) << image->BackupID;
    }
    EXPECT_EQ(count, images);
    emmlib_FreeImage_List(&list);
    EXPECT_EQ(nullptr, list);
  }
  EXPECT_EQ((std::vector<unsigned>{2, 1, 0}), counts);
  emmlib_ReleaseImageResultHandle(cat.cid(), handle);

  // Level 1 gives the images alone, level 2 adds the copies.
  for (int level = 1; level <= 2; ++level) {
    ASSERT_EQ(0u, emmlib_ImageQueryExecute(cat.cid(), 3, emm_test::kMaster, "c_101", nullptr,
                                           nullptr, nullptr, nullptr, 0, 0, 0, 0, 0, nullptr,
                                           &handle));
    unsigned count = 10;
    EMM_Image* list = nullptr;
    ASSERT_EQ(0u, emmlib_ImageQueryFetch(cat.cid(), level, handle, &count, &list));
    ASSERT_EQ(1u, count);
    EXPECT_EQ(level == 1, list->copies == nullptr);
    if (level == 2) {
      EXPECT_EQ(nullptr, list->copies->fragments);
    }
    emmlib_FreeImage_List(&list);
    emmlib_ReleaseImageResultHandle(cat.cid(), handle);
  }
}

TEST(ImageQuery, HandlesAndBadArguments) {
  TestCatalog cat;
  uint64_t handle = 0;
  auto execute = [&](int* cid, int level) {
    return emmlib_ImageQueryExecute(cid, level, emm_test::kMaster, nullptr, nullptr, nullptr,
                                    nullptr, nullptr, 0, 0, 0, 0, 0, nullptr, &handle);
  };
  EXPECT_EQ(EMMLIB_INVALID_ARGUMENT, execute(nullptr, 3));
  int unknownCid = 999;
  EXPECT_EQ(EMMLIB_NOT_CONNECTED, execute(&unknownCid, 3));
  EXPECT_EQ(EMMLIB_INVALID_ARGUMENT, execute(cat.cid(), 2));

  ASSERT_EQ(0u, execute(cat.cid(), 3));
  Legacy_ImageView row;
  unsigned count = 1;
  EXPECT_EQ(EMMLIB_INVALID_ARGUMENT, emmlib_ImageQueryFetchRaw(cat.cid(), 1, handle, &count, &row));
  EXPECT_EQ(0u, emmlib_ReleaseImageResultHandle(cat.cid(), handle));
  EXPECT_EQ(EMMLIB_INVALID_HANDLE, emmlib_ReleaseImageResultHandle(cat.cid(), handle));
  EXPECT_EQ(EMMLIB_INVALID_HANDLE, emmlib_ImageQueryFetchRaw(cat.cid(), 3, handle, &count, &row));

  // A snapshot handle is not an image query.
  ASSERT_EQ(0u, emmlib_QueryActiveSnapshotInfo(cat.cid(), 1, emm_test::kMaster, 0, nullptr, -1,
                                               0, &handle));
  EMM_Image* list = nullptr;
  EXPECT_EQ(EMMLIB_INVALID_HANDLE, emmlib_ImageQueryFetch(cat.cid(), 3, handle, &count, &list));
  EXPECT_EQ(0u, emmlib_ReleaseImageResultHandle(cat.cid(), handle));
}

TEST(ImageQuery, ListingPlanNeedsNoSort) {
  TestCatalog cat;
  emm::ImageFilter filter;
  filter.master = emm_test::kMaster;
  emm::Params params;
  std::string sql = "EXPLAIN QUERY PLAN " + emm::BuildImageQuerySql(filter, 1, &params);
  const std::unique_ptr<sqldb::Statement> st = cat.db()->Prepare(sql);
  ASSERT_TRUE(st) << cat.db()->LastError();
  ASSERT_EQ(sqldb::Code::kOk, params.BindAll(st.get()));
  std::string plan;
  while (st->Step() == sqldb::Code::kRow) {
    plan.append(st->CurrentRow().Bytes(3)).append("\n");
  }
  EXPECT_EQ(std::string::npos, plan.find("TEMP B-TREE")) << plan;
  EXPECT_NE(std::string::npos, plan.find("DBM_Image_Listing")) << plan;
}

}  // namespace
