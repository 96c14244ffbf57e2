// The root layout of stashwell-init, over std::filesystem. Every failure is
// turned into one error text naming the path concerned.
#include "tools/stashwell-init/root_layout.h"

#include <filesystem>
#include <fstream>
#include <system_error>

#include "tools/stashwell-init/catalog_setup.h"

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
bool CopyData(const fs::path& share, const fs::path& target, const char* name,
              std::string* error) {
  std::error_code ec;
  fs::path from = share / name;
  if (!fs::is_directory(from, ec)) {
    *error = "data files not found in " + from.string();
    return false;
  }
  fs::copy(from, target / name, fs::copy_options::recursive | fs::copy_options::overwrite_existing,
           ec);
  if (ec) {
    *error = "cannot copy " + from.string() + " to " + (target / name).string() + ": " +
             ec.message();
    return false;
  }
  return true;
}

}  // namespace

std::string InitialConfigText(const std::string& master, const std::string& emmServer) {
  return "# Stashwell master configuration (see docs/configuration.md)\n"
         "EMM_SERVER = " + emmServer + "\n"
         "EMM_PORT = 1556\n"
         "EMM_CATALOG = db/catalog.db\n"
         "MASTER_SERVER = " + master + "\n"
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
  if (!WriteFile(root / "etc" / "stashwell.conf", InitialConfigText(o.master, o.emmServer), error))
    return false;
  fs::path share(o.shareDir);
  if (!CopyData(share, root / "share", "msg", error) ||
      !CopyData(share, root / "share", "status", error))
    return false;

  fs::path catalog = root / "db" / "catalog.db";
  for (const char* suffix : {"", "-journal", "-wal", "-shm"}) fs::remove(catalog.string() + suffix, ec);
  if (!CreateCatalogDatabase(CatalogFile(catalog.string()), o.master, error)) return false;
  if (o.demoImages >= 0 &&
      !FillDemoCatalog(CatalogFile(catalog.string()), o.master, o.demoImages, o.seed, o.now,
                       error))
    return false;
  return true;
}
