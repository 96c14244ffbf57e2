// End-to-end tests of the expiration manager operations against the test
// service: arguments sent at the limits, output and status texts.
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "tests/e2e/remote_fixture.h"

namespace {

class ExpirationControlTest : public e2e::RemoteTest {};

const char kVolume[] = R"("ms1", "ss1", "vol1", "@aaaab", )";

// The words of `line`, split at blanks.
std::vector<std::string> Words(const std::string& line) {
  std::istringstream in(line);
  return {std::istream_iterator<std::string>(in), std::istream_iterator<std::string>()};
}

TEST_F(ExpirationControlTest, DiskfullQueryAndDeletionDonePrintWhatTheManagerAnswers) {
  Answer(e2e::Golden("diskfull/scenario.json"));  // diskfull, query_exp and deletedone
  const e2e::Result queried{e2e::Golden("query_exp/partial.txt"), "", 0};
  const struct {
    const char* args;
    e2e::Result result;
  } cases[] = {
      {"diskfull -mediaserver ms1 -storageserver ss1 -volumeid vol1 -mediaid @aaaab -dt 6"
       " -totalcap 9223372036854775807 -usedspace 9223372036854775807",
       {e2e::Golden("diskfull/largest.txt"), "", 0}},
      // The out values are printed whatever the status.
      {"diskfull -totalcap 1 -usedspace 0", {e2e::Golden("diskfull/not-found.txt"), "", 0}},
      // A negative number is taken for the next option.
      {"query_exp -expid -2147483649", {"", "No value supplied for -expid option\n", 1}},
      // Numbers past their field are refused, never wrapped.
      {"query_exp -expid 2147483648", {"", "Invalid value supplied for -expid option\n", 1}},
      {"diskfull -usedspace 9223372036854775808",
       {"", "Invalid value supplied for -usedspace option\n", 1}},
      {"query_exp -expid 2147483647", queried},
      {"query_exp", queried},
      {"query_exp -expid abc", queried},
      {"deletedone -expid 2147483647",
       {"DeletionDone return value = 0(the requested operation was successfully completed)\n", "",
        0}},
      {"deletedone -expid 1", {"DeletionDone return value = 9(unknown status code 9)\n", "", 0}},
  };
  for (const auto& c : cases) EXPECT_EQ(Run(Words(c.args)), c.result) << c.args;
  // Status texts follow the message locale.
  e2e::RunOptions german;
  german.env = {"LC_ALL", "LANG=de_DE.UTF-8"};
  EXPECT_EQ(
      Run({"deletedone", "-expid", "3"}, "", german),
      (e2e::Result{"DeletionDone return value = 227(kein passendes Objekt gefunden)\n", "", 0}));
  EXPECT_EQ(Calls(), (std::vector<std::string>{
                         std::string("ExpMgr.DiskfullExpiration(EXP_TYPE_NORMAL, ") + kVolume +
                             "6, 9223372036854775807, 9223372036854775807)",
                         R"(ExpMgr.DiskfullExpiration(EXP_TYPE_NORMAL, "", "", "", "", 0, 1, 0))",
                         "ExpMgr.QueryExpiration(2147483647)", "ExpMgr.QueryExpiration(0)",
                         "ExpMgr.QueryExpiration(0)", "ExpMgr.DeletionDone(2147483647)",
                         "ExpMgr.DeletionDone(1)", "ExpMgr.DeletionDone(3)"}));
}

TEST_F(ExpirationControlTest, InitiateHwmAndPfsSpeakOnlyOfANonZeroStatus) {
  const std::string volume = " -mediaserver ms1 -storageserver ss1 -volumeid vol1 -mediaid @aaaab";
  const struct {
    std::string args;
    std::string answers;  // a success, then the status of the second run
    std::string err;
    std::string call;
  } cases[] = {
      {"initiate_exp" + volume + " -dp pool1 -dt 7",
       R"({"ExpMgr.InitiateExpiration": [{"status": 0}, {"status": -3}]})",
       "Initiate Expiration return value = -3\n",
       std::string("ExpMgr.InitiateExpiration(") + kVolume + "\"pool1\", 7)"},
      {"update_hwm -mediaserver ms1 -storageserver ss1 -mediaid @aaaab -stssubtype PlainDisk"
       " -totalcap 9223372036854775807 -usedcap 1",
       R"({"ExpMgr.HwmUpdate": [{"status": 0}, {"status": 5}]})",
       "high watermark update return value = 5\n",
       R"(ExpMgr.HwmUpdate("ms1", "ss1", "@aaaab", "PlainDisk", 9223372036854775807, 1))"},
      {"update_pfs" + volume + " -dt 2147483647",
       R"({"ExpMgr.UpdatePotentialFreeSpace": [{"status": 0}, {"status": 2147483647}]})",
       "update potential free space return value = 2147483647\n",
       std::string("ExpMgr.UpdatePotentialFreeSpace(") + kVolume + "2147483647)"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.args);
    Answer(c.answers);
    EXPECT_EQ(Run(Words(c.args)), (e2e::Result{"", "", 0}));
    EXPECT_EQ(Run(Words(c.args)), (e2e::Result{"", c.err, 0}));
    EXPECT_EQ(Calls(), (std::vector<std::string>{c.call, c.call}));
  }
}

}  // namespace
