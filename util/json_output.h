// JSON documents of the reports: an owner for jansson values and the one way
// a report writes a document to standard output in its JSON form.
#ifndef UTIL_JSON_OUTPUT_H_
#define UTIL_JSON_OUTPUT_H_

#include <jansson.h>

#include <cstdio>

#include "util/output_form.h"

namespace Orvantic {
namespace Stashwell {

// Owns one reference to a jansson value and drops it when it goes away.
class JsonRef {
 public:
  explicit JsonRef(json_t* value = nullptr) : value_(value) {}
  ~JsonRef() { json_decref(value_); }
  JsonRef(const JsonRef&) = delete;
  JsonRef& operator=(const JsonRef&) = delete;

  json_t* get() const { return value_; }
  // Gives up the reference to the caller (for the json_*_new setters).
  json_t* release() {
    json_t* value = value_;
    value_ = nullptr;
    return value;
  }

 private:
  json_t* value_;
};

// True for the two JSON output forms.
inline bool IsJsonForm(outputform_e form) {
  return form == OUTPUT_JSON || form == OUTPUT_JSON_COMPACT;
}

// Writes `document` to `out` indented by two (OUTPUT_JSON) or compact
// (OUTPUT_JSON_COMPACT), then ends the line. Returns false when the stream
// refused the text.
bool WriteJsonDocument(FILE* out, const json_t* document, outputform_e form);

}  // namespace Stashwell
}  // namespace Orvantic

#endif  // UTIL_JSON_OUTPUT_H_
