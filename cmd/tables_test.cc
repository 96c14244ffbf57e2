// The operation and option tables and the enumerated option values.
#include <gtest/gtest.h>

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

TEST_F(CommandTablesTest, RecordTypes) {
  struct {
    const char* text;
    bool ok;
    int mask;
  } cases[] = {{"I", true, 1}, {"ic", true, 3},    {"C", true, 3},  {"ICF", true, 7},
               {"f", true, 7}, {"ICFS", true, 15}, {"s", true, 15}, {"IF", false, 0},
               {"", false, 0}, {"ICFSX", false, 0}};
  for (const auto& c : cases) {
    int mask = -1;
    EXPECT_EQ(ParseRecordTypes(c.text, &mask), c.ok) << c.text;
    if (c.ok) {
      EXPECT_EQ(mask, c.mask) << c.text;
    }
  }
}

TEST_F(CommandTablesTest, NotificationTypesAndDumpForms) {
  ImportNotificationType_e type;
  EXPECT_TRUE(ParseNotificationType("all", &type));
  EXPECT_EQ(type, 1);
  EXPECT_TRUE(ParseNotificationType("CONF", &type));
  EXPECT_EQ(type, 2);
  EXPECT_TRUE(ParseNotificationType("Error", &type));
  EXPECT_EQ(type, 3);
  EXPECT_FALSE(ParseNotificationType("errors", &type));

  DumpFormSelector form;
  EXPECT_TRUE(ParseDumpForm("r", &form));
  EXPECT_EQ(form, 1);
  EXPECT_TRUE(ParseDumpForm("J", &form));
  EXPECT_EQ(form, 2);
  EXPECT_TRUE(ParseDumpForm("l", &form));
  EXPECT_EQ(form, 3);
  EXPECT_FALSE(ParseDumpForm("x", &form));
  EXPECT_FALSE(ParseDumpForm("rj", &form));
}

TEST_F(CommandTablesTest, CopyTypes) {
  struct {
    const char* text;
    bool ok;
    int value;
  } cases[] = {
      {"backup", true, 0},
      {"Duplicate", true, 1},
      {"snapshot", true, 2},
      {"duplicate to remote master", true, 3},
      {"Replica", true, 3},
      {"import", true, 4},
      {"backup from snapshot", true, 5},
      {"index from snapshot", true, 6},
      {"snapreplica", true, 7},
      {"cloudsnapreplica", true, 8},
      {"CLOUDSNAPINDEX", true, 9},
      {"12", true, 12},   // any number is taken as it is
      {"7abc", true, 7},  // trailing characters ignored
      {"tape", false, 0},
      {"duplicate ", false, 0},  // names match whole
  };
  for (const auto& c : cases) {
    int value = -1;
    EXPECT_EQ(ParseCopyType(c.text, &value), c.ok) << c.text;
    if (c.ok) {
      EXPECT_EQ(value, c.value) << c.text;
    }
  }
}

TEST_F(CommandTablesTest, Subsystems) {
  struct {
    const char* text;
    bool ok;
    int value;
  } cases[] = {
      {"null", true, 0},  {"alm", true, 1},  {"cem", true, 2},
      {"wgm", true, 3},   {"js", true, 4},   {"wm", true, 5},
      {"cfr", true, 6},   {"sdm", true, 7},  {"im", true, 8},
      {"scm", true, 9},   {"cm", true, 10},  {"wdm", true, 11},
      {"em", true, 12},   {"nm", true, 13},  {"impm", true, 14},
      {"expm", true, 15}, {"ipn", true, 16}, {"rm", true, 17},
      {"0", true, 0},     {"17", true, 17},  {"007", true, 7},
      {"18", false, 0},   {"3x", false, 0},  {"IM", false, 0},
      {"", false, 0},     {"+5", false, 0},  {"99999999999999999999", false, 0},
  };
  EXPECT_EQ(abrevMap.size(), 18u);
  for (const auto& c : cases) {
    SubSystemID value = SUBSYSTEM_ID_MAX;
    EXPECT_EQ(ParseSubsystem(c.text, &value), c.ok) << c.text;
    if (c.ok) {
      EXPECT_EQ(value, c.value) << c.text;
    }
  }
}

}  // namespace
