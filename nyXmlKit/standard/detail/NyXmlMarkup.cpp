#include <nyXmlKit/standard/detail/NyXmlMarkup.h>

#include <array>
#include <cstdint>

namespace {

/// What a byte asks of those who write it.
enum class Byte : char {
    PLAIN,
    SPECIAL, ///< `&`, `<`, `>`, `"`, tab, line feed, carriage return: it depends on the place
    CONTROL, ///< no character of XML
    LEAD,    ///< begins a sequence of several bytes, or is out of place
};

constexpr auto bytes = [] {
    std::array<Byte, 256> table{};
    for (std::size_t c = 0; c != 256; ++c)
        table[c] = c < 32 ? Byte::CONTROL : c < 128 ? Byte::PLAIN : Byte::LEAD;
    for (char const c : { '&', '<', '>', '"', '\t', '\n', '\r' })
        table[static_cast<unsigned char>(c)] = Byte::SPECIAL;
    return table;
}();

Byte kindOf(char c) noexcept { return bytes[static_cast<unsigned char>(c)]; }

/// The length of the UTF-8 sequence at the front of the text, 0 if there is none or its character is none of XML.
std::size_t sequenceAt(std::string_view text) noexcept
{
    auto const byte = [text](std::size_t i) { return static_cast<std::uint32_t>(static_cast<unsigned char>(text[i])); };
    std::uint32_t const lead = byte(0);
    std::size_t const size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < size)
        return 0;
    std::uint32_t character = lead & (0x7FU >> size);
    for (std::size_t i = 1; i != size; ++i) {
        if ((byte(i) & 0xC0) != 0x80)
            return 0;
        character = character << 6 | (byte(i) & 0x3F);
    }
    constexpr std::uint32_t least[] = { 0, 0, 0x80, 0x800, 0x10000 };
    bool const isSurrogate = character >= 0xD800 && character < 0xE000;
    bool const isNone = character == 0xFFFE || character == 0xFFFF || character > 0x10FFFF;
    return character < least[size] || isSurrogate || isNone ? 0 : size;
}

/// Appends the text; \p special takes the bytes that depend on the place.
template <class Special>
std::size_t append(std::string& target, std::string_view text, Special special)
{
    std::size_t leftOut = 0;
    std::size_t const size = text.size();
    for (std::size_t at = 0; at != size;) {
        std::size_t end = at;
        while (end != size && kindOf(text[end]) == Byte::PLAIN)
            ++end;
        target.append(text, at, end - at);
        if ((at = end) == size)
            break;
        switch (kindOf(text[at])) {
        case Byte::PLAIN: break;
        case Byte::SPECIAL: special(text[at++]); break;
        case Byte::CONTROL:
            ++leftOut;
            ++at;
            break;
        case Byte::LEAD: {
            std::size_t const count = sequenceAt(text.substr(at));
            target.append(text, at, count);
            leftOut += count == 0 ? 1 : 0;
            at += count == 0 ? 1 : count;
            break;
        }
        }
    }
    return leftOut;
}

bool isLetter(unsigned char c) noexcept { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }

bool isLaterLetter(unsigned char c) noexcept { return isLetter(c) || (c >= '0' && c <= '9') || c == '-' || c == '.'; }

