// Tests of the root layout: the refusal of an existing root, --force, and a
// share folder without data files. What a fresh root holds every end-to-end
// run uses.
#include "tools/stashwell-init/root_layout.h"

#include <stdlib.h>

#include <filesystem>
#include <fstream>

#include "gtest/gtest.h"

namespace fs = std::filesystem;

namespace {

class RootLayoutTest : public testing::Test {
 protected:
  void SetUp() override {
    char tmpl[] = "/tmp/cyclectl-layout.XXXXXX";
    dir_ = mkdtemp(tmpl);
    options_.root = dir_ + "/root";
    options_.master = "m1";
    options_.emmServer = "e1";
    options_.shareDir = STASHWELL_SHARE_DIR;
  }
  void TearDown() override { fs::remove_all(dir_); }

  std::string dir_;
  RootOptions options_;
};

TEST_F(RootLayoutTest, LaysOutAFreshRootAndRefusesToOverwriteIt) {
  std::string error;
  ASSERT_TRUE(LayOutRoot(options_, &error)) << error;
  const std::string root = options_.root;
  EXPECT_FALSE(LayOutRoot(options_, &error));
  EXPECT_EQ(error, root + " already exists; use --force to lay out a root over it");

  std::ofstream(root + "/etc/stashwell.conf") << "changed\n";
  std::ofstream(root + "/mine.txt") << "kept\n";
  options_.force = true;
  options_.withAdminLog = true;
  ASSERT_TRUE(LayOutRoot(options_, &error)) << error;
  EXPECT_TRUE(fs::is_directory(root + "/logs/admin"));
  EXPECT_TRUE(fs::exists(root + "/mine.txt"));
  std::ifstream again(root + "/etc/stashwell.conf");
  std::string rewritten((std::istreambuf_iterator<char>(again)), std::istreambuf_iterator<char>());
  EXPECT_EQ(rewritten, InitialConfigText(options_));
}

TEST_F(RootLayoutTest, EmptyDirectoryIsTakenAndMissingDataIsAnError) {
  fs::create_directories(options_.root);
  options_.shareDir = dir_ + "/noshare";
  std::string error;
  EXPECT_FALSE(LayOutRoot(options_, &error));
  EXPECT_EQ(error, "data files not found in " + dir_ + "/noshare/msg");
}

}  // namespace
