#include "FailingMemory.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

thread_local bool isArmed = false;
thread_local unsigned int left = 0;
thread_local long blocks = 0;
thread_local long made = 0;

[[maybe_unused]] void* allocateOrNot(std::size_t size) noexcept
{
    bool const fails = isArmed && left-- == 0;
    void* const memory = fails ? nullptr : std::malloc(size != 0 ? size : 1);
    if (memory != nullptr)
        ++blocks, ++made;
    else
        isArmed = false;
    return memory;
}

[[maybe_unused]] void* allocate(std::size_t size)
{
    if (void* const memory = allocateOrNot(size))
        return memory;
    throw std::bad_alloc();
}

[[maybe_unused]] void release(void* memory) noexcept
{
    blocks -= memory != nullptr;
    std::free(memory);
}

} // namespace

FailingMemory::FailingMemory(unsigned int successes)
{
    left = successes;
    isArmed = true;
}

FailingMemory::~FailingMemory() { isArmed = false; }

bool FailingMemory::hasFailed() const { return !isArmed; }

long FailingMemory::liveBlocks() { return blocks; }

long FailingMemory::allocations() { return made; }

#ifndef __has_feature
#define __has_feature(feature) 0
#endif
// ThreadSanitizer's runtime defines these operators itself; of the tests that run under it none lets memory fail.
#if !defined(__SANITIZE_THREAD__) && !__has_feature(thread_sanitizer)
// The library's allocations come here, too.
void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void* operator new(std::size_t size, std::nothrow_t const&) noexcept { return allocateOrNot(size); }
void* operator new[](std::size_t size, std::nothrow_t const&) noexcept { return allocateOrNot(size); }
void operator delete(void* memory) noexcept { release(memory); }
void operator delete[](void* memory) noexcept { release(memory); }
void operator delete(void* memory, std::nothrow_t const&) noexcept { release(memory); }
void operator delete[](void* memory, std::nothrow_t const&) noexcept { release(memory); }
void operator delete(void* memory, std::size_t) noexcept { release(memory); }
void operator delete[](void* memory, std::size_t) noexcept { release(memory); }
#endif
