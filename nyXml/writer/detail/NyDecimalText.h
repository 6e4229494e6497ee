// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_WRITER_DETAIL_NYDECIMALTEXT_H
#define NYXML_WRITER_DETAIL_NYDECIMALTEXT_H

#include <cstddef>
#include <string>

/// The text of a real, exactly as a stream in the classic locale inserts it with neither the fixed nor the scientific flag; that is as
/// printf's "%.*g" has it. Part of NyXmlWriter.
namespace NyDecimalText {

/// Puts the text behind \p text. \param precision  significant digits at most; 0 counts as 1, a negative one as 6
void append(std::string& text, double value, int precision);

/// The most bytes that append() needs at this precision.
std::size_t longest(int precision) noexcept;

} // namespace NyDecimalText

#endif
