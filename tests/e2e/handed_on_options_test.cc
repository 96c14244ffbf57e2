// End-to-end test of options outside an operation's list: each draws its
// notice, and its value still reaches the operation, which then does what
// that value asks of it.
#include <gtest/gtest.h>

#include <ctime>
#include <iomanip>
#include <sstream>
#include <string>
#include <vector>

#include "tests/e2e/catalog_test.h"
#include "tests/e2e/harness.h"
#include "tests/e2e/prompts.h"

namespace {

class HandedOnOptionsTest : public e2e::CatalogTest {};

TEST_F(HandedOnOptionsTest, NoticeThenTheOperationActsOnTheValue) {
  // alpha and bravo: SLP images on storage servers sts1 and sts2, alpha with
  // a replica copy on target tgt1; charlie and delta: pending imports; zulu:
  // an image of master2 complete today.
  AddSlp("slp1", 1, 2);
  const std::string slp =
      "StorageServiceName = 'slp1', StorageServiceVersionNumber = 1, StorageServiceState = 2";
  const std::string alpha = AddImage("alpha", 1000, slp);
  AddFragment(AddCopy(alpha, 1, "Residence = 'disk1', CopyState = 3"), 1,
              "StorageServer = 'sts1', FragmentSize = 1048576");
  const std::string replica =
      AddCopy(alpha, 2, "CopyType = 3, Residence = '*Remote*Master*', CopyState = 2");
  const std::string bravo = AddImage("bravo", 2000, slp);
  AddFragment(AddCopy(bravo, 1, "Residence = 'disk2', CopyState = 2"), 1,
              "StorageServer = 'sts2', FragmentSize = 2097152");
  Insert("DBM_ImageReplicationDestination", "ReplicationDestinationKey",
         "ImageCopyKey, TargetMachineKey, VolumeInfo, RemoteMasterServer",
         replica + ", " + AddMachine("tgt1", 12) + ", 'vol1', 'remote1'");

  const std::string charlie = AddImage("charlie", 3000, "OriginMasterServer = 'remote1'");
  AddFragment(AddCopy(charlie, 1, "CopyState = 14"), 1);
  AddImage("delta", 4000, "OriginMasterServer = 'remote1'");

  const std::string master2 = AddMachine("master2", 3);
  root_.Sql("UPDATE EMM_Machine SET ParentKey = MachineKey WHERE MachineKey = " + master2 +
            "; INSERT INTO EMM_MachineAlias (MachineKey, MachineAliasName, MachineSwuType)"
            " VALUES (" +
            master2 + ", 'master2', 3);");
  AddImage(
      "zulu", time(nullptr) / 86400 * 86400,
      "MasterServerKey = " + master2 + ", StorageServiceName = 'slp1', StorageServiceState = 3");

  AddDeletedFragment("alpha_1000");
  AddDeletedFragment("bravo_2000");

  // The lines of alpha's replica and of charlie's copy that follow their image lines.
  const std::string replicaLines =
      "V7.6.0 C master1 alpha_1000 2 0 0 *Remote*Master* 2 0 0 0 0 *NULL* 0 0 0 0 3 0 1 0\n"
      "V7.6.0 RT master1 alpha_1000 2 tgt1 vol1 remote1\n";
  const std::string charlieLines =
      "V7.6.0 C master1 charlie_3000 1 0 0 *NULL* 14 0 0 0 0 *NULL* 0 0 0 0 0 0 1 0\n"
      "V7.6.0 F master1 charlie_3000 1 1 0 *NULL* *NULL* *NULL* 0 0 1 0 0 *NULL* *NULL* *NULL*\n";
  const std::string pending = root_.Run({"pendimplist"}).out;
  const time_t now = time(nullptr);
  std::ostringstream completion;
  completion << std::left << std::setw(50) << "Client name"
             << "Most recent completion date\n"
             << std::setw(50) << "zulu" << std::put_time(gmtime(&now), "%Y/%m/%d\n");

  const struct {
    std::vector<std::string> args;
    std::string out;
    std::vector<std::string> notices;
    std::string err = "";  // after the notices
  } cases[] = {
      // the brief form: backup IDs in place of the image lines
      {{"repllist", "-b"}, "alpha_1000\n" + replicaLines, {"-b"}},
      {{"repllist", "-json_compact"},
       replicaLines,
       {"-json_compact"},
       "unrecognized output format: 4\n"},
      {{"pendimplist", "-b"}, "charlie_3000\n" + charlieLines + "delta_4000\n", {"-b"}},
      {{"pendimplist", "-json"}, charlieLines, {"-json"}, "Not implemented\nNot implemented\n"},
      {{"pendimplist", "-sincetime", "3001"},
       pending.substr(pending.find("V7.6.0 I master1 delta_4000 ")),
       {"-sincetime"}},
      // The form has no effect on these two.
      {{"report", "-U"}, root_.Run({"report"}).out, {"-U"}},
      {{"showvol", "-storageserver", "sts2", "-json"},
       root_.Run({"showvol", "-storageserver", "sts2"}).out,
       {"-json"}},
      {{"stlilist", "-storageserver", "sts2"},
       "V7.6.0 I bravo_2000 slp1 2 \nV7.6.0 C disk2 2 0 \n",
       {"-storageserver"}},
      {{"stlilist", "-b"}, "", {"-b"}},  // no image line in a form it does not know
      {{"completion_report", "-sincetime", "1", "-days", "1", "-m", "master2"},
       completion.str(),
       {"-M", "-sincetime"}},
      {{"remove_exp", "-nowarn", "-backupid", "bravo_2000"}, "", {"-backupid"}},
      // remove_repl works by target machine: the master server it is handed
      // changes nothing.
      {{"remove_repl", "-target_machine", "tgt1", "-M", "master2"},
       "1 replication records for target machine 'tgt1' deleted\n",
       {"-M"}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(root_.Run(c.args),
              (e2e::Result{c.out, e2e::Ignored(c.args[0], c.notices) + c.err, 0}))
        << c.args[0] << " " << c.args[1];
  }
  EXPECT_EQ("alpha_1000\n", root_.Sql("SELECT BackupID FROM DBM_DeletedFragment;"));
}

}  // namespace
