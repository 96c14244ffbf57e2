// The SQL tokenizer and dialect translator: the input is one statement. The
// tokens must join back into the input exactly.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/dal/sql_dialect.h"
#include "platform/dal/sql_tokenizer.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view sql(reinterpret_cast<const char*>(data), size);
  std::string joined;
  for (const Corvela::Dal::SqlToken& token : Corvela::Dal::TokenizeSql(sql)) joined += token.text;
  if (joined != sql) abort();
  std::string translated, why;
  Corvela::Dal::TranslateSql(sql, &translated, &why);
  return 0;
}
