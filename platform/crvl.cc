// The application-message log: localizable texts with string arguments,
// messages carrying copies of them, and daily log files to write them to.
#include "platform/crvl.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>

#include "platform/locale.h"
#include "platform/log_file.h"
#include "platform/root.h"

struct crvlLogHandle {
  DailyLogFile file;
};

namespace {

char* Duplicate(const char* s) { return strdup(s ? s : ""); }

// Length of the UTF-8 sequence at p (at most `left` bytes), 0 when invalid.
size_t Utf8Length(const unsigned char* p, size_t left) {
  size_t n = *p < 0x80           ? 1
             : (*p >> 5) == 0x6  ? 2
             : (*p >> 4) == 0xE  ? 3
             : (*p >> 3) == 0x1E ? 4
                                 : 0;
  if (n == 0 || n > left) return 0;
  for (size_t i = 1; i < n; ++i)
    if ((p[i] & 0xC0) != 0x80) return 0;
  if (n == 2 && *p < 0xC2) return 0;  // overlong
  return n;
}

int Convert(crvlLisAny_t* any, const char* text, bool utf8) {
  if (!any) return CRVL_LIS_NO_HOLDER;
  int status = CRVL_LIS_OK;
  std::string out;
  if (!text) {
    status = CRVL_LIS_NULL_TEXT;
  } else if (!*text) {
    status = CRVL_LIS_EMPTY_TEXT;
  } else {
    bool bom = false, control = false, replaced = false, truncated = false;
    if (utf8 && strncmp(text, "\xEF\xBB\xBF", 3) == 0) {
      text += 3;
      bom = true;
    }
    const unsigned char* p = reinterpret_cast<const unsigned char*>(text);
    size_t left = strlen(text);
    while (left > 0) {
      size_t n = utf8 ? Utf8Length(p, left) : 1;
      if (n == 0) return CRVL_LIS_BAD_UTF8;
      if (out.size() + n > CRVL_LIS_MAX_ARG) {
        truncated = true;
        break;
      }
      if (*p < 0x20 || *p == 0x7F) {
        out += '?';
        control = true;
      } else if (!utf8 && *p >= 0x80) {
        out += '?';
        replaced = true;
      } else {
        out.append(reinterpret_cast<const char*>(p), n);
      }
      p += n;
      left -= n;
    }
    status = replaced    ? CRVL_LIS_NON_ASCII_REPLACED
             : control   ? CRVL_LIS_CONTROL_REPLACED
             : bom       ? CRVL_LIS_BOM_DROPPED
             : truncated ? CRVL_LIS_TRUNCATED
                         : CRVL_LIS_OK;
  }
  char* copy = strdup(out.c_str());
  if (!copy) return CRVL_LIS_NO_MEMORY;
  free(any->text);
  any->text = copy;
  return status;
}

}  // namespace

crvlLogHandle_t* crvlLogOpen(const char* name) {
  if (!name || !*name || strchr(name, '/')) return nullptr;
  std::string dir = StashwellPath("logs/") + name;
  mkdir(dir.c_str(), 0755);
  crvlLogHandle_t* h = new crvlLogHandle();
  if (h->file.Open(dir, name, 0644) != 0) {
    delete h;
    return nullptr;
  }
  return h;
}

void crvlLogClose(crvlLogHandle_t* handle) { delete handle; }

int crvlLisInit(crvlLis_t* text, const char* id, const char* format, int utf8) {
  memset(text, 0, sizeof *text);
  text->id = Duplicate(id);
  text->format = Duplicate(format);
  text->utf8 = utf8;
  if (!text->id || !text->format) {
    crvlLisFree(text);
    return CRVL_LIS_NO_MEMORY;
  }
  return 0;
}

void crvlLisFree(crvlLis_t* text) {
  if (!text) return;
  for (int i = 0; i < text->argCount; ++i) {
    free(text->args[i]->text);
    free(text->args[i]);
  }
  free(text->args);
  free(text->id);
  free(text->format);
  memset(text, 0, sizeof *text);
}

