// Scenario file, reply choice, call recording and raising.
#include "tools/cyclesvc-test/scenario.h"

#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <thread>

#include "remote/idl/IllegalArgumentException.hh"
#include "remote/idl/ServiceException.hh"
#include "tools/cyclesvc-test/value_json.h"

namespace cyclesvc_test {

namespace Framework = Orvantic::Stashwell::TL::Framework;

namespace {

std::string Quoted(const char* value) {
  std::string out = "\"";
  for (const char* p = value; *p; ++p) {
    unsigned char c = static_cast<unsigned char>(*p);
    if (c == '"' || c == '\\') {
      out += '\\';
      out += static_cast<char>(c);
    } else if (c < 0x20) {
      char escaped[8];
      snprintf(escaped, sizeof escaped, "\\u%04x", c);
      out += escaped;
    } else {
      out += static_cast<char>(c);
    }
  }
  return out + "\"";
}

// The plain text a scenario's "args" element stands for, or null for "any".
bool PlainOf(json_t* value, std::string* text) {
  if (json_is_string(value)) {
    *text = json_string_value(value);
  } else if (json_is_integer(value)) {
    *text = std::to_string(json_integer_value(value));
  } else if (json_is_boolean(value)) {
    *text = json_is_true(value) ? "true" : "false";
  } else {
    return false;
  }
  return true;
}

bool ArgsMatch(json_t* wanted, const Args& args) {
  if (!json_is_array(wanted) || json_array_size(wanted) > args.plain().size()) return false;
  for (size_t i = 0; i < json_array_size(wanted); ++i) {
    std::string text;
    if (!PlainOf(json_array_get(wanted, i), &text)) continue;  // null: any value
    if (text != args.plain()[i]) return false;
  }
  return true;
}

struct SystemExceptionRow {
  const char* name;
  void (*raise)(CORBA::ULong minor, CORBA::CompletionStatus completed);
};

#define SW_SYSTEM_EXCEPTION(name)                                                     \
  {                                                                                   \
#name, [](CORBA::ULong m, CORBA::CompletionStatus c) { throw CORBA::name(m, c); } \
  }

const SystemExceptionRow kSystemExceptions[] = {
    SW_SYSTEM_EXCEPTION(BAD_PARAM),        SW_SYSTEM_EXCEPTION(TRANSIENT),
    SW_SYSTEM_EXCEPTION(COMM_FAILURE),     SW_SYSTEM_EXCEPTION(TIMEOUT),
    SW_SYSTEM_EXCEPTION(NO_IMPLEMENT),     SW_SYSTEM_EXCEPTION(NO_PERMISSION),
    SW_SYSTEM_EXCEPTION(INTERNAL),         SW_SYSTEM_EXCEPTION(MARSHAL),
    SW_SYSTEM_EXCEPTION(OBJECT_NOT_EXIST), SW_SYSTEM_EXCEPTION(UNKNOWN),
    SW_SYSTEM_EXCEPTION(NO_MEMORY),        SW_SYSTEM_EXCEPTION(NO_RESOURCES),
};

#undef SW_SYSTEM_EXCEPTION

CORBA::CompletionStatus Completion(json_t* value) {
  const char* text = json_string_value(value);
  if (text == nullptr || strcmp(text, "NO") == 0) return CORBA::COMPLETED_NO;
  if (strcmp(text, "YES") == 0) return CORBA::COMPLETED_YES;
  return CORBA::COMPLETED_MAYBE;
}

}  // namespace

Args& Args::str(const char* value) {
  const char* v = value != nullptr ? value : "";
  plain_.push_back(v);
  shown_.push_back(Quoted(v));
  return *this;
}

Args& Args::num(long long value) {
  plain_.push_back(std::to_string(value));
  shown_.push_back(plain_.back());
  return *this;
}

Args& Args::unum(unsigned long long value) {
  plain_.push_back(std::to_string(value));
  shown_.push_back(plain_.back());
  return *this;
}

Args& Args::flag(bool value) {
  plain_.push_back(value ? "true" : "false");
  shown_.push_back(plain_.back());
  return *this;
}

Args& Args::name(const char* enumerator) {
  plain_.push_back(enumerator);
  shown_.push_back(enumerator);
  return *this;
}

Args& Args::other(const std::string& description) {
  plain_.push_back(description);
  shown_.push_back(description);
  return *this;
}

std::string Args::recorded() const {
  std::string out = "(";
  for (size_t i = 0; i < shown_.size(); ++i) {
    if (i > 0) out += ", ";
    out += shown_[i];
  }
  return out + ")";
}

Reply::Reply(json_t* object) : object_(object != nullptr ? json_incref(object) : nullptr) {}

Reply::Reply(const Reply& other)
    : object_(other.object_ != nullptr ? json_incref(other.object_) : nullptr) {}

Reply::~Reply() { json_decref(object_); }

json_t* Reply::member(const char* key) const {
  json_t* value = json_object_get(object_, key);
  return json_is_null(value) ? nullptr : value;
}

long long Reply::number(const char* key) const {
  json_t* value = member(key);
  return json_is_integer(value) ? json_integer_value(value) : 0;
}

std::string Reply::text(const char* key) const {
  const char* value = json_string_value(member(key));
  return value != nullptr ? value : "";
}

std::vector<std::string> Reply::texts(const char* key) const {
  std::vector<std::string> out;
  json_t* array = member(key);
  for (size_t i = 0; i < json_array_size(array); ++i) {
    const char* value = json_string_value(json_array_get(array, i));
    out.push_back(value != nullptr ? value : "");
  }
  return out;
}

Scenario::Scenario(const std::string& scenarioPath, const std::string& callsPath)
    : scenarioPath_(scenarioPath), callsPath_(callsPath) {}

Scenario::~Scenario() { json_decref(scenario_); }

void Scenario::reloadIfReplaced() {
  struct stat st;
  if (stat(scenarioPath_.c_str(), &st) != 0) return;  // keep what was read last
  long long mtimeNs = static_cast<long long>(st.st_mtim.tv_sec) * 1000000000LL + st.st_mtim.tv_nsec;
  if (st.st_ino == inode_ && mtimeNs == mtimeNs_) return;
  json_error_t error;
  json_t* loaded = json_load_file(scenarioPath_.c_str(), 0, &error);
  if (loaded == nullptr || !json_is_object(loaded)) {
    fprintf(stderr, "cyclesvc-test: %s:%d: %s\n", scenarioPath_.c_str(), error.line, error.text);
    json_decref(loaded);
    loaded = json_object();
  }
  json_decref(scenario_);
  scenario_ = loaded;
  inode_ = st.st_ino;
  mtimeNs_ = mtimeNs;
  callCounts_.clear();
}

json_t* Scenario::choose(const std::string& operation, const Args& args) {
  json_t* entry = json_object_get(scenario_, operation.c_str());
  size_t call = callCounts_[operation]++;
  if (!json_is_array(entry)) return entry;
  for (size_t i = 0; i < json_array_size(entry); ++i) {
    json_t* reply = json_array_get(entry, i);
    json_t* wanted = json_object_get(reply, "args");
    if (wanted != nullptr && ArgsMatch(wanted, args)) return reply;
  }
  json_t* last = nullptr;
  size_t seen = 0;
  for (size_t i = 0; i < json_array_size(entry); ++i) {
    json_t* reply = json_array_get(entry, i);
    if (json_object_get(reply, "args") != nullptr) continue;
    last = reply;
    if (seen++ == call) return reply;
  }
  return last;
}

Reply Scenario::answer(const std::string& operation, const Args& args) {
  json_t* chosen;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    if (FILE* calls = fopen(callsPath_.c_str(), "a")) {
      fprintf(calls, "%s%s\n", operation.c_str(), args.recorded().c_str());
      fclose(calls);
    }
    reloadIfReplaced();
    chosen = json_incref(choose(operation, args));
  }
  Reply reply(chosen);
  json_decref(chosen);
  long long delay = reply.number("delay_ms");
  if (delay > 0) std::this_thread::sleep_for(std::chrono::milliseconds(delay));
  // A service that dies in the middle of a call: no reply, connection reset.
  if (json_is_true(reply.member("die"))) _exit(3);
  if (json_t* raise = reply.member("raise")) Raise(raise);
  return reply;
}

void Raise(json_t* raise) {
  if (const char* name = json_string_value(json_object_get(raise, "system"))) {
    json_t* minor = json_object_get(raise, "minor");
    CORBA::ULong m =
        json_is_integer(minor) ? static_cast<CORBA::ULong>(json_integer_value(minor)) : 0;
    CORBA::CompletionStatus c = Completion(json_object_get(raise, "completed"));
    for (const SystemExceptionRow& row : kSystemExceptions) {
      if (strcmp(row.name, name) == 0) row.raise(m, c);
    }
  }
  const char* user = json_string_value(json_object_get(raise, "user"));
  json_t* details = json_object_get(raise, "details");
  if (user != nullptr && strcmp(user, "ServiceException") == 0) {
    throw Framework::ServiceException(DetailsFromJson(details));
  }
  if (user != nullptr && strcmp(user, "IllegalArgumentException") == 0) {
    throw Framework::IllegalArgumentException(IllegalArgumentDetailsFromJson(details));
  }
  throw CORBA::BAD_INV_ORDER(0, CORBA::COMPLETED_NO);
}

}  // namespace cyclesvc_test
