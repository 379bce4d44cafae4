#ifndef QOR_TEST_FAILING_ALLOCATOR_H
#define QOR_TEST_FAILING_ALLOCATOR_H

namespace qor_test {

// Makes the allocator of the program count, and fail on request: operator new
// and, unless the program is built with AddressSanitizer, malloc and its like.
//
// Counts are those of the whole program. Only one thread may allocate at a
// time.

// From now on, the allocation with this number, counted from 1, fails; with
// `andAllLater`, so do all later ones.
void failAllocation(int number, bool andAllLater = false);

// Ends that. Returns whether the allocation was reached.
bool stopFailing();

// The number of allocated blocks.
long outstandingAllocations();

}  // namespace qor_test

#endif
