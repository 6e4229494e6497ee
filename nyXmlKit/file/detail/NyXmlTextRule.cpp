#include <nyXmlKit/file/detail/NyXmlTextRule.h>

#include <nyXml/platform/NyAngle.h>
#include <nyXml/platform/NyNonNegReal.h>
#include <nyXml/schema/NyXmlSchema.h>
#include <nyXml/values/NyXmlBasicType.h>
#include <nyXml/values/NyXmlEnumType.h>
#include <nyXml/writer/NyXmlWriter.h>
#include <nyXmlKit/model/NyXmlMemberKind.h>
#include <nyXmlKit/model/detail/NyXmlFromChars.h>

#include <algorithm>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <locale.h>
#include <sstream>
#include <system_error>
#include <utility>

namespace {

/// Remembers the type that a value describes itself with, and the words of an enumeration.
class TypeListener : public NyXmlSchema {
public:
    void setType(std::type_info const& info) override { m_type = &info; }
    void describingWords(std::vector<std::string> const& words) override { m_words = words; }
    std::type_info const* type() const { return m_type; }
    std::vector<std::string>& words() { return m_words; }

private:
    std::type_info const* m_type = nullptr;
    std::vector<std::string> m_words;
};

/// Remembers what a value writes.
class TextListener : public NyXmlWriter {
public:
    explicit TextListener(std::ostream& stream) : NyXmlWriter(std::string(), stream) {}
    void type(std::type_info const&) override {}
    void data(std::string const& text) override { m_text = text; }
    std::string const& text() const { return m_text; }

private:
    std::string m_text;
};

std::string_view stripped(std::string_view text)
{
    constexpr char const* white = " \t\n\v\f\r";
    std::size_t const first = text.find_first_not_of(white);
    return first == std::string_view::npos ? std::string_view() : text.substr(first, text.find_last_not_of(white) + 1 - first);
}

bool isDigit(char c) { return static_cast<unsigned char>(c - '0') < 10; }

/// Whether the next eight bytes are digits.
bool areDigits(char const* eight)
{
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, eight, sizeof bytes);
    constexpr std::uint64_t high = 0xF0F0F0F0F0F0F0F0, zeros = 0x3030303030303030, six = 0x0606060606060606;
    return (bytes & high) == zeros && ((bytes + six) & high) == zeros;
}

/// Hot: once for each number of a strict reading, benchmarks/File.cpp, and nearly all are written so. Where a real ends that is written as one
/// writes it, `-12.5e3`, too short to be too large for its type. Null if there is none; isReal() asks a conversion, which takes three
/// times as long.
char const* endOfEverydayReal(char const* at, char const* end, bool isFloat)
{
    auto const skipDigits = [&at, end] {
        char const* const start = at;
        while (end - at >= 8 && areDigits(at))
            at += 8;
        while (at != end && isDigit(*at))
            ++at;
        return at - start;
    };
    at += at != end && *at == '-' ? 1 : 0;
    std::ptrdiff_t places = skipDigits();
    std::ptrdiff_t decimals = 0;
    if (at != end && *at == '.') {
        ++at;
        decimals = skipDigits();
    }
    if (places + decimals == 0)
        return nullptr;
    if (at != end && (*at == 'e' || *at == 'E')) {
        ++at;
        bool const isNegative = at != end && *at == '-';
        at += at != end && (*at == '-' || *at == '+') ? 1 : 0;
        int exponent = 0;
        char const* const digits = at;
        for (; at != end && isDigit(*at) && at - digits < 4; ++at)
            exponent = 10 * exponent + (*at - '0');
        if (at == digits)
            return nullptr;
        places += isNegative ? 0 : exponent;
    }
    return places < (isFloat ? 38 : 308) ? at : nullptr;
}

bool isEverydayReal(std::string_view text, bool isFloat)
{
    char const* const end = text.data() + text.size();
    return !text.empty() && endOfEverydayReal(text.data(), end, isFloat) == end; // an empty text may lie at null, too
}

