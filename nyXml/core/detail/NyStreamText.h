// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_CORE_DETAIL_NYSTREAMTEXT_H
#define NYXML_CORE_DETAIL_NYSTREAMTEXT_H

#include <ios>
#include <locale>
#include <sstream>
#include <string>

/// What the operators of a value for streams give: the text of a value, and the value of a text.
namespace NyStreamText {

/// A stream keeps what is thrown inside it to itself and takes nothing from then on. A text cut short for want of memory must not pass
/// for a value, and the next value is to be right: std::bad_alloc comes out, and the stream starts afresh every time.
///
/// \param stream  says how scalars look; what it holds is dropped
template <class T>
std::string of(std::ostringstream& stream, T const& value)
{
    stream.clear();
    stream.exceptions(std::ios_base::badbit);
    stream.str(std::string());
    try {
        stream << value;
    } catch (std::ios_base::failure const&) {
        // The operator's own verdict on its value. What it has written so far is the text.
    }
    return stream.str();
}

/// The other way, with the same care: what a fresh stream with the text leaves in the value.
template <class T>
void into(std::string const& text, T& value)
{
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    stream.exceptions(std::ios_base::badbit);
    try {
        stream >> value;
    } catch (std::ios_base::failure const&) {
        // The operator's own verdict on the text, which is no error here.
    }
}

} // namespace NyStreamText

#endif
