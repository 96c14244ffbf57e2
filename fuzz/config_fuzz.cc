// The configuration-file parser: the input is the text of a configuration
// file.
#include <cstdint>
#include <string>
#include <vector>

#include "platform/config.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  StashwellConfig config;
  std::vector<std::string> errors;
  ParseStashwellConfig(text, "stashwell.conf", &config, &errors);
  return 0;
}
