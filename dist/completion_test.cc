// The generated bash completion, driven the way bash drives it: the words
// of the command line so far, the index of the word being completed, then
// what the function offers.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "gtest/gtest.h"

namespace {

// The candidates the completion offers for `words` (the last one is the word
// being completed), one a line, in byte order; the shell runs in `directory`.
std::string Complete(const std::string& words, const std::string& directory = ".") {
  std::string script = "cd '" + directory + "' && source '" CYCLECTL_COMPLETION "' && " +
                       "COMP_WORDS=(" + words + ") && COMP_CWORD=$((${#COMP_WORDS[@]} - 1)) && " +
                       "_cyclectl && printf '%s\\n' \"${COMPREPLY[@]}\" | LC_ALL=C sort";
  setenv("COMPLETION_SCRIPT", script.c_str(), 1);
  FILE* pipe = popen("bash -c \"$COMPLETION_SCRIPT\" 2>&1", "r");
  if (pipe == nullptr) return "popen failed";
  std::string out;
  char buffer[4096];
  size_t n;
  while ((n = fread(buffer, 1, sizeof buffer, pipe)) > 0) out.append(buffer, n);
  pclose(pipe);
  // An empty reply prints one empty line.
  return out == "\n" ? "" : out;
}

TEST(CompletionTest, OffersWordsThenOptionsThenValues) {
  EXPECT_EQ("list\nlist_import_conf\nlist_import_frags\nlist_import_notify\nlistwg\n",
            Complete("cyclectl li"));
  EXPECT_EQ("new_session\nns\n", Complete("cyclectl n"));
  EXPECT_EQ("update_hwm\nupdate_pfs\n", Complete("cyclectl up"));
  EXPECT_EQ("active\nadd_import_frags\n", Complete("cyclectl a"));
  EXPECT_EQ("", Complete("cyclectl zz"));
  // Then only the options of the operation.
  EXPECT_EQ("-M\n-help\n-nowarn\n", Complete("cyclectl dropwg -"));
  EXPECT_EQ("-df\n-dopts\n", Complete("cyclectl DUMP -dopts x -d"));
  // The value of -client is not taken for the operation word.
  EXPECT_EQ("-copy_inactive\n-copy_incomplete\n-copy_state\n-copy_type\n",
            Complete("cyclectl -client c1 list -copy"));
  EXPECT_EQ("-stype\n", Complete("cyclectl diskspaceinfo -M m1 -st"));
  // Before any operation word only the options that select one.
  EXPECT_EQ("-h\n-help\n", Complete("cyclectl -h"));
  // Then the values of fixed vocabularies.
  EXPECT_EQ("I\nIC\nICF\nICFS\n", Complete("cyclectl list -rt I"));
  EXPECT_EQ("j\nl\nr\n", Complete("cyclectl dump -DF ''"));
  EXPECT_EQ("conf\n", Complete("cyclectl list_import_notify -ntype c"));
  EXPECT_EQ("im\nimpm\nipn\n", Complete("cyclectl suspend -subsys i"));
  EXPECT_EQ("duplicate\nduplicate\\ to\\ remote\\ master\n",
            Complete("cyclectl stlilist -copy_type dup"));
}

TEST(CompletionTest, OffersFileNamesForTheTestFragmentFile) {
  char directory[] = "/tmp/cyclectl-completion.XXXXXX";
  ASSERT_NE(nullptr, mkdtemp(directory));
  std::string frags = std::string(directory) + "/frags.txt";
  FILE* f = fopen(frags.c_str(), "w");
  ASSERT_NE(nullptr, f);
  fclose(f);
  EXPECT_EQ("frags.txt\n", Complete("cyclectl add_import_frags -test_import_frags fr", directory));
  unlink(frags.c_str());
  rmdir(directory);
}

}  // namespace
