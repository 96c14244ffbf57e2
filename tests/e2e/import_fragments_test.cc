// End-to-end tests of `cyclectl -test_import_frags FILE` (add_import_frags)
// and `cyclectl list_import_frags`: what a test file queues is what the
// listing shows, the file format's keys, warnings and format errors, files
// that cannot be read, the pause after every 1,000th image, and a catalog
// that is missing, locked or lacks the queue table.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <string>

#include "tests/e2e/catalog_lock.h"
#include "tests/e2e/harness.h"

namespace {

using ::testing::Contains;
using ::testing::Eq;

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
    e2e::Result r = root_.Run({"-test_import_frags", root_.path() + "/frags.txt"});
    const std::string took = "Operation took ";
    size_t at = r.err.rfind(took);
    if (at != std::string::npos) {
      at += took.size();
      r.err.replace(at, r.err.find(' ', at) - at, "N");
    }
    return r;
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
  EXPECT_EQ(Add("MEDIA_SERVER = media1\n"
                "STORAGE_SERVER = sts1\n"
                "SERVER_TYPE = PlainDisk\n"
                "LSU_NAME = lsu_a\n"
                "ORIGIN_MASTER_SERVER = source1\n"
                "SLP_NAME = slp_import\n"
                "STS_IMAGE = client1_1700000000_C1_F1\n"
                "SLP_NAME = slp_other\n"
                "STS_IMAGE = client1_1700000000_C1_F2\n"),
            (e2e::Result{"",
                         ImageLine(0, "client1_1700000000_C1_F1", 1) +
                             "WARNING: multiple SLP Names specified:slp_import and slp_other\n" +
                             ImageLine(0, "client1_1700000000_C1_F2", 2) + Summary(2, 2),
                         0}));
  // Entries the import service has finished show as complete (3 and 5).
  root_.Sql(
      "INSERT INTO SLP_PendingImport (BackupID, CopyNumber, MediaID, FragmentDescription,"
      " ImportStatus) VALUES ('done3', 2, '@aaaac', 'frag 1 of 2', 3),"
      " ('done5', 1, '', '', 5), ('held4', 1, '', '', 4);");
  EXPECT_EQ(ListFrags(), (e2e::Result{"", e2e::Golden("list_import_frags/listing.txt"), 0}));
}

TEST_F(ImportFragmentsTest, KeysAndValues) {
  // A key directly before "=" or with blanks around it; a longer word that
  // starts with a key counts as that key; an image line before any context
  // is queued with empty texts; trailing blanks and blank lines are dropped;
  // bytes that are not UTF-8 pass through unchanged.
  EXPECT_EQ(Add("STS_IMAGE=early\n"
                "MEDIA_SERVER=media1\n"
                "\n"
                "   \t\n"
                "SLP_NAMES   =   slp1   \r\n"
                "ORIGIN_MASTER_SERVER =\n"
                "ORIGIN_MASTER_SERVER = origin2\n"
                "STS_IMAGE =   img\xff\xfe  \n"),
            (e2e::Result{
                "", ImageLine(0, "early", 1) + ImageLine(0, "img\xff\xfe", 2) + Summary(2, 2), 0}));
  EXPECT_EQ(Queue(), "early|||\nimg\xff\xfe|media1|slp1|origin2\n");

  // The same value twice still warns; "STS_IMAGE =" with no name is refused
  // by the import manager and counted as found only.
  EXPECT_EQ(Add("LSU_NAME = a\nLSU_NAME = a\nSTS_IMAGE =\n"),
            (e2e::Result{"",
                         "WARNING: multiple LSU Names specified:a and a\n" +
                             ImageLine(2008002, "", 1) + Summary(0, 1),
                         0}));
}

