// The application-message log, C interface. A localizable text (crvlLis_t)
// is a message id, a format whose %s (or %n$s) conversions stand for its
// string arguments, and those arguments (crvlLisAny_t). An application
// message (crvlLogMsg_t) carries a copy of one text with a severity; written
// to a log handle it becomes one line of the log's daily file,
// <root>/logs/<name>/<name>.YYYYMMDD.log, with the message id as source and
// the severity in the severity field.
//
// Statuses of the argument conversions (crvlLisAny_string,
// crvlLisAny_utf8string), usable results first: 1 converted but cut to
// CRVL_LIS_MAX_ARG bytes; 0 converted; -1 a null text, converted as empty;
// -2 an empty text; -4 control characters replaced by '?'; -5 a leading
// UTF-8 byte-order mark dropped (UTF-8 mode); -6 non-ASCII bytes replaced by
// '?' (plain mode). Errors: -3 out of memory, -7 a null holder, -8 a text
// that is not valid UTF-8 (UTF-8 mode).
#ifndef PLATFORM_CRVL_H_
#define PLATFORM_CRVL_H_

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef unsigned int crvlLogFlags_t;
typedef int crvlLogSeverity_t;

enum {
  CRVL_SEV_DEBUG = 0,
  CRVL_SEV_INFO = 1,
  CRVL_SEV_WARNING = 2,
  CRVL_SEV_ERROR = 3,
  CRVL_SEV_CRITICAL = 4,
};

// Flags of crvlLogMsg: also hand the message to the secondary sink.
enum { CRVL_LOG_FLAG_SECONDARY = 32 };
// Kind of an application message (crvlLogInitMsg).
enum { CRVL_MSG_KIND_APP = 2 };
// Attributes of crvlLogSetAppAttr.
enum { CRVL_ATTR_SEVERITY = 1 };

enum {
  CRVL_LIS_TRUNCATED = 1,
  CRVL_LIS_OK = 0,
  CRVL_LIS_NULL_TEXT = -1,
  CRVL_LIS_EMPTY_TEXT = -2,
  CRVL_LIS_NO_MEMORY = -3,
  CRVL_LIS_CONTROL_REPLACED = -4,
  CRVL_LIS_BOM_DROPPED = -5,
  CRVL_LIS_NON_ASCII_REPLACED = -6,
  CRVL_LIS_NO_HOLDER = -7,
  CRVL_LIS_BAD_UTF8 = -8,
};
#define CRVL_LIS_MAX_ARG 4096

// One string argument; `text` is owned (malloc'd) once converted.
typedef struct crvlLisAny {
  char* text;
} crvlLisAny_t;

// A localizable text; owns its id, format and arguments.
typedef struct crvlLis {
  char* id;
  char* format;
  crvlLisAny_t** args;
  int argCount;
  int utf8;
} crvlLis_t;

typedef struct crvlLogHandle crvlLogHandle_t;

typedef struct crvlLogMsg {
  int valid;  // set once a text is attached
  int kind;
  crvlLogFlags_t flags;
  crvlLogSeverity_t severity;
  crvlLis_t text;
} crvlLogMsg_t;

// Opens the log `name` (a folder under <root>/logs, created when missing).
// Null when it cannot be opened. Close with crvlLogClose.
crvlLogHandle_t* crvlLogOpen(const char* name);
void crvlLogClose(crvlLogHandle_t* handle);

// Fills `text` with copies of the id and format; 0 or CRVL_LIS_NO_MEMORY.
int crvlLisInit(crvlLis_t* text, const char* id, const char* format, int utf8);
// Releases what `text` owns and empties it.
void crvlLisFree(crvlLis_t* text);
// Converts `text` into the holder as a UTF-8 string or as a plain string.
int crvlLisAny_utf8string(crvlLisAny_t* any, const char* text);
int crvlLisAny_string(crvlLisAny_t* any, const char* text);
// Appends the holder (which `text` then owns); 0 or CRVL_LIS_NO_MEMORY.
int crvlLisAddArg(crvlLis_t* text, crvlLisAny_t* any);
// The text with its arguments in place, malloc'd (the caller frees); null
// when out of memory.
char* crvlLisFormat(const crvlLis_t* text);
// 1 when texts are UTF-8 by default: the character-type locale of the
// environment names the UTF-8 codeset.
int GetCrvlLisGlobalUtf8Setting(void);

// Starts an empty, invalid message of `kind` with `flags`; 0, or -1 for a
// null message.
int crvlLogInitMsg(crvlLogHandle_t* handle, crvlLogMsg_t* msg, int kind, crvlLogFlags_t flags);
// Attaches a copy of `text` to the message, marked UTF-8 when `utf8` is set;
// sets the message's validity flag on success. 0 or CRVL_LIS_NO_MEMORY.
int crvlLisCopy(crvlLogMsg_t* msg, const crvlLis_t* text, int utf8);
// Sets an attribute (CRVL_ATTR_SEVERITY); 0, or -1 for an unknown one.
int crvlLogSetAppAttr(crvlLogMsg_t* msg, int attribute, int value);
// Writes the message as one line; 0, an errno value of a failed write, or
// EINVAL for a null handle or an invalid message.
int crvlLogMsg(crvlLogHandle_t* handle, crvlLogFlags_t flags, const crvlLogMsg_t* msg);
// Releases what the message owns; the message becomes invalid.
void crvlLogFreeMsg(crvlLogMsg_t* msg);

#ifdef __cplusplus
}
#endif

#endif  // PLATFORM_CRVL_H_
