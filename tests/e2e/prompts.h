// The confirmation prompts of cyclectl, as printed before the answer is read.
#ifndef TESTS_E2E_PROMPTS_H_
#define TESTS_E2E_PROMPTS_H_

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

}  // namespace e2e

#endif  // TESTS_E2E_PROMPTS_H_
