// Process-wide values of one cyclectl run. Start-up fills them in order
// (command name, master and catalog server, locale names, catalog connection)
// and every handler reads them; they live until the process ends.
#ifndef UTIL_PROCESS_H_
#define UTIL_PROCESS_H_

#include <cstdint>
#include <string>

// The record format version that begins every short-form record line.
constexpr char CmdVersion[] = "V7.6.0";

// Command name used in messages; set to progname during start-up.
extern std::string CmdName;
// Last component of argv[0]; source name of every debug-log line.
extern std::string progname;
// Configured master server name, replaced by -M.
extern std::string MasterServer;
// Catalog (EMM) server name from the configuration.
extern std::string EmmServer;
// The catalog port and the further catalog text (empty when absent), kept
// from the same reading of the configuration for the catalog connection.
extern unsigned short EmmPort;
extern std::string EmmCatalog;
// Catalog-library connection identifier (0 = not opened).
extern int EmmCid;
// Import-confirmation threshold in seconds, from the master configuration.
extern int64_t ImportConfThreshold;

// Locale names filled once by zkgetlocaleEx at start-up, 256 bytes each.
extern char lc_messages[256];
extern char lc_ctype[256];
extern char lc_time[256];
extern char lc_collate[256];
extern char lc_numeric[256];
extern char lc_status[256];

#endif  // UTIL_PROCESS_H_
