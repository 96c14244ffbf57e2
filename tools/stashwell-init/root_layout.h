// Lays out an installation root: the directories, the configuration file,
// the data files (message catalogs, status texts) and the catalog database.
#ifndef TOOLS_STASHWELL_INIT_ROOT_LAYOUT_H_
#define TOOLS_STASHWELL_INIT_ROOT_LAYOUT_H_

#include <cstdint>
#include <string>

struct RootOptions {
  std::string root;       // the installation root to lay out
  std::string master;     // this master server's name
  std::string emmServer;  // the catalog (EMM) server's name
  // A PostgreSQL database's connection URI (EMM_CATALOG; its port is
  // EMM_PORT); empty: the SQLite file db/catalog.db.
  std::string catalog;
  std::string shareDir;       // built data files: msg/, status/
  bool withAdminLog = false;  // create logs/admin, enabling the debug log
  bool force = false;         // lay out over an existing root
  long demoImages = -1;       // demo images to add to the catalog; -1 none
  unsigned seed = 1;          // seed of the demo data
  int64_t now = 0;            // end of the demo's backup window, seconds since the epoch
};

// The configuration file text of a new root.
std::string InitialConfigText(const RootOptions& options);

// Lays out the root. Refuses a root that exists and is not an empty directory
// unless `force` is set; with `force` the files it writes are replaced and
// the catalog database is created afresh (on PostgreSQL: its schemas),
// other files are left alone.
// Returns true, or false with the reason in *error.
bool LayOutRoot(const RootOptions& options, std::string* error);

#endif  // TOOLS_STASHWELL_INIT_ROOT_LAYOUT_H_
