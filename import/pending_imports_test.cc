// The output forms of the pending-image listing, which the command line
// does not hand it: copies and fragments are short unless in the user form.
#include "import/pending_imports.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "platform/emmlib/test_catalog.h"
#include "util/process.h"

namespace {

class PendingImageFormsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const int64_t image = cat_.AddImage("alpha", 100, "OriginMasterServer = 'remote1'");
    cat_.AddFragment(cat_.AddCopy(image, 1, "CopyState = 14"), 1);
    cat_.AddImage("bravo", 200, "OriginMasterServer = 'remote1'");
    EmmCid = *cat_.cid();
    MasterServer = emm_test::kMaster;
  }

  // Each line of standard output cut to its first 8 characters, and
  // standard error.
  std::pair<std::vector<std::string>, std::string> Run(outputform_e form) {
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    ListPendingImportImages(form, 0);
    std::istringstream out(::testing::internal::GetCapturedStdout());
    std::string err = ::testing::internal::GetCapturedStderr();
    std::vector<std::string> starts;
    for (std::string line; std::getline(out, line);) starts.push_back(line.substr(0, 8));
    return {starts, err};
  }

  emm_test::TestCatalog cat_;
};

TEST_F(PendingImageFormsTest, ImageInTheFormCopiesAndFragmentsShortUnlessUser) {
  using Lines = std::vector<std::string>;
  EXPECT_EQ(Run(OUTPUT_BRIEF),
            std::make_pair(Lines{"alpha_10", "V7.6.0 C", "V7.6.0 F", "bravo_20"}, std::string()));
  EXPECT_EQ(Run(OUTPUT_JSON_COMPACT),
            std::make_pair(Lines{"V7.6.0 C", "V7.6.0 F"},
                           std::string("Not implemented\nNot implemented\n")));
  EXPECT_EQ(Run(static_cast<outputform_e>(7)),
            std::make_pair(Lines{"V7.6.0 C", "V7.6.0 F"},
                           std::string("unrecognized output format: 7\n"
                                       "unrecognized output format: 7\n")));
  auto user = Run(OUTPUT_USER);
  EXPECT_EQ(user.second, "");
  for (const std::string& line : user.first) EXPECT_NE(line.substr(0, 6), "V7.6.0");
}

}  // namespace