/// The length of the character at the front of the text if a name may have it there, else 0.
std::size_t nameCharacterAt(std::string_view text, bool isFirst) noexcept
{
    auto const c = static_cast<unsigned char>(text[0]);
    if (c < 0x80)
        return isLetter(c) || (!isFirst && isLaterLetter(c)) ? 1 : 0;
    std::size_t const size = sequenceAt(text);
    if (size == 0)
        return 0;
    std::uint32_t character = c & (0x7FU >> size);
    for (std::size_t i = 1; i != size; ++i)
        character = character << 6 | (static_cast<unsigned char>(text[i]) & 0x3FU);
    // Letters that every edition of XML 1.0 has: Latin, Greek, Cyrillic, Hebrew, Arabic, kana, Chinese, Korean.
    struct Range {
        std::uint32_t first, last;
    };
    static constexpr Range ranges[] = {
        { 0xC0, 0xD6 },     { 0xD8, 0xF6 },     { 0xF8, 0x131 },    { 0x134, 0x13E },   { 0x141, 0x148 },
        { 0x14A, 0x17E },   { 0x38E, 0x3A1 },   { 0x3A3, 0x3CE },   { 0x401, 0x40C },   { 0x40E, 0x44F },
        { 0x451, 0x45C },   { 0x45E, 0x481 },   { 0x5D0, 0x5EA },   { 0x621, 0x63A },   { 0x641, 0x64A },
        { 0x3041, 0x3094 }, { 0x30A1, 0x30FA }, { 0x4E00, 0x9FA5 }, { 0xAC00, 0xD7A3 },
    };
    for (Range const& range : ranges)
        if (character >= range.first && character <= range.last)
            return size;
    return 0;
}

} // namespace

std::size_t NyXmlMarkup::findBlack(std::string_view text, std::size_t from) noexcept
{
    while (from < text.size() && isWhite(text[from]))
        ++from;
    return from;
}

std::size_t NyXmlMarkup::findWhite(std::string_view text, std::size_t from) noexcept
{
    while (from < text.size() && !isWhite(text[from]))
        ++from;
    return from;
}

void NyXmlMarkup::appendReference(std::string& target, char c)
{
    target.append("&#").append(std::to_string(static_cast<unsigned char>(c))) += ';';
}

std::size_t NyXmlMarkup::appendText(std::string& target, std::string_view text)
{
    std::size_t const begin = findBlack(text);
    std::size_t end = text.size();
    while (end > begin && isWhite(text[end - 1]))
        --end;
    for (std::size_t i = 0; i != begin; ++i)
        appendReference(target, text[i]);
    std::size_t const leftOut = appendPartOfText(target, text.substr(begin, end - begin));
    for (std::size_t i = end; i != text.size(); ++i)
        appendReference(target, text[i]);
    return leftOut;
}

std::size_t NyXmlMarkup::appendPartOfText(std::string& target, std::string_view text)
{
    return append(target, text, [&target](char c) {
        switch (c) {
        case '&': target += "&amp;"; break;
        case '<': target += "&lt;"; break;
        case '>': target += "&gt;"; break;
        case '\r': appendReference(target, c); break;
        default: target += c;
        }
    });
}

std::size_t NyXmlMarkup::appendValue(std::string& target, std::string_view value)
{
    return append(target, value, [&target](char c) {
        switch (c) {
        case '&': target += "&amp;"; break;
        case '<': target += "&lt;"; break;
        case '>': target += "&gt;"; break; // readers of the core's dialect end a tag there
        case '"': target += "&quot;"; break;
        default: appendReference(target, c);
        }
    });
}

std::size_t NyXmlMarkup::appendMarkup(std::string& target, std::string_view markup)
{
    return append(target, markup, [&target](char c) { target += c; });
}

bool NyXmlMarkup::isName(std::string_view text) noexcept
{
    for (std::size_t at = 0; at != text.size();) {
        std::size_t const count = nameCharacterAt(text.substr(at), at == 0);
        if (count == 0)
            return false;
        at += count;
    }
    return !text.empty();
}

std::string NyXmlMarkup::nameOf(std::string_view text)
{
    std::string name;
    for (std::size_t at = 0; at != text.size();) {
        std::size_t const count = nameCharacterAt(text.substr(at), name.empty());
        if (count == 0) {
            name += '_'; // also in front of what may not begin a name
            at += nameCharacterAt(text.substr(at), false) != 0 && name.size() == 1 ? 0 : 1;
        } else {
            name.append(text, at, count);
            at += count;
        }
    }
    return name.empty() ? "_" : name;
}
