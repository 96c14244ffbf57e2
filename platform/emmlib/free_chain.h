// FreeChain: frees a singly linked chain of records, each one malloc'ed
// block with a `next` link, as the library hands them out.
#ifndef PLATFORM_EMMLIB_FREE_CHAIN_H_
#define PLATFORM_EMMLIB_FREE_CHAIN_H_

#include <cstdlib>

namespace emm {

// Frees `head` and every record after it; `release`, when given, first frees
// what a record owns (its own sub-chains).
template <typename Record, typename Release>
void FreeChain(Record* head, Release release) {
  while (head != nullptr) {
    Record* next = head->next;
    release(head);
    free(head);
    head = next;
  }
}

template <typename Record>
void FreeChain(Record* head) {
  FreeChain(head, [](Record*) {});
}

}  // namespace emm

#endif  // PLATFORM_EMMLIB_FREE_CHAIN_H_
