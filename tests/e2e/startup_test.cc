// Start-up of the real binary: configuration, debug log, administrator check
// and message catalogs. remove_all (administrator check, no catalog) and
// -testhook (no check) stand in for operations that get past the command line.
#include <gmock/gmock.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "tests/e2e/harness.h"

namespace {

using ::testing::Contains;

const char kNotice[] = "This operation has been deprecated and is no longer available.\n";
const char kConf[] = "etc/stashwell.conf";
const char kStart[] = "<2> cyclectl: INITIATING: Stashwell 9.1.0.1 created: 0";
const char kVerbose[] = "<2> cyclectl: VERBOSE = 0";
const char kCheck[] = "check_if_local_swu_admin_for_secure_command";
const std::string kRefusalLogged =
    std::string("<16> ") + kCheck + ": cyclectl: must be superuser to execute";

// Puts a FIFO, or a symbolic link to `target`, where the configuration was.
void Special(e2e::Root& r, const char* target) {
  const std::string conf = r.path() + "/" + kConf;
  r.Remove(kConf);
  if (target) symlink(target, conf.c_str());
  if (!target) mkfifo(conf.c_str(), 0644);
}

TEST(StartupTest, ConfigurationFailures) {
  struct Case {
    const char* name;
    void (*edit)(e2e::Root&);
    // What goes wrong with the file, or (starting "cyclectl:") the whole
    // standard error; each run ends with status 1.
    std::string err;
  } cases[] = {
      {"missing file", [](e2e::Root& r) { r.Remove(kConf); },
       ": No such file or directory (make an installation root with 'stashwell-init --root DIR' "
       "and run with STASHWELL_ROOT=DIR)"},
      // Neither waits for a writer nor reads an endless device.
      {"FIFO", [](e2e::Root& r) { Special(r, nullptr); }, ": not a regular file"},
      {"link to /dev/zero", [](e2e::Root& r) { Special(r, "/dev/zero"); }, ": not a regular file"},
      {"huge file",
       [](e2e::Root& r) { r.WriteFile(kConf, r.ReadFile(kConf) + std::string(1 << 20, '#')); },
       ": larger than 1048576 bytes"},
      {"malformed line",
       [](e2e::Root& r) { r.WriteFile(kConf, "EMM_SERVER = e\nMASTER_SERVER m\n"); },
       ":2: expected KEY = VALUE"},
      {"no catalog server", [](e2e::Root& r) { r.RemoveConfig("EMM_SERVER"); },
       "cyclectl: invalid Stashwell configuration: EMM Server is not defined\n"},
      {"empty catalog server", [](e2e::Root& r) { r.SetConfig("EMM_SERVER", ""); },
       "cyclectl: invalid Stashwell configuration: EMM Server is not defined\n"},
      {"no master list", [](e2e::Root& r) { r.RemoveConfig("MASTER_SERVER"); },
       "cyclectl: no master server record found\n"},
      {"empty first master",
       [](e2e::Root& r) { r.WriteFile(kConf, "EMM_SERVER=e\nMASTER_SERVER=\nMASTER_SERVER=m\n"); },
       "cyclectl: no master server name found\n"},
  };
  for (const Case& c : cases) {
    e2e::Root root;
    c.edit(root);
    const std::string err = c.err.rfind("cyclectl:", 0) == 0
                                ? c.err
                                : root.path() + "/etc/stashwell.conf" + c.err +
                                      "\ncyclectl: unable to read Stashwell configuration\n";
    // -M and -help change nothing: the command line is read after these checks.
    EXPECT_EQ(root.Run({"list", "-M", "other"}), (e2e::Result{"", err, 1})) << c.name;
    EXPECT_EQ(root.Run({"-help"}).status, 1) << c.name;
  }
}

TEST(StartupTest, ProgramNameComesFromTheLastComponentOfArgv0) {
  e2e::Root root;
  root.RemoveConfig("EMM_SERVER");
  // An empty last component is no failure: the run goes by its own name.
  for (const auto& [argv0, name] :
       {std::pair<std::string, std::string>{"/opt/tools/slpadm", "slpadm"},
        {"", "cyclectl"},
        {"tools/", "cyclectl"}}) {
    e2e::RunOptions options;
    options.argv0 = argv0;
    EXPECT_EQ(root.Run({"list"}, "", options).err,
              name + ": invalid Stashwell configuration: EMM Server is not defined\n");
    e2e::Root good;
    EXPECT_EQ(good.Run({"-testhook"}, "", options), (e2e::Result{"SLP_WINDOWS_VERSION=1\n", "", 0}))
        << argv0;
    EXPECT_EQ(good.DebugLogMessages().front(),
              "<2> " + name + ": INITIATING: Stashwell 9.1.0.1 created: 0");
  }
}

TEST(StartupTest, DebugLogOfANormalRunAndOfAnEarlyEnd) {
  e2e::Root root;
  EXPECT_EQ(root.Run({"remove_all"}), (e2e::Result{kNotice, "", 0}));
  root.SetConfig("VERBOSE.cyclectl", "4");
  root.Run({"lists"});
  root.RemoveConfig("MASTER_SERVER");
  root.Run({"-testhook"});  // ends at the master check, its start logged
  // An argument past 4 KiB is logged cut, with its length.
  const std::string full(4096, 'a'), longer(4097, 'b');
  root.Run({"-testhook", "-client", full, "-policy", longer});
  const std::string ran = "<2> cyclectl: cyclectl ", failed = "<2> cyclectl: EXITING, status= 1";
  EXPECT_EQ(root.DebugLogMessages(),
            (std::vector<std::string>{kStart, ran + "remove_all ", kVerbose,
                                      "<2> cyclectl: EXITING, status = 0", kStart, ran + "lists ",
                                      failed, kStart, ran + "-testhook ", failed, kStart,
                                      ran + "-testhook -client " + full + " -policy " +
                                          longer.substr(0, 4096) + "...[4097 bytes] ",
                                      failed}));
}

// Without logs/admin the run logs nothing; where it cannot be made the
// superuser stops, and another user runs on without a log it cannot open.
TEST(StartupTest, RunsWithoutTheAdminLog) {
  e2e::RootOptions options;
  options.adminLog = false;
  e2e::Root root(options);
  EXPECT_EQ(root.Run({"remove_all"}), (e2e::Result{kNotice, "", 0}));
  EXPECT_EQ(root.DebugLog(), "");
  root.WriteFile("logs/admin", "a file where the log directory should be");
  const char refused[] = "cyclectl: terminating - cannot open debug file: Not a directory (20)\n";
  EXPECT_EQ(root.Run({"-testhook"}), (e2e::Result{"", refused, 12}));

  if (!e2e::CanRunAsOtherUser()) return;
  e2e::Root shared;
  shared.Chmod("logs/admin", 0755);
  e2e::RunOptions nobody;
  nobody.asNobody = true;
  EXPECT_EQ(shared.Run({"-testhook"}, "", nobody), (e2e::Result{"SLP_WINDOWS_VERSION=1\n", "", 0}));
  EXPECT_EQ(shared.DebugLog(), "");
}

TEST(StartupTest, AdministratorCheck) {
  if (!e2e::CanRunAsOtherUser()) GTEST_SKIP() << "needs root to run as nobody";
  const std::string group = getgrgid(getpwnam("nobody")->pw_gid)->gr_name;
  struct Case {
    const char* mode;
    const char* credential;  // etc/credentials/nobody, or nullptr
    std::string admins;      // lines added to the configuration
    bool passes;
    const char* logLine;  // a line the check logs
  } cases[] = {
      {"AUTOMATIC", nullptr, "", false, "vnet_qzss_check_user_cred failed: 2"},
      {"AUTOMATIC", "cert\n", "", true, "use_qzss == USE_QZSS_AUTOMATIC"},
      {"REQUIRED", nullptr, "", true, "use_qzss == USE_QZSS_REQUIRED"},
      {"PROHIBITED", nullptr, "", false, "use_qzss == USE_QZSS_PROHIBITED"},
      {"PROHIBITED", "cert\n", "", false, "use_qzss == USE_QZSS_PROHIBITED"},
      {"PROHIBITED", nullptr, "ADMIN_USER = nobody\n", true, nullptr},
      {"AUTOMATIC", nullptr, "ADMIN_USER = somebody\n", false,
       "vnet_qzss_check_user_cred failed: 2"},
      // A member of a group named by any of the ADMIN_GROUP lines passes.
      {"PROHIBITED", nullptr, "ADMIN_GROUP = no-such-group\nADMIN_GROUP = " + group + "\n", true,
       nullptr},
  };
  e2e::RunOptions nobody;
  nobody.asNobody = true;
  for (const Case& c : cases) {
    e2e::Root root;
    root.Chmod("logs/admin", 0777);
    root.SetConfig("USE_QZSS", c.mode);
    if (c.credential) root.WriteFile("etc/credentials/nobody", c.credential);
    root.WriteFile(kConf, root.ReadFile(kConf) + c.admins);
    SCOPED_TRACE(std::string(c.mode) + (c.credential ? " with credential " : " ") + c.admins);
    EXPECT_EQ(root.Run({"remove_all"}, "", nobody),
              c.passes ? (e2e::Result{kNotice, "", 0})
                       : (e2e::Result{"", "cyclectl: must be superuser to execute\n", 140}));
    std::vector<std::string> log = {kStart, "<2> cyclectl: cyclectl remove_all ", kVerbose};
    if (c.logLine) log.push_back(std::string("<2> ") + kCheck + ": " + c.logLine);
    if (c.passes) log.push_back("<2> cyclectl: EXITING, status = 0");
    if (!c.passes) log.insert(log.end(), {kRefusalLogged, "<2> cyclectl: EXITING, status= 140"});
    EXPECT_EQ(root.DebugLogMessages(), log);
  }

  // The superuser passes even where the certificate use is prohibited.
  e2e::Root root;
  root.SetConfig("USE_QZSS", "PROHIBITED");
  EXPECT_EQ(root.Run({"remove_all"}), (e2e::Result{kNotice, "", 0}));
}

TEST(StartupTest, SecondLanguageCatalog) {
  e2e::Root root;
  root.RemoveConfig("MASTER_SERVER");
  e2e::RunOptions german;
  german.env = {"LC_ALL=de_DE.UTF-8"};
  EXPECT_EQ(root.Run({"list"}, "", german).err,
            "cyclectl: kein Eintrag für den Master-Server gefunden\n");
  // Through LANG as well; an id the catalog lacks prints its English text.
  root.WriteFile(kConf, root.ReadFile(kConf) + "MASTER_SERVER =\n");
  e2e::RunOptions lang;
  lang.env = {"LC_ALL", "LANG=de_DE"};
  EXPECT_EQ(root.Run({"list"}, "", lang).err, "cyclectl: no master server name found\n");

  if (!e2e::CanRunAsOtherUser()) return;
  // The user reads the refusal in German; the log keeps the English text.
  e2e::Root admin;
  admin.Chmod("logs/admin", 0777);
  german.asNobody = true;
  EXPECT_EQ(admin.Run({"remove_all"}, "", german),
            (e2e::Result{"", "cyclectl: nur als Superuser ausführbar\n", 140}));
  EXPECT_THAT(admin.DebugLogMessages(), Contains(kRefusalLogged));
}

TEST(StartupTest, DamagedMessageCatalogsGiveTheEnglishTexts) {
  e2e::Root root;
  // A plane depth far beyond the file, a catalog cut short, and one that is
  // not a catalog at all.
  root.WriteFile("share/msg/C/cyclectl.cat",
                 root.ReadFile("share/msg/C/cyclectl.cat").replace(8, 4, "\xff\xff\xff\x7f"));
  std::string german = root.ReadFile("share/msg/de_DE/cyclectl.cat");
  root.WriteFile("share/msg/de_DE/cyclectl.cat", german.substr(0, german.size() / 2));
  root.WriteFile("share/msg/fr_FR/cyclectl.cat", "not a catalog\n");
  const e2e::Result unknown{"", "-zzz is not a recognized option\n", 1};
  for (const char* lang : {"LANG=C", "LANG=de_DE.UTF-8", "LANG=fr_FR"}) {
    e2e::RunOptions options;
    options.env = {"LC_ALL", lang};
    EXPECT_EQ(root.Run({"list", "-zzz"}, "", options), unknown) << lang;
  }
  EXPECT_EQ(root.Run({"list"}),
            (e2e::Result{"", "No images or lifecycles matching criteria found.\n", 0}));
}

}  // namespace
