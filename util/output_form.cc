// The message of a report asked for an output form it does not print.
#include "util/output_form.h"

#include <cstdio>

#include "util/line_writer.h"

void PrintUnsupportedForm(outputform_e form) {
  Orvantic::Stashwell::WritePendingOutput();
  fprintf(stderr, "unrecognized output format: %d\n", static_cast<int>(form));
}
