// End-to-end tests of `cyclectl list` on small catalogs built for each case:
// the exact lines of every record kind in the short, user and brief forms,
// which records each image, copy, fragment and snapshot row prints, every
// filter, and the messages of an empty listing.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "tests/e2e/catalog_test.h"
#include "tests/e2e/harness.h"

namespace {

class ListTest : public e2e::CatalogTest {
 protected:
  ListTest() : CatalogTest("list") {}

  // The records of a short listing, one per line, reduced to their
  // kind and keys: "I <backup id>", "C <backup id> <copy>", "F <backup id>
  // <copy> <fragment>", "S <backup id> <copy> <snapshot name>".
  static std::string Keys(const std::string& out) {
    std::istringstream lines(out);
    std::string line, keys;
    while (std::getline(lines, line)) {
      std::istringstream in(line);
      std::vector<std::string> f;
      for (std::string w; in >> w;) f.push_back(w);
      if (f.size() > 4 && f[1] == "I") {
        keys += "I " + f[3] + "\n";
      } else if (f.size() > 4 && f[1] == "C") {
        keys += "C " + f[3] + " " + f[4] + "\n";
      } else if (f.size() > 5 && f[1] == "F") {
        keys += "F " + f[3] + " " + f[4] + " " + f[5] + "\n";
      } else if (f.size() > 8 && f[1] == "S") {
        keys += "S " + f[2] + " " + f[3] + " " + f[8] + "\n";
      } else {
        keys += "? " + line + "\n";
      }
    }
    return keys;
  }
};

const char kNoImages[] = "No images or lifecycles matching criteria found.\n";

// One image with one snapshot copy: every field set to a value of its own.
class ListRecordLinesTest : public ListTest {
 protected:
  void SetUp() override {
    root_.Sql(
        "INSERT INTO EMM_DataClassification (ClassificationID, Name) "
        "VALUES ('gold-id', 'Gold');");
    std::string image = AddImage(
        "client1", 1700000000,
        "PolicyName = 'pol1', ClientType = 13, ScheduleType = 2, StorageServiceName = 'slp1', "
        "StorageServiceState = 2, StorageServiceIsInactive = 1, "
        "StorageServiceVersionNumber = 4, TimeInProcess = 1700000100, "
        "ClassificationID = 'gold-id', OriginMasterServer = 'remote1', "
        "OriginMasterServerID = " +
            e2e::BytesLiteral("00112233445566778899aabbccddeeff") +
            ", "
            "ImportFromReplicaTime = 1700000200, RequiredExpirationDate = 1800000000, "
            "CreatedDateTime = 1700000100");
    std::string copy =
        AddCopy(image, 1,
                "SLPIndex = 1, CopyType = 2, ExpireTime = 1800000000, "
                "ExpireLifecycleTime = 1750000000, TryToKeepTime = 3600, Residence = 'snap_stu', "
                "CopyState = 3, JobID = 4711, ExpirationType = 4, MpxState = 1, RetryCount = 2, "
                "LastRetryTime = 1700000500, DestinationID = 'dest1', Source = 1, Replica = 1, "
                "DataFormat = 2");
    AddSnapshot(copy, "snap_001");
    AddFragment(copy, 1,
                "ResumeCount = 1, MediaID = '@aaaab', MediaServer = 'media1', "
                "StorageServer = 'array1', MediaType = 0, MediaSubType = 4, FragmentState = 1, "
                "FragmentSize = 5368709120, DeleteHeader = 1, FragmentID = 'frag-1', "
                "SnapMountHost = 'mount1', MediaDescription = 'array volume'");
  }
};

TEST_F(ListRecordLinesTest, ShortForm) {
  EXPECT_EQ(Run({"-rt", "ICFS"}), (e2e::Result{e2e::Golden("list/short-icfs.txt"), "", 0}));
  // -l is the short form too, and the default record types leave out snapshots.
  EXPECT_EQ(Run({"-l"}), (e2e::Result{e2e::Golden("list/short.txt"), "", 0}));
}

TEST_F(ListRecordLinesTest, UserForm) {
  EXPECT_EQ(Run({"-U", "-rt", "ICFS"}), (e2e::Result{e2e::Golden("list/user.txt"), "", 0}));
}

TEST_F(ListTest, EachImageCopyAndFragmentOnce) {
  std::string a = AddImage("alpha", 1000);
  std::string a1 = AddCopy(a, 1);
  for (int f = 1; f <= 3; ++f) AddFragment(a1, f);
  std::string a2 = AddCopy(a, 2);
  AddFragment(a2, 1);
  AddCopy(AddImage("beta", 2000), 1);  // a copy without fragments
  AddImage("gamma", 3000);             // an image without copies

  EXPECT_EQ(
      "I alpha_1000\nC alpha_1000 1\nF alpha_1000 1 1\nF alpha_1000 1 2\n"
      "F alpha_1000 1 3\nC alpha_1000 2\nF alpha_1000 2 1\n"
      "I beta_2000\nC beta_2000 1\nI gamma_3000\n",
      Keys(Run({}).out));
  EXPECT_EQ(
      "I alpha_1000\nC alpha_1000 1\nC alpha_1000 2\nI beta_2000\nC beta_2000 1\n"
      "I gamma_3000\n",
      Keys(Run({"-rt", "IC"}).out));
  EXPECT_EQ("I alpha_1000\nI beta_2000\nI gamma_3000\n", Keys(Run({"-rt", "I"}).out));
  // The brief form prints the backup ids alone, whatever the record types.
  EXPECT_EQ("alpha_1000\nbeta_2000\ngamma_3000\n", Run({"-b", "-rt", "ICFS"}).out);
}

TEST_F(ListTest, CopyFailingAFilterStillCountsAsThePreviousRow) {
  std::string a = AddImage("alpha", 1000);
  AddFragment(AddCopy(a, 1, "CopyState = 5"), 1);
  AddFragment(AddCopy(a, 2, "CopyState = 3"), 1);
  AddFragment(AddCopy(a, 3, "CopyState = 5"), 1);
  std::string b = AddImage("beta", 2000);
  AddCopy(b, 1, "CopyState = 3");
  AddCopy(b, 2, "CopyState = 5");

  // Copy 2 of alpha is left out; copy 3 does not bring the image line back.
  EXPECT_EQ(
      "I alpha_1000\nC alpha_1000 1\nF alpha_1000 1 1\nC alpha_1000 3\n"
      "F alpha_1000 3 1\nC beta_2000 2\n",
      Keys(Run({"-copy_state", "5"}).out));
}

TEST_F(ListTest, TimeRangeAtABackupTime) {
  AddImage("alpha", 1700000000);
  AddImage("beta", 1700000001);
  // 11/14/2023 22:13:20 UTC is alpha's backup time.
  EXPECT_EQ("", Keys(Run({"-rt", "I", "-before", "11/14/2023 22:13:20"}).out));
  EXPECT_EQ("I alpha_1700000000\n", Keys(Run({"-rt", "I", "-before", "11/14/2023 22:13:21"}).out));
  EXPECT_EQ("I alpha_1700000000\nI beta_1700000001\n",
            Keys(Run({"-rt", "I", "-after", "11/14/2023 22:13:20"}).out));
  EXPECT_EQ("I beta_1700000001\n", Keys(Run({"-rt", "I", "-after", "11/14/2023 22:13:21"}).out));
}

TEST_F(ListTest, NothingToPrint) {
  auto expect = [this](const std::vector<std::string>& args, const std::string& err) {
    EXPECT_EQ(Run(args), (e2e::Result{"", err, 0})) << (args.empty() ? "" : args[0]);
  };
  // An empty catalog, and a query that returns no row.
  expect({}, kNoImages);
  AddCopy(AddImage("alpha", 1000, "PolicyName = 'pol1', StorageServiceName = 'slp1'"), 1);
  expect({"-client", "nobody"}, kNoImages);
  // Rows that all fail the filters print nothing at all.
  expect({"-policy", "other"}, "");
  expect({"-lifecycle", "slp1", "-version", "7"}, "");
  expect({"-jobid", "5"}, "");
}

TEST_F(ListTest, CatalogQueryFailures) {
  AddCopy(AddImage("alpha", 1000), 1);
  // Without the snapshot table only the snapshots are lost.
  root_.Sql("DROP TABLE DBM_ImageSnapshot;");
  e2e::Result r = Run({"-rt", "ICFS"});
  EXPECT_EQ("I alpha_1000\nC alpha_1000 1\n", Keys(r.out));
  EXPECT_EQ(0u, r.err.find("Error querying snapshot list, status= 20070")) << r.err;
  EXPECT_EQ(0, r.status);
  // Without the fragment table the image query itself fails.
  root_.Sql("DROP TABLE DBM_ImageFragment;");
  r = Run({});
  EXPECT_EQ("", r.out);
  EXPECT_EQ(0u, r.err.find("Error querying image list, status= 20070")) << r.err;
  EXPECT_EQ(0, r.status);
}

TEST_F(ListTest, SnapshotsUnderTheirCopies) {
  // early is not listed, so its snapshot sorts before every listed copy.
  AddSnapshot(AddCopy(AddImage("early", 500, "PolicyName = 'other'"), 1, "DataFormat = 2"),
              "early-snap");
  std::string a = AddImage("alpha", 1000, "PolicyName = 'pol'");
  std::string a1 = AddCopy(a, 1, "DataFormat = 2");
  AddSnapshot(a1, "a1-first");
  AddSnapshot(a1, "a1-second");
  AddFragment(a1, 1);
  AddFragment(a1, 2);
  AddFragment(AddCopy(a, 2, "DataFormat = 1"), 1);
  AddSnapshot(AddCopy(AddImage("beta", 2000, "PolicyName = 'pol'"), 1, "DataFormat = 2"), "b1");

  const char* expected =
      "I alpha_1000\nC alpha_1000 1\nS alpha_1000 1 a1-first\nS alpha_1000 1 a1-second\n"
      "F alpha_1000 1 1\nF alpha_1000 1 2\nC alpha_1000 2\nF alpha_1000 2 1\n"
      "I beta_2000\nC beta_2000 1\nS beta_2000 1 b1\n";
  EXPECT_EQ(expected, Keys(Run({"-rt", "ICFS", "-policy", "pol"}).out));
  EXPECT_EQ(expected, Keys(Run({"-rt", "S", "-policy", "pol"}).out));
  e2e::Result r = Run({"-rt", "ICFS", "-backupid", "beta_2000"});
  EXPECT_EQ("I beta_2000\nC beta_2000 1\nS beta_2000 1 b1\n", Keys(r.out));
  EXPECT_EQ("", r.err);
}

// A catalog in which each filter selects something of its own.
class ListFilterTest : public ListTest {
 protected:
  void SetUp() override {
    // a: SLP slp1 version 1, in process; copies 1 (backup, complete) and
    //    2 (duplicate to tape_stu, job 77, in process).
    std::string a = AddImage("a", 1000,
                             "PolicyName = 'pol1', StorageServiceName = 'slp1', "
                             "StorageServiceVersionNumber = 1, StorageServiceState = 2");
    AddFragment(AddCopy(a, 1, "CopyType = 0, CopyState = 5, Residence = 'disk_stu', JobID = 76"), 1,
                "MediaID = 'disk1', FragmentState = 1");
    AddFragment(AddCopy(a, 2, "CopyType = 1, CopyState = 2, Residence = 'tape_stu', JobID = 77"), 1,
                "MediaID = 'A00001', FragmentState = 1");
    // b: SLP slp1 version 2, complete; one complete copy with an expired fragment.
    std::string b = AddImage("b", 2000,
                             "PolicyName = 'pol2', StorageServiceName = 'slp1', "
                             "StorageServiceVersionNumber = 2, StorageServiceState = 3");
    AddFragment(AddCopy(b, 1, "CopyType = 0, CopyState = 5, Residence = 'disk_stu'"), 1,
                "MediaID = 'disk1', FragmentState = 3");
    // c: SLP slp2, not started and inactive; one inactive copy.
    std::string c = AddImage("c", 3000,
                             "PolicyName = 'pol1', StorageServiceName = 'slp2', "
                             "StorageServiceVersionNumber = 1, StorageServiceState = 1, "
                             "StorageServiceIsInactive = 1");
    AddCopy(c, 1, "CopyType = 0, CopyState = 9, Residence = 'disk_stu'");
    // d: not SLP-managed.
    AddCopy(AddImage("d", 4000, "PolicyName = 'pol3'"), 1,
            "CopyType = 0, CopyState = 0, Residence = 'disk_stu', JobID = 77");
  }
};

TEST_F(ListFilterTest, SelectImagesAndCopies) {
  struct Case {
    std::vector<std::string> args;
    const char* keys;
  } cases[] = {
      {{},
       "I a_1000\nC a_1000 1\nC a_1000 2\nI b_2000\nC b_2000 1\nI c_3000\nC c_3000 1\n"
       "I d_4000\nC d_4000 1\n"},
      {{"-lifecycle", "slp1"}, "I a_1000\nC a_1000 1\nC a_1000 2\nI b_2000\nC b_2000 1\n"},
      {{"-lifecycle_only"},
       "I a_1000\nC a_1000 1\nC a_1000 2\nI b_2000\nC b_2000 1\nI c_3000\nC c_3000 1\n"},
      {{"-lifecycle", "slp1", "-version", "2"}, "I b_2000\nC b_2000 1\n"},
      {{"-policy", "pol1"}, "I a_1000\nC a_1000 1\nC a_1000 2\nI c_3000\nC c_3000 1\n"},
      // Copy 1 of a fails the copy filters but is a's first row: a's image line
      // is not printed for its later copies either.
      {{"-jobid", "77"}, "C a_1000 2\nI d_4000\nC d_4000 1\n"},
      {{"-image_state", "3"}, "I b_2000\nC b_2000 1\n"},
      {{"-image_incomplete"},
       "I a_1000\nC a_1000 1\nC a_1000 2\nI c_3000\nC c_3000 1\n"
       "I d_4000\nC d_4000 1\n"},
      {{"-image_inactive"}, "I c_3000\nC c_3000 1\n"},
      {{"-copy_state", "2"}, "C a_1000 2\n"},
      {{"-copy_incomplete"}, "C a_1000 2\nI c_3000\nC c_3000 1\nI d_4000\nC d_4000 1\n"},
      {{"-copy_inactive"}, "I c_3000\nC c_3000 1\n"},
      {{"-copy_type", "duplicate"}, "I a_1000\nC a_1000 2\n"},
      {{"-destination", "tape_stu"}, "C a_1000 2\n"},
      {{"-frag_state", "3"}, "I b_2000\nC b_2000 1\n"},
  };
  for (const Case& c : cases) {
    std::vector<std::string> args = {"-rt", "IC"};
    args.insert(args.end(), c.args.begin(), c.args.end());
    e2e::Result r = Run(args);
    std::string label = c.args.empty() ? "(none)" : c.args[0];
    EXPECT_EQ(c.keys, Keys(r.out)) << label;
    EXPECT_EQ("", r.err) << label;
    EXPECT_EQ(0, r.status) << label;
  }
}

TEST_F(ListTest, FetchBatchesMeetInsideOneImage) {
  std::string a = AddImage("alpha", 1000);
  std::string copy = AddCopy(a, 1);
  root_.Sql(
      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 600) "
      "INSERT INTO DBM_ImageFragment (ImageCopyKey, FragmentNumber) SELECT " +
      copy + ", i FROM n;");
  AddFragment(AddCopy(a, 2), 1);
  AddFragment(AddCopy(AddImage("beta", 2000), 1), 1);