TEST_F(ImportFragmentsTest, FormatErrorsStopReadingAndKeepWhatWasQueued) {
  EXPECT_EQ(
      Add("STS_IMAGE = one\n# a comment\nSTS_IMAGE = two\n"),
      (e2e::Result{
          "", ImageLine(0, "one", 1) + FormatError("missing '='", "# a comment") + Summary(1, 1),
          0}));
  // Keys are matched case-sensitively from the first character.
  for (const std::string line : {" MEDIA_SERVER = m", "IMAGE = x"}) {
    EXPECT_EQ(Add(line + "\nSTS_IMAGE = three\n"),
              (e2e::Result{"", FormatError("unrecognized key name", line) + Summary(0, 0), 0}))
        << line;
  }
  EXPECT_EQ(Queue(), "one|||\n");
}

TEST_F(ImportFragmentsTest, LongLinesArriveInPieces) {
  // 1,023 bytes per piece: the image name is cut, the rest of the line is a
  // piece without "=".
  const std::string name(1013, 'n');
  const std::string rest(200, 'r');
  EXPECT_EQ(Add("STS_IMAGE=" + name + rest + "\n"),
            (e2e::Result{
                "", ImageLine(0, name, 1) + FormatError("missing '='", rest) + Summary(1, 1), 0}));
  // A line of exactly 1,023 bytes leaves only its newline for the next piece.
  const std::string exact = "STS_IMAGE=" + std::string(1013, 'x');
  EXPECT_EQ(Add(exact + "\n" + exact + "\n"),
            (e2e::Result{"",
                         ImageLine(0, std::string(1013, 'x'), 1) +
                             ImageLine(0, std::string(1013, 'x'), 2) + Summary(2, 2),
                         0}));
}

TEST_F(ImportFragmentsTest, FilesThatGiveNoImages) {
  // Only a regular file is read: a FIFO without a writer and an endless
  // device end the run at once.
  ASSERT_EQ(mkfifo((root_.path() + "/fifo").c_str(), 0600), 0);
  const struct {
    std::string path;
    std::string why;
  } cases[] = {
      {root_.path() + "/missing.txt", "2(No such file or directory)"},
      {root_.path() + "/db", "21(Is a directory)"},
      {root_.path() + "/fifo", "22(not a regular file)"},
      {"/dev/zero", "22(not a regular file)"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(root_.Run({"-test_import_frags", c.path}),
              (e2e::Result{
                  "", "failed to open test file for import fragments, error = " + c.why + "\n", 0}))
        << c.path;
  }
  // NUL bytes end a line's text, as in a C string.
  EXPECT_EQ(Add(""), (e2e::Result{"", Summary(0, 0), 0}));
  EXPECT_EQ(Add(std::string("STS_IMAGE = a\0b\n\0\n", 18)),
            (e2e::Result{"", ImageLine(0, "a", 1) + Summary(1, 1), 0}));
}

TEST_F(ImportFragmentsTest, PausesAfterEveryThousandthImage) {
  // Without a catalog every call fails at once (the import manager does not
  // retry a catalog it could not open), so 2,500 images take no time.
  root_.SetConfig("TEST_IMPORT_PAUSE_MS", "1");
  root_.RemoveCatalog();
  std::string file;
  for (int i = 1; i <= 2500; ++i) file += "STS_IMAGE = i" + std::to_string(i) + "\n";
  e2e::Result r = Add(file);
  EXPECT_THAT(r.err, ::testing::StartsWith(ImageLine(2008003, "i1", 1)));
  EXPECT_THAT(r.err, ::testing::EndsWith(ImageLine(2008003, "i2500", 2500) + Summary(0, 2500)));
  std::vector<std::string> log = root_.DebugLogMessages();
  EXPECT_EQ(
      std::count_if(log.begin(), log.end(),
                    [](const std::string& l) { return l.find("pausing") != std::string::npos; }),
      2);
  EXPECT_THAT(log, Contains(Eq("<2> cyclectl: pausing 1 ms after image 1000")));
  EXPECT_THAT(log, Contains(Eq("<2> cyclectl: pausing 1 ms after image 2000")));
  EXPECT_EQ(std::count_if(
                log.begin(), log.end(),
                [](const std::string& l) { return l.find("cannot open") != std::string::npos; }),
            1);
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
