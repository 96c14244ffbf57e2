// The enumerated option values, which texts each lookup takes and which it
// refuses, the operation word whose row is not the first of its id, and the
// agreement of the tables keyed by operation.
#include <gtest/gtest.h>

#include <initializer_list>
#include <sstream>
#include <string>

#include "cmd/dispatch.h"
#include "cmd/operations.h"
#include "cmd/option_values.h"
#include "cmd/options.h"
#include "cmd/usage.h"

namespace {

TEST(OperationTableTest, ShortFormIsNamedByTheFirstRowOfItsId) {
  EXPECT_EQ(FindOperation("NS")->id, OP_NEW_SESSION);
  EXPECT_STREQ(OperationName(OP_NEW_SESSION), "new_session");
  EXPECT_STREQ(OperationName(99), "");
}

// Every operation word has its allowed-option list, its synopsis, its line in
// the general usage and its dispatch row, except where it ends the run
// before dispatch (help, testhook) or is withdrawn (remove_all).
TEST(OperationTableTest, EveryOperationHasItsRowInEveryTable) {
  InitOperationOptions();
  std::ostringstream general;
  CmdUsage(general, USAGE_ALL, OP_HELP);
  for (const OperInfo* row = operInfo + 1; row->id != OP_END; ++row) {
    const std::string name = row->name;
    const bool withdrawn = row->id == OP_REMOVE_ALL;
    EXPECT_NE(FindOperationOptions(row->id), nullptr) << name;
    std::ostringstream synopsis;
    CmdUsage(synopsis, USAGE_PUBLIC, row->id);
    EXPECT_EQ(synopsis.str().empty(), withdrawn) << name;
    if (row->id != OP_HELP && name != "ns" && !withdrawn) {
      const std::string& text = general.str();
      EXPECT_TRUE(text.find("\n   " + name + " ") != std::string::npos ||
                  text.find("\n   " + name + "-") != std::string::npos)
          << name;
    }
    bool endsWhileParsing = row->id == OP_HELP || row->id == OP_TESTHOOK;
    EXPECT_EQ(FindDispatchEntry(row->id) == nullptr, endsWhileParsing) << name;
  }
  EXPECT_EQ(operInfo[operInfoRows - 1].id, OP_END);
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
