// The enumerated option values, which texts each lookup takes and which it
// refuses, and the operation word whose row is not the first of its id.
#include <gtest/gtest.h>

#include <initializer_list>

#include "cmd/operations.h"
#include "cmd/option_values.h"

namespace {

TEST(OperationTableTest, ShortFormIsNamedByTheFirstRowOfItsId) {
  EXPECT_EQ(FindOperation("NS")->id, OP_NEW_SESSION);
  EXPECT_STREQ(OperationName(OP_NEW_SESSION), "new_session");
  EXPECT_STREQ(OperationName(99), "");
}

// A text given to an option and what its lookup must make of it; a value of
// -1 means the text is refused.
struct ValueCase {
  const char* text;
  int value;
};

template <typename T>
void ExpectValues(bool (*parse)(const char*, T*), std::initializer_list<ValueCase> cases) {
  for (const ValueCase& c : cases) {
    T value{};
    bool accepted = parse(c.text, &value);
    EXPECT_EQ(accepted, c.value != -1) << c.text;
    if (accepted) {
      EXPECT_EQ(static_cast<int>(value), c.value) << c.text;
    }
  }
}

TEST(OptionValuesTest, RecordTypesNotificationTypesAndDumpForms) {
  ExpectValues(ParseRecordTypes, {{"I", 1},
                                  {"ic", 3},
                                  {"C", 3},
                                  {"ICF", 7},
                                  {"f", 7},
                                  {"ICFS", 15},
                                  {"s", 15},
                                  {"IF", -1},
                                  {"", -1},
                                  {"ICFSX", -1}});
  ExpectValues(ParseNotificationType, {{"all", 1}, {"CONF", 2}, {"Error", 3}, {"errors", -1}});
  ExpectValues(ParseDumpForm, {{"r", 1}, {"J", 2}, {"l", 3}, {"x", -1}, {"rj", -1}});
}

TEST(OptionValuesTest, CopyTypes) {
  ExpectValues(ParseCopyType, {
                                  {"backup", 0},
                                  {"Duplicate", 1},
                                  {"duplicate to remote master", 3},
                                  {"Replica", 3},
                                  {"CLOUDSNAPINDEX", 9},
                                  {"12", 12},   // any number is taken as it is
                                  {"7abc", 7},  // trailing characters ignored
                                  {"tape", -1},
                                  {"duplicate ", -1},  // names match whole
                              });
}

TEST(OptionValuesTest, Subsystems) {
  InitAbrevMap();
  ExpectValues(ParseSubsystem, {
                                   {"null", 0},
                                   {"expm", 15},
                                   {"rm", 17},
                                   {"0", 0},
                                   {"17", 17},
                                   {"007", 7},
                                   {"18", -1},
                                   {"3x", -1},
                                   {"IM", -1},  // abbreviations keep their case
                                   {"", -1},
                                   {"+5", -1},
                                   {"99999999999999999999", -1},
                               });
}

}  // namespace
