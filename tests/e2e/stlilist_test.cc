// End-to-end tests of `cyclectl stlilist`: both forms, filters, batches, faults.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/e2e/catalog_test.h"
#include "tests/e2e/harness.h"
#include "tests/e2e/test_data.h"

namespace {

const char kNoImages[] = "No images or lifecycles matching criteria found.\n";

class StlilistTest : public e2e::CatalogTest {
 protected:
  StlilistTest() : CatalogTest("stlilist") {}
  // An image of `slp` in SLP state `state` (with the inactive bit 8).
  std::string Image(const std::string& client, long time, const std::string& slp, int state,
                    int version = 1) {
    return AddImage(client, time,
                    "StorageServiceName = '" + slp +
                        "', StorageServiceState = " + std::to_string(state & 7) +
                        ", StorageServiceIsInactive = " + std::to_string(state >> 3) +
                        ", StorageServiceVersionNumber = " + std::to_string(version));
  }
  std::string Copy(const std::string& image, int number, const std::string& residence, int state,
                   int type) {
    return AddCopy(image, number,
                   "Residence = '" + residence + "', CopyState = " + std::to_string(state) +
                       ", CopyType = " + std::to_string(type));
  }
};

// Images that show each way an image and its copies print.
class StlilistLinesTest : public StlilistTest {
 protected:
  void SetUp() override {
    std::string a = Image("alpha", 1000, "slp1", 2);
    Copy(a, 1, "disk1", 3, 0);  // JOBCOMPLETE: not listed
    Copy(a, 2, "tape1", 2, 1);  // IN_PROCESS
    Copy(a, 3, "", 15, 9);      // last names of both tables, empty residence
    std::string b = Image("beta", 2000, "slp2", 9);
    Copy(b, 1, "disk1", 5, 0);        // COPYCOMPLETE: image line only
    Image("gamma", 3000, "slp1", 1);  // no copies: nothing
    std::string d = Image("delta", 4000, "slp1", 15);
    Copy(d, 1, "disk1", 16, 10);                          // just past both tables
    Copy(AddImage("unmanaged", 5000), 1, "disk1", 1, 0);  // no SLP: never listed
  }
};

TEST_F(StlilistLinesTest, BothForms) {
  const e2e::Result expected{e2e::Golden("stlilist/short.txt"), "", 0};
  EXPECT_EQ(Run({}), expected);
  EXPECT_EQ(Run({"-l"}), expected);
  EXPECT_EQ(Run({"-U"}), (e2e::Result{e2e::Golden("stlilist/user.txt"), "", 0}));
}

TEST_F(StlilistTest, Filters) {
  std::string a = Image("alpha", 1000, "slp1", 2, 1);
  Copy(a, 1, "disk1", 3, 0);
  Copy(a, 2, "tape1", 1, 1);
  Copy(Image("beta", 2000, "slp1", 3, 2), 1, "tape1", 5, 1);
  Copy(Image("gamma", 3000, "slp2", 10, 1), 1, "disk1", 10, 0);
  Copy(Image("delta", 4000, "slp2", 11, 1), 1, "disk1", 1, 0);

  const std::string alpha = "V7.6.0 I alpha_1000 slp1 2 \nV7.6.0 C tape1 1 1 \n",
                    beta = "V7.6.0 I beta_2000 slp1 3 \n",
                    gamma = "V7.6.0 I gamma_3000 slp2 10 \nV7.6.0 C disk1 10 0 \n",
                    delta = "V7.6.0 I delta_4000 slp2 11 \nV7.6.0 C disk1 1 0 \n";
  const struct {
    std::vector<std::string> args;
    std::string out;
  } cases[] = {
      {{"-lifecycle", "slp1", "-version", "2"}, beta},
      {{"-image_incomplete"}, alpha + gamma},
      {{"-image_inactive"}, gamma + delta},
      // A destination shows only the images with a copy there, and only those copies.
      {{"-lifecycle", "slp1", "-destination", "tape1"}, alpha + beta},
  };
  for (const auto& c : cases)
    EXPECT_EQ(Run(c.args), (e2e::Result{c.out, "", 0})) << testing::PrintToString(c.args);
}

TEST_F(StlilistTest, NothingFoundOrQueryFails) {
  EXPECT_EQ(Run({}), (e2e::Result{"", kNoImages, 0}));
  // Images that the query returns but no filter lets through print nothing.
  Copy(Image("alpha", 1000, "slp1", 2), 1, "disk1", 1, 0);
  EXPECT_EQ(Run({"-lifecycle", "slp1", "-version", "9"}), (e2e::Result{"", "", 0}));
  root_.Sql("DROP TABLE DBM_ImageCopy;");
  EXPECT_EQ(Run(), (e2e::Result{"", "Error querying image list, status= 2007062\n", 0}));
}

TEST_F(StlilistTest, BatchesOfAHundredImages) {
  // 100 images fill the first batch exactly; 101 need a second one.
  e2e::AddImages(root_, 101, 1000, "StorageServiceName = 'slp1', StorageServiceState = 2");
  root_.Sql(
      "INSERT INTO DBM_ImageCopy (ImageKey, CopyNumber, Residence, CopyState)"
      " SELECT ImageKey, 1, 'disk1', 1 FROM DBM_Image;");
  auto listing = [](int images) {
    std::string out;
    for (int i = 0; i < images; ++i)
      out += "V7.6.0 I c_" + std::to_string(1000 + i) + " slp1 2 \nV7.6.0 C disk1 1 0 \n";
    return e2e::Result{out, "", 0};
  };
  EXPECT_EQ(Run(), listing(101));
  root_.Sql("DELETE FROM DBM_Image WHERE BackupTime = 1100;");
  EXPECT_EQ(Run(), listing(100));
}

}  // namespace
