// In-house, no part of the face: for the sources of the library, and not installed.

#ifndef NYXML_READER_DETAIL_NYXMLTEXTSEARCH_H
#define NYXML_READER_DETAIL_NYXMLTEXTSEARCH_H

#include <nyXml/core/detail/NyWhiteSpace.h>
#include <nyXml/reader/detail/NyXmlTagText.h>

#ifdef __SSE2__ // of every x86 processor of 64 bits; elsewhere a byte at a time
#include <emmintrin.h>
#endif

#include <cstddef>
#include <cstring>
#include <string_view>

/// From place to place in a reader's block, many bytes at a time. Most steps are shorter than sixteen bytes, so that a call of the C
/// library's would take longer than the step. None looks for the end of the block: there is no zero byte in it, but zeros behind it.
namespace NyXmlTextSearch {

/// What a block has behind its end, all zero bytes.
inline constexpr std::size_t zerosNeeded = 16;

#ifdef __SSE2__
namespace detail {
inline __m128i bytesAt(char const* text) noexcept { return _mm_loadu_si128(reinterpret_cast<__m128i const*>(text)); }
inline __m128i whereIs(__m128i bytes, char c) noexcept { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)); }
/// A bit for each byte.
inline unsigned int bits(__m128i bytes) noexcept { return static_cast<unsigned int>(_mm_movemask_epi8(bytes)); }
/// Of the first bit set; there must be one.
inline int first(unsigned int bits) noexcept { return __builtin_ctz(bits); }
} // namespace detail
#endif

/// As a rule there is the end of a line and an indentation, or nothing.
inline char const* skipWhite(char const* at) noexcept
{
#ifdef __SSE2__
    __m128i const bytes = detail::bytesAt(at);
    at += detail::first(~detail::bits(_mm_or_si128(detail::whereIs(bytes, '\n'), detail::whereIs(bytes, ' '))));
#endif
    while (static_cast<unsigned char>(*at) <= ' ' && NyWhiteSpace::is(*at))
        ++at;
    return at;
}

/// The next `<`. \param size  up to the end of the block. \return null if there is none
inline char const* findTag(char const* at, std::size_t size) noexcept
{
#ifdef __SSE2__
    for (int look = 0; look != 2 && size >= sizeof(__m128i); ++look, at += sizeof(__m128i), size -= sizeof(__m128i))
        if (unsigned int const found = detail::bits(detail::whereIs(detail::bytesAt(at), '<')))
            return at + detail::first(found);
#endif
    return static_cast<char const*>(std::memchr(at, '<', size));
}

/// Onto one of the bytes `'"#>`, a zero or perhaps an `&`.
inline char const* skipInValue(char const* at) noexcept
{
#ifdef __SSE2__
    for (;; at += sizeof(__m128i)) {
        __m128i const bytes = detail::bytesAt(at);
        __m128i const alike = _mm_and_si128(bytes, _mm_set1_epi8(static_cast<char>(0xfa))); // quotes, `#` and `&`
        __m128i const ends = _mm_or_si128(detail::whereIs(bytes, '>'), detail::whereIs(bytes, '\0'));
        if (unsigned int const found = detail::bits(_mm_or_si128(detail::whereIs(alike, '"'), ends)))
            return at + detail::first(found);
    }
#else
    return NyXmlTagText::skipTo(NyXmlTagText::endsPlainValue, at);
#endif
}

/// Steps over a value, from behind its first quote on, and that quote. \param value  becomes the value, less what is up to a `#`.
/// \return false if the tag or the block ends before it does
inline bool takeValue(char const*& at, char quote, std::string_view& value) noexcept
{
    char const* const start = at;
    char const* first = start;
    while (*(at = skipInValue(at)) != quote) {
        if (*at == '>' || *at == '\0')
            return false;
        if (*at == '#' && first == start)
            first = at + 1;
        ++at;
    }
    value = { first, static_cast<std::size_t>(at - first) };
    ++at;
    return true;
}

} // namespace NyXmlTextSearch

#endif