  std::string expected = "I alpha_1000\nC alpha_1000 1\n";
  for (int f = 1; f <= 600; ++f) expected += "F alpha_1000 1 " + std::to_string(f) + "\n";
  expected += "C alpha_1000 2\nF alpha_1000 2 1\nI beta_2000\nC beta_2000 1\nF beta_2000 1 1\n";
  e2e::Result r = Run({});
  EXPECT_EQ(expected, Keys(r.out));
  EXPECT_EQ("", r.err);
}

TEST_F(ListTest, AFetchFailingAfterTheFirstBatchKeepsWhatWasPrinted) {
  if (e2e::OnPostgres())
    GTEST_SKIP() << "PostgreSQL meets the broken row before it sends the first";
  std::string copy = AddCopy(AddImage("alpha", 1000), 1);
  root_.Sql(
      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 700) "
      "INSERT INTO DBM_ImageFragment (ImageCopyKey, FragmentNumber) SELECT " +
      copy + ", i FROM n;");
  // Reading fragment 600 fails inside the database: the second batch of
  // 500 rows is lost, the first has been printed.
  root_.Sql(
      "ALTER TABLE DBM_ImageFragment RENAME TO Fragments;"
      "CREATE VIEW DBM_ImageFragment AS SELECT * FROM Fragments"
      " WHERE json(IIF(FragmentNumber = 600, 'broken', '1')) IS NOT NULL;");
  e2e::RunOptions joined;
  joined.stderrToStdout = true;
  e2e::Result r = root_.Run({"list"}, "", joined);
  const std::string error = "Error fetching image list, status= 2007062\n";
  ASSERT_GT(r.out.size(), error.size());
  EXPECT_EQ(r.out.substr(r.out.size() - error.size()), error);
  std::string expected = "I alpha_1000\nC alpha_1000 1\n";
  for (int f = 1; f <= 500; ++f) expected += "F alpha_1000 1 " + std::to_string(f) + "\n";
  EXPECT_EQ(expected, Keys(r.out.substr(0, r.out.size() - error.size())));
  EXPECT_EQ(0, r.status);
}

}  // namespace
