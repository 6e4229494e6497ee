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

/// What a text has behind its end, all zero bytes, if it is looked at eight bytes at a time.
inline constexpr std::size_t zerosNeeded = sizeof(std::uint64_t);

/// A name that is looked for at one place after the other: most are told by one comparison of eight bytes.
class Pattern {
public:
    Pattern() = default;
    /// \param name  holds no zero byte and outlives the pattern
    explicit Pattern(std::string_view name) noexcept : m_name(name)
    {
        static constexpr unsigned char ones[] = { 255, 255, 255, 255, 255, 255, 255, 255 };
        std::size_t const size = name.size() < sizeof m_head ? name.size() : sizeof m_head;
        if (size == 0)
            return;
        std::memcpy(&m_head, name.data(), size);
        std::memcpy(&m_mask, ones, size);
    }

    std::size_t size() const noexcept { return m_name.size(); }

    /// \param place  in a text with zerosNeeded zero bytes behind it
    bool isAt(char const* place) const noexcept
    {
        std::uint64_t head;
        std::memcpy(&head, place, sizeof head);
        if (((head ^ m_head) & m_mask) != 0)
            return false;
        return m_name.size() <= sizeof head || same(m_name, { place, m_name.size() }); // which stops at the zeros
    }

private:
    std::string_view m_name;
    std::uint64_t m_head = 0;
    std::uint64_t m_mask = 0;
};

} // namespace NyShortText

#endif
