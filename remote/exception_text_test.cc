// Exception descriptions the test service cannot produce through the ladder
// (service_probe_test.cc covers the rest): a system exception completed
// MAYBE, and one of omniORB's own minor codes, which carries its name.
#include "remote/exception_text.h"

#include <gtest/gtest.h>
#include <omniORB4/minorCode.h>

#include <cstdio>

#include "remote/idl/ServiceException.hh"

namespace {

TEST(ExceptionInfoTest, DescribesSystemExceptions) {
  EXPECT_EQ(ExceptionInfo(CORBA::UNKNOWN(0x2a, CORBA::COMPLETED_MAYBE)),
            "IDL:omg.org/CORBA/UNKNOWN:1.0 (minor code 0x2a, completed MAYBE)\n");
  char expected[128];
  snprintf(expected, sizeof expected,
           "IDL:omg.org/CORBA/TRANSIENT:1.0 (minor code 0x%lx TRANSIENT_ConnectFailed, "
           "completed NO)\n",
           static_cast<unsigned long>(omni::TRANSIENT_ConnectFailed));
  EXPECT_EQ(ExceptionInfo(CORBA::TRANSIENT(omni::TRANSIENT_ConnectFailed, CORBA::COMPLETED_NO)),
            expected);
}

}  // namespace
