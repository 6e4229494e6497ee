#include <nyXmlKit/model/NyXmlWord.h>
#include <nyXmlKit/model/detail/NyXmlFromChars.h>

#include <nyXml/platform/NyPrint.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/schema/NyXmlSchema.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace {

// XML Schema allows a plus, which std::from_chars does not; a sign behind it is no number.
std::string_view withoutPlus(std::string_view text) noexcept
{
    bool const hasPlus = text.size() > 1 && text[0] == '+' && text[1] != '-' && text[1] != '+';
    return hasPlus ? text.substr(1) : text;
}

template <class Number>
bool takeInteger(Number& value, std::string_view text) noexcept
{
    text = withoutPlus(text);
    Number number = 0;
    auto const [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (fault != std::errc() || end != text.data() + text.size() || text.empty())
        return false;
    value = number;
    return true;
}

// What leaves the range is the nearest that a Real holds: infinity, or 0.
template <class Real>
bool takeReal(Real& value, std::string_view text, std::chars_format format)
{
    text = withoutPlus(text);
    Real number = 0;
    auto const [end, fault] = realFromChars(text.data(), text.data() + text.size(), number, format);
    if (fault == std::errc::invalid_argument || end != text.data() + text.size() || text.empty())
        return false;
    value = fault == std::errc::result_out_of_range ? static_cast<Real>(NyXmlText::toDouble(text)) : number;
    return true;
}

template <class Real>
bool takeRealOrWord(Real& value, std::string_view text)
{
    constexpr Real infinity = std::numeric_limits<Real>::infinity();
    if (text == "INF" || text == "+INF")
        value = infinity;
    else if (text == "-INF")
        value = -infinity;
    else if (text == "NaN")
        value = std::numeric_limits<Real>::quiet_NaN();
    else
        return takeReal(value, text, std::chars_format::general);
    return true;
}

// The longest fixed form is that of the least double: 0. and 1074 digits.
template <class Number, class... Format>
std::string shortest(Number value, Format... format)
{
    char buffer[1100];
    auto const [end, fault] = std::to_chars(buffer, buffer + sizeof buffer, value, format...);
    return fault == std::errc() ? std::string(buffer, end) : std::string();
}

template <class Real>
std::string realOrWord(Real value)
{
    if (std::isnan(value))
        return "NaN";
    if (std::isinf(value))
        return value > 0 ? "INF" : "-INF";
    return shortest(value);
}

} // namespace

template class NyXmlWord<NyXmlBooleanRules>;
template class NyXmlWord<NyXmlRealRules>;
template class NyXmlWord<NyXmlFloatRules>;
template class NyXmlWord<NyXmlDecimalRules>;
template class NyXmlWord<NyXmlLongRules>;
template class NyXmlWord<NyXmlUnsignedLongRules>;

void NyXmlWordWork::report(NyXmlReader const& reader, char const* typeWord)
{
    Ny::Print::write(Ny::Print::FAULT, "NyXmlWord Error: file not valid.\n\tNo %s found.\n\tFile: %s\n\tLine: %d\n", typeWord,
                     reader.filename(), reader.lineCountOfFile());
}

void NyXmlWordWork::reportValue(long long value, std::string_view word)
{
    Ny::Print::write(Ny::Print::FAULT, "NyXmlEnum Error: no word for the value %lld, which is written as \"%s\".\n", value,
                     std::string(word).c_str());
}

void NyXmlWordWork::give(NyXmlWriter& writer, std::type_info const& type, std::string const& text)
{
    writer.type(type);
    writer.data(text);
}

void NyXmlWordWork::describe(NyXmlSchema& schema, std::type_info const& type) { schema.setType(type); }

std::string_view NyXmlWordWork::stripped(std::string_view text) noexcept
{
    constexpr char const* white = " \t\n\r";
    std::size_t const first = text.find_first_not_of(white);
    return first == std::string_view::npos ? std::string_view() : text.substr(first, text.find_last_not_of(white) - first + 1);
}

bool NyXmlBooleanRules::take(bool& value, std::string_view text) noexcept
{
    bool const isTrue = text == "true" || text == "1";
    if (!isTrue && text != "false" && text != "0")
        return false;
    value = isTrue;
    return true;
}
std::string NyXmlBooleanRules::give(bool value) { return value ? "true" : "false"; }

bool NyXmlRealRules::take(double& value, std::string_view text) { return takeRealOrWord(value, text); }
std::string NyXmlRealRules::give(double value) { return realOrWord(value); }

bool NyXmlFloatRules::take(float& value, std::string_view text) { return takeRealOrWord(value, text); }
std::string NyXmlFloatRules::give(float value) { return realOrWord(value); }

// Exponents are read, since others write them; infinity and NaN are no decimals.
bool NyXmlDecimalRules::take(double& value, std::string_view text)
{
    double number = 0;
    if (!takeReal(number, text, std::chars_format::general) || !std::isfinite(number))
        return false;
    value = number;
    return true;
}
std::string NyXmlDecimalRules::give(double value) { return shortest(value, std::chars_format::fixed); }

bool NyXmlLongRules::take(long long& value, std::string_view text) noexcept { return takeInteger(value, text); }
std::string NyXmlLongRules::give(long long value) { return shortest(value); }

bool NyXmlUnsignedLongRules::take(unsigned long long& value, std::string_view text) noexcept { return takeInteger(value, text); }
std::string NyXmlUnsignedLongRules::give(unsigned long long value) { return shortest(value); }
