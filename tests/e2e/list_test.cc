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
#include "tests/e2e/test_data.h"

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
  // A whole run in one text: the keys of what list prints with `args`, then
  // its standard error and a status other than 0.
  std::string Listed(const std::vector<std::string>& args) const {
    const e2e::Result r = Run(args);
    return Keys(r.out) + r.err + (r.status ? "status " + std::to_string(r.status) + "\n" : "");
  }
  // Fragments `first` to `last` of copy 1 of alpha_1000 as Keys gives them.
  static std::string Fragments(int first, int last) {
    std::string keys;
    for (int f = first; f <= last; ++f) keys += "F alpha_1000 1 " + std::to_string(f) + "\n";
    return keys;
  }
};

const char kNoImages[] = "No images or lifecycles matching criteria found.\n";

TEST_F(ListTest, RecordLinesInEachForm) {
  root_.Sql(
      e2e::GoldenFilled("list/catalog-record-lines.txt",
                        {{"ORIGIN_ID", e2e::BytesLiteral("00112233445566778899aabbccddeeff")}}));
  EXPECT_EQ(Run({"-rt", "ICFS"}), (e2e::Result{e2e::Golden("list/short-icfs.txt"), "", 0}));
  // -l is the short form too, and the default record types leave out snapshots.
  EXPECT_EQ(Run({"-l"}), (e2e::Result{e2e::Golden("list/short.txt"), "", 0}));
  EXPECT_EQ(Run({"-U", "-rt", "ICFS"}), (e2e::Result{e2e::Golden("list/user.txt"), "", 0}));
}

TEST_F(ListTest, EachImageCopyAndFragmentOnce) {
  std::string a = AddImage("alpha", 1000);
  std::string a1 = AddCopy(a, 1, "CopyState = 5");
  for (int f = 1; f <= 3; ++f) AddFragment(a1, f);
  AddFragment(AddCopy(a, 2, "CopyState = 3"), 1);
  AddFragment(AddCopy(a, 3, "CopyState = 5"), 1);
  std::string b = AddImage("beta", 2000);  // copies without fragments
  AddCopy(b, 1, "CopyState = 3");
  AddCopy(b, 2, "CopyState = 5");

  // A copy failing a filter still counts as the previous row: copy 2 of alpha
  // is left out, copy 3 does not bring the image line back, nor does beta's copy 2.
  EXPECT_EQ(Listed({"-copy_state", "5"}), "I alpha_1000\nC alpha_1000 1\n" + Fragments(1, 3) +
                                              "C alpha_1000 3\nF alpha_1000 3 1\nC beta_2000 2\n");
  AddImage("gamma", 3000);  // an image without copies
  EXPECT_EQ(Listed({}), "I alpha_1000\nC alpha_1000 1\n" + Fragments(1, 3) +
                            "C alpha_1000 2\nF alpha_1000 2 1\nC alpha_1000 3\nF alpha_1000 3 1\n"
                            "I beta_2000\nC beta_2000 1\nC beta_2000 2\nI gamma_3000\n");
  EXPECT_EQ(Listed({"-rt", "IC"}),
            "I alpha_1000\nC alpha_1000 1\nC alpha_1000 2\nC alpha_1000 3\nI beta_2000\n"
            "C beta_2000 1\nC beta_2000 2\nI gamma_3000\n");
  EXPECT_EQ(Listed({"-rt", "I"}), "I alpha_1000\nI beta_2000\nI gamma_3000\n");
  // The brief form prints the backup ids alone, whatever the record types.
  EXPECT_EQ(Run({"-b", "-rt", "ICFS"}),
            (e2e::Result{"alpha_1000\nbeta_2000\ngamma_3000\n", "", 0}));
}

TEST_F(ListTest, EmptyCatalogThenCatalogQueryFailures) {
  EXPECT_EQ(Run({}), (e2e::Result{"", kNoImages, 0}));
  AddCopy(AddImage("alpha", 1000), 1);
  // Without the snapshot table only the snapshots are lost.
  root_.Sql("DROP TABLE DBM_ImageSnapshot;");
  EXPECT_EQ(Listed({"-rt", "ICFS"}),
            "I alpha_1000\nC alpha_1000 1\nError querying snapshot list, status= 2007062\n");
  // Without the fragment table the image query itself fails.
  root_.Sql("DROP TABLE DBM_ImageFragment;");
  EXPECT_EQ(Run({}), (e2e::Result{"", "Error querying image list, status= 2007062\n", 0}));
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

  const std::string expected =
      "I alpha_1000\nC alpha_1000 1\nS alpha_1000 1 a1-first\nS alpha_1000 1 a1-second\n" +
      Fragments(1, 2) + "C alpha_1000 2\nF alpha_1000 2 1\nI beta_2000\nC beta_2000 1\n" +
      "S beta_2000 1 b1\n";
  EXPECT_EQ(Listed({"-rt", "ICFS", "-policy", "pol"}), expected);
  EXPECT_EQ(Listed({"-rt", "S", "-policy", "pol"}), expected);
  EXPECT_EQ(Listed({"-rt", "ICFS", "-backupid", "beta_2000"}),
            "I beta_2000\nC beta_2000 1\nS beta_2000 1 b1\n");
}

