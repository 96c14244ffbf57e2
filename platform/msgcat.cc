// Message catalog lookup with the printf-compatibility check, and the
// status-text tables. Catalogs and status tables are read once and kept for
// the life of the process.
#include "platform/msgcat.h"

#include <cctype>
#include <cstdio>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

#include "platform/file_util.h"
#include "platform/locale.h"
#include "platform/message_catalog_file.h"
#include "platform/root.h"

namespace {

const struct {
  const char* area;
  int set;
} kAreaSets[] = {{"Slp", 1}, {"Com", 2}, {"Dup", 3}, {"Imp", 4},
                 {"Ret", 5}, {"Cln", 6}, {"Err", 7}};

// Set and message number of an id; false for an id of another shape.
bool SplitId(const char* id, int* set, int* number) {
  if (!id || strlen(id) != 11 || strncmp(id, "Sme", 3) != 0 || id[10] != 'N') return false;
  *set = 0;
  for (const auto& a : kAreaSets)
    if (strncmp(id + 3, a.area, 3) == 0) *set = a.set;
  if (*set == 0) return false;
  *number = 0;
  for (int i = 6; i < 10; ++i) {
    if (!isdigit(static_cast<unsigned char>(id[i]))) return false;
    *number = *number * 10 + (id[i] - '0');
  }
  return *number > 0;
}

// The largest catalog file read; real ones are a few kilobytes.
const size_t kCatalogLimit = 16 << 20;

// One catalog, read whole on first use; a file that is missing, unreadable,
// too large or not a catalog gives no texts.
class Catalog {
 public:
  explicit Catalog(const std::string& path) {
    std::string bytes;
    if (ReadWholeFile(path, kCatalogLimit, &bytes) == 0) file_.Parse(std::move(bytes));
  }
  const char* Get(int set, int number) const { return file_.Find(set, number); }

 private:
  MessageCatalogFile file_;
};

const Catalog& CatalogFor(const std::string& locale) {
  static std::map<std::string, std::unique_ptr<Catalog>> open;
  std::unique_ptr<Catalog>& c = open[locale];
  if (!c) c.reset(new Catalog(StashwellPath("share/msg/" + locale + "/cyclectl.cat")));
  return *c;
}

// The text to format for `locale`: the catalog's when it fits the default.
const char* ChooseFormat(const char* id, const char* locale, const char* defaultFormat,
                         const std::string& defaultTypes, bool defaultValid, std::string* storage) {
  if (!defaultValid || !LookupCatalogText(id, locale, storage)) return defaultFormat;
  std::string types;
  if (!PrintfArgumentTypes(storage->c_str(), &types) || types != defaultTypes) return defaultFormat;
  return storage->c_str();
}

char LengthType(const std::string& length, char conversion) {
  switch (conversion) {
    case 'd':
    case 'i':
    case 'o':
    case 'u':
    case 'x':
    case 'X':
      if (length.empty() || length == "h" || length == "hh") return 'i';
      if (length == "l") return 'l';
      if (length == "ll" || length == "q" || length == "L") return 'q';
      if (length == "j") return 'j';
      if (length == "z" || length == "Z") return 'z';
      if (length == "t") return 't';
      return 0;
    case 'c':
      return length.empty() ? 'i' : length == "l" ? 'w' : 0;
    case 'C':
      return length.empty() ? 'w' : 0;
    case 's':
      return length.empty() ? 's' : length == "l" ? 'S' : 0;
    case 'S':
      return length.empty() ? 'S' : 0;
    case 'p':
      return length.empty() ? 'p' : 0;
    case 'e':
    case 'E':
    case 'f':
    case 'F':
    case 'g':
    case 'G':
    case 'a':
    case 'A':
      if (length.empty() || length == "l") return 'd';
      return length == "L" ? 'D' : 0;
    default:
      return 0;
  }
}

// Reads "<digits>$"; the position, 0 when absent, -1 when malformed.
int Position(const char** p) {
  const char* q = *p;
  int n = 0;
  for (; isdigit(static_cast<unsigned char>(*q)); ++q) {
    if (n <= 64) n = n * 10 + (*q - '0');  // past 64 it is refused anyway
  }
  if (q == *p || *q != '$') return 0;
  if (n < 1 || n > 64) return -1;
  *p = q + 1;
  return n;
}

// Status-text tables by locale name.
std::mutex g_statusMutex;

const std::map<int, std::string>& StatusTable(const std::string& locale) {
  static std::map<std::string, std::map<int, std::string>> tables;
  auto found = tables.find(locale);
  if (found != tables.end()) return found->second;
  std::map<int, std::string>& table = tables[locale];
  std::string text;
  if (ReadWholeFile(StashwellPath("share/status/" + locale + "/status.txt"), kCatalogLimit,
                    &text) != 0)
    return table;
  size_t start = 0;
  while (start < text.size()) {
    size_t end = text.find('\n', start);
    if (end == std::string::npos) end = text.size();
    std::string line = text.substr(start, end - start);
    start = end + 1;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty() || line[0] == '#') continue;
    char* rest = nullptr;
    long code = strtol(line.c_str(), &rest, 10);
    if (rest == line.c_str() || (*rest != ' ' && *rest != '\t')) continue;
    while (*rest == ' ' || *rest == '\t') ++rest;
    if (*rest) table.emplace(static_cast<int>(code), rest);
  }
  return table;
}

