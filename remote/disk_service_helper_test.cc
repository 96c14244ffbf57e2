// DiskServiceHelper: type tables, error mapping, number readers, property
// lists, exception texts and raising, and the trace ring.
#include "remote/disk_service_helper.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <limits>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "remote/idl/IllegalArgumentException.hh"
#include "remote/idl/ServiceException.hh"

namespace {

using Orvantic::Stashwell::DL::DiskService::DiskServiceHelper;
namespace DiskService = Orvantic::Stashwell::DL::DiskService;
namespace Framework = Orvantic::Stashwell::TL::Framework;
namespace OBVDiskService = OBV_Orvantic::Stashwell::DL::DiskService;

TEST(DiskServiceHelperTest, ServerTypeNamesMatchWholeWithCase) {
  const struct {
    const char* name;
    short subtype;
  } subtypes[] = {{"NearStore", 2}, {"LegacyDisk", 0}, {nullptr, 0}, {"basicdisk", 6}, {"", 6}};
  for (const auto& c : subtypes) {
    EXPECT_EQ(DiskServiceHelper::identifyStuSubtype(c.name), c.subtype)
        << (c.name ? c.name : "(null)");
  }
  EXPECT_STREQ(DiskServiceHelper::identifyStuServerType(0), "LegacyDisk");
  EXPECT_STREQ(DiskServiceHelper::identifyStuServerType(4), "DiskPool");
  EXPECT_STREQ(DiskServiceHelper::identifyStuServerType(-1), "DiskPool");

  EXPECT_TRUE(DiskServiceHelper::isKnownServerType("SANDisk"));
  for (const char* unknown :
       {"DiskPool", "basicdisk", "BasicDisk ", "", static_cast<const char*>(nullptr)}) {
    EXPECT_FALSE(DiskServiceHelper::isKnownServerType(unknown)) << (unknown ? unknown : "(null)");
  }
  EXPECT_TRUE(DiskServiceHelper::isDeprecatedServerType("NearStore"));
  EXPECT_FALSE(DiskServiceHelper::isDeprecatedServerType("BasicDisk"));
  EXPECT_FALSE(DiskServiceHelper::isKnownExtServerType(nullptr));
}

TEST(DiskServiceHelperTest, MapsOnlyDsmErrorsToMessageNumbers) {
  const struct {
    int domain;
    int code;
    int message;
  } cases[] = {
      {1, 2050001, 20}, {1, 2050029, 26}, {1, 2050002, -1}, {1, 2050000, -1},
      {1, 2050030, -1}, {2, 2050001, -1}, {0, 2050001, -1}, {1, -2050001, -1},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(DiskServiceHelper::mapError2Message(c.domain, c.code), c.message)
        << c.domain << "/" << c.code;
  }
}

TEST(DiskServiceHelperTest, ReadsNumbersLikeTheClassicLocaleStream) {
  const struct {
    const char* text;
    int value;
  } ints[] = {{" 42abc", 42}, {"abc", 0}, {nullptr, 0}, {"", 0},      {"-17", -17},
              {"\t\n 7", 7},  {"+3", 3},  {"1.5", 1},   {"1,000", 1}, {"- 1", 0}};
  for (const auto& c : ints) {
    EXPECT_EQ(DiskServiceHelper::ptoi(c.text), c.value) << (c.text ? c.text : "(null)");
  }
  EXPECT_EQ(DiskServiceHelper::ptol(" 123456789012 kB"), 123456789012L);
  EXPECT_EQ(DiskServiceHelper::ptoll("-9223372036854775808"),
            std::numeric_limits<long long>::min());
  EXPECT_EQ(DiskServiceHelper::ptoull("18446744073709551615"),
            std::numeric_limits<unsigned long long>::max());
  // The library reads "-1" into an unsigned type as its negation.
  EXPECT_EQ(DiskServiceHelper::ptoull("-1"), std::numeric_limits<unsigned long long>::max());
  EXPECT_EQ(DiskServiceHelper::ptos("12x"), 12);
  // Out of range: the library's limit of the type.
  EXPECT_EQ(DiskServiceHelper::ptos("70000"), std::numeric_limits<short>::max());
  EXPECT_EQ(DiskServiceHelper::ptoi("99999999999"), std::numeric_limits<int>::max());
}

DiskService::PropertySeq Properties(const std::vector<std::pair<const char*, const char*>>& pairs) {
  DiskService::PropertySeq properties;
  properties.length(static_cast<CORBA::ULong>(pairs.size()));
  for (CORBA::ULong i = 0; i < properties.length(); ++i) {
    if (pairs[i].first == nullptr) continue;  // a null property
    properties[i] = DiskServiceHelper::buildProperty(pairs[i].first, pairs[i].second);
  }
  return properties;
}

std::vector<std::string> Texts(const DiskService::PropertySeq& properties) {
  std::vector<std::string> out;
  for (CORBA::ULong i = 0; i < properties.length(); ++i) {
    const DiskService::Property* p = properties[i];
    out.push_back(p ? std::string(p->name()) + "=" + p->value() : "null");
  }
  return out;
}

std::string Lookup(const DiskService::PropertySeq& properties, const char* name) {
  CORBA::String_var value = DiskServiceHelper::getPropertyByName(properties, name);
  return value.in() ? value.in() : "(none)";
}

TEST(DiskServiceHelperTest, PropertyLists) {
  DiskService::PropertySeq properties = Properties(
      {{"a", "1"}, {nullptr, nullptr}, {"DSM::diskMediaId", "X"}, {"DSM::diskMediaId", "Y"}});
  EXPECT_EQ(Lookup(properties, "DSM::diskMediaId"), "X");
  EXPECT_EQ(Lookup(properties, "a"), "1");
  EXPECT_EQ(Lookup(properties, "A"), "(none)");
  EXPECT_EQ(Lookup(properties, ""), "(none)");

  DiskServiceHelper::updateProperty(properties, "DSM::diskMediaId", "Z", false);
  DiskServiceHelper::updateProperty(properties, "b", "2", false);
  EXPECT_EQ(Texts(properties),
            (std::vector<std::string>{"a=1", "null", "DSM::diskMediaId=Z", "DSM::diskMediaId=Y"}));
  DiskServiceHelper::updateProperty(properties, "b", "2", true);
  DiskServiceHelper::addProperty(properties, "a", "3");
  EXPECT_EQ(Texts(properties), (std::vector<std::string>{"a=1", "null", "DSM::diskMediaId=Z",
                                                         "DSM::diskMediaId=Y", "b=2", "a=3"}));

  // Deleting keeps the length: the first match becomes an empty property.
  DiskServiceHelper::deleteProperty(properties, "DSM::diskMediaId");
  DiskServiceHelper::deleteProperty(properties, "missing");
  EXPECT_EQ(Texts(properties),
            (std::vector<std::string>{"a=1", "null", "=", "DSM::diskMediaId=Y", "b=2", "a=3"}));
  EXPECT_EQ(Lookup(properties, "DSM::diskMediaId"), "Y");
}

TEST(DiskServiceHelperTest, NullArgumentsRaiseIllegalArgument) {
  DiskService::PropertySeq properties = Properties({{"a", "1"}});
  const struct {
    const char* argument;
    void (*call)(DiskService::PropertySeq&);
  } cases[] = {
      {"name",
       [](DiskService::PropertySeq& p) {
         CORBA::String_var v = DiskServiceHelper::getPropertyByName(p, nullptr);
       }},
      {"name",
       [](DiskService::PropertySeq& p) {
         DiskServiceHelper::updateProperty(p, nullptr, "v", true);
       }},
      {"value",
       [](DiskService::PropertySeq& p) {
         DiskServiceHelper::updateProperty(p, "a", nullptr, true);
       }},
      {"name", [](DiskService::PropertySeq& p) { DiskServiceHelper::deleteProperty(p, nullptr); }},
  };
  for (const auto& c : cases) {
    try {
      c.call(properties);
      ADD_FAILURE() << "no exception for a null " << c.argument;
    } catch (const Framework::IllegalArgumentException& e) {
      ASSERT_NE(e.details.in(), nullptr);
      EXPECT_STREQ(e.details->argumentName(), c.argument);
      EXPECT_STREQ(e.details->originatingService(), "DiskService");
      EXPECT_STREQ(e.details->originatingClass(), "DiskServiceHelper");
    }
  }
  EXPECT_EQ(Texts(properties), std::vector<std::string>{"a=1"});
}

TEST(DiskServiceHelperTest, RaisedExceptionsAndTheirTexts) {
  char host[256] = "";
  gethostname(host, sizeof host);
  try {
    DiskServiceHelper::throwSvcException(1, 2050001, "no memory", "Builder", "build", 77);
    FAIL() << "no exception";
  } catch (const Framework::ServiceException& e) {
    CORBA::String_var text = DiskServiceHelper::ex_str(e);
    EXPECT_EQ(
        std::string(text.in()),
        std::string("ServiceException: method=build class=Builder service=DiskService host=") +
            host + " errorDomain=DSM errorCode=2050001 errorText=no memory");
    EXPECT_NE(e.details->timeStamp(), 0);
    ASSERT_NE(e.details->message(), nullptr);
    EXPECT_EQ(e.details->message()->textId(), 20);
    EXPECT_EQ(e.details->message()->inserts().length(), 2u);
  }
  try {
    DiskServiceHelper::throwIllArgException(1, 0, "bad", "C", "m", 5, "volumeName");
    FAIL() << "no exception";
  } catch (const Framework::IllegalArgumentException& e) {
    ASSERT_NE(e.details.in(), nullptr);
    EXPECT_STREQ(e.details->argumentName(), "volumeName");
    CORBA::String_var text = DiskServiceHelper::ex_str(e);
    EXPECT_EQ(
        std::string(text.in()),
        std::string("IllegalArgumentException: method=m class=C service=DiskService host=") + host);
  }

  // The last named domain and those just outside the names; details of
  // another kind, or none.
  for (const auto& c : {std::make_pair(4, "STS"), std::make_pair(5, ""), std::make_pair(0, "")}) {
    auto* details = new OBVDiskService::DiskServiceExceptionDetails();
    details->errorDomain(c.first);
    details->errorCode(5);
    CORBA::String_var text = DiskServiceHelper::ex_str(Framework::ServiceException(details));
    EXPECT_EQ(std::string(text.in()), std::string("ServiceException: method= class= service= "
                                                  "host= errorDomain=") +
                                          c.second + " errorCode=5 errorText=")
        << c.first;
  }
  CORBA::String_var other = DiskServiceHelper::ex_str(Framework::ServiceException(
      new OBV_Orvantic::Stashwell::TL::Framework::ErrorCodeExceptionDetails()));
  EXPECT_STREQ(other.in(), "ServiceException");
  CORBA::String_var none = DiskServiceHelper::ex_str(Framework::IllegalArgumentException());
  EXPECT_STREQ(none.in(), "IllegalArgumentException");
}

// The ring's slot holding the entry whose first text is `marker`, or -1.
int SlotOf(const std::string& marker) {
  for (unsigned slot = 0; slot < 128; ++slot) {
    std::string entry = DiskServiceHelper::ictraceEntry(slot);
    if (entry.compare(0, 5 + marker.size() + 1, "ICTR-" + marker + " ") == 0) {
      return static_cast<int>(slot);
    }
  }
  return -1;
}

TEST(DiskServiceHelperTest, TraceRingWrapsAndCutsEntries) {
  // 128 entries fill the ring whatever was traced before.
  for (int i = 0; i < 128; ++i) {
    ASSERT_EQ(DiskServiceHelper::ictrace(("m" + std::to_string(i)).c_str(), "b", "c", "d"), 0);
  }
  std::set<int> slots;
  for (int i = 0; i < 128; ++i) slots.insert(SlotOf("m" + std::to_string(i)));
  EXPECT_EQ(slots.size(), 128u);
  EXPECT_EQ(slots.count(-1), 0u);

  // The 129th entry overwrites the oldest.
  int oldest = SlotOf("m0");
  DiskServiceHelper::ictrace("OP", "b", nullptr, "d");
  EXPECT_EQ(SlotOf("m0"), -1);
  ASSERT_EQ(SlotOf("OP"), oldest);
  std::string entry = DiskServiceHelper::ictraceEntry(static_cast<unsigned>(oldest));
  int counter = -1;
  ASSERT_EQ(sscanf(entry.c_str(), "ICTR-OP %d", &counter), 1);
  char number[8];
  snprintf(number, sizeof number, "%5d", counter);
  EXPECT_EQ(entry, std::string("ICTR-OP   ") + number + " <" + std::string(23, ' ') + "b | " +
                       std::string(12, ' ') + "NULL | " + std::string(15, ' ') + "d>");

  // Longer texts are cut to their fields, the whole entry to 80 characters.
  std::string longText(100, 'x');
  DiskServiceHelper::ictrace("LONG", longText.c_str(), longText.c_str(), longText.c_str());
  int slot = SlotOf("LONG");
  ASSERT_GE(slot, 0);
  std::string cut = DiskServiceHelper::ictraceEntry(static_cast<unsigned>(slot));
  EXPECT_EQ(cut.size(), 80u);
  EXPECT_EQ(cut.substr(17, 24), std::string(24, 'x'));
}

}  // namespace
