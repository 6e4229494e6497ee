#ifndef NYXML_TESTS_FAILINGMEMORY_H
#define NYXML_TESTS_FAILINGMEMORY_H

#include <gtest/gtest.h>

#include <new>

/// Lets one allocation of this thread fail with std::bad_alloc, for as long as it lives: the one after \p successes others.
class FailingMemory {
public:
    explicit FailingMemory(unsigned int successes);
    ~FailingMemory();
    FailingMemory(FailingMemory const&) = delete;
    FailingMemory& operator=(FailingMemory const&) = delete;

    /// Whether it came to that.
    bool hasFailed() const;

    /// How many blocks this thread has allocated more than it has released, and how many it has allocated at all.
    static long liveBlocks();
    static long allocations();
};

/// Does something with the allocation behind n others failing. \return whether it came that far
template <class Operation>
bool failsAt(unsigned int n, Operation operation)
{
    FailingMemory const memory(n);
    try {
        operation();
    } catch (std::bad_alloc const&) {
        EXPECT_TRUE(memory.hasFailed());
    }
    return memory.hasFailed();
}

#endif
