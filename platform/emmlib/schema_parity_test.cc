// The SQLite and the PostgreSQL catalog schemas define the same tables with
// the same columns in the same order, and the same indexes on them.
#include <gtest/gtest.h>

#include <cctype>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

#include "platform/emmlib/catalog_schema.h"

namespace {

// In lower case and without the schemas names are qualified by: "table
// <name>" followed by its columns' names, and each index's line.
std::vector<std::string> Outline(const char* ddl) {
  std::vector<std::string> outline;
  std::istringstream in(ddl);
  bool inTable = false;
  for (std::string line; std::getline(in, line);) {
    for (char& c : line) c = static_cast<char>(tolower(static_cast<unsigned char>(c)));
    for (const char* schema : {"emm_main.", "dbm_main.", "slp_main."}) {
      for (size_t at; (at = line.find(schema)) != std::string::npos;)
        line.erase(at, strlen(schema));
    }
    std::istringstream words(line);
    std::string first, second, third;
    words >> first >> second >> third;
    if (first == "create" && second == "table") {
      outline.push_back("table " + third);
      inTable = true;
    } else if (first == "create" && (second == "index" || third == "index")) {
      outline.push_back(line);
    } else if (first.rfind(")", 0) == 0) {
      inTable = false;
    } else if (inTable && !first.empty() && first.rfind("--", 0) != 0) {
      outline.push_back(first);
    }
  }
  return outline;
}

TEST(SchemaParity, BothEnginesDefineTheSameTablesColumnsAndIndexes) {
  const std::vector<std::string> sqlite = Outline(kCatalogSchemaSql);
  EXPECT_GT(sqlite.size(), 200u);
  EXPECT_EQ(sqlite, Outline(kCatalogSchemaPostgresSql));
}

}  // namespace
