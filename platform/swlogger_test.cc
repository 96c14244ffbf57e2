// Tests of the unified logger and the function tracer.
#include "platform/swlogger.h"

#include <filesystem>

#include "gtest/gtest.h"
#include "platform/test_root.h"

namespace {

void Traced(SWLogger* logger) { Tracer t(logger, nullptr, "Traced", "remote/x.cc", 12); }

TEST(SWLogger, WritesLinesAndTracesAtItsVerbosity) {
  testing_root::Remove("logs");
  std::filesystem::create_directories(testing_root::Path() + "/logs");
  {
    SWLogger quiet("ul", 4);
    quiet.logDebug("ParseBackupId", 1, "bad id");
    Traced(&quiet);  // below the trace level: nothing
    SWLogger loud("ul", 5);
    Traced(&loud);
    Traced(nullptr);
  }
  EXPECT_EQ(testing_root::LogLines("logs/ul"),
            (std::vector<std::string>{"<1> ParseBackupId: bad id",
                                      "<5> Traced: Entering Traced [(nil)] (x.cc:12)",
                                      "<5> Traced: Leaving Traced [(nil)]"}));

  testing_root::Remove("logs");
  SWLogger nowhere("ul", 5);  // no logs root: writes nothing, does not fail
  nowhere.logDebug("s", 1, "t");
  EXPECT_FALSE(std::filesystem::exists(testing_root::Path() + "/logs"));
  EXPECT_EQ(SWLogger::s_default, nullptr);
}

}  // namespace
