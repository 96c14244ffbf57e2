// The root layout of stashwell-init, over std::filesystem. Every failure is
// turned into one error text naming the path concerned.
#include "tools/stashwell-init/root_layout.h"

#include <filesystem>
#include <fstream>
#include <system_error>

#include "tools/stashwell-init/catalog_setup.h"
#include "tools/stashwell-init/catalog_uri.h"

namespace fs = std::filesystem;

namespace {

bool MakeDirectory(const fs::path& dir, std::string* error) {
  std::error_code ec;
  fs::create_directories(dir, ec);
  if (ec) {
    *error = "cannot create " + dir.string() + ": " + ec.message();
    return false;
  }
  return true;
}

bool WriteFile(const fs::path& path, const std::string& text, std::string* error) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << text;
  out.close();
  if (!out) {
    *error = "cannot write " + path.string();
    return false;
  }
  return true;
}

// Copies the data folder `name` (msg or status) from the share directory.
bool CopyData(const fs::path& share, const fs::path& target, const char* name, std::string* error) {
  std::error_code ec;
  fs::path from = share / name;
  if (!fs::is_directory(from, ec)) {
    *error = "data files not found in " + from.string();
    return false;
  }
  fs::copy(from, target / name, fs::copy_options::recursive | fs::copy_options::overwrite_existing,
           ec);
  if (ec) {
    *error =
        "cannot copy " + from.string() + " to " + (target / name).string() + ": " + ec.message();
    return false;
  }
  return true;
}

}  // namespace

std::string InitialConfigText(const RootOptions& o) {
  CatalogServer server;
  const bool onServer = !o.catalog.empty() && ParseCatalogUri(o.catalog, &server);
  return "# Stashwell master configuration (see docs/configuration.md)\n"
         "EMM_SERVER = " +
         o.emmServer +
         "\n"
         "EMM_PORT = " +
         std::to_string(onServer ? server.port : 1556) +
         "\n"
         "EMM_CATALOG = " +
         (o.catalog.empty() ? "db/catalog.db" : o.catalog) +
         "\n"
         "MASTER_SERVER = " +
         o.master +
         "\n"
         "IMPORT_CONF_THRESHOLD = 1 HOURS\n"
         "USE_QZSS = AUTOMATIC\n"
         "VERBOSE = 0\n"
         "DAEMON_PORT.cyclesvc = 13724\n"
         "DAEMON_PORT.SWDSMFSM = 13725\n"
         "CATALOG_BUSY_TIMEOUT = 30000\n";
}

bool LayOutRoot(const RootOptions& o, std::string* error) {
  std::error_code ec;
  fs::path root(o.root);
  if (fs::exists(root, ec) && !o.force) {
    if (!fs::is_directory(root, ec) || !fs::is_empty(root, ec)) {
      *error = o.root + " already exists; use --force to lay out a root over it";
      return false;
    }
  }
  for (const char* dir : {"", "etc", "db", "share", "logs"})
    if (!MakeDirectory(root / dir, error)) return false;
  if (o.withAdminLog && !MakeDirectory(root / "logs" / "admin", error)) return false;
  if (!WriteFile(root / "etc" / "stashwell.conf", InitialConfigText(o), error)) return false;
  fs::path share(o.shareDir);
  if (!CopyData(share, root / "share", "msg", error) ||
      !CopyData(share, root / "share", "status", error))
    return false;

  sqldb::Location where;
  if (o.catalog.empty()) {
    const std::string file = (root / "db" / "catalog.db").string();
    for (const char* suffix : {"", "-journal", "-wal", "-shm"}) fs::remove(file + suffix, ec);
    where = CatalogFile(file);
  } else {
    where = CatalogOnServer(o.catalog);
  }
  if (!CreateCatalogDatabase(where, o.master, o.force, error)) return false;
  return o.demoImages < 0 || FillDemoCatalog(where, o.master, o.demoImages, o.seed, o.now, error);
}
