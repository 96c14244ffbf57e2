// The dialect adapter: translations token by token, the registered functions'
// edges and their date-time texts. The tool's own statements run on both
// engines end to end (e.g. tests/e2e/list_import_conf_test.cc).
#include "platform/dal/sql_dialect.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/dal/dal_test_support.h"

namespace Corvela {
namespace Dal {
namespace {

const sqldb::Engine kPostgres = sqldb::Engine::kPostgres;

struct TranslationCase {
  const char* in;
  const char* out;  // nullptr: left as it is
  sqldb::Engine engine = sqldb::Engine::kSqlite;
};

const char kRefused[] = "refused: '+' beside a text literal (use || to join texts)";

// The statement as `engine` is to run it, or "refused: " and why not.
std::string Translated(const char* in, sqldb::Engine engine) {
  std::string out, why;
  return TranslateSql(in, &out, &why, engine) ? out : "refused: " + why;
}

const TranslationCase kTranslations[] = {
    // Schema qualifiers in any case, blanks around the dot, quoted (first: MasterServerKeyTest).
    {"DELETE FROM dbm_main . DBM_Image WHERE x = 1", "DELETE FROM DBM_Image WHERE x = 1"},
    {"SELECT 'DBM_Main.x', \"SLP_MAIN\".\"SLP_WorkGroup\" FROM t",
     "SELECT 'DBM_Main.x', \"SLP_WorkGroup\" FROM t"},
    {"SELECT Image.ImageKey FROM x.DBM_MAIN.t", nullptr},
    // ISNULL as a function only; SQLite's own postfix ISNULL stays.
    {"SELECT ISNULL(Copy.CopySize, -1) FROM c WHERE d ISNULL",
     "SELECT COALESCE(Copy.CopySize, -1) FROM c WHERE d ISNULL"},
    // Date parts (DATEADD's: FunctionsOfTheNativeDialect).
    {"DATEDIFF(second, '1970-01-01 00:00:00', Wg.CreatedDateTime)",
     "DATEDIFF('SECOND', '1970-01-01 00:00:00', Wg.CreatedDateTime)"},
    // IF expressions, nested, and SQLite's IF NOT EXISTS left alone.
    {"IF (P.ImageKey IS NULL) THEN '' ELSE STRING(P.a, '_', P.b) ENDIF AS Id",
     "CASE WHEN (P.ImageKey IS NULL) THEN '' ELSE STRING(P.a, '_', P.b) END AS Id"},
    {"IF a THEN IF b THEN 1 ELSE 2 ENDIF ELSEIF c THEN 3 ELSE 4 ENDIF",
     "CASE WHEN a THEN CASE WHEN b THEN 1 ELSE 2 END WHEN c THEN 3 ELSE 4 END"},
    {"CREATE TABLE IF NOT EXISTS t (endif INTEGER)", nullptr},
    {"DROP TRIGGER IF EXISTS i", nullptr},
    // Parenthesized operands of compound selects; other sub-selects stay.
    {"SELECT a FROM t EXCEPT (SELECT a FROM u WHERE (b = 1))",
     "SELECT a FROM t EXCEPT SELECT * FROM (SELECT a FROM u WHERE (b = 1))"},
    {"SELECT a FROM t UNION ALL (SELECT a FROM u)",
     "SELECT a FROM t UNION ALL SELECT * FROM (SELECT a FROM u)"},
    {"(SELECT a FROM t) INTERSECT (SELECT a FROM u)",
     "SELECT * FROM (SELECT a FROM t) INTERSECT SELECT * FROM (SELECT a FROM u)"},
    {"SELECT x FROM ((SELECT a FROM t) UNION SELECT b FROM u)",
     "SELECT x FROM (SELECT * FROM (SELECT a FROM t) UNION SELECT b FROM u)"},
    {"SELECT a FROM t WHERE a IN (SELECT b FROM u) UNION SELECT 1", nullptr},
    {"SELECT * FROM (SELECT 1) UNION SELECT 2", nullptr},
    // Comments and literals are never rewritten.
    {"SELECT 1 -- DBM_Main.x ISNULL(a) IF\n", nullptr},
    {"SELECT 'it''s ISNULL(x)' /* ENDIF */", nullptr},
    // What SQLite would read otherwise: 'a' + 'b' is 0 there.
    {"SELECT 'a' + 'b'", kRefused},
    {"SELECT Name + '_x' FROM t", kRefused},
    {"SELECT +'1'", kRefused},
    {"SELECT a + 1, 'x' || b, '+' FROM t -- 'a' + 'b'", nullptr},
    // Tokens join back into the input, whatever they are.
    {"SELECT 'unterminated", nullptr},
    {"x /* open comment", nullptr},
    {"[a b].\"c\"\"d\" 1.5e3 0x1F ?", nullptr},
    {"a<>b||c", nullptr},
    {"\xc3\xa9t\xc3\xa9 = 'x'", nullptr},
    // For PostgreSQL the schemas are real and compound operands native; texts
    // are joined by CONCAT (ISNULL and date parts as for SQLite: the end-to-end
    // runs on PostgreSQL, e.g. ListImportConfTest).
    {"SELECT m.ParentKey FROM EMM_Main.EMM_Machine m WHERE m.x = ?", nullptr, kPostgres},
    {"IF (P.ImageKey IS NULL) THEN '' ELSE string(P.a, '_', P.b) ENDIF AS Id",
     "CASE WHEN (P.ImageKey IS NULL) THEN '' ELSE CONCAT(P.a, '_', P.b) END AS Id", kPostgres},
    {"(SELECT a FROM t) EXCEPT (SELECT a FROM u)", nullptr, kPostgres},
    {"SELECT 'STRING(a)' -- STRING(b)\n", nullptr, kPostgres},
    {"SELECT 'a' + b", kRefused, kPostgres},
};

TEST(SqlDialectTest, TranslatesTokenByToken) {
  for (const TranslationCase& c : kTranslations)
    EXPECT_EQ(Translated(c.in, c.engine), c.out ? c.out : c.in) << c.in;
}

// The native dialect's functions as SQLite runs them through a connection,
// where no statement of the tool reaches (notification_store_test.cc
// stores DATEADD's seconds).
using DialectOnCatalogTest = DalConnectionTest;

TEST_F(DialectOnCatalogTest, FunctionsOfTheNativeDialect) {
  catalog_.Exec("CREATE TABLE t (x)");
  Connect();
  const std::string error = "status " + std::to_string(DAL_SQL_ERROR);
  const struct {
    const char* sql;
    std::string value;
  } cases[] = {
      {"SELECT 'a' + 'b'", error},  // refused, not run as a sum
      {"SELECT STRING(NULL, 5, 'a', 1.5)", "5a1.5"},
      {"SELECT STRING(NULL, NULL) IS NULL", "1"},
      {"SELECT DATEDIFF(DAY, '2024-01-01 23:59:59', '2024-01-02 00:00:00')", "1"},
      {"SELECT DATEADD(DAY, 1, '2024-01-01 00:00:00')", "1704153600"},
      {"SELECT DATEDIFF(fortnight, 0, 1)", error},
      {"SELECT DATEDIFF(SECOND, 'yesterday', 1)", error},
      // Date-time texts: with a time or not, 'T' and 'Z', fractions; valid dates only.
      {"SELECT DATEDIFF(SECOND, 0, '1970-01-01 00:00:00')", "0"},
      {"SELECT DATEDIFF(SECOND, 0, '2023-11-14T22:13:20Z')", "1700000000"},
      {"SELECT DATEDIFF(SECOND, 0, '2023-11-14 22:13:20.999')", "1700000000"},
      {"SELECT DATEDIFF(SECOND, 0, '2024-02-29')", "1709164800"},
      {"SELECT DATEDIFF(SECOND, 0, '1969-12-31 23:59:59')", "-1"},
      {"SELECT DATEDIFF(SECOND, 0, '2023-02-29 00:00:00')", error},
      {"SELECT DATEDIFF(SECOND, 0, '2023-11-14 24:00:00')", error},
      {"SELECT DATEDIFF(SECOND, 0, '20231114')", error},
      {"SELECT DATEDIFF(SECOND, 0, '2023-11-14 22:13:20x')", error},
  };
  for (const auto& c : cases) {
    char text[32] = "";
    int status = Execute(c.sql);
    if (status == DAL_SUCCESS) {
      status = connection_->StringReturningFetch(view_, text, sizeof text, LOG_AT_VERBOSITY_5, "t",
                                                 "String");
    }
    EXPECT_EQ(status == DAL_SUCCESS ? text : "status " + std::to_string(status), c.value) << c.sql;
  }
}

}  // namespace
}  // namespace Dal
}  // namespace Corvela
