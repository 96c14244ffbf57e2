// The process's ORB against the test service: value types read back intact
// only with their factories registered, a registrar that meets a failing
// factory goes on, and the wrapper's verification. The call time-out is
// shown end to end (tests/e2e/remote_faults_test.cc). The whole process
// shares one installation root and one ORB.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>
#include <sstream>
#include <string>

#include "platform/orb/orb.h"
#include "platform/test_root.h"
#include "remote/idl/ErrorCodeExceptionDetails.hh"
#include "remote/idl/IllegalArgumentExceptionDetails.hh"
#include "remote/idl/NumericMessageItem.hh"
#include "remote/idl/StringMessageItem.hh"
#include "remote/orb_startup.h"
#include "remote/services.h"
#include "remote/value_factories.h"
#include "tools/cyclesvc-test/test_service.h"
#include "util/process.h"

namespace {

using ::testing::Contains;
namespace Framework = Orvantic::Stashwell::TL::Framework;
namespace DiskService = Orvantic::Stashwell::DL::DiskService;

class RemoteOrbTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    testing_root::Write("etc/stashwell.conf",
                        "EMM_SERVER = 127.0.0.1\nMASTER_SERVER = 127.0.0.1\n");
    testing_root::Write("logs/.keep", "");
    service_ = new cyclesvc_test::TestService(testing_root::Path());
    MasterServer = "127.0.0.1";
    EmmServer = "127.0.0.1";
    progname = "remote_tests";
    StartOrb();
  }
  static void TearDownTestSuite() {
    ReleaseValueFactories();
    delete service_;
    service_ = nullptr;
  }
  void SetUp() override { ASSERT_TRUE(service_->ok()) << service_->error(); }

  static cyclesvc_test::TestService* service_;
};

cyclesvc_test::TestService* RemoteOrbTest::service_ = nullptr;

// What a call that kNestedDetails answers brings back: the details tree read
// through the value factories, each node as its own type, or the name of the
// system exception that stopped the reading.
std::string NestedDetails(DiskService::DiskServiceMgr_ptr manager) {
  try {
    DiskService::DiskVolumeInfo_var info = manager->getDiskVolumeInfoByMediaId("M1");
  } catch (const CORBA::SystemException& e) {
    return e._name();
  } catch (const Framework::ServiceException& e) {
    auto* disk = DiskService::DiskServiceExceptionDetails::_downcast(e.details.in());
    const Framework::Message* message = disk ? disk->message() : nullptr;
    if (!message || message->inserts().length() != 2 || disk->rootCauses().length() != 2) {
      return "another shape";
    }
    auto* text = Framework::StringMessageItem::_downcast(message->inserts()[0]);
    auto* number = Framework::NumericMessageItem::_downcast(message->inserts()[1]);
    auto* coded = Framework::ErrorCodeExceptionDetails::_downcast(disk->rootCauses()[0]);
    if (!text || !number || !coded || coded->rootCauses().length() != 1) return "other types";
    auto* illegal = Framework::IllegalArgumentExceptionDetails::_downcast(coded->rootCauses()[0]);
    if (!illegal) return "other types";
    std::ostringstream members;
    members << disk->errorCode() << " " << disk->errorText() << " " << disk->originatingMethod()
            << " " << disk->timeStamp() << " " << message->textId() << " " << text->stringValue()
            << " " << number->numericValue() << " | " << coded->errorCode() << " "
            << illegal->argumentName() << " | " << disk->rootCauses()[1]->originatingMethod();
    return members.str();
  }
  return "no exception";
}

const char kNestedDetails[] = R"({"DiskServiceMgr.getDiskVolumeInfoByMediaId": {"raise": {
    "user": "ServiceException", "details": {"type": "DiskServiceExceptionDetails",
      "originatingMethod": "lookup", "timeStamp": 1700000000, "errorCode": 2050010,
      "errorText": "no volume", "errorDomain": 1, "message": {"textId": 8, "inserts": [
        {"type": "StringMessageItem", "stringValue": "v1"},
        {"type": "NumericMessageItem", "numericValue": 42}]},
      "rootCauses": [{"type": "ErrorCodeExceptionDetails", "errorCode": 17,
         "rootCauses": [{"type": "IllegalArgumentExceptionDetails", "argumentName": "mediaId"}]},
        {"originatingMethod": "inner"}]}}}})";

