// A PostgreSQL server of a test program's own (tests/pg/pg-server): started
// on first use, stopped and removed when the program ends. Should the
// program die first, the script's watchdog removes it after its lifetime.
// Tests may restart it and change its authentication without disturbing
// the suite's shared server.
#ifndef PLATFORM_SQLDB_PG_TEST_SERVER_H_
#define PLATFORM_SQLDB_PG_TEST_SERVER_H_

#include <libpq-fe.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <thread>

namespace sqldb {

class PgTestServer {
 public:
  // The program's server, started on the first call; null when it cannot
  // start (the script has said why on standard error).
  static PgTestServer* Get() {
    static std::unique_ptr<PgTestServer> server = Start();
    return server.get();
  }

  ~PgTestServer() { Script("stop"); }

  // A URI for `database` as `user` (no password).
  std::string Uri(const std::string& database, const std::string& user = "stashwell") const {
    return "postgresql://" + user + "@127.0.0.1:" + port_ + "/" + database;
  }
  const std::string& port() const { return port_; }

  // Runs `sql` as the superuser in `database`: empty on success, else the
  // server's message.
  std::string Run(const std::string& sql, const std::string& database = "postgres") const {
    PGconn* conn = PQconnectdb(Uri(database).c_str());
    std::string error;
    if (PQstatus(conn) != CONNECTION_OK) {
      error = PQerrorMessage(conn);
    } else {
      PGresult* result = PQexec(conn, sql.c_str());
      const ExecStatusType status = PQresultStatus(result);
      if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK) {
        error = PQresultErrorMessage(result);
      }
      PQclear(result);
    }
    PQfinish(conn);
    return error;
  }

  // A fast shutdown and a start on the same port.
  bool Restart() const { return Script("restart"); }

  // From now on `role` must give its password over TCP.
  void RequirePassword(const std::string& role) const {
    const std::string hba = dir_ + "/data/pg_hba.conf";
    std::ifstream in(hba);
    std::stringstream old;
    old << in.rdbuf();
    std::ofstream(hba) << "host all " << role << " 127.0.0.1/32 scram-sha-256\n" << old.str();
    Run("SELECT pg_reload_conf()");
    // The server reads the file in the background: wait until it refuses
    // the role without a password.
    for (int i = 0; i < 50; ++i) {
      PGconn* conn = PQconnectdb(Uri("postgres", role).c_str());
      const bool refused = PQstatus(conn) != CONNECTION_OK;
      PQfinish(conn);
      if (refused) return;
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
  }

 private:
  static std::unique_ptr<PgTestServer> Start() {
    std::unique_ptr<PgTestServer> server(new PgTestServer);
    server->dir_ = "/tmp/cyclectl-pgunit-" + std::to_string(getpid());
    const std::string command = std::string(STASHWELL_SOURCE_DIR) + "/tests/pg/pg-server start " +
                                server->dir_ + " --lifetime 900";
    FILE* out = popen(command.c_str(), "r");
    if (out == nullptr) return nullptr;
    char line[256] = "";
    const bool read = fgets(line, sizeof line, out) != nullptr;
    if (pclose(out) != 0 || !read) return nullptr;
    // postgresql://stashwell@127.0.0.1:PORT
    std::string uri = line;
    server->port_ = uri.substr(uri.rfind(':') + 1);
    server->port_.erase(server->port_.find_last_not_of("\n") + 1);
    return server;
  }

  bool Script(const char* action) const {
    const std::string command =
        std::string(STASHWELL_SOURCE_DIR) + "/tests/pg/pg-server " + action + " " + dir_;
    return system(command.c_str()) == 0;
  }

  PgTestServer() = default;
  std::string dir_;
  std::string port_;
};

}  // namespace sqldb

#endif  // PLATFORM_SQLDB_PG_TEST_SERVER_H_
