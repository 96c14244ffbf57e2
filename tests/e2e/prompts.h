// Texts of cyclectl that tests of several operations expect: the
// confirmation prompts, as printed before the answer is read, and the notice
// of an option outside an operation's list.
#ifndef TESTS_E2E_PROMPTS_H_
#define TESTS_E2E_PROMPTS_H_

#include <string>
#include <vector>

namespace e2e {

inline constexpr char kDestinationPrompt[] =  // cancel -destination
    "This operation will also cancel other destinations if they are using the specified "
    "destination as source. Do you wish to proceed? (y/n): ";
inline constexpr char kWorkGroupPrompt[] =  // dropwg
    "This operation will remove work group information in the database.  This will increase "
    "the time taken for SLP processing and may impact ongoing SLP operations.  Do you wish to "
    "proceed ? (y/n):";
inline constexpr char kExpiredPrompt[] =  // remove_exp
    "This operation will remove all expired image fragment entries in the database.  Any files "
    "containing backup images corresponding to these entries must be deleted manually.  Do you "
    "wish to proceed? (y/n) >";

// The notices of `options` outside the list of `operation`, in order.
inline std::string Ignored(const std::string& operation, const std::vector<std::string>& options) {
  std::string text;
  for (const std::string& option : options)
    text +=
        "option '" + option + "'  is not valid for operation '" + operation + "' and is ignored\n";
  return text;
}

}  // namespace e2e

#endif  // TESTS_E2E_PROMPTS_H_
