// The enumerated option values, which texts each lookup takes and which it
// refuses, the operation word whose row is not the first of its id, the
// agreement of the tables keyed by operation and the dispatcher's default row.
#include <gtest/gtest.h>

#include <initializer_list>
#include <sstream>
#include <string>

#include "cmd/dispatch.h"
#include "cmd/operations.h"
#include "cmd/option_values.h"
#include "cmd/options.h"
#include "cmd/usage.h"
#include "util/process.h"

namespace {

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
  // A short form is named by the first row of its id.
  EXPECT_EQ(FindOperation("NS")->id, OP_NEW_SESSION);
  EXPECT_STREQ(OperationName(OP_NEW_SESSION), "new_session");
  EXPECT_STREQ(OperationName(99), "");
}

// What a lookup makes of each text, blank-separated; "-" where it refuses one.
template <typename T>
std::string Looked(bool (*parse)(const char*, T*), std::initializer_list<const char*> texts) {
  std::string out;
  for (const char* text : texts) {
    T value{};
    out += std::string(out.empty() ? "" : " ") +
           (parse(text, &value) ? std::to_string(static_cast<int>(value)) : "-");
  }
  return out;
}

TEST(OptionValuesTest, WhatEachLookupTakesAndRefuses) {
  InitAbrevMap();
  EXPECT_EQ(Looked(ParseRecordTypes, {"I", "ic", "C", "ICF", "f", "ICFS", "s", "IF", "", "ICFSX"}),
            "1 3 3 7 7 15 15 - - -");
  EXPECT_EQ(Looked(ParseNotificationType, {"all", "CONF", "Error", "errors"}), "1 2 3 -");
  EXPECT_EQ(Looked(ParseDumpForm, {"r", "J", "l", "x", "rj"}), "1 2 3 - -");
  // Any number is taken as it is, trailing characters ignored; names match whole.
  EXPECT_EQ(Looked(ParseCopyType, {"backup", "Duplicate", "duplicate to remote master", "Replica",
                                   "CLOUDSNAPINDEX", "12", "7abc", "tape", "duplicate "}),
            "0 1 3 3 9 12 7 - -");
  // Abbreviations keep their case.
  EXPECT_EQ(Looked(ParseSubsystem, {"null", "expm", "rm", "0", "17", "007", "18", "3x", "IM", "",
                                    "+5", "99999999999999999999"}),
            "0 15 17 0 17 7 - - - - - -");
}

// The dispatcher's default row, which no operation word reaches. What each
// operation's row hands its handler is shown end to end.
TEST(DispatchTest, OperationWithoutHandlerFallsToTheDefaultRow) {
  CmdName = "cyclectl";
  CommandLine line;
  line.operation = OP_HELP;
  testing::internal::CaptureStderr();
  EXPECT_EQ(Dispatch(line), 144);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "cyclectl: unrecognized operation 10\n");
}

}  // namespace