// A catalog in which each filter selects something of its own: images a_1000
// and b_2000 of SLP slp1, c_3000 of slp2 (inactive), d_4000 of none.
class ListFilterTest : public ListTest {
 protected:
  void SetUp() override { root_.Sql(e2e::Golden("list/catalog-filters.txt")); }
};

TEST_F(ListFilterTest, SelectImagesAndCopies) {
  const std::string a = "I a_1000\nC a_1000 1\nC a_1000 2\n", b = "I b_2000\nC b_2000 1\n",
                    c = "I c_3000\nC c_3000 1\n", d = "I d_4000\nC d_4000 1\n";
  const struct {
    std::vector<std::string> args;
    std::string keys;
  } cases[] = {
      {{}, a + b + c + d},
      {{"-lifecycle", "slp1"}, a + b},
      {{"-lifecycle_only"}, a + b + c},
      {{"-lifecycle", "slp1", "-version", "2"}, b},
      {{"-policy", "pol1"}, a + c},
      // Copy 1 of a fails the copy filters but is a's first row: a's image line
      // is not printed for its later copies either.
      {{"-jobid", "77"}, "C a_1000 2\n" + d},
      {{"-image_state", "3"}, b},
      {{"-image_incomplete"}, a + c + d},
      {{"-image_inactive"}, c},
      {{"-copy_state", "2"}, "C a_1000 2\n"},
      {{"-copy_incomplete"}, "C a_1000 2\n" + c + d},
      {{"-copy_inactive"}, c},
      {{"-copy_type", "duplicate"}, "I a_1000\nC a_1000 2\n"},
      {{"-destination", "tape_stu"}, "C a_1000 2\n"},
      {{"-frag_state", "3"}, b},
      {{"-client", "nobody"}, kNoImages},  // a query that returns no row
      // Rows that all fail the filters print nothing at all.
      {{"-policy", "other"}, ""},
      {{"-lifecycle", "slp1", "-version", "7"}, ""},
      {{"-jobid", "5"}, ""},
      // Backup times: -before is strict, -after is not (00:33:20 is b's).
      {{"-before", "01/01/1970 00:33:20"}, a},
      {{"-before", "01/01/1970 00:33:21"}, a + b},
      {{"-after", "01/01/1970 00:33:20"}, b + c + d},
      {{"-after", "01/01/1970 00:33:21"}, c + d},
  };
  for (const auto& c : cases) {
    std::vector<std::string> args = {"-rt", "IC"};
    args.insert(args.end(), c.args.begin(), c.args.end());
    EXPECT_EQ(Listed(args), c.keys) << testing::PrintToString(c.args);
  }
}

TEST_F(ListTest, FetchBatchesOfFiveHundredRows) {
  std::string a = AddImage("alpha", 1000);
  std::string copy = AddCopy(a, 1);
  root_.Sql(
      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 700) "
      "INSERT INTO DBM_ImageFragment (ImageCopyKey, FragmentNumber) SELECT " +
      copy + ", i FROM n;");
  AddFragment(AddCopy(a, 2), 1);
  AddFragment(AddCopy(AddImage("beta", 2000), 1), 1);
  // The batches meet inside one image.
  EXPECT_EQ(Listed({}), "I alpha_1000\nC alpha_1000 1\n" + Fragments(1, 700) +
                            "C alpha_1000 2\nF alpha_1000 2 1\nI beta_2000\nC beta_2000 1\n"
                            "F beta_2000 1 1\n");

  if (e2e::OnPostgres()) return;  // PostgreSQL meets the broken row before it sends the first
  // Reading fragment 600 fails inside the database: the second batch of
  // 500 rows is lost, the first has been printed.
  root_.Sql(
      "ALTER TABLE DBM_ImageFragment RENAME TO Fragments;"
      "CREATE VIEW DBM_ImageFragment AS SELECT * FROM Fragments"
      " WHERE json(IIF(FragmentNumber = 600, 'broken', '1')) IS NOT NULL;");
  e2e::RunOptions joined;
  joined.stderrToStdout = true;
  e2e::Result r = root_.Run({"list"}, "", joined);
  r.out = Keys(r.out);
  EXPECT_EQ(r, (e2e::Result{"I alpha_1000\nC alpha_1000 1\n" + Fragments(1, 500) +
                                "? Error fetching image list, status= 2007062\n",
                            "", 0}));
}

}  // namespace
