// End-to-end test harness: a fresh installation root per test, laid out by
// stashwell-init in a temporary directory, and runs of the real programs in
// it, capturing standard output, standard error and exit status.
//
// A run gets an environment of its own: PATH, STASHWELL_ROOT=<root>, TZ=UTC,
// LC_ALL=C (and the sanitizer settings of the test process), plus
// RunOptions::env; its standard input holds the text given, or nothing.
// Failures of the harness itself (stashwell-init, SQL, a run that exceeds a
// minute) are gtest failures.
//
// The catalog is a SQLite file, or, when STASHWELL_TEST_PGSERVER names the
// folder of a running test server (tests/pg/pg-server), a PostgreSQL database
// of its own, dropped with the root: see docs/testing.md.
#ifndef TESTS_E2E_HARNESS_H_
#define TESTS_E2E_HARNESS_H_

#include <cstddef>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "platform/sqldb/sqldb.h"

namespace e2e {

// What a run showed; compared whole, so that a failure shows all of it:
//   EXPECT_EQ(root.Run({"help"}), (e2e::Result{"", usage, 0}));
struct Result {
  std::string out;  // standard output
  std::string err;  // standard error
  int status;       // exit status; 128 + signal for a run killed by a signal

  bool operator==(const Result& other) const {
    return out == other.out && err == other.err && status == other.status;
  }
};
// Prints a Result in gtest's failure messages.
void PrintTo(const Result& result, std::ostream* os);

struct RootOptions {
  bool adminLog = true;               // create logs/admin (the debug log)
  std::string master = "master1";     // MASTER_SERVER
  std::string emmServer = "master1";  // EMM_SERVER
  long demoImages = -1;               // >= 0: stashwell-init --demo N
  long long demoNow = 1735689600;     // end of the demo's backup window, 2025-01-01 UTC
};

struct RunOptions {
  // "KEY=VALUE" sets or replaces a variable, "KEY" removes it:
  // {"LC_ALL", "LANG=de_DE.UTF-8"} runs with LANG instead of LC_ALL=C.
  std::vector<std::string> env;
  // Runs as the user nobody (see CanRunAsOtherUser). The root is readable by
  // everyone; logs/admin is not writable by nobody unless a test changes it.
  bool asNobody = false;
  std::string program = "cyclectl";  // a program of the build's bin folder
  std::string argv0 = "cyclectl";    // argv[0] as the program sees it
  // Not empty: standard output goes to this file (/dev/full) instead.
  std::string stdoutFile;
  // > 0: closes standard output after this many bytes, like `| head -c N`.
  size_t stdoutLimit = 0;
  // 2>&1: Result::out holds both streams in the order the program wrote them.
  bool stderrToStdout = false;
  // Set: asked every 20 ms while the program runs; once it answers true the
  // program is killed with SIGKILL (status 137), as a crash would end it.
  std::function<bool()> killWhen;
};

// True when runs can switch to the user nobody (the tests run as root).
bool CanRunAsOtherUser();

// True when the catalogs of this run are PostgreSQL databases.
bool OnPostgres();

// The bytes written in `hex` (pairs of hex digits) as an SQL literal of the
// engine under test.
std::string BytesLiteral(const std::string& hex);

// The text of tests/e2e/golden/<name>; a gtest failure when it is missing.
std::string Golden(const std::string& name);

class Root {
 public:
  explicit Root(const RootOptions& options = RootOptions());
  ~Root();  // removes the whole temporary directory
  Root(const Root&) = delete;
  Root& operator=(const Root&) = delete;

  // The installation root (absolute path).
  const std::string& path() const { return path_; }
  // The catalog as EMM_CATALOG names it: the file's absolute path, or the
  // PostgreSQL database's URI.
  const std::string& catalog() const { return catalog_; }

  // Sets KEY = VALUE in etc/stashwell.conf, replacing every line of the key
  // or appending one.
  void SetConfig(const std::string& key, const std::string& value);
  // Removes every line of the key from etc/stashwell.conf.
  void RemoveConfig(const std::string& key);

  // Writes (creating folders) or reads a file under the root.
  void WriteFile(const std::string& relpath, const std::string& text);
  std::string ReadFile(const std::string& relpath) const;
  // Removes (with its contents) or changes the mode of a file or folder under the root.
  void Remove(const std::string& relpath);
  void Chmod(const std::string& relpath, int mode);

  // Runs SQL statements (separated by ';') on the catalog and returns the
  // rows of the last statement that returned any, one line per row with the
  // columns separated by '|' (NULL as empty).
  std::string Sql(const std::string& statements);
  // Removes the catalog: the file, or the database.
  void RemoveCatalog();
  // A connection of the test's own to the catalog (a gtest failure and null
  // when it cannot be opened); the caller owns it.
  std::unique_ptr<sqldb::Database> OpenCatalog() const;

  // Runs cyclectl (or options.program) with `args` (argv[1...]).
  Result Run(const std::vector<std::string>& args, const std::string& stdinText = "",
             const RunOptions& options = RunOptions()) const;

  // The debug log of the administration commands: every file of logs/admin
  // concatenated, oldest first; empty when there is none.
  std::string DebugLog() const;
  // DebugLog's lines without the time and process id: "<2> cyclectl: text".
  std::vector<std::string> DebugLogMessages() const;

 private:
  // Puts `replacement` (unless empty) in place of the lines of `key` in
  // etc/stashwell.conf, or at its end.
  void RewriteConfig(const std::string& key, const std::string& replacement);

  std::string dir_;       // the temporary directory
  std::string path_;      // the root inside it
  std::string database_;  // PostgreSQL: the database of this root
  std::string catalog_;
};

}  // namespace e2e

#endif  // TESTS_E2E_HARNESS_H_