/// The same for a whole number of at most nine digits.
bool isEverydayWhole(std::string_view text, long long least, unsigned long long most)
{
    bool const isNegative = !text.empty() && text.front() == '-';
    text.remove_prefix(isNegative ? 1 : 0);
    unsigned int magnitude = 0;
    for (char const c : text) {
        if (!isDigit(c))
            return false;
        magnitude = 10 * magnitude + static_cast<unsigned int>(c - '0');
        if (magnitude > 99'999'999)
            return false; // another digit might be too much
    }
    return !text.empty() && (isNegative ? magnitude <= 0ull - static_cast<unsigned long long>(least) : magnitude <= most);
}

/// Whether the whole text is a number within bounds, of which the lower one is not positive.
bool isWhole(std::string_view text, long long least, unsigned long long most)
{
    bool const isNegative = !text.empty() && text.front() == '-';
    if (!text.empty() && (text.front() == '-' || text.front() == '+'))
        text.remove_prefix(1);
    unsigned long long magnitude = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), magnitude);
    if (text.empty() || error != std::errc() || end != text.data() + text.size())
        return false;
    return isNegative ? magnitude <= 0ull - static_cast<unsigned long long>(least) : magnitude <= most;
}

/// Whether the whole text is a real, and one that the type can hold.
bool isReal(std::string_view text, bool isFloat, double& value)
{
    char const* const end = text.data() + text.size();
    auto const result = realFromChars(text.data(), end, value, std::chars_format::general);
    if (result.ec != std::errc() || result.ptr != end) { // a sign in front, hexadecimal, too small or too large
        static locale_t const classic = newlocale(LC_ALL_MASK, "C", nullptr);
        std::string const copy(text);
        char* last = nullptr;
        value = strtod_l(copy.c_str(), &last, classic);
        if (copy.empty() || last != copy.c_str() + copy.size())
            return false;
    }
    bool const isSpelt = text.find_first_of("iI") != std::string_view::npos; // inf
    return isSpelt || !std::isinf(isFloat ? static_cast<double>(static_cast<float>(value)) : value);
}

/// Whether an enumeration of this T has the word, by a way of its own perhaps.
template <class T>
bool finds(NyBaseXmlBasicType& value, std::string const& word)
{
    auto* const words = dynamic_cast<NyXmlEnumType<T>*>(&value);
    T found{};
    return words != nullptr && words->findEnumString(word, found);
}

bool findsWord(NyBaseXmlBasicType& value, std::string const& word)
{
    return finds<unsigned char>(value, word) || finds<short>(value, word) || finds<unsigned short>(value, word) ||
           finds<int>(value, word) || finds<unsigned int>(value, word) || finds<bool>(value, word) ||
           finds<NyNonNegReal>(value, word);
}

} // namespace

NyXmlTextRule::NyXmlTextRule(std::type_info const& type)
{
    struct Row {
        std::type_info const& type;
        long long least;
        unsigned long long most;
    };
    static Row const rows[] = {
        { typeid(bool), 0, 1 },
        { typeid(signed char), SCHAR_MIN, SCHAR_MAX },
        { typeid(unsigned char), 0, UCHAR_MAX },
        { typeid(short), SHRT_MIN, SHRT_MAX },
        { typeid(unsigned short), 0, USHRT_MAX },
        { typeid(int), INT_MIN, INT_MAX },
        { typeid(unsigned int), 0, UINT_MAX },
        { typeid(long), LONG_MIN, LONG_MAX },
        { typeid(unsigned long), 0, ULONG_MAX },
        { typeid(long long), LLONG_MIN, LLONG_MAX },
        { typeid(unsigned long long), 0, ULLONG_MAX },
    };
    for (Row const& row : rows)
        if (row.type == type) {
            m_theKind = Kind::WHOLE;
            m_theLeast = row.least;
            m_theMost = row.most;
        }
    m_isFloat = type == typeid(float);
    if (type == typeid(char))
        m_theKind = Kind::CHARACTER;
    else if (m_isFloat || type == typeid(double) || type == typeid(NyAngle))
        m_theKind = Kind::REAL;
    else if (type == typeid(NyNonNegReal))
        m_theKind = Kind::REAL_FROM_0;
}

