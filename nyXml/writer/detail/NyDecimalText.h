// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_WRITER_DETAIL_NYDECIMALTEXT_H
#define NYXML_WRITER_DETAIL_NYDECIMALTEXT_H

#include <cstddef>

/// The text of a real, exactly as a stream in the classic locale inserts it with neither the fixed nor the scientific flag; that is as
/// printf's "%.*g" has it. Part of NyXmlWriter.
namespace NyDecimalText {

/// The room that put() needs at this precision; more than the text takes.
std::size_t room(int precision) noexcept;

/// Puts the text at \p target. \param precision  significant digits at most; 0 counts as 1, a negative one as 6
/// \return where it ends
char* put(char* target, double value, int precision) noexcept;

} // namespace NyDecimalText

#endif
