// Tests of the JSON string constructor.
#include "platform/json_string.h"

#include "gtest/gtest.h"

namespace {

std::string Value(json_t* j) {
  std::string s = j ? std::string(json_string_value(j), json_string_length(j)) : "<null>";
  json_decref(j);
  return s;
}

TEST(OrvJsonString, TextLengthFallbackAndBadBytes) {
  EXPECT_EQ(Value(orv_json_string("policy_1", 0, "")), "policy_1");
  EXPECT_EQ(Value(orv_json_string("policy_1", 6, "")), "policy");
  EXPECT_EQ(Value(orv_json_string(nullptr, 0, "none")), "none");
  EXPECT_EQ(Value(orv_json_string(nullptr, 0, nullptr)), "");
  EXPECT_EQ(Value(orv_json_string("caf\xc3\xa9", 0, "")), "caf\xc3\xa9");
  EXPECT_EQ(Value(orv_json_string("a\377b\303", 0, "")), "a?b?");
  EXPECT_EQ(Value(orv_json_string("\xed\xa0\x80x", 0, "")), "???x");  // a surrogate
}

}  // namespace
