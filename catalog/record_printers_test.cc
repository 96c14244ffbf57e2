// Tests of the record printers' special cases: empty texts, the GUID, the
// inactive bit, named numbers at and beyond the ends of their tables, the
// remote-master residence, each record's forms compared whole with
// tests/e2e/golden/list/records-*.txt. The full layout of every record in
// every form is checked end to end (tests/e2e/list_test.cc).
#include "catalog/record_printers.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

namespace {

template <typename Record>
std::string Printed(void (*print)(const Record&, FILE*), const Record& record) {
  testing::internal::CaptureStdout();
  print(record, stdout);
  fflush(stdout);
  return testing::internal::GetCapturedStdout();
}

// The expected text in tests/e2e/golden/list/`name`.
std::string Golden(const std::string& name) {
  std::ifstream in(STASHWELL_SOURCE_DIR "/tests/e2e/golden/list/" + name);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

TEST(RecordPrintersTest, EmptyTextsAndNamesAtTheEndsOfTheirTables) {
  EMM_Image image = {};
  image.SLPState = 27;  // 19 and the inactive bit: no name
  EXPECT_EQ(Printed(PrintImageShort, image) + Printed(PrintImageBrief, image) +
                Printed(PrintImageUser, image),
            Golden("records-empty-image.txt"));

  EMM_ImageCopy copy = {};
  copy.CopyType = 9;
  copy.CopyState = 15;
  copy.RetentionType = 5;
  copy.DataFormat = 3;
  copy.MPXState = 2;
  strcpy(copy.Residence, "*Remote*Master*");
  strcpy(copy.DestinationID, "target-a");
  std::string printed = Printed(PrintCopyShort, copy) + Printed(PrintCopyUser, copy);
  copy = {};
  copy.CopyType = 10;
  copy.CopyState = 16;
  copy.RetentionType = -1;
  copy.DataFormat = 4;
  strcpy(copy.Residence, "disk_stu");
  printed += Printed(PrintCopyShort, copy) + Printed(PrintCopyUser, copy);
  // Media type, sub-type and fragment state at and past both ends.
  static const short fragments[][3] = {{6, 6, 5}, {0, 0, 1}, {7, 7, 0}, {-1, -1, 6}};
  for (const auto& f : fragments) {
    EMM_ImageFragment fragment = {};
    fragment.MediaType = f[0];
    fragment.MediaSubType = f[1];
    fragment.FragmentState = f[2];
    printed += Printed(PrintFragmentUser, fragment);
  }
  EXPECT_EQ(printed, Golden("records-table-ends.txt"));
}

}  // namespace
