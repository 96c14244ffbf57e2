// The test service's script: a JSON scenario file that says, per operation,
// what to answer (status, out values, results), what to raise and how long to
// wait, and a calls file that records every call received with its
// arguments. docs/remote.md describes both formats.
#ifndef TOOLS_CYCLESVC_TEST_SCENARIO_H_
#define TOOLS_CYCLESVC_TEST_SCENARIO_H_

#include <jansson.h>
#include <sys/types.h>

#include <map>
#include <mutex>
#include <string>
#include <vector>

#include <omniORB4/CORBA.h>

namespace cyclesvc_test {

// The arguments of one call: each as plain text (what a scenario's "args"
// match against) and as recorded (strings quoted).
class Args {
 public:
  Args& str(const char* value);
  Args& num(long long value);
  Args& unum(unsigned long long value);
  Args& flag(bool value);
  // An enumerator, by name.
  Args& name(const char* enumerator);
  // A value or sequence argument, recorded by a short description only.
  Args& other(const std::string& description);

  const std::vector<std::string>& plain() const { return plain_; }
  // "(a, b, ...)".
  std::string recorded() const;

 private:
  std::vector<std::string> plain_;
  std::vector<std::string> shown_;
};

// The reply chosen for one call; a null object (no scenario entry) answers
// with status 0 and zero or empty out values.
class Reply {
 public:
  explicit Reply(json_t* object);  // takes a reference of its own
  Reply(const Reply& other);
  Reply& operator=(const Reply&) = delete;
  ~Reply();

  CORBA::Long status() const { return static_cast<CORBA::Long>(number("status")); }
  long long number(const char* key) const;
  std::string text(const char* key) const;
  std::vector<std::string> texts(const char* key) const;
  // The member `key`, or null; borrowed from the reply.
  json_t* member(const char* key) const;

 private:
  json_t* object_;
};

class Scenario {
 public:
  Scenario(const std::string& scenarioPath, const std::string& callsPath);
  Scenario(const Scenario&) = delete;
  Scenario& operator=(const Scenario&) = delete;
  ~Scenario();

  // Records "<operation><args>" in the calls file, chooses the reply (the
  // scenario file is read again whenever it was replaced, which starts the
  // call counts again), waits its "delay_ms" and raises its "raise"
  // exception, or returns it.
  Reply answer(const std::string& operation, const Args& args);

 private:
  void reloadIfReplaced();
  json_t* choose(const std::string& operation, const Args& args);

  std::string scenarioPath_;
  std::string callsPath_;
  std::mutex mutex_;
  json_t* scenario_ = nullptr;
  ino_t inode_ = 0;
  long long mtimeNs_ = -1;
  std::map<std::string, size_t> callCounts_;
};

// Raises the exception a "raise" object describes:
//   {"system": "BAD_PARAM", "minor": 0, "completed": "NO"}
//   {"user": "ServiceException", "details": {...}}
//   {"user": "IllegalArgumentException", "details": {...} or absent}
// An object it does not understand raises CORBA::BAD_INV_ORDER.
[[noreturn]] void Raise(json_t* raise);

}  // namespace cyclesvc_test

#endif  // TOOLS_CYCLESVC_TEST_SCENARIO_H_
