#include <nyXml/values/NyXmlTextOf.h>

#include <nyXml/core/detail/NyFromChars.h>
#include <nyXml/core/detail/NyRealWord.h>
#include <nyXml/core/detail/NyWhiteSpace.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <charconv>
#include <climits>
#include <cstdlib>
#include <limits>
#include <locale.h>
#include <system_error>

namespace {

bool isDigit(char c) noexcept { return c >= '0' && c <= '9'; }

/// White space as the C library and streams have it: vertical tab and form feed too, unlike the document format.
std::string_view withoutLeadingSpace(std::string_view text) noexcept
{
    std::size_t const first = text.find_first_not_of(" \t\n\v\f\r");
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

/// A sign and the digits behind it, after white space.
struct Integer {
    unsigned long long magnitude = 0; ///< 0 without digits; at most ULLONG_MAX
    bool isNegative = false;
    bool isThere = false; ///< there was something but white space
};

Integer integerIn(std::string_view text) noexcept
{
    Integer integer;
    text = withoutLeadingSpace(text);
    integer.isThere = !text.empty();
    if (integer.isThere && (text.front() == '-' || text.front() == '+')) {
        integer.isNegative = text.front() == '-';
        text.remove_prefix(1);
    }
    for (char c : text) {
        if (!isDigit(c))
            break;
        bool const fits = integer.magnitude <= (ULLONG_MAX - 9) / 10;
        integer.magnitude = fits ? 10 * integer.magnitude + static_cast<unsigned long long>(c - '0') : ULLONG_MAX;
    }
    return integer;
}

/// What stream extraction makes of it: out of range is the nearer end, except that a small enough negative number wraps.
template <class Unsigned>
void extractUnsigned(std::string_view text, Unsigned& value) noexcept
{
    constexpr Unsigned last = std::numeric_limits<Unsigned>::max();
    Integer const integer = integerIn(text);
    if (!integer.isThere)
        return;
    if (integer.magnitude > last)
        value = last;
    else
        value = static_cast<Unsigned>(integer.isNegative ? 0 - integer.magnitude : integer.magnitude);
}

/// The forms that std::from_chars doesn't know, or knows otherwise.
double toDoubleByLibrary(std::string_view text)
{
    static locale_t const classic = newlocale(LC_ALL_MASK, "C", nullptr); // lives as long as the process
    return strtod_l(std::string(text).c_str(), nullptr, classic);
}

} // namespace

int NyXmlText::toInt(std::string_view text) noexcept
{
    constexpr unsigned long long last = LONG_MAX;
    Integer const integer = integerIn(text);
    if (integer.isNegative)
        return static_cast<int>(integer.magnitude > last ? LONG_MIN : -static_cast<long>(integer.magnitude));
    return static_cast<int>(integer.magnitude > last ? LONG_MAX : static_cast<long>(integer.magnitude));
}

// Hot: once per word of every array of reals, and two to four times as fast as strtod. from_chars takes plain decimals with no sign but a
// minus, and gives up where they leave the range; everything else goes to the C library. A test compares the two on many texts.
double NyXmlText::toDouble(std::string_view text)
{
    double value = 0.0;
    std::string_view const digits = text.substr(!text.empty() && text.front() == '-' ? 1 : 0);
    bool const isDecimal = !digits.empty() && (isDigit(digits.front()) || digits.front() == '.');
    bool const isHexadecimal = digits.size() > 1 && (digits[1] == 'x' || digits[1] == 'X');
    if (isDecimal && !isHexadecimal && nyFromChars(text.data(), text.data() + text.size(), value).ec == std::errc())
        return value;
    return toDoubleByLibrary(text);
}

// Hot: the conversion itself finds the end of an everyday word.
void NyXmlText::appendDoubles(std::string_view words, std::vector<double>& values)
{
    char const* const end = words.data() + words.size();
    for (char const* at = words.data(); at != end;) {
        if (NyWhiteSpace::is(*at)) {
            ++at;
            continue;
        }
        double value = 0.0;
        char const* const wordEnd = nyTakeRealWord(at, end, value);
        if (wordEnd != nullptr && NyWhiteSpace::is(*wordEnd)) {
            values.push_back(value);
            at = wordEnd;
            continue;
        }
        bool const isDigits = isDigit(*at) || (*at == '-' && end - at > 1 && isDigit(at[1]));
        auto const [behind, fault] =
            isDigits ? nyFromChars(at, end, value) : std::from_chars_result{ at, std::errc::invalid_argument };
        if (fault == std::errc() && (behind == end || NyWhiteSpace::is(*behind))) {
            values.push_back(value);
            at = behind;
            continue;
        }
        std::string_view const rest(at, static_cast<std::size_t>(end - at));
        std::string_view const word = rest.substr(0, NyWhiteSpace::findWhite(rest));
        values.push_back(toDouble(word));
        at += word.size();
    }
}

void NyXmlText::extract(std::string_view text, short& value) noexcept
{
    Integer const integer = integerIn(text);
    if (!integer.isThere)
        return;
    unsigned long long const last = integer.isNegative ? -static_cast<long long>(SHRT_MIN) : SHRT_MAX;
    auto const magnitude = static_cast<int>(integer.magnitude > last ? last : integer.magnitude);
    value = static_cast<short>(integer.isNegative ? -magnitude : magnitude);
}

void NyXmlText::extract(std::string_view text, unsigned short& value) noexcept { extractUnsigned(text, value); }

void NyXmlText::extract(std::string_view text, unsigned int& value) noexcept { extractUnsigned(text, value); }

void NyXmlText::extract(std::string_view text, bool& value) noexcept
{
    Integer const integer = integerIn(text);
    if (integer.isThere)
        value = integer.magnitude != 0; // -1 and 2 fail to extract, and leave true
}

void NyXmlText::extract(std::string_view text, char& value) noexcept
{
    std::string_view const character = withoutLeadingSpace(text);
    if (!character.empty())
        value = character.front();
}

unsigned char NyXmlText::toUnsignedChar(std::string_view text) noexcept
{
    unsigned short wide = 0;
    extract(text, wide);
    return static_cast<unsigned char>(wide);
}

void NyXmlText::give(NyXmlWriter& writer, char const& value) { writer << value; }
void NyXmlText::give(NyXmlWriter& writer, unsigned char const& value) { writer << value; }
void NyXmlText::give(NyXmlWriter& writer, short const& value) { writer << value; }
void NyXmlText::give(NyXmlWriter& writer, unsigned short const& value) { writer << value; }
void NyXmlText::give(NyXmlWriter& writer, int const& value) { writer << value; }
void NyXmlText::give(NyXmlWriter& writer, unsigned int const& value) { writer << value; }
void NyXmlText::give(NyXmlWriter& writer, double const& value) { writer << value; }
void NyXmlText::give(NyXmlWriter& writer, bool const& value) { writer << value; }
void NyXmlText::give(NyXmlWriter& writer, std::string const& value) { writer << value; }
void NyXmlText::give(NyXmlWriter& writer, NyAngle const& value) { writer << value; }
void NyXmlText::give(NyXmlWriter& writer, NyNonNegReal const& value) { writer << value; }

void NyXmlText::giveText(NyXmlWriter& writer, std::type_info const& type, std::string const& text)
{
    writer.type(type);
    writer.data(text);
}
