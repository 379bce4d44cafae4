#ifndef QOR_TEST_FAILING_ALLOCATOR_H
#define QOR_TEST_FAILING_ALLOCATOR_H

namespace qor_test {

// The allocator of a program that is linked with this file: the system's, which
// can be told to fail, and which counts. It serves operator new and, unless the
// program is built with the address sanitizer, malloc and its like.
//
// Counts are those of the whole program; one thread is to allocate at a time.

// From now on the allocation with this number, counted from 1, fails, and no
// other.
void failAllocation(int number);

// Ends that. Returns whether the allocation was reached.
bool stopFailing();

// How many blocks are allocated and not freed.
long outstandingAllocations();

}  // namespace qor_test

#endif
