// End-to-end tests of `cyclectl -test_import_frags FILE` (add_import_frags)
// and list_import_frags: what a file queues is listed; the format's keys,
// warnings and errors; unreadable files; the pause after every 1,000th
// image; a catalog that is missing, locked or lacks the queue table.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "tests/e2e/catalog_lock.h"
#include "tests/e2e/harness.h"
#include "tests/e2e/test_data.h"

namespace {

using ::testing::Contains;
using ::testing::HasSubstr;

std::string Summary(int accepted, int found) {
  return "Successfully notified import manager of " + std::to_string(accepted) +
         " out of a total of " + std::to_string(found) +
         " images found\nOperation took N seconds, total\n";
}

std::string ImageLine(int status, const std::string& name, int total) {
  return "Import Manager returned: " + std::to_string(status) + " for fragment name " + name +
         ". Total images = " + std::to_string(total) + "\n";
}

std::string FormatError(const std::string& what, const std::string& line) {
  return "Format error in test file - " + what + "\nRead line: " + line +
         "\nThe correct format is \"<key name> = <value>\"\n";
}

class ImportFragmentsTest : public ::testing::Test {
 protected:
  // Runs add_import_frags on `text`, with the elapsed seconds of the
  // summary shown as N.
  e2e::Result Add(const std::string& text) {
    root_.WriteFile("frags.txt", text);
    return e2e::SecondsHidden(root_.Run({"-test_import_frags", root_.path() + "/frags.txt"}));
  }
  e2e::Result ListFrags() { return root_.Run({"list_import_frags"}); }
  // The queue's rows as "backup id|media server|SLP|origin", oldest first.
  std::string Queue() {
    return root_.Sql(
        "SELECT BackupID, MediaServer, SLPName, OriginMasterServer FROM SLP_PendingImport"
        " ORDER BY PendingImportKey;");
  }

