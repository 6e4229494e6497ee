// In-house, no part of the face: for the sources of this library, and not installed.

#ifndef NYXMLKIT_MODEL_DETAIL_NYXMLFROMCHARS_H
#define NYXMLKIT_MODEL_DETAIL_NYXMLFROMCHARS_H

#include <charconv>

#ifdef NYXML_WITH_FAST_FLOAT
#include <fast_float/fast_float.h>
#endif

/// std::from_chars for reals, which some standard libraries (libc++) do not have yet. A number too large may be told as infinity there.
template <class Real>
std::from_chars_result realFromChars(char const* begin, char const* end, Real& value, std::chars_format format) noexcept
{
#ifdef NYXML_WITH_FAST_FLOAT
    auto const ours = format == std::chars_format::fixed ? fast_float::chars_format::fixed : fast_float::chars_format::general;
    fast_float::from_chars_result const result = fast_float::from_chars(begin, end, value, ours);
    return { result.ptr, result.ec };
#else
    return std::from_chars(begin, end, value, format);
#endif
}

#endif
