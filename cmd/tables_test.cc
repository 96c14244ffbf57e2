// The operation and option tables and the enumerated option values.
#include <gtest/gtest.h>

#include <initializer_list>
#include <set>
#include <sstream>
#include <string>

#include "cmd/operations.h"
#include "cmd/option_values.h"
#include "cmd/options.h"

namespace {

struct OperationCase {
  const char* word;
  int id;
  bool admin;
  bool catalog;
  const char* allowed;  // option names, blank-separated
};

const OperationCase kOperations[] = {
    {"active", 1, true, false, "-after -backupid -before -destination -lifecycle -M"},
    {"add_import_frags", 2, true, false, "-M -test_import_frags"},
    {"cancel", 3, true, false,
     "-after -backupid -before -destination -lifecycle -M -nowarn -version -force"},
    {"completion_report", 4, false, false,
     "-after -bydate -client -days -lifecycle -policy -T -version"},
    {"deletedone", 5, true, false, "-M -expid"},
    {"diskfull", 6, true, false,
     "-dt -M -mediaid -mediaserver -storageserver -totalcap -usedspace -volumeid"},
    {"diskspaceinfo", 7, false, true, "-M -stype"},
    {"dropwg", 8, false, false, "-M -nowarn"},
    {"dump", 9, true, false, "-df -dopts -M -subsys"},
    {"help", 10, false, false, ""},
    {"update_hwm", 11, true, false,
     "-M -mediaid -mediaserver -storageserver -stssubtype -totalcap -usedcap"},
    {"inactive", 12, true, false,
     "-after -backupid -before -duration -destination -lifecycle -M -reactivation_time"},
    {"initiate_exp", 13, true, false, "-dp -dt -M -mediaid -mediaserver -storageserver -volumeid"},
    {"stlilist", 14, false, true,
     "-copy_type -backupid -client -destination -image_inactive -image_incomplete -image_state "
     "-l -lifecycle -M -mediaid -mediaserver -U -version"},
    {"report", 15, false, true,
     "-client -lifecycle -M -mediaid -mediaserver -storageserver -version"},
    {"list", 16, false, true,
     "-after -b -backupid -before -client -copy_inactive -copy_incomplete -copy_state "
     "-copy_type -destination -frag_state -image_inactive -image_incomplete -image_state -jobid "
     "-l -lifecycle -lifecycle_only -M -mediaid -mediaserver -policy -rt -storageserver -U "
     "-version"},
    {"list_import_conf", 17, false, true,
     "-all_pending_images -b -destination -json -json_compact -l -lifecycle -target_domain -U"},
    {"list_import_frags", 18, false, true, "-list_import_frags -M"},
    {"pendimplist", 19, false, true, "-M"},
    {"list_import_notify", 20, true, false,
     "-after -b -before -client -hostname -input -json -json_compact -l -M -ntype -output -U"},
    {"repllist", 21, false, true, "-l -M -sincetime -U"},
    {"listwg", 22, false, false, "-b -json -json_compact -l -M -key -U"},
    {"one_session", 23, true, false, "-M -arg1 -arg2 -arg3 -policy -schedule -schedtype -subsys"},
    {"query_exp", 24, true, false, "-expid -M"},
    {"redo", 25, true, true, "-backupid -M -slpindex"},
    {"remove_all", 26, true, false, ""},
    {"remove_exp", 27, true, true, "-M -nowarn"},
    {"remove_repl", 28, true, false, "-target_info -target_machine"},
    {"resume", 29, true, false, "-M -subsys"},
    {"showvol", 30, false, true, "-dt -M -mediaid -mediaserver -storageserver"},
    {"new_session", 31, true, false, "-M"},
    {"ns", 31, true, false, "-M"},
    {"suspend", 32, true, false, "-M -subsys"},
    {"testhook", 33, true, false, ""},
    {"update_pfs", 34, true, false, "-dt -M -mediaid -mediaserver -storageserver -volumeid"},
};

std::set<std::string> Words(const char* text) {
  std::istringstream in(text);
  std::set<std::string> words;
  for (std::string word; in >> word;) words.insert(word);
  return words;
}

std::set<std::string> ListNames(const option_e* list) {
  std::set<std::string> names;
  for (; *list != OPT_END; ++list) names.insert(optNames[*list]);
  return names;
}

class CommandTablesTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    InitOperationOptions();
    InitAbrevMap();
  }
};

TEST_F(CommandTablesTest, EveryOperationHasItsFlagsAndAllowedList) {
  for (const OperationCase& c : kOperations) {
    SCOPED_TRACE(c.word);
    const OperInfo* row = FindOperation(c.word);
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->id, c.id);
    EXPECT_EQ(row->requiresAdmin, c.admin);
    EXPECT_EQ(row->requiresCatalog, c.catalog);
    const option_e* list = FindOperationOptions(c.id);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(ListNames(list), Words(c.allowed));
  }
}

