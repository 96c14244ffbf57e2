// The dialect adapter: translations token by token, the registered
// functions, and the tool's kinds of statements run against the catalog
// schema.
#include "platform/dal/sql_dialect.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/dal/dal_test_support.h"
#include "platform/dal/sql_tokenizer.h"
#include "platform/sqldb/sqlite_functions.h"

namespace Corvela {
namespace Dal {
namespace {

struct TranslationCase {
  const char* in;
  const char* out;
};

const TranslationCase kTranslations[] = {
    // Schema qualifiers in any case, with blanks around the dot, quoted.
    {"SELECT m.ParentKey FROM EMM_Main.EMM_Machine m", "SELECT m.ParentKey FROM EMM_Machine m"},
    {"DELETE FROM dbm_main . DBM_Image WHERE x = 1", "DELETE FROM DBM_Image WHERE x = 1"},
    {"SELECT 'DBM_Main.x', \"SLP_MAIN\".\"SLP_WorkGroup\" FROM t",
     "SELECT 'DBM_Main.x', \"SLP_WorkGroup\" FROM t"},
    {"SELECT Image.ImageKey FROM x.DBM_MAIN.t", "SELECT Image.ImageKey FROM x.DBM_MAIN.t"},
    // ISNULL as a function only; SQLite's own postfix ISNULL stays.
    {"SELECT ISNULL(Copy.CopySize, -1) FROM c WHERE d ISNULL",
     "SELECT COALESCE(Copy.CopySize, -1) FROM c WHERE d ISNULL"},
    // Date parts.
    {"DATEDIFF(second, '1970-01-01 00:00:00', Wg.CreatedDateTime)",
     "DATEDIFF('SECOND', '1970-01-01 00:00:00', Wg.CreatedDateTime)"},
    {"DATEADD(SECOND, 5, '1970-01-01 00:00:00')", "DATEADD('SECOND', 5, '1970-01-01 00:00:00')"},
    // IF expressions, nested, and SQLite's IF NOT EXISTS left alone.
    {"IF (P.ImageKey IS NULL) THEN '' ELSE STRING(P.a, '_', P.b) ENDIF AS Id",
     "CASE WHEN (P.ImageKey IS NULL) THEN '' ELSE STRING(P.a, '_', P.b) END AS Id"},
    {"IF a THEN IF b THEN 1 ELSE 2 ENDIF ELSEIF c THEN 3 ELSE 4 ENDIF",
     "CASE WHEN a THEN CASE WHEN b THEN 1 ELSE 2 END WHEN c THEN 3 ELSE 4 END"},
    {"CREATE TABLE IF NOT EXISTS t (endif INTEGER)",
     "CREATE TABLE IF NOT EXISTS t (endif INTEGER)"},
    {"DROP INDEX IF EXISTS i", "DROP INDEX IF EXISTS i"},
    // Parenthesized operands of compound selects; other sub-selects stay.
    {"SELECT a FROM t EXCEPT (SELECT a FROM u WHERE (b = 1))",
     "SELECT a FROM t EXCEPT SELECT * FROM (SELECT a FROM u WHERE (b = 1))"},
    {"SELECT a FROM t UNION ALL (SELECT a FROM u)",
     "SELECT a FROM t UNION ALL SELECT * FROM (SELECT a FROM u)"},
    {"(SELECT a FROM t) INTERSECT (SELECT a FROM u)",
     "SELECT * FROM (SELECT a FROM t) INTERSECT SELECT * FROM (SELECT a FROM u)"},
    {"SELECT x FROM ((SELECT a FROM t) UNION SELECT b FROM u)",
     "SELECT x FROM (SELECT * FROM (SELECT a FROM t) UNION SELECT b FROM u)"},
    {"SELECT a FROM t WHERE a IN (SELECT b FROM u) UNION SELECT 1",
     "SELECT a FROM t WHERE a IN (SELECT b FROM u) UNION SELECT 1"},
    {"SELECT * FROM (SELECT 1) UNION SELECT 2", "SELECT * FROM (SELECT 1) UNION SELECT 2"},
    // Comments and literals are never rewritten.
    {"SELECT 1 -- DBM_Main.x ISNULL(a) IF\n", "SELECT 1 -- DBM_Main.x ISNULL(a) IF\n"},
    {"SELECT 'it''s ISNULL(x)' /* ENDIF */", "SELECT 'it''s ISNULL(x)' /* ENDIF */"},
};

TEST(SqlDialectTest, TranslatesTokenByToken) {
  for (const TranslationCase& c : kTranslations) {
    std::string out, why;
    EXPECT_TRUE(TranslateSql(c.in, &out, &why)) << c.in;
    EXPECT_EQ(out, c.out) << c.in;
  }
}

// For PostgreSQL the schemas are real and compound operands native; texts
// are joined by CONCAT.
const TranslationCase kPostgresTranslations[] = {
    {"SELECT m.ParentKey FROM EMM_Main.EMM_Machine m WHERE m.x = ?",
     "SELECT m.ParentKey FROM EMM_Main.EMM_Machine m WHERE m.x = ?"},
    {"SELECT ISNULL(Copy.CopySize, -1), DATEDIFF(second, '1970-01-01 00:00:00', c.t) FROM c",
     "SELECT COALESCE(Copy.CopySize, -1), DATEDIFF('SECOND', '1970-01-01 00:00:00', c.t) FROM c"},
    {"IF (P.ImageKey IS NULL) THEN '' ELSE string(P.a, '_', P.b) ENDIF AS Id",
     "CASE WHEN (P.ImageKey IS NULL) THEN '' ELSE CONCAT(P.a, '_', P.b) END AS Id"},
    {"(SELECT a FROM t) EXCEPT (SELECT a FROM u)", "(SELECT a FROM t) EXCEPT (SELECT a FROM u)"},
    {"SELECT 'STRING(a)' -- STRING(b)\n", "SELECT 'STRING(a)' -- STRING(b)\n"},
};

TEST(SqlDialectTest, TranslatesForPostgres) {
  for (const TranslationCase& c : kPostgresTranslations) {
    std::string out, why;
    EXPECT_TRUE(TranslateSql(c.in, &out, &why, sqldb::Engine::kPostgres)) << c.in;
    EXPECT_EQ(out, c.out) << c.in;
  }
  std::string out, why;
  EXPECT_FALSE(TranslateSql("SELECT 'a' + b", &out, &why, sqldb::Engine::kPostgres));
}

TEST(SqlDialectTest, RefusesWhatSqliteWouldReadOtherwise) {
  for (const char* in : {"SELECT 'a' + 'b'", "SELECT Name + '_x' FROM t", "SELECT +'1'"}) {
    std::string out, why;
    EXPECT_FALSE(TranslateSql(in, &out, &why)) << in;
    EXPECT_EQ(why, "'+' beside a text literal (use || to join texts)") << in;
  }
  std::string out, why;
  EXPECT_TRUE(TranslateSql("SELECT a + 1, 'x' || b, '+' FROM t -- 'a' + 'b'", &out, &why));
}

TEST(SqlDialectTest, TokensJoinBackToTheInput) {
  const char* const inputs[] = {"SELECT 'unterminated", "x /* open comment",
                                "[a b].\"c\"\"d\" 1.5e3 0x1F ?", "a<>b||c",
                                "\xc3\xa9t\xc3\xa9 = 'x'"};
  for (const char* in : inputs) {
    std::string joined;
    for (const SqlToken& t : TokenizeSql(in)) joined += t.text;
    EXPECT_EQ(joined, in);
  }
}

TEST(SqlDialectTest, DateTimeTexts) {
  struct Case {
    const char* text;
    bool valid;
    int64_t seconds;
  };
  const Case cases[] = {
      {"1970-01-01 00:00:00", true, 0},
      {"2023-11-14 22:13:20", true, 1700000000},
      {"2023-11-14T22:13:20Z", true, 1700000000},
      {"2023-11-14 22:13:20.999", true, 1700000000},
      {"2024-02-29", true, 1709164800},
      {"1969-12-31 23:59:59", true, -1},
      {"2023-02-29 00:00:00", false, 0},
      {"2023-11-14 24:00:00", false, 0},
      {"20231114", false, 0},
      {"2023-11-14 22:13:20x", false, 0},
  };
  for (const Case& c : cases) {
    int64_t seconds = 12345;
    EXPECT_EQ(sqldb::ParseDateTime(c.text, &seconds), c.valid) << c.text;
    if (c.valid) {
      EXPECT_EQ(seconds, c.seconds) << c.text;
    }
  }
}

// Statements of the tool's kinds run through a connection on the catalog
// schema.
class DialectOnCatalogTest : public DalConnectionTest {
 protected:
  void SetUp() override {
    catalog_.ApplySchema();
    catalog_.Exec(
        "INSERT INTO DBM_Image (ImageKey, MasterServerKey, ClientMachineName, BackupTime, "
        "StorageServiceState, CreatedDateTime) VALUES "
        "(1, 7, 'alpha', 100, 3, 1700000000),"
        "(2, 7, 'beta', 110, 3, 1700000001),"
        "(3, 7, 'beta', 120, 2, 1700000002),"
        "(4, 7, 'gamma', 130, 1, 1700000003),"
        "(5, 7, 'delta', 140, 0, 1700000004),"
        "(6, 8, 'alpha', 150, 2, 1700000005);"
        "INSERT INTO SLP_InNotifications (ClientMachineName, CreatedDateTime) VALUES "
        "('old', 1577836800), ('new', 1704067200);");
    Connect();
  }

