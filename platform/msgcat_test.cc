// Tests of the message catalogs (lookup, locale fallback, refusal of texts
// whose printf arguments differ) and of the status texts, on the built
// catalogs and on a catalog written by the test.
#include "platform/msgcat.h"

#include <cstdlib>
#include <sstream>
#include <string>

#include "gtest/gtest.h"
#include "platform/test_root.h"

namespace {

class MsgCatTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    testing_root::InstallData();
    // A test locale "xx" with a good entry, a mismatched one and a reordered one.
    testing_root::Write(
        "share/msg/xx/cyclectl.msg",
        "$quote \"\n$set 1\n430 \"xx %s unreadable\"\n440 \"xx %d wrong type\"\n"
        "120 \"xx second '%2$s' first '%1$s'\"\n$set 2\n30 \"xx %s %s one too many\\n\"\n");
    std::string dir = testing_root::Path() + "/share/msg/xx";
    std::string cmd = "gencat --new -o " + dir + "/cyclectl.cat " + dir + "/cyclectl.msg";
    ASSERT_EQ(system(cmd.c_str()), 0);
  }
};

TEST(PrintfArgumentTypes, ClassifiesEachConversion) {
  const struct {
    const char* format;
    const char* types;
  } cases[] = {
      {"plain %% text", ""},
      {"%s %d %u %x %c", "siiii"},
      {"%ld %lu %lld %llx %zu %jd %td %hd %hhu", "llqqzjtii"},
      {"%f %.3e %Lg %p %ls %lc", "ddDpSw"},
      {"%-10s|%05d|%+.2f|%*d|%.*s", "sidiiis"},
      {"%2$s %1$d", "is"},
      {"%1$s %1$s", "s"},
      {"%m is fine", ""},
  };
  std::string types;
  for (const auto& c : cases) {
    EXPECT_EQ(PrintfArgumentTypes(c.format, &types) ? types : "refused", c.types) << c.format;
  }
  // The last: a position past any int.
  for (const char* refused : {"%n", "%1$s %d", "%2$s", "%1$s %1$d", "%k", "trailing %", "%Ls",
                              "%65$s", "%99999999999$s"}) {
    EXPECT_FALSE(PrintfArgumentTypes(refused, &types)) << refused;
  }
}

TEST_F(MsgCatTest, LooksUpTheLocaleThenFallsBackAndFillsTheBuffers) {
  // A second language's own text is shown end to end (StartupTest.SecondLanguageCatalog).
  const struct {
    const char* id;
    const char* locale;
    const char* expected;  // 0 and the catalog's text, or 1 and the default's
  } cases[] = {
      {"SmeSlp0430N", "de", "0 prog: unable to read Stashwell configuration"},
      {"SmeSlp0430N", "fr_FR", "0 prog: unable to read Stashwell configuration"},
      {"SmeSlp0430N", "xx", "0 xx prog unreadable"},
      // Catalog texts that take other arguments are not used.
      {"SmeSlp0440N", "xx", "1 prog: default"},
      {"SmeCom0030N", "xx", "1 prog: default"},
      // Ids unknown to every catalog, and ids of another shape.
      {"SmeSlp9999N", "de_DE", "1 prog: default"},
      {"SmeXyz0430N", "de_DE", "1 prog: default"},
      {"bogus", "de_DE", "1 prog: default"},
      {nullptr, "de_DE", "1 prog: default"},
  };
  char buf[256];
  for (const auto& c : cases) {
    int used =
        zkgetmsg(c.id, c.locale, sizeof buf, buf, nullptr, 0, nullptr, "%s: default", "prog");
    EXPECT_EQ(std::to_string(used) + " " + buf, c.expected)
        << (c.id ? c.id : "null") << " " << c.locale;
  }

  // Reordered arguments, the second buffer in another locale, a short buffer.
  char user[64], log[64];
  zkgetmsg("SmeSlp0120N", "xx", sizeof user, user, "C", sizeof log, log, "'%s' needs '%s'", "-a",
           "-b");
  EXPECT_EQ(std::string(user) + " | " + log,
            "xx second '-b' first '-a' | The '-a' option requires use of the '-b' option");

  char small[8];
  zkgetmsg("SmeSlp9999N", "C", sizeof small, small, nullptr, 0, nullptr, "%s", "0123456789");
  EXPECT_STREQ(small, "0123456");
}

TEST_F(MsgCatTest, StatusTexts) {
  EXPECT_EQ(getECmsgl_ts(0, "de_DE.UTF-8").text,
            "der angeforderte Vorgang wurde erfolgreich abgeschlossen");
  EXPECT_EQ(getECmsgl_ts(133, "de_DE").text, "the request is not valid");  // English fallback
  std::ostringstream out;
  out << getECmsgl_ts(227, "C");
  EXPECT_EQ(out.str(), "no matching entity was found");

  unsetenv("LC_ALL");
  setenv("LANG", "de_DE", 1);
  EXPECT_STREQ(getECmsg(227), "kein passendes Objekt gefunden");
  setenv("LC_ALL", "C", 1);
  const char* unknown = getECmsg(424242);
  EXPECT_STREQ(unknown, "unknown status code 424242");
  EXPECT_EQ(getECmsg(424242), unknown) << "texts live as long as the process";
}

}  // namespace
