// In-house, no part of the face: for the sources of the library, and not installed.

#ifndef NYXML_CORE_DETAIL_NYFROMCHARS_H
#define NYXML_CORE_DETAIL_NYFROMCHARS_H

#include <charconv>

#ifdef NYXML_WITH_FAST_FLOAT
#include <fast_float/fast_float.h>
#endif

/// std::from_chars for reals, which some standard libraries (libc++) do not have yet. A number too large may be told as infinity there.
inline std::from_chars_result nyFromChars(char const* begin, char const* end, double& value) noexcept
{
#ifdef NYXML_WITH_FAST_FLOAT
    fast_float::from_chars_result const result = fast_float::from_chars(begin, end, value);
    return { result.ptr, result.ec };
#else
    return std::from_chars(begin, end, value);
#endif
}

#endif
