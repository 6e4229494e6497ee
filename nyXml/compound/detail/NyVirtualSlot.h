// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_COMPOUND_DETAIL_NYVIRTUALSLOT_H
#define NYXML_COMPOUND_DETAIL_NYVIRTUALSLOT_H

// Not part of the public face.

#include <cstdint>
#include <cstring>

/// Whether a virtual operation runs the same code for both objects: tells a class that overrides it from one that doesn't.
///
/// The language has no question for this, so it looks into the virtual tables of the Itanium C++ ABI. Elsewhere the answer is
/// always false, as for an override.
template <class Class, class Operation>
bool runsTheSame(Class const& one, Class const& other, Operation operation) noexcept
{
#ifdef __GXX_ABI_VERSION
    std::uintptr_t slot; // a pointer to a virtual member starts with its place in the table, plus 1 on most machines
    static_assert(sizeof(operation) == 2 * sizeof(slot));
    std::memcpy(&slot, &operation, sizeof(slot));
    slot &= ~std::uintptr_t{ 1 };
    auto const functionOf = [slot](void const* object) {
        char const* table; // an object starts with the address of its class's table
        std::memcpy(&table, object, sizeof(table));
        std::uintptr_t function;
        std::memcpy(&function, table + slot, sizeof(function));
        return function;
    };
    return functionOf(&one) == functionOf(&other);
#else
    return false;
#endif
}

#endif