  // Every first column of the statement's rows, as texts joined by blanks.
  std::string Column(const std::string& sql, const DalBinding* bindings = nullptr) {
    const int status = Execute(sql, bindings);
    if (status != DAL_SUCCESS) return "status " + std::to_string(status);
    std::string joined;
    char text[257];
    while (connection_->StringReturningFetch(view_, text, sizeof text, LOG_AT_VERBOSITY_5, "t",
                                             "String") == DAL_SUCCESS) {
      joined += (joined.empty() ? "" : " ") + std::string(text);
    }
    return joined;
  }
};

TEST_F(DialectOnCatalogTest, CompoundOperandsKeepTheirGrouping) {
  EXPECT_EQ(Column("SELECT 1 UNION (SELECT 1 EXCEPT SELECT 1)"), "1");
  EXPECT_EQ(Column("SELECT 2 EXCEPT (SELECT 1 UNION SELECT 2)"), "");
  EXPECT_EQ(Column("(SELECT 3 UNION SELECT 4 ORDER BY 1 LIMIT 1) UNION ALL SELECT 5"), "3 5");
  // Refused, not run as a sum.
  EXPECT_EQ(Column("SELECT 'a' + 'b'"), "status " + std::to_string(DAL_SQL_ERROR));
  EXPECT_EQ(Column("SELECT 'a' || 'b'"), "ab");
}

TEST_F(DialectOnCatalogTest, FunctionsOfTheNativeDialect) {
  EXPECT_EQ(Column("SELECT STRING(Image.ClientMachineName, '_', Image.BackupTime) AS BackupID "
                   "FROM DBM_Main.DBM_Image AS Image WHERE Image.ImageKey = 2"),
            "beta_110");
  EXPECT_EQ(
      Column(
          "SELECT IF (PImage.ImageKey IS NULL) THEN 'none' ELSE STRING(PImage.ClientMachineName, "
          "'_', PImage.BackupTime) ENDIF FROM DBM_Main.DBM_Image Image LEFT OUTER JOIN "
          "DBM_Main.DBM_Image PImage ON Image.ParentImageKey = PImage.ImageKey "
          "WHERE Image.ImageKey = 1"),
      "none");
  EXPECT_EQ(Column("SELECT ISNULL(NULL, NULL, 'x')"), "x");
  EXPECT_EQ(Column("SELECT STRING(NULL, 5, 'a', 1.5)"), "5a1.5");
  EXPECT_EQ(Column("SELECT STRING(NULL, NULL) IS NULL"), "1");
  EXPECT_EQ(Column("SELECT UPPER('mIx')"), "MIX");
  EXPECT_EQ(Column("SELECT DATEDIFF(second, '1970-01-01 00:00:00', Image.CreatedDateTime) "
                   "FROM DBM_Main.DBM_Image Image WHERE Image.ImageKey = 1"),
            "1700000000");
  EXPECT_EQ(Column("SELECT DATEDIFF(SECOND, '1970-01-01 00:00:00', 1700000000)"), "1700000000");
  EXPECT_EQ(Column("SELECT DATEDIFF(DAY, '2024-01-01 23:59:59', '2024-01-02 00:00:00')"), "1");
  EXPECT_EQ(Column("SELECT DATEADD(SECOND, 1700000000, '1970-01-01 00:00:00')"), "1700000000");
  EXPECT_EQ(Column("SELECT DATEADD(DAY, 1, '2024-01-01 00:00:00')"), "1704153600");
  EXPECT_EQ(Column("SELECT DATEDIFF(fortnight, 0, 1)"), "status " + std::to_string(DAL_SQL_ERROR));
  EXPECT_EQ(Column("SELECT DATEDIFF(SECOND, 'yesterday', 1)"),
            "status " + std::to_string(DAL_SQL_ERROR));
}

TEST_F(DialectOnCatalogTest, DateTimeColumnComparedWithSeconds) {
  int64_t after = 1700000000;  // 2023-11-14
  ParameterBinder binder;
  binder.bindInputInt64(&after);
  EXPECT_EQ(
      Column("SELECT ClientMachineName FROM SLP_MAIN.SLP_InNotifications WHERE CreatedDateTime > ?",
             binder.getBindings()),
      "new");
  EXPECT_EQ(
      Column("SELECT ClientMachineName FROM SLP_MAIN.SLP_InNotifications WHERE CreatedDateTime < ?",
             binder.getBindings()),
      "old");
}

TEST_F(DialectOnCatalogTest, DateAddStoresSeconds) {
  ASSERT_EQ(Execute("UPDATE SLP_MAIN.SLP_InNotifications SET ErrorCode = (ErrorCode + 1), "
                    "CreatedDateTime = DATEADD(SECOND, 86400, '1970-01-01 00:00:00') "
                    "WHERE ClientMachineName = 'old'"),
            DAL_SUCCESS);
  EXPECT_EQ(Column("SELECT typeof(CreatedDateTime) || ' ' || DATEDIFF(SECOND, "
                   "'1970-01-01 00:00:00', CreatedDateTime) FROM SLP_InNotifications "
                   "WHERE ErrorCode = 1"),
            "integer 86400");
}

}  // namespace
}  // namespace Dal
}  // namespace Corvela
