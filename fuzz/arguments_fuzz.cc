// The argument walk and the option rules: the input is an argument vector,
// one argument per line. The walk and, for an operation with an
// allowed-option list, the cross-option rules run; their messages go to
// /dev/null.
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "cmd/cross_rules.h"
#include "cmd/option_values.h"
#include "cmd/options.h"
#include "cmd/walk.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  // The messages go to /dev/null; libFuzzer and the sanitizers keep the
  // stream they took at start-up, the real standard error.
  FILE* sink = fopen("/dev/null", "w");
  if (sink == nullptr) return 1;
  stderr = sink;
  InitAbrevMap();
  InitOperationOptions();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::vector<std::string> args{"cyclectl"};
  std::string arg;
  for (size_t i = 0; i < size; ++i) {
    if (data[i] == '\n') {
      args.push_back(arg);
      arg.clear();
    } else {
      arg.push_back(static_cast<char>(data[i]));
    }
  }
  if (!arg.empty()) args.push_back(arg);

  std::vector<char*> argv;
  for (std::string& a : args) argv.push_back(&a[0]);
  argv.push_back(nullptr);
  ArgumentWalk walk = WalkArguments(static_cast<int>(args.size()), argv.data());
  if (FindOperationOptions(walk.line.operation) != nullptr) CheckCrossOptionRules(walk.line);
  return 0;
}