  e2e::Root root_;
};

TEST_F(ImportFragmentsTest, WhatAFileQueuesIsListed) {
  EXPECT_EQ(ListFrags(), (e2e::Result{"", "No Images Pending Import were found\n", 0}));
  // A second SLP name only warns: both images are queued with the first.
  EXPECT_EQ(Add(e2e::Golden("add_import_frags/contexts.txt")),
            (e2e::Result{"", e2e::Golden("add_import_frags/contexts.err"), 0}));
  // Entries the import service has finished show as complete (3 and 5).
  root_.Sql(
      "INSERT INTO SLP_PendingImport (BackupID, CopyNumber, MediaID, FragmentDescription,"
      " ImportStatus) VALUES ('done3', 2, '@aaaac', 'frag 1 of 2', 3),"
      " ('done5', 1, '', '', 5), ('held4', 1, '', '', 4);");
  EXPECT_EQ(ListFrags(), (e2e::Result{"", e2e::Golden("list_import_frags/listing.txt"), 0}));
}

// Each file queues what it names, line by line; a format error stops the
// reading and keeps what was queued before it.
TEST_F(ImportFragmentsTest, KeysValuesAndFormatErrors) {
  const std::string n(1013, 'n'), rest(200, 'r'), x(1013, 'x');
  const struct {
    const char* name;
    std::string text;
    std::string err;
    std::string queue;  // as Queue() shows it
  } cases[] = {
      // A key directly before "=" or with blanks around it; a longer word that
      // starts with a key counts as that key; an image line before any context
      // is queued with empty texts; trailing blanks and blank lines are dropped;
      // bytes that are not UTF-8 pass through unchanged.
      {"keys",
       "STS_IMAGE=early\nMEDIA_SERVER=media1\n\n   \t\nSLP_NAMES   =   slp1   \r\n"
       "ORIGIN_MASTER_SERVER =\nORIGIN_MASTER_SERVER = origin2\nSTS_IMAGE =   img\xff\xfe  \n",
       ImageLine(0, "early", 1) + ImageLine(0, "img\xff\xfe", 2) + Summary(2, 2),
       "early|||\nimg\xff\xfe|media1|slp1|origin2\n"},
      // The same value twice still warns; "STS_IMAGE =" with no name is refused
      // by the import manager and counted as found only.
      {"no name", "LSU_NAME = a\nLSU_NAME = a\nSTS_IMAGE =\n",
       "WARNING: multiple LSU Names specified:a and a\n" + ImageLine(2008002, "", 1) +
           Summary(0, 1),
       ""},
      {"comment", "STS_IMAGE = one\n# a comment\nSTS_IMAGE = two\n",
       ImageLine(0, "one", 1) + FormatError("missing '='", "# a comment") + Summary(1, 1),
       "one|||\n"},
      // Keys are matched case-sensitively from the first character.
      {"blank first", " MEDIA_SERVER = m\nSTS_IMAGE = a\n",
       FormatError("unrecognized key name", " MEDIA_SERVER = m") + Summary(0, 0), ""},
      {"no key", "IMAGE = x\nSTS_IMAGE = a\n",
       FormatError("unrecognized key name", "IMAGE = x") + Summary(0, 0), ""},
      // 1,023 bytes per piece: the image name is cut, the rest of the line is
      // a piece without "="; a line of exactly 1,023 bytes leaves only its
      // newline for the next piece.
      {"long line", "STS_IMAGE=" + n + rest + "\n",
       ImageLine(0, n, 1) + FormatError("missing '='", rest) + Summary(1, 1), n + "|||\n"},
      {"1,023 bytes", "STS_IMAGE=" + x + "\nSTS_IMAGE=" + x + "\n",
       ImageLine(0, x, 1) + ImageLine(0, x, 2) + Summary(2, 2), x + "|||\n" + x + "|||\n"},
      {"empty", "", Summary(0, 0), ""},
      // NUL bytes end a line's text, as in a C string.
      {"NUL", std::string("STS_IMAGE = a\0b\n\0\n", 18), ImageLine(0, "a", 1) + Summary(1, 1),
       "a|||\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    root_.Sql("DELETE FROM SLP_PendingImport;");
    EXPECT_EQ(Add(c.text), (e2e::Result{"", c.err, 0}));
    EXPECT_EQ(Queue(), c.queue);
  }
}

TEST_F(ImportFragmentsTest, FilesThatCannotBeRead) {
  // Only a regular file is read: a FIFO without a writer and an endless
  // device end the run at once.
  ASSERT_EQ(mkfifo((root_.path() + "/fifo").c_str(), 0600), 0);
  const std::string cannot = "failed to open test file for import fragments, error = ";
  const struct {
    std::string path;
    std::string why;
  } cases[] = {
      {root_.path() + "/missing.txt", "2(No such file or directory)\n"},
      {root_.path() + "/db", "21(Is a directory)\n"},
      {root_.path() + "/fifo", "22(not a regular file)\n"},
      {"/dev/zero", "22(not a regular file)\n"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(root_.Run({"-test_import_frags", c.path}), (e2e::Result{"", cannot + c.why, 0}))
        << c.path;
  }
}

TEST_F(ImportFragmentsTest, PausesAfterEveryThousandthImage) {
  // Without a catalog every call fails at once (the import manager does not
  // retry a catalog it could not open), so 2,500 images take no time.
  root_.SetConfig("TEST_IMPORT_PAUSE_MS", "1");
  root_.RemoveCatalog();
  std::string file, err;
  for (int i = 1; i <= 2500; ++i) {
    file += "STS_IMAGE = i" + std::to_string(i) + "\n";
    err += ImageLine(2008003, "i" + std::to_string(i), i);
  }
  EXPECT_EQ(Add(file), (e2e::Result{"", err + Summary(0, 2500), 0}));
  const std::vector<std::string> log = root_.DebugLogMessages();
  EXPECT_THAT(log, Contains(HasSubstr("pausing")).Times(2));
  EXPECT_THAT(log, Contains("<2> cyclectl: pausing 1 ms after image 1000"));
  EXPECT_THAT(log, Contains("<2> cyclectl: pausing 1 ms after image 2000"));
  EXPECT_THAT(log, Contains(HasSubstr("cannot open")).Times(1));
}

TEST_F(ImportFragmentsTest, LockedCatalogOrNoQueueTable) {
  root_.SetConfig("CATALOG_BUSY_TIMEOUT", "100");
  {
    e2e::CatalogLock holder(root_, "", e2e::CatalogLock::kEverything);
    EXPECT_EQ(Add("STS_IMAGE = a\nSTS_IMAGE = b\n"),
              (e2e::Result{
                  "", ImageLine(2008004, "a", 1) + ImageLine(2008004, "b", 2) + Summary(0, 2), 0}));
  }

  root_.Sql("DROP TABLE SLP_PendingImport;");
  EXPECT_EQ(Add("STS_IMAGE = a\n"),
            (e2e::Result{"", ImageLine(2008005, "a", 1) + Summary(0, 1), 0}));
  EXPECT_EQ(ListFrags(), (e2e::Result{"", "Failed to list pending import fragments\n", 0}));
}

}  // namespace
