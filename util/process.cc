// Storage for the process-wide values declared in process.h.
#include "util/process.h"

std::string CmdName;
std::string progname;
std::string MasterServer;
std::string EmmServer;
unsigned short EmmPort = 0;
std::string EmmCatalog;
int EmmCid = 0;
int64_t ImportConfThreshold = 0;

char lc_messages[256] = "C";
char lc_ctype[256] = "C";
char lc_time[256] = "C";
char lc_collate[256] = "C";
char lc_numeric[256] = "C";
char lc_status[256] = "";
