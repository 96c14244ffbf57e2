// The image listing. (Placeholder until the listing lands.)
#include "catalog/list.h"

void List(outputform_e, const char*, const char*, const char*, const char*, const char*,
          const char*, const char*, const int*, const short*, const short*, short, long, int,
          const int*, int, const char*, TimeRangeType, long) {}
