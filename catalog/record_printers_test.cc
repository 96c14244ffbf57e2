// Tests of the record printers' special cases: empty texts, the GUID, the
// inactive bit, named numbers at and beyond the ends of their tables, the
// remote-master residence. The full layout of every record in every form is
// checked end to end (tests/e2e/list_test.cc).
#include "catalog/record_printers.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <regex>
#include <string>

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

// The rest of the line after each of `labels` and its colon in `text`
// ("" where none), joined by '|'.
std::string Fields(const std::string& text, std::initializer_list<const char*> labels) {
  std::string fields;
  for (const char* label : labels) {
    std::smatch m;
    std::regex_search(text, m, std::regex(std::string("\n *") + label + " *: ([^\n]*)\n"));
    fields += std::string(fields.empty() ? "" : "|") + m[1].str();
  }
  return fields;
}

TEST(RecordPrintersTest, EmptyImage) {
  EMM_Image image = {};
  image.SLPState = 27;  // 19 and the inactive bit: no name
  EXPECT_EQ(
      "V7.6.0 I *NULL* *NULL* *NULL* 0 *NULL* 0 0 *NULL* 19 true 0 *NULL* 0  "
      "{00000000-0000-0000-0000-000000000000} 0 0 0\n",
      Printed(PrintImageShort, image));
  EXPECT_EQ("*NULL*\n", Printed(PrintImageBrief, image));
  EXPECT_EQ(Fields(Printed(PrintImageUser, image),
                   {"Master Server", "Storage Lifecycle State", "Storage Lifecycle Is Inactive",
                    "OriginMasterServer", "Data Classification ID"}),
            "(none specified)|19 (INVALID_IMAGE_LIFECYCLE_STATE)|true|(none specified)|"
            "(none specified)");
}

TEST(RecordPrintersTest, NamesAtTheEndsOfTheirTables) {
  static const struct {
    int copyType, copyState, retentionType, dataFormat, mpxState;
    const char *residence, *destination;
    const char* fields;  // type|state|retention|format|MPX|residence|target|destination
  } copies[] = {
      {9, 15, 5, 3, 2, "*Remote*Master*", "target-a",
       "9 (CLOUD_SNAPSHOT_INDEX) |15 (IMPORT_FAILED) |5 (MIRROR) |3 (DF_NDMP) |2 (true)|"
       "Remote Master|target-a|"},
      {10, 16, -1, 4, 0, "disk_stu", "",
       "10 (INVALID_COPY_TYPE)|16 (INVALID_IMAGE_COPY_STATE)|-1 (INVALID_RETENTION_TYPE)|"
       "4 (INVALID_DATA_FORMAT)|0 (false)|disk_stu||(none specified)"},
  };
  for (const auto& c : copies) {
    EMM_ImageCopy copy = {};
    copy.CopyType = c.copyType;
    copy.CopyState = c.copyState;
    copy.RetentionType = c.retentionType;
    copy.DataFormat = c.dataFormat;
    copy.MPXState = c.mpxState;
    strcpy(copy.Residence, c.residence);
    strcpy(copy.DestinationID, c.destination);
    EXPECT_EQ(Fields(Printed(PrintCopyUser, copy),
                     {"Copy Type", "Copy State", "Retention Type", "DataFormat", "MPX State",
                      "Residence", "Target ID", "Destination ID"}),
              c.fields);
    EXPECT_NE(std::string::npos,
              Printed(PrintCopyShort, copy).find(std::string(" ") + c.residence + " "));
  }

  static const struct {
    int mediaType;
    short subType, state;
    const char* fields;  // media type|sub-type|state
  } fragments[] = {
      {6, 6, 5, "6 (DISKSTAGE) |6 (STSDYNAMIC) |5 (UNDEFINED) "},
      {0, 0, 1, "0 (DISK) |0 (DEFAULT) |1 (ACTIVE) "},
      {7, 7, 0, "7 (UNKNOWN_STU_TYPE)|7 (UNKNOWN_STU_SUBTYPE)|0 (INVALID_FRAG_STATE)"},
      {-1, -1, 6, "-1 (UNKNOWN_STU_TYPE)|-1 (UNKNOWN_STU_SUBTYPE)|6 (INVALID_FRAG_STATE)"},
  };
  for (const auto& c : fragments) {
    EMM_ImageFragment fragment = {};
    fragment.MediaType = c.mediaType;
    fragment.MediaSubType = c.subType;
    fragment.FragmentState = c.state;
    EXPECT_EQ(Fields(Printed(PrintFragmentUser, fragment),
                     {"Media Type", "Media Sub-Type", "Fragment State"}),
              c.fields);
  }
}

}  // namespace
