// The ladder passes results through and leaves exceptions outside its rows
// alone; its rows themselves end the run and are tested through the test
// service (service_probe_test.cc).
#include "remote/exception_ladder.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace {

TEST(ExceptionLadderTest, ReturnsTheStepsResult) {
  EXPECT_EQ(RunRemote("cyclesvc", [] { return 42; }), 42);
  EXPECT_EQ(RunRemote("dsm", [] { return std::string("BasicDisk"); }), "BasicDisk");
}

TEST(ExceptionLadderTest, ExceptionsOutsideTheLadderPropagate) {
  EXPECT_THROW(RunRemote("cyclesvc", []() -> int { throw std::logic_error("not a row"); }),
               std::logic_error);
  EXPECT_THROW(RunRemote("dsm", []() -> int { throw 7; }), int);
}

}  // namespace
