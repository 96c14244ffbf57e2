// stashwell-init: lays out a working installation root for cyclectl.
//
//   stashwell-init --root DIR [--master NAME] [--emm-server NAME] [--catalog URI]
//                  [--with-admin-log] [--force] [--demo N [--seed S] [--now T]]
//                  [--share DIR]
//
// --catalog puts the catalog in a PostgreSQL database (a postgresql:// URI)
// instead of db/catalog.db; the catalog server's name and port then default
// to the URI's. Master and catalog server names default to the host name; the demo's
// backup window ends at T (seconds since the epoch), by default now; the data
// files come from ../share/stashwell beside the executable unless --share
// names another folder. Exit status 0 on success, 1 when the root cannot be laid
// out, 2 for a bad command line.
#include <unistd.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>

#include "tools/stashwell-init/catalog_uri.h"
#include "tools/stashwell-init/root_layout.h"

namespace {

const char kUsage[] =
    "usage: stashwell-init --root DIR [--master NAME] [--emm-server NAME] [--catalog URI]\n"
    "                      [--with-admin-log] [--force] [--demo N [--seed S] [--now T]]\n"
    "                      [--share DIR]\n";

struct Args {
  RootOptions options;
  bool seedGiven = false;
  bool nowGiven = false;
  CatalogServer server;  // of --catalog
};

bool SetText(const char* value, std::string* out) {
  if (!*value) return false;
  *out = value;
  return true;
}

// Reads a whole number of at most ten digits and at most `max` into *out.
template <typename T>
bool SetNumber(const char* value, unsigned long max, T* out) {
  if (!*value || strspn(value, "0123456789") != strlen(value) || strlen(value) > 10) return false;
  unsigned long n = strtoul(value, nullptr, 10);
  if (n > max) return false;
  *out = static_cast<T>(n);
  return true;
}

bool SetRoot(Args* a, const char* v) { return SetText(v, &a->options.root); }
bool SetMaster(Args* a, const char* v) { return SetText(v, &a->options.master); }
bool SetEmm(Args* a, const char* v) { return SetText(v, &a->options.emmServer); }
bool SetShare(Args* a, const char* v) { return SetText(v, &a->options.shareDir); }
bool SetCatalog(Args* a, const char* v) {
  if (!ParseCatalogUri(v, &a->server)) return false;
  a->options.catalog = v;
  return true;
}
bool SetAdminLog(Args* a, const char*) { return a->options.withAdminLog = true; }
bool SetForce(Args* a, const char*) { return a->options.force = true; }
bool SetDemo(Args* a, const char* v) { return SetNumber(v, 100000000UL, &a->options.demoImages); }
bool SetSeed(Args* a, const char* v) {
  return (a->seedGiven = SetNumber(v, UINT_MAX, &a->options.seed));
}
bool SetNow(Args* a, const char* v) {
  return (a->nowGiven = SetNumber(v, ULONG_MAX, &a->options.now));
}

const struct OptionRow {
  const char* name;
  bool takesValue;
  bool (*set)(Args*, const char*);
} kOptions[] = {
    {"--root", true, SetRoot},      {"--master", true, SetMaster},
    {"--emm-server", true, SetEmm}, {"--with-admin-log", false, SetAdminLog},
    {"--force", false, SetForce},   {"--demo", true, SetDemo},
    {"--seed", true, SetSeed},      {"--share", true, SetShare},
    {"--now", true, SetNow},        {"--catalog", true, SetCatalog},
};

[[noreturn]] void UsageError(const std::string& what) {
  fprintf(stderr, "stashwell-init: %s\n%s", what.c_str(), kUsage);
  exit(2);
}

std::string HostName() {
  char name[256] = "";
  if (gethostname(name, sizeof name - 1) != 0 || !*name) return "localhost";
  return name;
}

// ../share/stashwell beside the executable.
std::string DefaultShareDir() {
  char exe[PATH_MAX];
  ssize_t n = readlink("/proc/self/exe", exe, sizeof exe - 1);
  if (n <= 0) return "share/stashwell";
  exe[n] = '\0';
  std::string dir(exe);
  dir = dir.substr(0, dir.rfind('/'));
  return dir + "/../share/stashwell";
}

}  // namespace

int main(int argc, char** argv) {
  Args args;
  for (int i = 1; i < argc; ++i) {
    if (strcmp(argv[i], "--help") == 0 || strcmp(argv[i], "-h") == 0) {
      fputs(kUsage, stdout);
      return 0;
    }
    const OptionRow* row = nullptr;
    for (const OptionRow& r : kOptions)
      if (strcmp(argv[i], r.name) == 0) row = &r;
    if (!row) UsageError(std::string("unknown option '") + argv[i] + "'");
    const char* value = "";
    if (row->takesValue) {
      if (i + 1 >= argc) UsageError(std::string("option ") + row->name + " needs a value");
      value = argv[++i];
    }
    if (!row->set(&args, value))
      UsageError(std::string("bad value '") + value + "' for option " + row->name);
  }
  RootOptions& o = args.options;
  if (o.root.empty()) UsageError("option --root is required");
  if (args.seedGiven && o.demoImages < 0) UsageError("option --seed goes with --demo");
  if (args.nowGiven && o.demoImages < 0) UsageError("option --now goes with --demo");
  if (!args.nowGiven) o.now = static_cast<int64_t>(time(nullptr));
  if (o.master.empty()) o.master = HostName();
  if (!o.catalog.empty() && o.emmServer.empty()) o.emmServer = args.server.host;
  if (o.emmServer.empty()) o.emmServer = HostName();
  if (o.shareDir.empty()) o.shareDir = DefaultShareDir();

  std::string error;
  if (!LayOutRoot(o, &error)) {
    fprintf(stderr, "stashwell-init: %s\n", error.c_str());
    return 1;
  }
  printf("stashwell-init: installation root %s is ready\n", o.root.c_str());
  return 0;
}