int crvlLisAny_utf8string(crvlLisAny_t* any, const char* text) { return Convert(any, text, true); }

int crvlLisAny_string(crvlLisAny_t* any, const char* text) { return Convert(any, text, false); }

int crvlLisAddArg(crvlLis_t* text, crvlLisAny_t* any) {
  void* grown = realloc(text->args, sizeof(crvlLisAny_t*) * (text->argCount + 1));
  if (!grown) return CRVL_LIS_NO_MEMORY;
  text->args = static_cast<crvlLisAny_t**>(grown);
  text->args[text->argCount++] = any;
  return 0;
}

char* crvlLisFormat(const crvlLis_t* text) {
  std::string out;
  int next = 0;
  const char* f = text->format ? text->format : "";
  for (const char* p = f; *p; ++p) {
    if (*p != '%') {
      out += *p;
      continue;
    }
    if (p[1] == '%') {
      out += '%';
      ++p;
      continue;
    }
    int index = -1;
    const char* q = p + 1;
    if (*q == 's') {
      index = next++;
    } else {
      int n = 0;
      while (*q >= '0' && *q <= '9') n = n * 10 + (*q++ - '0');
      if (n > 0 && q[0] == '$' && q[1] == 's') {
        index = n - 1;
        ++q;
      } else {
        q = nullptr;
      }
    }
    if (!q) {
      out += '%';
      continue;
    }
    if (index >= 0 && index < text->argCount && text->args[index]->text)
      out += text->args[index]->text;
    p = q;
  }
  return strdup(out.c_str());
}

int GetCrvlLisGlobalUtf8Setting(void) {
  char ctype[256];
  zkgetlocaleEx(nullptr, 0, ctype, sizeof ctype, nullptr, 0, nullptr, 0, nullptr, 0, nullptr);
  std::string s = ctype;
  for (char& c : s) c = static_cast<char>(tolower(static_cast<unsigned char>(c)));
  return s.find(".utf-8") != std::string::npos || s.find(".utf8") != std::string::npos;
}

int crvlLogInitMsg(crvlLogHandle_t*, crvlLogMsg_t* msg, int kind, crvlLogFlags_t flags) {
  if (!msg) return -1;
  memset(msg, 0, sizeof *msg);
  msg->kind = kind;
  msg->flags = flags;
  return 0;
}

int crvlLisCopy(crvlLogMsg_t* msg, const crvlLis_t* text, int utf8) {
  crvlLisFree(&msg->text);
  msg->valid = 0;
  if (crvlLisInit(&msg->text, text->id, text->format, utf8) != 0) return CRVL_LIS_NO_MEMORY;
  for (int i = 0; i < text->argCount; ++i) {
    crvlLisAny_t* any = static_cast<crvlLisAny_t*>(calloc(1, sizeof(crvlLisAny_t)));
    if (!any || !(any->text = Duplicate(text->args[i]->text)) ||
        crvlLisAddArg(&msg->text, any) != 0) {
      if (any) free(any->text);
      free(any);
      crvlLisFree(&msg->text);
      return CRVL_LIS_NO_MEMORY;
    }
  }
  msg->valid = 1;
  return 0;
}

int crvlLogSetAppAttr(crvlLogMsg_t* msg, int attribute, int value) {
  if (!msg || attribute != CRVL_ATTR_SEVERITY) return -1;
  msg->severity = value;
  return 0;
}

int crvlLogMsg(crvlLogHandle_t* handle, crvlLogFlags_t, const crvlLogMsg_t* msg) {
  if (!handle || !msg || !msg->valid) return EINVAL;
  char* line = crvlLisFormat(&msg->text);
  if (!line) return ENOMEM;
  int rc = handle->file.Write(msg->severity, msg->text.id, line);
  free(line);
  return rc;
}

void crvlLogFreeMsg(crvlLogMsg_t* msg) {
  if (!msg) return;
  crvlLisFree(&msg->text);
  msg->valid = 0;
}
