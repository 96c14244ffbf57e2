// DiskServiceHelper: type tables, error mapping, number readers, property
// lists, exception texts and raising, and the trace ring.
#include "remote/disk_service_helper.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "remote/idl/IllegalArgumentException.hh"
#include "remote/idl/ServiceException.hh"

namespace {

using Orvantic::Stashwell::DL::DiskService::DiskServiceHelper;
using ::testing::MatchesRegex;
namespace DiskService = Orvantic::Stashwell::DL::DiskService;
namespace Framework = Orvantic::Stashwell::TL::Framework;
namespace OBVDiskService = OBV_Orvantic::Stashwell::DL::DiskService;

TEST(DiskServiceHelperTest, ServerTypeNamesMatchWholeWithCase) {
  // Each name's sub-type, then k, x, d when it is a known, external or
  // deprecated type.
  const char* const names[] = {nullptr,     "NearStore", "LegacyDisk", "basicdisk",
                               "",          "SANDisk",   "DiskPool",   "BasicDisk ",
                               "BasicDisk", "ExtCloud",  "RemoteDisk"};
  std::string rows;
  for (const char* name : names) {
    rows += " " + std::to_string(DiskServiceHelper::identifyStuSubtype(name)) +
            (DiskServiceHelper::isKnownServerType(name) ? "k" : "") +
            (DiskServiceHelper::isKnownExtServerType(name) ? "x" : "") +
            (DiskServiceHelper::isDeprecatedServerType(name) ? "d" : "");
  }
  EXPECT_EQ(rows, " 0 2kd 0kd 6 6 6kd 6 6 1k 6x 6d");
  EXPECT_STREQ(DiskServiceHelper::identifyStuServerType(0), "LegacyDisk");
  EXPECT_STREQ(DiskServiceHelper::identifyStuServerType(4), "DiskPool");
  EXPECT_STREQ(DiskServiceHelper::identifyStuServerType(-1), "DiskPool");
}

TEST(DiskServiceHelperTest, MapsOnlyDsmErrorsToMessageNumbers) {
  std::string dsm, other;
  for (int code : {2050001, 2050029, 2050002, 2050000, 2050030, -2050001}) {
    dsm += " " + std::to_string(DiskServiceHelper::mapError2Message(1, code));
  }
  for (int domain : {2, 0}) {
    other += " " + std::to_string(DiskServiceHelper::mapError2Message(domain, 2050001));
  }
  EXPECT_EQ(dsm + " |" + other, " 20 26 -1 -1 -1 -1 | -1 -1");
}

TEST(DiskServiceHelperTest, ReadsNumbersLikeTheClassicLocaleStream) {
  // Out of range: the library's limit of the type.
  std::string ints = std::to_string(DiskServiceHelper::ptoi(nullptr));
  for (const char* text :
       {" 42abc", "abc", "", "-17", "\t\n 7", "+3", "1.5", "1,000", "- 1", "99999999999"}) {
    ints += " " + std::to_string(DiskServiceHelper::ptoi(text));
  }
  EXPECT_EQ(ints, "0 42 0 0 -17 7 3 1 1 0 2147483647");
  // The library reads "-1" into an unsigned type as its negation.
  EXPECT_EQ(std::to_string(DiskServiceHelper::ptol(" 123456789012 kB")) + " " +
                std::to_string(DiskServiceHelper::ptoll("-9223372036854775808")) + " " +
                std::to_string(DiskServiceHelper::ptoull("18446744073709551615")) + " " +
                std::to_string(DiskServiceHelper::ptoull("-1")) + " " +
                std::to_string(DiskServiceHelper::ptos("12x")) + " " +
                std::to_string(DiskServiceHelper::ptos("70000")),
            "123456789012 -9223372036854775808 18446744073709551615 18446744073709551615 12 32767");
}

// The list as "name=value" words, "null" for a null property.
std::string Texts(const DiskService::PropertySeq& properties) {
  std::string out;
  for (CORBA::ULong i = 0; i < properties.length(); ++i) {
    const DiskService::Property* p = properties[i];
    out += (i ? " " : "") + (p ? std::string(p->name()) + "=" + p->value() : "null");
  }
  return out;
}

std::string Lookup(const DiskService::PropertySeq& properties, const char* name) {
  CORBA::String_var value = DiskServiceHelper::getPropertyByName(properties, name);
  return value.in() ? value.in() : "(none)";
}

// " service=DiskService host=<this host>", the end of a raised exception's text.
std::string Origin() {
  char host[256] = "";
  gethostname(host, sizeof host);
  return std::string(" service=DiskService host=") + host;
}

// The argument the IllegalArgumentException that `call` raises names, and
// the exception's text.
std::string Refusal(const std::function<void()>& call) {
  try {
    call();
  } catch (const Framework::IllegalArgumentException& e) {
    CORBA::String_var text = DiskServiceHelper::ex_str(e);
    return std::string(e.details.in() ? e.details->argumentName() : "no details") + " " + text.in();
  }
  return "no exception";
}

TEST(DiskServiceHelperTest, PropertyListsAndTheirNullArguments) {
  DiskService::PropertySeq list;
  DiskServiceHelper::addProperty(list, "a", "1");
  list.length(2);  // a null property
  DiskServiceHelper::addProperty(list, "DSM::diskMediaId", "X");
  DiskServiceHelper::addProperty(list, "DSM::diskMediaId", "Y");
  EXPECT_EQ(
      Lookup(list, "DSM::diskMediaId") + Lookup(list, "a") + Lookup(list, "A") + Lookup(list, ""),
      "X1(none)(none)");

  DiskServiceHelper::updateProperty(list, "DSM::diskMediaId", "Z", false);
  DiskServiceHelper::updateProperty(list, "b", "2", false);
  EXPECT_EQ(Texts(list), "a=1 null DSM::diskMediaId=Z DSM::diskMediaId=Y");
  DiskServiceHelper::updateProperty(list, "b", "2", true);
  DiskServiceHelper::addProperty(list, "a", "3");
  EXPECT_EQ(Texts(list), "a=1 null DSM::diskMediaId=Z DSM::diskMediaId=Y b=2 a=3");

  // Deleting keeps the length: the first match becomes an empty property.
  DiskServiceHelper::deleteProperty(list, "DSM::diskMediaId");
  DiskServiceHelper::deleteProperty(list, "missing");
  // Null names and values are refused and change nothing.
  const std::vector<std::string> refusals = {
      Refusal([&] { CORBA::String_var v = DiskServiceHelper::getPropertyByName(list, nullptr); }),
      Refusal([&] { DiskServiceHelper::updateProperty(list, nullptr, "v", true); }),
      Refusal([&] { DiskServiceHelper::updateProperty(list, "a", nullptr, true); }),
      Refusal([&] { DiskServiceHelper::deleteProperty(list, nullptr); }),
  };
  auto refused = [](const char* argument, const char* method) {
    return std::string(argument) + " IllegalArgumentException: method=" + method +
           " class=DiskServiceHelper" + Origin();
  };
  EXPECT_EQ(refusals, (std::vector<std::string>{
                          refused("name", "getPropertyByName"), refused("name", "updateProperty"),
                          refused("value", "updateProperty"), refused("name", "deleteProperty")}));
  EXPECT_EQ(Texts(list), "a=1 null = DSM::diskMediaId=Y b=2 a=3");
  EXPECT_EQ(Lookup(list, "DSM::diskMediaId"), "Y");
}

TEST(DiskServiceHelperTest, RaisedExceptionsAndTheirTexts) {
  const std::string origin = Origin();
  try {
    DiskServiceHelper::throwSvcException(1, 2050001, "no memory", "Builder", "build", 77);
    FAIL() << "no exception";
  } catch (const Framework::ServiceException& e) {
    CORBA::String_var text = DiskServiceHelper::ex_str(e);
    EXPECT_EQ(text.in(), "ServiceException: method=build class=Builder" + origin +
                             " errorDomain=DSM errorCode=2050001 errorText=no memory");
    EXPECT_NE(e.details->timeStamp(), 0);
    ASSERT_NE(e.details->message(), nullptr);
    EXPECT_EQ(std::to_string(e.details->message()->textId()) + " " +
                  std::to_string(e.details->message()->inserts().length()),
              "20 2");
  }
  EXPECT_EQ(Refusal([] {
              DiskServiceHelper::throwIllArgException(1, 0, "bad", "C", "m", 5, "volumeName");
            }),
            "volumeName IllegalArgumentException: method=m class=C" + origin);

  // The last named domain and those just outside the names; details of
  // another kind, or none.
  for (const auto& c : {std::make_pair(4, "STS"), std::make_pair(5, ""), std::make_pair(0, "")}) {
    auto* details = new OBVDiskService::DiskServiceExceptionDetails();
    details->errorDomain(c.first);
    details->errorCode(5);
    CORBA::String_var text = DiskServiceHelper::ex_str(Framework::ServiceException(details));
    EXPECT_EQ(text.in(),
              std::string("ServiceException: method= class= service= host= errorDomain=") +
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
    if (DiskServiceHelper::ictraceEntry(slot).rfind("ICTR-" + marker + " ", 0) == 0) return slot;
  }
  return -1;
}

TEST(DiskServiceHelperTest, TraceRingWrapsAndCutsEntries) {
  // 128 entries fill the ring whatever was traced before.
  for (int i = 0; i < 128; ++i) {
    ASSERT_EQ(DiskServiceHelper::ictrace(("m" + std::to_string(i)).c_str(), "b", "c", "d"), 0);
  }
  std::set<int> slots = {-1};
  for (int i = 0; i < 128; ++i) slots.insert(SlotOf("m" + std::to_string(i)));
  EXPECT_EQ(slots.size(), 129u) << "an entry missing, or two in one slot";

  // The 129th entry overwrites the oldest; longer texts are cut to their
  // fields, the whole entry to 80 characters.
  int oldest = SlotOf("m0");
  DiskServiceHelper::ictrace("OP", "b", nullptr, "d");
  EXPECT_EQ(SlotOf("m0"), -1);
  ASSERT_EQ(SlotOf("OP"), oldest);
  EXPECT_THAT(DiskServiceHelper::ictraceEntry(oldest),
              MatchesRegex("ICTR-OP   [ 0-9]{5} < {23}b \\| {13}NULL \\| {16}d>"));
  std::string x(100, 'x');
  DiskServiceHelper::ictrace("LONG", x.c_str(), x.c_str(), x.c_str());
  ASSERT_GE(SlotOf("LONG"), 0);
  EXPECT_THAT(DiskServiceHelper::ictraceEntry(SlotOf("LONG")),
              MatchesRegex("ICTR-LONG [ 0-9]{5} <x{24} \\| x{16} \\| x{16}>"));
}

}  // namespace
