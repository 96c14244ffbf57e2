// The SQLite and the PostgreSQL catalog schemas define the same tables with
// the same columns in the same order, and the same indexes on them.
#include <gtest/gtest.h>

#include <cctype>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "platform/emmlib/catalog_schema.h"

namespace {

// Lower case, without the schema a name is qualified by.
std::string Plain(std::string name) {
  name = name.substr(name.find('.') + 1);
  for (char& c : name) c = static_cast<char>(tolower(static_cast<unsigned char>(c)));
  return name;
}

// Table -> its columns, and "index:<name>" -> its table and key.
std::map<std::string, std::vector<std::string>> Outline(const char* ddl) {
  std::map<std::string, std::vector<std::string>> outline;
  std::istringstream in(ddl);
  std::string line;
  std::vector<std::string>* columns = nullptr;
  while (std::getline(in, line)) {
    std::istringstream words(line);
    std::string first, second, third;
    words >> first >> second >> third;
    if (first == "CREATE" && second == "TABLE") {
      columns = &outline[Plain(third)];
    } else if (first == "CREATE" && (second == "INDEX" || third == "INDEX")) {
      std::string name = second == "INDEX" ? third : "", on, table;
      if (name.empty()) words >> name;
      words >> on >> table;
      std::string key;
      std::getline(words, key);
      outline["index:" + Plain(name)] = {second, Plain(table), key};
    } else if (columns != nullptr && first.rfind(")", 0) == 0) {
      columns = nullptr;
    } else if (columns != nullptr && !first.empty() && first.rfind("--", 0) != 0) {
      columns->push_back(Plain(first));
    }
  }
  return outline;
}

TEST(SchemaParity, BothEnginesDefineTheSameTablesColumnsAndIndexes) {
  const auto sqlite = Outline(kCatalogSchemaSql);
  const auto postgres = Outline(kCatalogSchemaPostgresSql);
  EXPECT_GT(sqlite.size(), 20u);
  EXPECT_EQ(sqlite, postgres);
}

}  // namespace
