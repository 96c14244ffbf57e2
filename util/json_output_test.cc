// The two JSON forms of a report document.
#include "util/json_output.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace Orvantic {
namespace Stashwell {
namespace {

std::string Written(const json_t* document, outputform_e form) {
  char* text = nullptr;
  size_t size = 0;
  FILE* out = open_memstream(&text, &size);
  EXPECT_TRUE(WriteJsonDocument(out, document, form));
  fclose(out);
  std::string result(text, size);
  free(text);
  return result;
}

TEST(JsonOutputTest, IndentedAndCompactFormsEndTheLine) {
  JsonRef doc(json_object());
  json_object_set_new(doc.get(), "Count", json_integer(2));
  json_object_set_new(doc.get(), "Items", json_array());
  EXPECT_EQ(Written(doc.get(), OUTPUT_JSON), "{\n  \"Count\": 2,\n  \"Items\": []\n}\n");
  EXPECT_EQ(Written(doc.get(), OUTPUT_JSON_COMPACT), "{\"Count\":2,\"Items\":[]}\n");
  EXPECT_TRUE(IsJsonForm(OUTPUT_JSON_COMPACT));
  EXPECT_FALSE(IsJsonForm(OUTPUT_BRIEF));
}

}  // namespace
}  // namespace Stashwell
}  // namespace Orvantic
