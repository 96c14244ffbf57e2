// Tests of the record printers' special cases: empty texts, the GUID, the
// inactive bit, named numbers at and beyond the ends of their tables, the
// remote-master residence. The full layout of every record in every form is
// checked end to end (tests/e2e/list_test.cc).
#include "catalog/record_printers.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

template <typename Record>
std::string Printed(void (*print)(const Record&, FILE*), const Record& record) {
  char* data = nullptr;
  size_t size = 0;
  FILE* out = open_memstream(&data, &size);
  print(record, out);
  fclose(out);
  std::string text(data, size);
  free(data);
  return text;
}

void ExpectLines(const std::string& text, const std::vector<std::string>& lines) {
  for (const std::string& line : lines) {
    EXPECT_NE(std::string::npos, text.find(line + "\n")) << line << "\nin:\n" << text;
  }
}

TEST(RecordPrintersTest, EmptyImage) {
  EMM_Image image = {};
  image.SLPState = 27;  // 19 and the inactive bit: no name
  EXPECT_EQ(
      "V7.6.0 I *NULL* *NULL* *NULL* 0 *NULL* 0 0 *NULL* 19 true 0 *NULL* 0  "
      "{00000000-0000-0000-0000-000000000000} 0 0 0\n",
      Printed(PrintImageShort, image));
  EXPECT_EQ("*NULL*\n", Printed(PrintImageBrief, image));
  ExpectLines(
      Printed(PrintImageUser, image),
      {" Master Server                 : (none specified)",
       " Storage Lifecycle State       : 19 (INVALID_IMAGE_LIFECYCLE_STATE)",
       " Storage Lifecycle Is Inactive : true", " OriginMasterServer            : (none specified)",
       " Data Classification ID        : (none specified)"});
}

TEST(RecordPrintersTest, CopyNamesAtTheEndsOfTheirTables) {
  EMM_ImageCopy copy = {};
  copy.CopyType = 9;
  copy.CopyState = 15;
  copy.RetentionType = 5;
  copy.DataFormat = 3;
  copy.MPXState = 2;
  strcpy(copy.Residence, "*Remote*Master*");
  strcpy(copy.DestinationID, "target-a");
  ExpectLines(
      Printed(PrintCopyUser, copy),
      {"   Copy Type           : 9 (CLOUD_SNAPSHOT_INDEX) ",
       "   Copy State          : 15 (IMPORT_FAILED) ", "   Retention Type      : 5 (MIRROR) ",
       "   DataFormat          : 3 (DF_NDMP) ", "   MPX State           : 2 (true)",
       "   Residence           : Remote Master", "   Target ID           : target-a"});
  EXPECT_NE(std::string::npos, Printed(PrintCopyShort, copy).find(" *Remote*Master* "));

  copy.CopyType = 10;
  copy.CopyState = 16;
  copy.RetentionType = -1;
  copy.DataFormat = 4;
  copy.MPXState = 0;
  strcpy(copy.Residence, "disk_stu");
  copy.DestinationID[0] = '\0';
  ExpectLines(
      Printed(PrintCopyUser, copy),
      {"   Copy Type           : 10 (INVALID_COPY_TYPE)",
       "   Copy State          : 16 (INVALID_IMAGE_COPY_STATE)",
       "   Retention Type      : -1 (INVALID_RETENTION_TYPE)",
       "   DataFormat          : 4 (INVALID_DATA_FORMAT)", "   MPX State           : 0 (false)",
       "   Residence           : disk_stu", "   Destination ID      : (none specified)"});
}

TEST(RecordPrintersTest, FragmentNamesAtTheEndsOfTheirTables) {
  struct Case {
    int mediaType;
    short subType;
    short state;
    std::vector<std::string> lines;
  } cases[] = {
      {6,
       6,
       5,
       {"     Media Type        : 6 (DISKSTAGE) ", "     Media Sub-Type    : 6 (STSDYNAMIC) ",
        "     Fragment State    : 5 (UNDEFINED) "}},
      {0,
       0,
       1,
       {"     Media Type        : 0 (DISK) ", "     Media Sub-Type    : 0 (DEFAULT) ",
        "     Fragment State    : 1 (ACTIVE) "}},
      {7,
       7,
       0,
       {"     Media Type        : 7 (UNKNOWN_STU_TYPE)",
        "     Media Sub-Type    : 7 (UNKNOWN_STU_SUBTYPE)",
        "     Fragment State    : 0 (INVALID_FRAG_STATE)"}},
      {-1,
       -1,
       6,
       {"     Media Type        : -1 (UNKNOWN_STU_TYPE)",
        "     Media Sub-Type    : -1 (UNKNOWN_STU_SUBTYPE)",
        "     Fragment State    : 6 (INVALID_FRAG_STATE)"}},
  };
  for (const Case& c : cases) {
    EMM_ImageFragment fragment = {};
    fragment.MediaType = c.mediaType;
    fragment.MediaSubType = c.subType;
    fragment.FragmentState = c.state;
    ExpectLines(Printed(PrintFragmentUser, fragment), c.lines);
  }
}

}  // namespace
