// Usage texts of cyclectl: the general usage on standard error (public and
// with -q) and every operation's synopsis on standard output with -help.
#include <gtest/gtest.h>

#include <string>

#include "tests/e2e/harness.h"

namespace {

const char kGeneralHead[] = R"(
Usage: cyclectl [operation_name] [options]

Available operations:
   active            - activate SLP operations on image/copies
   cancel            - cancel pending SLP operations on images/copies
   diskspaceinfo     - display amount of space used by disk server type
   inactive          - inactivate SLP operations on image/copies
   list              - list SLP information about images/copies
   list_import_conf  - report on slp import confirmation
   pendimplist       - show O.X.R images waiting to be imported
   completion_report - show latest date for completed processing
   redo              - redo selected SLP operations
   repllist          - show status for completed O.X.R images
   report            - show rollup of incomplete SLP images/copies
   stlilist          - show progress status for SLP managed images/copies
)";

const char kGeneralInternal[] = R"(
   internal use only:
   add_import_frags  - add test fragments for O.X.R. import
   deletedone        - signal deletion done
   diskfull          - initiate expiration on a disk volume
   dropwg            - drop all workgroup allocations
   dump              - dump cyclesvc subsystem state
   initiate_exp      - initiate expiration (old style)
   list_import_notify- list O.X.R. import notification records
   list_import_frags - list fragment info for pending O.X.R. import images
   listwg            - list workgroups
   new_session       - run one set of slp processing sessions
   one_session       - run a single session of one cyclesvc subsystem
   query_exp         - query expiration
   remove_exp        - remove expired fragments from image list
   remove_repl       - remove completed replication records, allowing cleanup
                       of replication host
   resume            - resume execution of an cyclesvc subsystem
   showvol           - show volume space by data classification
   suspend           - suspend execution of an cyclesvc subsystem
   testhook          - display internal revision state
   update_hwm        - update HWM notification for expiration
   update_pfs        - update potential free space on given volume
)";

const char kGeneralTail[] = R"(
To get detailed usage of each operation use:
   cyclectl operation -help

)";

const std::string kPublicUsage = std::string(kGeneralHead) + kGeneralTail;
const std::string kAllUsage = std::string(kGeneralHead) + kGeneralInternal + kGeneralTail;

// The synopses under LC_ALL=C, whose date form is mm/dd/yyyy HH:MM:SS.
struct Synopsis {
  const char* word;
  const char* text;
};