NyXmlTextRule::NyXmlTextRule(NyBaseXmlBasicType& value)
{
    if (!value.xmlInitialized())
        value.xmlInit();
    if (dynamic_cast<NyXmlMemberKind const*>(&value) == nullptr) { // those say themselves what does not fit
        TypeListener listener;
        value.writeSchema(listener);
        if (listener.type() != nullptr)
            *this = NyXmlTextRule(*listener.type());
        m_theWords = std::move(listener.words());
        if (!m_theWords.empty()) // an enumeration without words takes any: its owner fills it where we do not see it
            m_theKind = Kind::WORDS;
    }
    m_theValue = &value;
}

bool NyXmlTextRule::fits(std::string_view text) const
{
    return m_theKind == Kind::ANY || matches(text) || (m_doesEmptyFit && text.empty()) || isWrittenBack(text);
}

bool NyXmlTextRule::matches(std::string_view text) const
{
    double value = 0;
    switch (m_theKind) {
    case Kind::ANY: return true;
    case Kind::CHARACTER: return stripped(text).size() == 1;
    case Kind::WHOLE: return isEverydayWhole(text, m_theLeast, m_theMost) || isWhole(stripped(text), m_theLeast, m_theMost);
    case Kind::REAL: return isEverydayReal(text, m_isFloat) || isReal(stripped(text), m_isFloat, value);
    case Kind::REAL_FROM_0:
        return (isEverydayReal(text, false) && text.front() != '-') || (isReal(stripped(text), false, value) && value >= 0);
    case Kind::WORDS:
        return std::find(m_theWords.begin(), m_theWords.end(), text) != m_theWords.end() ||
               findsWord(*m_theValue, std::string(text));
    }
    return true;
}

// A class of an application that reads other texts than its base does writes them, too.
bool NyXmlTextRule::isWrittenBack(std::string_view text) const
{
    if (m_theValue == nullptr || m_theKind == Kind::WORDS)
        return false;
    m_theValue->setValueFromString(std::string(text));
    std::ostringstream nowhere;
    TextListener listener(nowhere);
    m_theValue->write(listener);
    return listener.text() == text;
}

// Hot: what a number costs beyond its reading. Nobody looks for the end of a word first.
std::size_t NyXmlTextRule::passEveryday(std::string_view& words, std::array<bool, 256> const& white) const
{
    std::size_t passed = 0;
    char const* const last = words.data() + words.size();
    auto const isWhite = [&white](char c) { return white[static_cast<unsigned char>(c)]; };
    while (m_theKind == Kind::REAL) {
        char const* const end = endOfEverydayReal(std::find_if_not(words.data(), last, isWhite), last, m_isFloat);
        if (end == nullptr || (end != last && !isWhite(*end)))
            break;
        words.remove_prefix(static_cast<std::size_t>(end - words.data()));
        ++passed;
    }
    return passed;
}

std::string NyXmlTextRule::valueOf(std::string_view text) const
{
    double real = 0;
    std::string_view number = stripped(text);
    switch (m_theKind) {
    case Kind::ANY:
    case Kind::WORDS: break;
    case Kind::CHARACTER: return std::string(number);
    case Kind::REAL:
    case Kind::REAL_FROM_0:
        if (!isReal(number, m_isFloat, real))
            break;
        real = m_isFloat ? static_cast<double>(static_cast<float>(real)) : real;
        return std::to_string(std::hash<double>()(real)) + (std::signbit(real) ? "-" : "") + std::to_string(real);
    case Kind::WHOLE: {
        bool const isNegative = !number.empty() && number.front() == '-';
        std::size_t const digits = number.find_first_not_of("+-0");
        return digits == std::string_view::npos ? "0" : (isNegative ? "-" : "") + std::string(number.substr(digits));
    }
    }
    return std::string(text);
}

std::string NyXmlTextRule::wanted() const
{
    switch (m_theKind) {
    case Kind::ANY: return "any text";
    case Kind::WORDS: return "one of the words";
    case Kind::CHARACTER: return "one character";
    case Kind::WHOLE: return "a whole number from " + std::to_string(m_theLeast) + " to " + std::to_string(m_theMost);
    case Kind::REAL: return "a number";
    case Kind::REAL_FROM_0: return "a number from 0";
    }
    return std::string();
}
