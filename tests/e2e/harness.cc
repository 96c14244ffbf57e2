// The end-to-end harness: roots laid out by stashwell-init, runs of the real
// binaries through fork/exec with a time limit, SQL through
// the catalog engine interface, PostgreSQL databases made and dropped with
// psql.
#include "tests/e2e/harness.h"

#include <fcntl.h>
#include <grp.h>
#include <poll.h>
#include <pwd.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "gtest/gtest.h"
#include "platform/sqldb/sqldb.h"

namespace fs = std::filesystem;

namespace e2e {
namespace {

const char* const kPassedVariables[] = {"ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"};
const int kTimeoutSeconds = 60;

// Closes the descriptors it holds.
struct Fds {
  int fd[2] = {-1, -1};
  ~Fds() {
    for (int f : fd)
      if (f >= 0) close(f);
  }
};

void ApplyEnv(std::vector<std::string>* env, const std::string& entry) {
  const std::string key = entry.substr(0, entry.find('=')) + "=";
  auto same = [&](const std::string& e) { return e.compare(0, key.size(), key) == 0; };
  env->erase(std::remove_if(env->begin(), env->end(), same), env->end());
  if (entry.find('=') != std::string::npos) env->push_back(entry);
}

// The child after fork: standard streams, user switch, a time limit, exec.
[[noreturn]] void ExecChild(int in, int out, int err, const std::string& program,
                            const std::vector<std::string>& argv,
                            const std::vector<std::string>& environment,
                            const RunOptions& options) {
  signal(SIGPIPE, SIG_DFL);  // the ORB of the test service ignores it; the program must not
  dup2(in, 0);
  dup2(out, 1);
  dup2(err, 2);
  if (!options.stdoutFile.empty()) {
    int file = open(options.stdoutFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (file < 0 || dup2(file, 1) < 0) {
      perror("harness: cannot open the standard output file");
      _exit(127);
    }
  }
  if (options.stderrToStdout) dup2(1, 2);
  if (options.asNobody) {
    const struct passwd* nobody = getpwnam("nobody");
    if (!nobody || setgroups(0, nullptr) != 0 || setgid(nobody->pw_gid) != 0 ||
        setuid(nobody->pw_uid) != 0) {
      perror("harness: cannot switch to nobody");
      _exit(127);
    }
  }
  alarm(kTimeoutSeconds);  // kept across exec: SIGALRM ends a run that hangs
  std::vector<char*> args, envp;
  for (const std::string& a : argv) args.push_back(const_cast<char*>(a.c_str()));
  args.push_back(nullptr);
  for (const std::string& e : environment) envp.push_back(const_cast<char*>(e.c_str()));
  envp.push_back(nullptr);
  execve(program.c_str(), args.data(), envp.data());
  perror("harness: exec failed");
  _exit(127);
}

// The whole file; empty when it cannot be read.
std::string FileText(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

// A column of a row as text: NULL as empty, numbers in decimal.
std::string CellText(const sqldb::Row& row, int column) {
  if (row.IsNull(column)) return "";
  if (row.type(column) == sqldb::Type::kInteger) return std::to_string(row.Int64(column));
  return std::string(row.Bytes(column));
}

// SQL text cut at the semicolons outside quotes.
std::vector<std::string> SplitStatements(const std::string& text) {
  std::vector<std::string> statements(1);
  char quote = 0;
  for (char c : text) {
    if (c == ';' && quote == 0) {
      statements.emplace_back();
      continue;
    }
    if (c == '\'' || c == '"') quote = quote == 0 ? c : quote == c ? 0 : quote;
    statements.back() += c;
  }
  return statements;
}

// Runs `program` (absolute path) with the argument vector `argv` (argv[0]
// included) and the given environment, for at most kTimeoutSeconds.
// Standard input and error are memory files; standard output is a pipe, so
// that its reader can stop early.
Result RunProgram(const std::string& program, const std::vector<std::string>& argv,
                  const std::vector<std::string>& environment, const std::string& stdinText,
                  const RunOptions& options) {
  Result result{"", "", -1};
  Fds files, out;
  files.fd[0] = memfd_create("stdin", MFD_CLOEXEC);
  files.fd[1] = memfd_create("stderr", MFD_CLOEXEC);
  if (files.fd[0] < 0 || files.fd[1] < 0 || pipe2(out.fd, O_CLOEXEC) != 0 ||
      pwrite(files.fd[0], stdinText.data(), stdinText.size(), 0) !=
          static_cast<ssize_t>(stdinText.size())) {
    ADD_FAILURE() << "harness: standard streams: " << strerror(errno);
    return result;
  }
  pid_t pid = fork();
  if (pid < 0) {
    ADD_FAILURE() << "harness: fork: " << strerror(errno);
    return result;
  }
  if (pid == 0) ExecChild(files.fd[0], out.fd[1], files.fd[1], program, argv, environment, options);
  close(out.fd[1]);
  out.fd[1] = -1;
  bool killed = false;
  while (out.fd[0] >= 0) {
    // What the program wrote before it was killed is still read.
    if (options.killWhen && !killed && options.killWhen()) killed = kill(pid, SIGKILL) == 0;
    struct pollfd ready = {out.fd[0], POLLIN, 0};
    if (poll(&ready, 1, options.killWhen && !killed ? 20 : -1) <= 0) continue;
    char buf[65536];
    ssize_t r = read(out.fd[0], buf, sizeof buf);
    if (r < 0 && errno == EINTR) continue;
    if (r > 0) result.out.append(buf, static_cast<size_t>(r));
    const bool enough = options.stdoutLimit > 0 && result.out.size() >= options.stdoutLimit;
    if (enough) result.out.resize(options.stdoutLimit);
    if (r <= 0 || enough) {
      close(out.fd[0]);
      out.fd[0] = -1;
    }
  }
  int status = 0;
  while (waitpid(pid, &status, 0) < 0 && errno == EINTR) {
  }
  result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  if (WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM)
    ADD_FAILURE() << "harness: " << program << " did not end within " << kTimeoutSeconds << " s";
  result.err = FileText("/proc/self/fd/" + std::to_string(files.fd[1]));
  return result;
}

// The base URI of the test server (no database); empty without one.
const std::string& PgServerUri() {
  static const std::string uri = [] {
    std::string text = FileText(fs::path(getenv("STASHWELL_TEST_PGSERVER")) / "uri");
    text.erase(text.find_last_not_of(" \n") + 1);
    if (text.empty()) ADD_FAILURE() << "harness: no PostgreSQL test server is running";
    return text;
  }();
  return uri;
}

// Runs each statement by itself on the test server's maintenance database
// (CREATE and DROP DATABASE cannot run inside a transaction).
bool ServerAdmin(const std::vector<std::string>& statements) {
  std::vector<std::string> argv = {
      "psql", "-X", "-q", "-v", "ON_ERROR_STOP=1", "-d", PgServerUri() + "/postgres"};
  for (const std::string& sql : statements) argv.insert(argv.end(), {"-c", sql});
  Result r =
      RunProgram("/usr/bin/psql", argv, {"PATH=/usr/bin:/bin", "LC_ALL=C"}, "", RunOptions());
  if (r.status != 0) ADD_FAILURE() << "harness: psql failed (" << r.status << "): " << r.err;
  return r.status == 0;
}

}  // namespace

bool OnPostgres() {
  const char* server = getenv("STASHWELL_TEST_PGSERVER");
  return server != nullptr && *server != '\0';
}

std::string BytesLiteral(const std::string& hex) {
  return OnPostgres() ? "'\\x" + hex + "'::bytea" : "X'" + hex + "'";
}

void PrintTo(const Result& result, std::ostream* os) {
  *os << "status " << result.status << ", standard output " << testing::PrintToString(result.out)
      << ", standard error " << testing::PrintToString(result.err);
}

bool CanRunAsOtherUser() { return geteuid() == 0 && getpwnam("nobody") != nullptr; }

std::string Golden(const std::string& name) {
  fs::path file = fs::path(STASHWELL_SOURCE_DIR) / "tests/e2e/golden" / name;
  if (!fs::exists(file)) ADD_FAILURE() << "harness: no golden file " << file;
  return FileText(file);
}

Root::Root(const RootOptions& options) {
  char tmpl[] = "/tmp/cyclectl-e2e.XXXXXX";
  if (!mkdtemp(tmpl) || chmod(tmpl, 0755) != 0) {
    ADD_FAILURE() << "harness: temporary folder: " << strerror(errno);
    return;
  }
  dir_ = tmpl;
  path_ = dir_ + "/root";
  catalog_ = path_ + "/db/catalog.db";
  std::vector<std::string> argv = {"stashwell-init", "--root",       path_,
                                   "--master",       options.master, "--emm-server",
                                   options.emmServer};
  if (OnPostgres()) {
    static int roots = 0;
    database_ = "e2e_" + std::to_string(getpid()) + "_" + std::to_string(++roots);
    // A database left by an earlier process of the same id goes first.
    if (!ServerAdmin({"DROP DATABASE IF EXISTS " + database_ + " WITH (FORCE)",
                      "CREATE DATABASE " + database_})) {
      database_.clear();
      return;
    }
    catalog_ = PgServerUri() + "/" + database_;
    argv.insert(argv.end(), {"--catalog", catalog_});
  }
  if (options.adminLog) argv.push_back("--with-admin-log");
  if (options.demoImages >= 0)
    argv.insert(argv.end(), {"--demo", std::to_string(options.demoImages), "--now",
                             std::to_string(options.demoNow)});
  Result r = RunProgram(STASHWELL_BIN_DIR "/stashwell-init", argv,
                        {"PATH=/usr/bin:/bin", "TZ=UTC", "LC_ALL=C"}, "", RunOptions());
  if (r.status != 0)
    ADD_FAILURE() << "harness: stashwell-init failed (" << r.status << "): " << r.err;
}

Root::~Root() {
  if (!database_.empty()) ServerAdmin({"DROP DATABASE IF EXISTS " + database_ + " WITH (FORCE)"});
  std::error_code ec;
  if (!dir_.empty()) fs::remove_all(dir_, ec);
}

void Root::SetConfig(const std::string& key, const std::string& value) {
  RewriteConfig(key, key + " = " + value);
}

void Root::RemoveConfig(const std::string& key) { RewriteConfig(key, ""); }

void Root::RewriteConfig(const std::string& key, const std::string& replacement) {
  std::istringstream in(ReadFile("etc/stashwell.conf"));
  std::string line, text, pending = replacement.empty() ? "" : replacement + "\n";
  while (std::getline(in, line)) {
    std::string k = line.substr(0, line.find('='));
    k.erase(k.find_last_not_of(" \t") + 1);
    k.erase(0, k.find_first_not_of(" \t"));
    const bool own = k == key && line.find('=') != std::string::npos;
    text += own ? pending : line + "\n";
    if (own) pending.clear();
  }
  WriteFile("etc/stashwell.conf", text + pending);
}

void Root::WriteFile(const std::string& relpath, const std::string& text) {
  fs::path p = fs::path(path_) / relpath;
  std::error_code ec;
  fs::create_directories(p.parent_path(), ec);
  std::ofstream out(p, std::ios::binary | std::ios::trunc);
  out << text;
  if (!out) ADD_FAILURE() << "harness: cannot write " << p;
}

std::string Root::ReadFile(const std::string& relpath) const {
  return FileText(fs::path(path_) / relpath);
}

void Root::Remove(const std::string& relpath) {
  std::error_code ec;
  fs::remove_all(fs::path(path_) / relpath, ec);
  if (ec) ADD_FAILURE() << "harness: cannot remove " << relpath << ": " << ec.message();
}

void Root::Chmod(const std::string& relpath, int mode) {
  std::string p = path_ + "/" + relpath;
  if (chmod(p.c_str(), static_cast<mode_t>(mode)) != 0)
    ADD_FAILURE() << "harness: chmod " << p << ": " << strerror(errno);
}

std::unique_ptr<sqldb::Database> Root::OpenCatalog() const {
  sqldb::Location where;
  where.engine = database_.empty() ? sqldb::Engine::kSqlite : sqldb::Engine::kPostgres;
  where.path = where.conninfo = where.display = catalog_;
  where.busyTimeoutMs = 10000;
  // A test may take a PostgreSQL catalog apart piece by piece: its own
  // connection opens the database whatever schema it holds.
  const sqldb::OpenMode mode =
      database_.empty() ? sqldb::OpenMode::kReadWrite : sqldb::OpenMode::kCreate;
  std::unique_ptr<sqldb::Database> db;
  std::string why;
  if (sqldb::Open(where, mode, &db, &why) != sqldb::Code::kOk) {
    ADD_FAILURE() << "harness: cannot open the catalog: " << why;
    db.reset();
  }
  return db;
}

std::string Root::Sql(const std::string& statements) {
  std::string rows;
  std::unique_ptr<sqldb::Database> db = OpenCatalog();
  if (!db) return rows;
  for (const std::string& sql : SplitStatements(statements)) {
    if (sql.find_first_not_of(" \t\n") == std::string::npos) continue;
    std::unique_ptr<sqldb::Statement> stmt = db->Prepare(sql);
    std::string these;
    sqldb::Code rc = sqldb::Code::kError;
    while (stmt && (rc = stmt->Step()) == sqldb::Code::kRow) {
      const sqldb::Row& row = stmt->CurrentRow();
      for (size_t c = 0; c < row.size(); ++c)
        these += (c ? "|" : "") + CellText(row, static_cast<int>(c));
      these += "\n";
    }
    if (rc != sqldb::Code::kDone) {
      ADD_FAILURE() << "harness: SQL error: " << db->LastError() << "\nin: " << sql;
      break;
    }
    if (!these.empty()) rows = these;
  }
  return rows;
}

void Root::RemoveCatalog() {
  if (!database_.empty()) {
    ServerAdmin({"DROP DATABASE " + database_ + " WITH (FORCE)"});
    return;
  }
  for (const char* suffix : {"", "-journal", "-wal", "-shm"}) unlink((catalog_ + suffix).c_str());
}

Result Root::Run(const std::vector<std::string>& args, const std::string& stdinText,
                 const RunOptions& options) const {
  std::vector<std::string> env = {"PATH=/usr/bin:/bin", "STASHWELL_ROOT=" + path_, "TZ=UTC",
                                  "LC_ALL=C"};
  for (const char* name : kPassedVariables)
    if (const char* v = getenv(name)) env.push_back(std::string(name) + "=" + v);
  for (const std::string& e : options.env) ApplyEnv(&env, e);
  std::vector<std::string> argv = {options.argv0};
  argv.insert(argv.end(), args.begin(), args.end());
  std::string program = STASHWELL_BIN_DIR "/" + options.program;
  if (options.asNobody) {
    // The build folder may be closed to nobody (a clone under a folder of
    // mode 700): nobody runs a link or copy in the root's folder.
    const std::string copy = dir_ + "/" + options.program;
    std::error_code ec;
    if (!fs::exists(copy, ec)) fs::create_hard_link(program, copy, ec);
    if (ec) fs::copy_file(program, copy, ec);
    if (ec) ADD_FAILURE() << "harness: cannot copy " << program << " for nobody: " << ec.message();
    program = copy;
  }
  return RunProgram(program, argv, env, stdinText, options);
}

std::string Root::DebugLog() const {
  std::set<fs::path> files;  // oldest first: the names hold the date
  std::error_code ec;
  for (const auto& entry : fs::directory_iterator(fs::path(path_) / "logs" / "admin", ec))
    if (entry.is_regular_file()) files.insert(entry.path());
  std::string text;
  for (const fs::path& f : files) text += FileText(f);
  return text;
}

std::vector<std::string> Root::DebugLogMessages() const {
  std::vector<std::string> lines;
  std::istringstream in(DebugLog());
  std::string line;
  while (std::getline(in, line)) {
    size_t body = line.find("] ");
    lines.push_back(body == std::string::npos ? line : line.substr(body + 2));
  }
  return lines;
}

}  // namespace e2e