const Synopsis kSynopses[] = {
    {"active", R"(
   -- activate SLP operations on selected image copies
   active [-lifecycle <name>] [-destination <name>] [-M <master_server>]
          [-before <mm/dd/yyyy HH:MM:SS> | -after <mm/dd/yyyy HH:MM:SS>]
   active -backupid <id_value>

)"},
    {"add_import_frags", R"(
   -- add test fragments for O.X.R. import
   add_import_frags -test_import_frags <import_frag_file> [-M <master_server>]

)"},
    {"cancel", R"(
   -- cancel pending operations on selected image copies
   cancel -lifecycle <name> [-destination <name>] [-version <number>]
          [-before <mm/dd/yyyy HH:MM:SS> | -after <mm/dd/yyyy HH:MM:SS>]
          [-nowarn] [-M <master_server>] [-force]
   cancel -backupid <id_value> [-M <master_server>] [-force]

)"},
    {"completion_report", R"(
   -- completion_report - show completed images for policies, clients,
                          and lifecycles
   completion_report [-policy <policy_name>] [-client <client_name>]
                     [-lifecycle <lifecycle_name>] [-version <number>]
                     [-days <number>] [-bydate]

)"},
    {"deletedone", R"(
   -- signal deletion done
   deletedone   [-expid <value>] [-M <master_server>]

)"},
    {"diskfull", R"(
   -- initiate image expiration on a disk volume
   diskfull     [-dt <disk_type>] [-mediaid <value>] [-mediaserver <name>]
                [-storageserver <name>] [-volumeid <value>] [-totalcap <value>]
                [-usedspace <value>] [-M <master_server>]

)"},
    {"diskspaceinfo", R"(
   -- display amount of space used by disk server type
   diskspaceinfo [-stype <name>] [-M <master_server>]

)"},
    {"dropwg", R"(
   -- drop all work group allocations
   dropwg [-M <master_server>] [-nowarn]

)"},
    {"dump", R"(
   -- dump cyclesvc internal state
   dump         [-subsys <id>] [-dopts <string>] [-df <r|j|l>]
                [-M <master_server>]

)"},
    {"update_hwm", R"(
   -- Update HWM notification for image expiration
   update_hwm   [-mediaserver <name>] [-storageserver <name>] [-stssubtype <sts_subtype>]
                [-mediaid <value>] [-totalcap <value>] [-usedcap <value>]
                [-M <master_server>]

)"},
    {"inactive", R"(
   -- inactivate future SLP operations on selected image copies
   inactive -lifecycle <name> [-destination <name>] [-M <master_server>]
            [-reactivation_time <mm/dd/yyyy HH:MM:SS> | -duration <hours>]
            [-before <mm/dd/yyyy HH:MM:SS> | -after <mm/dd/yyyy HH:MM:SS>]
   inactive -destination <name> [-M <master_server>]
            [-reactivation_time <mm/dd/yyyy HH:MM:SS> | -duration <hours>]
            [-before <mm/dd/yyyy HH:MM:SS> | -after <mm/dd/yyyy HH:MM:SS>]
   inactive -backupid <id_value> [-M <master_server>]

)"},
    {"initiate_exp", R"(
   -- initiate image expiration on a disk volume (old style)
   initiate_exp [-dp <disk_pool>] [-dt <disk_type>] [-mediaid <value>]
                [-mediaserver <name>] [-storageserver <name>] [-volumeid <value>]
                [-M <master_server>]

)"},
    {"stlilist", R"(
   -- show progress status for SLP managed images and copies
   stlilist [-l | -U] [-M <master_server>]
            [-lifecycle <name> [-destination <name>] [-version <number>] |
             -backupid <id_value>]
            [-client <name>] [-mediaid <value>]
            [-mediaserver <name>]
            [-image_state <value> -image_incomplete | -image_inactive]
            [-copy_type <value>]

)"},
    // Trailing blanks matter in the next texts.
    {"report",
     "\n"
     "   -- show a point-in-time rollup of incomplete copies of SLP managed images\n"
     "   report   [-lifecycle <name> [-version <number>]] \n"
     "            [-client <name>] [-mediaid <value>] \n"
     "            [-storageserver <name>] [-mediaserver <name>] [-M <master_server>]\n"
     "\n"},
    {"list",
     "\n"
     "   -- show contents of image list\n"
     "   list [-l | -U | -b] [-rt I|IC|ICF|ICFS] [-M <master_server>]\n"
     "        [-lifecycle <name> [-version <number>] [-destination <name>] | \n"
     "         -lifecycle_only | -backupid <id_value> | -jobid <value> ] \n"
     "        [-client <name>] [-mediaid <value>]\n"
     "        [-storageserver <name>] [-mediaserver <name>]\n"
     "        [-image_state <value> | -copy_state <value> | -frag_state <value> |\n"
     "         -image_incomplete | -image_inactive | -copy_incomplete | -copy_inactive]\n"
     "        [-copy_type <value>] [-policy <value>]\n"
     "        [-before <mm/dd/yyyy HH:MM:SS> | -after <mm/dd/yyyy HH:MM:SS>]\n"
     "\n"},
    {"list_import_conf", R"(
   -- report on SLP import confirmation
   list_import_conf [-l | -U | -b | -json | -json_compact] [-lifecycle <name>] [-all_pending_images]
                    [-destination <name>] [-target_domain <name>]
)"},
    {"list_import_frags", R"(
   -- list_import_frags - list fragment info for pending O.X.R. import images
   list_import_frags [-M <master_server>]

)"},
    {"pendimplist", R"(
   -- show replicate O.X.R. images waiting to be imported
   pendimplist [-M <master_server>]

)"},
    {"list_import_notify",
     "\n"
     "   -- show import notification records\n"
     "   list_import_notify [-input | -output] [-ntype all|conf|error] [-M <master_server>]\n"
     "                      [-l | -U | -b | -json | -json_compact] \n"
     "                      [-before <mm/dd/yyyy HH:MM:SS> | -after <mm/dd/yyyy HH:MM:SS>]\n"
     "                      [-hostname <name>] [-client <name>]\n"},
    {"repllist", R"(
   -- show status for completed O.X.R images and their target devices
   repllist [-l | -U] [-M <master_server>]
            [-sincetime <timeval>]

)"},
    {"listwg", R"(
   -- listwg - list work group records
   listwg [-l | -U | -b | -json | -json_compact ] [-M <master_server>]
          [-key <value>]

)"},
    {"one_session", R"(
   -- run one cyclesvc subsystem session
   one_session  [-subsys <id>] [-arg1 <name>] [-arg2 <name>] [-schedtype <value>]
                [-policy <name>] [-schedule <name>] [-schedtype <value>]
                [-M <master_server>]

                alm 1
                cem 2
                cfr 6
                cm 10
                em 12
                expm 15
                im 8
                impm 14
                ipn 16
                js 4
                nm 13
                null 0
                rm 17
                scm 9
                sdm 7
                wdm 11
                wgm 3
                wm 5

)"},
    {"query_exp", R"(
   -- query expiration
   query_exp    [-expid <value>] [-M <master_server>]

)"},
    {"redo", R"(
   -- redo SLP operation
   redo -backupid <value> -slpindex <value> [-M <master_server>]

)"},
    {"remove_exp", R"(
   -- remove expired fragment entries from image list
   remove_exp   [-nowarn] [-M <master_server>]

)"},
    {"remove_repl", R"(
   -- remove_repl - remove completed replication records
   remove_repl -target_machine <machine_name> [-target_info <info>]

)"},
    {"resume", R"(
   -- resume cyclesvc subsystem
   resume       [-subsys <id>] [-M <master_server>]

)"},
    {"showvol", R"(
   -- show volume space usage by data classification
   showvol      [-dt <disk_type>] [-mediaid <value>] [-mediaserver <name>]
                [-storageserver <name>] [-M <master_server>]

)"},
    {"new_session", R"(
   -- start a new SLP management session
   new_session  [-M <master_server>]

)"},
    {"suspend", R"(
   -- suspend cyclesvc subsystem
   suspend      [-subsys <id>] [-M <master_server>]

)"},
    {"testhook", R"(
   -- invoke the test hook
   -testhook

)"},
    {"update_pfs",
     "\n"
     "   -- update potential free space on a given volume\n"
     "   update_pfs   [-dt <disk_type>] [-mediaid <value>] \n"
     "                [-mediaserver <name>] [-storageserver <name>]\n"
     "                [-volumeid <value>] [-M <master_server>]\n"
     "\n"},
};