TEST_F(CommandTablesTest, TableHasEmptyFirstAndEndRowsAndThe35Lists) {
  ASSERT_EQ(operInfoRows, 37u);
  EXPECT_EQ(operInfo[0].id, OP_NONE);
  EXPECT_STREQ(operInfo[0].name, "");
  EXPECT_EQ(operInfo[36].id, OP_END);
  EXPECT_STREQ(operInfo[36].name, "");
  EXPECT_EQ(operationOptions.size(), 35u);
  EXPECT_EQ(FindOperationOptions(OP_NONE), NoneOptions);
  EXPECT_EQ(FindOperationOptions(OP_END), nullptr);
}

TEST_F(CommandTablesTest, WordsMatchWholeAndIgnoringCase) {
  EXPECT_EQ(FindOperation("LIST")->id, OP_LIST);
  EXPECT_EQ(FindOperation("List")->id, OP_LIST);
  EXPECT_EQ(FindOperation("NS")->id, OP_NEW_SESSION);
  EXPECT_EQ(FindOperation("lis"), nullptr);
  EXPECT_EQ(FindOperation("listx"), nullptr);
  EXPECT_EQ(FindOperation(""), nullptr);  // the empty end row is not a word
}

TEST_F(CommandTablesTest, NamesComeFromTheFirstRowOfAnId) {
  EXPECT_STREQ(OperationName(OP_SHOWVOL), "showvol");
  EXPECT_STREQ(OperationName(OP_NEW_SESSION), "new_session");
  EXPECT_STREQ(OperationName(OP_SUSPEND), "suspend");
  EXPECT_STREQ(OperationName(OP_TESTHOOK), "testhook");
  EXPECT_STREQ(OperationName(OP_UPDATE_PFS), "update_pfs");
  EXPECT_STREQ(OperationName(99), "");
}

TEST_F(CommandTablesTest, ExclusiveGroupTextsInCheckingOrder) {
  const char* expected[] = {
      "-lifecycle, -lifecycle_only",
      "-reactivation_time, -duration",
      "-image_state, -copy_state, -frag_state, -image_incomplete, -image_inactive, "
      "-copy_incomplete, -copy_inactive",
      "-b, -l, -U, -json, -json_compact",
      "-after, -before",
  };
  for (int i = 0; i < 5; ++i) EXPECT_EQ(ExclusiveGroupText(exclusiveGroups[i]), expected[i]);
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

TEST_F(CommandTablesTest, RecordTypes) {
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
}

TEST_F(CommandTablesTest, NotificationTypesAndDumpForms) {
  ExpectValues(ParseNotificationType, {{"all", 1}, {"CONF", 2}, {"Error", 3}, {"errors", -1}});
  ExpectValues(ParseDumpForm, {{"r", 1}, {"J", 2}, {"l", 3}, {"x", -1}, {"rj", -1}});
}

TEST_F(CommandTablesTest, CopyTypes) {
  ExpectValues(ParseCopyType, {
                                  {"backup", 0},
                                  {"Duplicate", 1},
                                  {"snapshot", 2},
                                  {"duplicate to remote master", 3},
                                  {"Replica", 3},
                                  {"import", 4},
                                  {"backup from snapshot", 5},
                                  {"index from snapshot", 6},
                                  {"snapreplica", 7},
                                  {"cloudsnapreplica", 8},
                                  {"CLOUDSNAPINDEX", 9},
                                  {"12", 12},   // any number is taken as it is
                                  {"7abc", 7},  // trailing characters ignored
                                  {"tape", -1},
                                  {"duplicate ", -1},  // names match whole
                              });
}

TEST_F(CommandTablesTest, Subsystems) {
  EXPECT_EQ(abrevMap.size(), 18u);
  ExpectValues(ParseSubsystem, {
                                   {"null", 0},  {"alm", 1},  {"cem", 2},
                                   {"wgm", 3},   {"js", 4},   {"wm", 5},
                                   {"cfr", 6},   {"sdm", 7},  {"im", 8},
                                   {"scm", 9},   {"cm", 10},  {"wdm", 11},
                                   {"em", 12},   {"nm", 13},  {"impm", 14},
                                   {"expm", 15}, {"ipn", 16}, {"rm", 17},
                                   {"0", 0},     {"17", 17},  {"007", 7},
                                   {"18", -1},   {"3x", -1},  {"IM", -1},
                                   {"", -1},     {"+5", -1},  {"99999999999999999999", -1},
                               });
}

}  // namespace
