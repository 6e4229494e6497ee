#ifndef NYXML_VALUES_NYXMLTEXTOF_H
#define NYXML_VALUES_NYXMLTEXTOF_H

#include <nyXml/core/detail/NyStreamText.h>
#include <nyXml/platform/NyAngle.h>
#include <nyXml/platform/NyNonNegReal.h>
#include <nyXml/platform/NyXmlExport.h>

#include <locale>
#include <sstream>
#include <string>
#include <string_view>
#include <typeinfo>
#include <vector>

class NyXmlWriter;

/// Texts to scalars and back, whatever locale the process has set. A bad text is never an error: each function says what it leaves.
namespace NyXmlText {

/// As atoi: white space, a sign, the leading digits; 0 if there are none. Beyond the range of `long` it is the nearer end of that range,
/// of which the low 32 bits are kept.
NYXML_EXPORT int toInt(std::string_view text) noexcept;

/// As atof in the classic locale: white space, a sign, then decimal, hexadecimal, "inf" or "nan"; 0 if there is none of these. A
/// zero byte ends the text.
NYXML_EXPORT double toDouble(std::string_view text);

/// Appends each word of a text as toDouble() has it.
NYXML_EXPORT void appendDoubles(std::string_view words, std::vector<double>& values);

// What a fresh stream holding the text leaves in the value: white space is skipped, and what stands behind the number is ignored.
// Nothing but white space leaves the value alone; something else that is no number makes it 0; a number out of range makes it the nearer
// end of the range.
NYXML_EXPORT void extract(std::string_view text, short& value) noexcept;
NYXML_EXPORT void extract(std::string_view text, unsigned short& value) noexcept; ///< -1 is the largest, below -largest too
NYXML_EXPORT void extract(std::string_view text, unsigned int& value) noexcept;   ///< the same
NYXML_EXPORT void extract(std::string_view text, bool& value) noexcept; ///< every number but 0 is true, every word false
NYXML_EXPORT void extract(std::string_view text, char& value) noexcept; ///< the first character that is not white

/// The low 8 bits of what `unsigned short` would extract; 0 if there is nothing to extract from.
NYXML_EXPORT unsigned char toUnsignedChar(std::string_view text) noexcept;

/// Hands a value to the writer through its insertion operator: type() first, then data().
NYXML_EXPORT void give(NyXmlWriter& writer, char const& value);
NYXML_EXPORT void give(NyXmlWriter& writer, unsigned char const& value);
NYXML_EXPORT void give(NyXmlWriter& writer, short const& value);
NYXML_EXPORT void give(NyXmlWriter& writer, unsigned short const& value);
NYXML_EXPORT void give(NyXmlWriter& writer, int const& value);
NYXML_EXPORT void give(NyXmlWriter& writer, unsigned int const& value);
NYXML_EXPORT void give(NyXmlWriter& writer, double const& value);
NYXML_EXPORT void give(NyXmlWriter& writer, bool const& value);
NYXML_EXPORT void give(NyXmlWriter& writer, std::string const& value);
NYXML_EXPORT void give(NyXmlWriter& writer, NyAngle const& value);
NYXML_EXPORT void give(NyXmlWriter& writer, NyNonNegReal const& value);

/// The same for a value of any type that has become a text already.
NYXML_EXPORT void giveText(NyXmlWriter& writer, std::type_info const& type, std::string const& text);

/// What a fresh stream in the classic locale, holding the text, leaves in a value of any type.
template <class T>
void extractByStream(std::string_view text, T& value)
{
    NyStreamText::into(std::string(text), value);
}

} // namespace NyXmlText

/// How a T takes its value from a text and gives it to a writer: all that NyXmlBasicType<T> needs to know of T.
///
/// A type of an application gets along with its operators << and >> for standard streams, which meet streams in the classic locale (20
/// digits for reals on writing), or specialises this template with the same three members. It has a << then, too: visitors show it so.
template <class T>
struct NyXmlTextOf {
    /// Whether the text holds no white space, so that a sequence may write its items as words of one run.
    static constexpr bool isWord = true;

    /// Reports nothing, whatever the text is.
    static void take(T& value, std::string_view text) { NyXmlText::extractByStream(text, value); }

    static void give(NyXmlWriter& writer, T const& value)
    {
        std::ostringstream stream;
        stream.imbue(std::locale::classic());
        stream.precision(20);
        NyXmlText::giveText(writer, typeid(T), NyStreamText::of(stream, value));
    }
};

/// What the scalars have in common: a text without white space, and an insertion operator of the writer.
template <class T>
struct NyXmlTextOfScalarOf {
    static constexpr bool isWord = true;
    static void give(NyXmlWriter& writer, T const& value) { NyXmlText::give(writer, value); }
};

// One row for each. `int` and `double` are the odd ones: they are read as the C library reads, the others as streams do; the unit types
// by their own operators.
template <>
struct NyXmlTextOf<char> : NyXmlTextOfScalarOf<char> {
    static void take(char& value, std::string_view text) { NyXmlText::extract(text, value); }
};
template <>
struct NyXmlTextOf<unsigned char> : NyXmlTextOfScalarOf<unsigned char> {
    static void take(unsigned char& value, std::string_view text) { value = NyXmlText::toUnsignedChar(text); }
};
template <>
struct NyXmlTextOf<short> : NyXmlTextOfScalarOf<short> {
    static void take(short& value, std::string_view text) { NyXmlText::extract(text, value); }
};
template <>
struct NyXmlTextOf<unsigned short> : NyXmlTextOfScalarOf<unsigned short> {
    static void take(unsigned short& value, std::string_view text) { NyXmlText::extract(text, value); }
};
template <>
struct NyXmlTextOf<int> : NyXmlTextOfScalarOf<int> {
    static void take(int& value, std::string_view text) { value = NyXmlText::toInt(text); }
};
template <>
struct NyXmlTextOf<unsigned int> : NyXmlTextOfScalarOf<unsigned int> {
    static void take(unsigned int& value, std::string_view text) { NyXmlText::extract(text, value); }
};
template <>
struct NyXmlTextOf<double> : NyXmlTextOfScalarOf<double> {
    static void take(double& value, std::string_view text) { value = NyXmlText::toDouble(text); }
};
template <>
struct NyXmlTextOf<bool> : NyXmlTextOfScalarOf<bool> {
    static void take(bool& value, std::string_view text) { NyXmlText::extract(text, value); }
};

template <>
struct NyXmlTextOf<NyAngle> : NyXmlTextOfScalarOf<NyAngle> {
    static void take(NyAngle& value, std::string_view text) { NyXmlText::extractByStream(text, value); }
};
template <>
struct NyXmlTextOf<NyNonNegReal> : NyXmlTextOfScalarOf<NyNonNegReal> {
    static void take(NyNonNegReal& value, std::string_view text) { NyXmlText::extractByStream(text, value); }
};

/// A string is its text. It may hold blanks, and so it never stands in a run.
template <>
struct NyXmlTextOf<std::string> : NyXmlTextOfScalarOf<std::string> {
    static constexpr bool isWord = false;
    static void take(std::string& value, std::string_view text) { value.assign(text); }
};

#endif
