// In-house, no part of the face: for the sources of the library, and not installed.

#ifndef NYXML_CORE_DETAIL_NYLARGEPAGES_H
#define NYXML_CORE_DETAIL_NYLARGEPAGES_H

#include <cstddef>
#include <cstdint>

#ifdef __linux__
#include <sys/mman.h>
#endif

/// Asks the system to back fresh memory by large pages: touching megabytes page by page costs more than filling them. A wish, that may
/// be without effect.
inline void nyWishLargePages(void const* memory, std::size_t size) noexcept
{
#ifdef __linux__
    constexpr std::uintptr_t page = std::uintptr_t{ 2 } << 20;
    std::uintptr_t const begin = (reinterpret_cast<std::uintptr_t>(memory) + page - 1) / page * page;
    std::uintptr_t const end = (reinterpret_cast<std::uintptr_t>(memory) + size) / page * page;
    if (begin < end)
        madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
#else
    static_cast<void>(memory);
    static_cast<void>(size);
#endif
}

#endif
