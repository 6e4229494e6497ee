// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_CORE_DETAIL_NYSHORTTEXT_H
#define NYXML_CORE_DETAIL_NYSHORTTEXT_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

/// Comparing texts of a few bytes, as names are.
namespace NyShortText {

namespace detail {
template <class Word>
bool sameWord(char const* one, char const* other) noexcept
{
    Word words[2];
    std::memcpy(&words[0], one, sizeof(Word));
    std::memcpy(&words[1], other, sizeof(Word));
    return words[0] == words[1];
}
} // namespace detail

/// Byte for byte. The call that == makes for it takes longer than comparing a name does: a tenth of the time of reading compounds.
inline bool same(std::string_view one, std::string_view other) noexcept
{
    using detail::sameWord;

    std::size_t const size = one.size();
    if (size != other.size())
        return false;
    char const* const a = one.data();
    char const* const b = other.data();
    if (size < sizeof(std::uint32_t)) {
        for (std::size_t i = 0; i != size; ++i)
            if (a[i] != b[i])
                return false;
        return true;
    }
    std::size_t const last32 = size - sizeof(std::uint32_t);
    if (size < sizeof(std::uint64_t)) // two words that overlap
        return sameWord<std::uint32_t>(a, b) && sameWord<std::uint32_t>(a + last32, b + last32);
    std::size_t const last64 = size - sizeof(std::uint64_t);
    for (std::size_t i = 0; i < last64; i += sizeof(std::uint64_t))
        if (!sameWord<std::uint64_t>(a + i, b + i))
            return false;
    return sameWord<std::uint64_t>(a + last64, b + last64);
}

} // namespace NyShortText

#endif
