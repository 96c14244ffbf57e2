// Writing the reports' JSON documents.
#include "util/json_output.h"

namespace Orvantic {
namespace Stashwell {

bool WriteJsonDocument(FILE* out, const json_t* document, outputform_e form) {
  size_t flags = form == OUTPUT_JSON_COMPACT ? JSON_COMPACT : JSON_INDENT(2);
  bool written = json_dumpf(document, out, flags) == 0;
  return fputc('\n', out) != EOF && written;
}

}  // namespace Stashwell
}  // namespace Orvantic
