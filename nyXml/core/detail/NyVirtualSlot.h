// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_CORE_DETAIL_NYVIRTUALSLOT_H
#define NYXML_CORE_DETAIL_NYVIRTUALSLOT_H

#include <cstdint>
#include <cstring>

/// Which code a virtual operation runs: tells a class that overrides it from one that doesn't.
///
/// The language has no question for this, so it looks into the virtual tables of the Itanium C++ ABI. Elsewhere nobody knows, and
/// every operation counts as overridden.
namespace NyVirtualSlot {

/// The function that an operation runs for an object, 0 if nobody knows. One function may go by several addresses, see isSame().
template <class Class, class Operation>
std::uintptr_t functionOf(Class const& object, Operation operation) noexcept
{
#ifdef __GXX_ABI_VERSION
    std::uintptr_t slot; // a pointer to a virtual member starts with its place in the table, plus 1 on most machines
    static_assert(sizeof(operation) == 2 * sizeof(slot));
    std::memcpy(&slot, &operation, sizeof(slot));
    slot &= ~std::uintptr_t{ 1 };
    char const* table; // an object starts with the address of its class's table
    std::memcpy(&table, static_cast<void const*>(&object), sizeof(table));
    std::uintptr_t function;
    std::memcpy(&function, table + slot, sizeof(function));
    return function;
#else
    return 0;
#endif
}

/// Whether two addresses are those of one function. A program that is linked without position independence has an entry of its own
/// for each function of a library whose address it takes, and its tables hold that one: then the symbol's name decides.
bool isSame(std::uintptr_t function, std::uintptr_t other) noexcept;

} // namespace NyVirtualSlot

#endif
