// Test data made when a test runs: golden files with placeholders filled in
// (today's date, a key, bytes as the engine under test writes them) and
// series of catalog rows longer than one fetch, the key of master1, and
// run results without their elapsed time.
#ifndef TESTS_E2E_TEST_DATA_H_
#define TESTS_E2E_TEST_DATA_H_

#include <regex>
#include <string>
#include <utility>
#include <vector>

#include "tests/e2e/harness.h"

namespace e2e {

// The key of the master server master1, as an SQL expression.
inline constexpr char kMaster1[] =
    "(SELECT MachineKey FROM EMM_Machine WHERE MachinePrimaryName = 'master1')";

// The text of golden file `name` with every occurrence of each placeholder
// replaced by its value, placeholders taken in the order given (so a name
// that is part of another comes after it).
inline std::string GoldenFilled(const std::string& name,
                                const std::vector<std::pair<std::string, std::string>>& values) {
  std::string text = Golden(name);
  for (const auto& [placeholder, value] : values) {
    for (size_t at = 0; (at = text.find(placeholder, at)) != std::string::npos; at += value.size())
      text.replace(at, placeholder.size(), value);
  }
  return text;
}

// Adds `count` images of master1's client c backed up at `firstTime`, the
// next second and so on, with the settings `set` ("Column = value, ...").
inline void AddImages(Root& root, int count, long firstTime, const std::string& set = "") {
  root.Sql("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < " +
           std::to_string(count - 1) +
           ") INSERT INTO DBM_Image (MasterServerKey, ClientMachineName, BackupTime) SELECT " +
           kMaster1 + ", 'c', " + std::to_string(firstTime) + " + i FROM n");
  if (!set.empty()) root.Sql("UPDATE DBM_Image SET " + set + " WHERE ClientMachineName = 'c'");
}

// `result` with the elapsed seconds of add_import_frags's summary shown as
// N ("Operation took N seconds, total").
inline Result SecondsHidden(Result result) {
  result.err =
      std::regex_replace(result.err, std::regex("Operation took [0-9]+ "), "Operation took N ");
  return result;
}

}  // namespace e2e

#endif  // TESTS_E2E_TEST_DATA_H_