// The status text in `locale`, or the unknown-code text; under g_statusMutex.
const std::string& StatusText(int status, const char* locale) {
  for (const std::string& name : LocaleCandidates(locale)) {
    const std::map<int, std::string>& table = StatusTable(name);
    auto it = table.find(status);
    if (it != table.end()) return it->second;
  }
  static std::map<int, std::string> unknown;
  std::string& text = unknown[status];
  if (text.empty()) text = "unknown status code " + std::to_string(status);
  return text;
}

}  // namespace

bool PrintfArgumentTypes(const char* format, std::string* types) {
  types->clear();
  if (!format) return false;
  std::vector<char> byPosition;  // positional formats: type of argument i+1
  int mode = 0;                  // 0 unknown, 1 sequential, 2 positional
  auto take = [&](int position, char type) {
    int wanted = position > 0 ? 2 : 1;
    if (mode != 0 && mode != wanted) return false;
    mode = wanted;
    if (position == 0) {
      types->push_back(type);
      return true;
    }
    if (byPosition.size() < static_cast<size_t>(position)) byPosition.resize(position, 0);
    char& slot = byPosition[position - 1];
    if (slot != 0 && slot != type) return false;
    slot = type;
    return true;
  };
  for (const char* p = format; *p; ++p) {
    if (*p != '%') continue;
    ++p;
    if (*p == '%') continue;
    int position = Position(&p);
    if (position < 0) return false;
    while (*p && strchr("-+ #0'I", *p)) ++p;
    for (int field = 0; field < 2; ++field) {  // width, then precision
      if (field == 1) {
        if (*p != '.') break;
        ++p;
      }
      if (*p == '*') {
        ++p;
        int starPosition = Position(&p);
        if (starPosition < 0 || !take(starPosition, 'i')) return false;
      } else {
        while (isdigit(static_cast<unsigned char>(*p))) ++p;
      }
    }
    std::string length;
    while (*p && strchr("hlqLjzZt", *p)) length.push_back(*p++);
    if (*p == 'm' && length.empty()) {
      if (position > 0) return false;
      continue;
    }
    char type = *p ? LengthType(length, *p) : 0;
    if (type == 0 || !take(position, type)) return false;
  }
  if (mode == 2) {
    for (char t : byPosition)
      if (t == 0) return false;  // an argument that no conversion names
    types->assign(byPosition.begin(), byPosition.end());
  }
  return true;
}

bool LookupCatalogText(const char* id, const char* locale, std::string* text) {
  int set, number;
  if (!SplitId(id, &set, &number)) return false;
  for (const std::string& name : LocaleCandidates(locale)) {
    const char* found = CatalogFor(name).Get(set, number);
    if (found) {
      *text = found;
      return true;
    }
  }
  return false;
}

int vzkgetmsg(const char* id, const char* locale, size_t size, char* buffer, const char* locale2,
              size_t size2, char* buffer2, const char* defaultFormat, va_list ap) {
  if (!defaultFormat) defaultFormat = "";
  std::string defaultTypes;
  bool defaultValid = PrintfArgumentTypes(defaultFormat, &defaultTypes);
  std::string storage;
  const char* format =
      ChooseFormat(id, locale, defaultFormat, defaultTypes, defaultValid, &storage);
  int used = format == defaultFormat ? 1 : 0;
  if (buffer && size > 0) {
    va_list copy;
    va_copy(copy, ap);
    vsnprintf(buffer, size, format, copy);
    va_end(copy);
  }
  if (locale2 && buffer2 && size2 > 0) {
    std::string storage2;
    const char* format2 =
        ChooseFormat(id, locale2, defaultFormat, defaultTypes, defaultValid, &storage2);
    va_list copy;
    va_copy(copy, ap);
    vsnprintf(buffer2, size2, format2, copy);
    va_end(copy);
  }
  return used;
}

int zkgetmsg(const char* id, const char* locale, size_t size, char* buffer, const char* locale2,
             size_t size2, char* buffer2, const char* defaultFormat, ...) {
  va_list ap;
  va_start(ap, defaultFormat);
  int used = vzkgetmsg(id, locale, size, buffer, locale2, size2, buffer2, defaultFormat, ap);
  va_end(ap);
  return used;
}

const char* getECmsg(int status) {
  char messages[256];
  zkgetlocaleEx(messages, sizeof messages, nullptr, 0, nullptr, 0, nullptr, 0, nullptr, 0, nullptr);
  std::lock_guard<std::mutex> lock(g_statusMutex);
  return StatusText(status, messages).c_str();
}

ECMsgL getECmsgl_ts(int status, const char* locale) {
  std::lock_guard<std::mutex> lock(g_statusMutex);
  return ECMsgL{status, StatusText(status, locale)};
}

std::ostream& operator<<(std::ostream& out, const ECMsgL& msg) { return out << msg.text; }