TEST_F(RemoteOrbTest, DetailsWithNestedRootCausesNeedTheFactories) {
  const std::string read = "2050010 no volume lookup 1700000000 8 v1 42 | 17 mediaId | inner";
  service_->SetScenario(kNestedDetails);
  DiskService::DiskServiceMgr_var manager =
      NarrowService<DiskService::DiskServiceMgr>(kDiskServiceManager);
  ASSERT_FALSE(CORBA::is_nil(manager));
  EXPECT_EQ(NestedDetails(manager), read);

  // Without the factories the same reply cannot be read.
  CORBA::ORB_ptr orb = SWOrb->orb();
  for (auto table : {FrameworkValueFactories, DiskServiceValueFactories}) {
    size_t count = 0;
    const ValueFactoryEntry* entries = table(&count);
    for (size_t i = 0; i < count; ++i) orb->unregister_value_factory(entries[i].repositoryId());
  }
  EXPECT_EQ(NestedDetails(manager), "MARSHAL");

  FrameworkRegistrar framework;
  DiskServiceRegistrar disk;
  EXPECT_EQ(framework.init(orb), 0);
  EXPECT_EQ(disk.init(orb), 0);
  EXPECT_EQ(NestedDetails(manager), read);
}

CORBA::ValueFactoryBase* NewFactory() { return new Framework::Message_init(); }
CORBA::ValueFactoryBase* NoMemory() { throw std::bad_alloc(); }

// A registrar whose second factory cannot be created.
class FailingRegistrar : public ValueFactoryRegistrar {
 public:
  int init(CORBA::ORB_ptr orb) {
    static const ValueFactoryEntry entries[] = {{[] { return "IDL:Test/First:1.0"; }, NewFactory},
                                                {[] { return "IDL:Test/Second:1.0"; }, NoMemory},
                                                {[] { return "IDL:Test/Third:1.0"; }, NewFactory}};
    return registerAll(orb, entries, 3, "FailingRegistrar::init");
  }
};

TEST_F(RemoteOrbTest, RegistrarLogsAFailedFactoryAndGoesOn) {
  CORBA::ORB_ptr orb = SWOrb->orb();
  FailingRegistrar registrar;
  EXPECT_EQ(registrar.init(orb), 1);
  for (const char* id : {"IDL:Test/First:1.0", "IDL:Test/Third:1.0"}) {
    CORBA::ValueFactory factory = orb->lookup_value_factory(id);
    EXPECT_NE(factory, nullptr) << id;
    if (factory != nullptr) factory->_remove_ref();
  }
  EXPECT_THAT(testing_root::LogLines("logs/remote_tests"),
              Contains("<3> 100: FailingRegistrar::init: cannot register the value factory of "
                       "IDL:Test/Second:1.0"));
}

TEST_F(RemoteOrbTest, ResolveVerifiesOnlyWhenAsked) {
  auto found = [](const char* daemon, const char* key, bool verify) {
    ACE_Time_Value connect(10), call(3600);
    bool apply = true;
    CORBA::Object_var object =
        SWOrb->resolve("127.0.0.1", daemon, key, connect, call, apply, verify);
    return CORBA::is_nil(object) ? "-" : "+";
  };
  // An object the service has, one it lacks, the same unverified, and a
  // daemon without a configured port.
  EXPECT_EQ(std::string(found("cyclesvc", "StorageService.StorageServiceMgr", true)) +
                found("cyclesvc", "No.Such.Object", true) +
                found("cyclesvc", "No.Such.Object", false) + found("nosuchdaemon", "X", false),
            "+-+-");
}

}  // namespace
