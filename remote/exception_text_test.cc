// Texts of the exception ladder: the IllegalArgumentException text and the
// description of user and system exceptions.
#include "remote/exception_text.h"

#include <gtest/gtest.h>
#include <omniORB4/minorCode.h>
#include <stdlib.h>
#include <time.h>

#include "remote/idl/ServiceException.hh"

namespace {

namespace Framework = Orvantic::Stashwell::TL::Framework;

Framework::IllegalArgumentExceptionDetails* Details(const char* method, const char* className,
                                                    const char* service, const char* host,
                                                    long long timeStamp, const char* argument) {
  auto* details = new OBV_Orvantic::Stashwell::TL::Framework::IllegalArgumentExceptionDetails();
  details->originatingMethod(method);
  details->originatingClass(className);
  details->originatingService(service);
  details->originatingHost(host);
  details->timeStamp(timeStamp);
  details->argumentName(argument);
  return details;
}

TEST(IllegalArgumentTextTest, BuildsTheTextFromTheDetails) {
  setenv("TZ", "UTC", 1);
  tzset();
  struct Case {
    Framework::IllegalArgumentExceptionDetails* details;  // owned by the exception
    const char* expected;
  };
  const Case cases[] = {
      {nullptr, "IllegalArgumentException"},
      // Received strings are present even when empty, so every label shows.
      {Details("", "", "", "", 0, "x"),
       "IllegalArgumentException: in method  of class  in service  on host ; argumentName=\"x\""},
      // A time stamp adds the ctime_r text, which ends with its own line end.
      {Details("getDiskVolumeInfoByMediaId", "DiskServiceMgrImpl", "DiskService", "emm1", 1,
               "diskMediaId"),
       "IllegalArgumentException: in method getDiskVolumeInfoByMediaId of class "
       "DiskServiceMgrImpl in service DiskService on host emm1 at Thu Jan  1 00:00:01 1970\n"
       "; argumentName=\"diskMediaId\""},
  };
  for (const Case& c : cases) {
    Framework::IllegalArgumentException e(c.details);
    EXPECT_EQ(Framework::IllegalArgumentExceptionHelper::str(e), c.expected);
    CORBA::String_var copy = Framework::IllegalArgumentExceptionHelper::c_str(e);
    EXPECT_STREQ(copy.in(), c.expected);
  }
}

TEST(ExceptionInfoTest, DescribesSystemAndUserExceptions) {
  EXPECT_EQ(ExceptionInfo(CORBA::BAD_PARAM(0, CORBA::COMPLETED_NO)),
            "IDL:omg.org/CORBA/BAD_PARAM:1.0 (minor code 0x0, completed NO)\n");
  EXPECT_EQ(ExceptionInfo(CORBA::UNKNOWN(0x2a, CORBA::COMPLETED_MAYBE)),
            "IDL:omg.org/CORBA/UNKNOWN:1.0 (minor code 0x2a, completed MAYBE)\n");
  EXPECT_EQ(ExceptionInfo(CORBA::NO_MEMORY(0, CORBA::COMPLETED_YES)),
            "IDL:omg.org/CORBA/NO_MEMORY:1.0 (minor code 0x0, completed YES)\n");
  // omniORB's own minor codes carry their names.
  char expected[128];
  snprintf(expected, sizeof expected,
           "IDL:omg.org/CORBA/TRANSIENT:1.0 (minor code 0x%lx TRANSIENT_ConnectFailed, "
           "completed NO)\n",
           static_cast<unsigned long>(omni::TRANSIENT_ConnectFailed));
  EXPECT_EQ(ExceptionInfo(CORBA::TRANSIENT(omni::TRANSIENT_ConnectFailed, CORBA::COMPLETED_NO)),
            expected);

  // A user exception: its repository id and no line end.
  EXPECT_EQ(ExceptionInfo(Framework::ServiceException()),
            "IDL:Orvantic/Stashwell/TL/Framework/ServiceException:1.0");
}

}  // namespace