const char* SynopsisOf(const std::string& word) {
  for (const Synopsis& s : kSynopses) {
    if (word == s.word) return s.text;
  }
  return nullptr;
}

TEST(CmdlineUsageTest, GeneralUsageGoesToStandardError) {
  e2e::Root root;
  struct {
    std::vector<std::string> args;
    const std::string& usage;
  } cases[] = {
      {{}, kPublicUsage},     {{"help"}, kPublicUsage},     {{"HELP"}, kPublicUsage},
      {{"-h"}, kPublicUsage}, {{"-help", "-q"}, kAllUsage}, {{"-q", "help"}, kAllUsage},
  };
  for (const auto& c : cases) {
    e2e::Result r = root.Run(c.args);
    std::string trace = c.args.empty() ? "(none)" : c.args[0];
    EXPECT_EQ(r.err, c.usage) << trace;
    EXPECT_EQ(r.out, "") << trace;
    EXPECT_EQ(r.status, 0) << trace;
  }
}

TEST(CmdlineUsageTest, FirstLineNamesTheProgramLastLineSaysCyclectl) {
  e2e::Root root;
  e2e::RunOptions options;
  options.argv0 = "/opt/bin/slpadm";
  e2e::Result r = root.Run({"help"}, "", options);
  std::string expected = kPublicUsage;
  expected.replace(expected.find("cyclectl"), 8, "slpadm");
  EXPECT_EQ(r.err, expected);
  EXPECT_EQ(r.status, 0);
}

TEST(CmdlineUsageTest, OptionsWithoutAnOperation) {
  e2e::Root root;
  e2e::Result r = root.Run({"-client", "c"});
  EXPECT_EQ(r.err, "\nMust specify an operation to perform\n" + kPublicUsage);
  EXPECT_EQ(r.out, "");
  EXPECT_EQ(r.status, 1);

  r = root.Run({"-wait", "-q"});
  EXPECT_EQ(r.err,
            "option '-wait' is no longer necessary and has been deprecated\n"
            "\nMust specify an operation to perform\n" +
                kAllUsage);
  EXPECT_EQ(r.status, 1);
}

TEST(CmdlineUsageTest, EveryOperationHasItsSynopsisOnStandardOutput) {
  e2e::Root root;
  for (const Synopsis& s : kSynopses) {
    e2e::Result r = root.Run({s.word, "-help"});
    EXPECT_EQ(r.out, s.text) << s.word;
    EXPECT_EQ(r.err, "") << s.word;
    EXPECT_EQ(r.status, 0) << s.word;
  }
}

TEST(CmdlineUsageTest, SynopsisSpellingsAndForms) {
  e2e::Root root;
  struct {
    std::vector<std::string> args;
    const char* synopsisOf;  // "" for no text at all
  } cases[] = {
      {{"ns", "-help"}, "new_session"},
      {{"LIST", "-H"}, "list"},
      {{"-q", "list", "-help"}, "list"},  // the form only changes the general usage
      {{"list", "-client", "c", "-help", "-U", "-b"}, "list"},  // help before the other rules
      {{"-test_import_frags", "f", "-help"}, "add_import_frags"},
      {{"-list_import_frags", "-help"}, "list_import_frags"},
      {{"remove_all", "-help"}, ""},
  };
  for (const auto& c : cases) {
    e2e::Result r = root.Run(c.args);
    const char* text = *c.synopsisOf ? SynopsisOf(c.synopsisOf) : "";
    EXPECT_EQ(r.out, text) << c.args[0];
    EXPECT_EQ(r.err, "") << c.args[0];
    EXPECT_EQ(r.status, 0) << c.args[0];
  }
}

TEST(CmdlineUsageTest, DateFormFollowsTheTimeLocale) {
  e2e::Root root;
  e2e::RunOptions options;
  options.env = {"LC_ALL", "LC_TIME=de_DE.UTF-8"};
  e2e::Result r = root.Run({"active", "-help"}, "", options);
  std::string expected = SynopsisOf("active");
  for (size_t at; (at = expected.find("mm/dd/yyyy")) != std::string::npos;) {
    expected.replace(at, 10, "dd.mm.yyyy");
  }
  EXPECT_EQ(r.out, expected);
  EXPECT_EQ(r.status, 0);
}

}  // namespace
