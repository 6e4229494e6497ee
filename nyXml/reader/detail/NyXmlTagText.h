// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_READER_DETAIL_NYXMLTAGTEXT_H
#define NYXML_READER_DETAIL_NYXMLTAGTEXT_H

#include <nyXml/core/detail/NyWhiteSpace.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <string_view>

/// Looking at a tag where it stands: where its name ends, and its attributes. Nothing is copied, and nothing but the text is known here.
namespace NyXmlTagText {

using Table = std::array<bool, 256>;

constexpr Table tableOf(std::string_view characters)
{
    Table table{};
    for (char c : characters)
        table[static_cast<unsigned char>(c)] = true;
    return table;
}
inline constexpr Table endsBareName = tableOf({ "\0 \t\n\r#:/>!?", 11 }); // the zero byte is the one behind the block
inline constexpr Table endsNameOfTag = tableOf(" \t\n\r/>");              // and not in an odd way
inline constexpr Table endsBareAttributeName = tableOf({ "\0 \t\n\r=:/>#'\"", 11 });
inline constexpr Table endsPlainValue = tableOf({ "\0'\"#>", 5 }); // a `>` ends the tag, a `#` splits the value
inline constexpr Table endsElementName = tableOf(" \t\n\r#:");
inline constexpr Table endsLocalElementName = tableOf(" \t\n\r#");
inline constexpr Table endsAttributeName = tableOf(" \t\n\r=:");
inline constexpr Table endsLocalAttributeName = tableOf(" \t\n\r=");

/// Four at a time take two thirds of the instructions.
inline char const* skipTo(Table const& table, char const* at) noexcept
{
    auto const isHere = [&table](char c) { return table[static_cast<unsigned char>(c)]; };
    for (;; at += 4) {
        if (isHere(at[0]))
            return at;
        if (isHere(at[1]))
            return at + 1;
        if (isHere(at[2]))
            return at + 2;
        if (isHere(at[3]))
            return at + 3;
    }
}

/// text.size() if there is none.
inline std::size_t findAny(Table const& table, std::string_view text, std::size_t from = 0)
{
    while (from != text.size() && !table[static_cast<unsigned char>(text[from])])
        ++from;
    return from;
}

template <std::size_t N>
bool beginsWith(std::string_view text, char const (&start)[N])
{
    return text.size() >= N - 1 && std::memcmp(text.data(), start, N - 1) == 0;
}

inline std::string_view withoutWhiteEnd(std::string_view text)
{
    while (!text.empty() && static_cast<unsigned char>(text.back()) <= ' ' && NyWhiteSpace::is(text.back()))
        text.remove_suffix(1);
    return text;
}

/// A start tag without the white space at its end, nor that before the slash of an empty one.
inline std::string_view withoutEnd(std::string_view tag)
{
    if (!tag.empty() && tag.back() == '/')
        tag.remove_suffix(1);
    return withoutWhiteEnd(tag);
}

/// A name, less the prefix.
struct Name {
    std::string_view local; ///< empty if there is none, or an odd one
    std::size_t end = 0;    ///< of the name in the text
};

/// The name at the beginning of a start tag. One that a `#` splits counts as odd.
inline Name elementName(std::string_view tag)
{
    std::size_t end = findAny(endsElementName, tag);
    std::size_t const prefix = end < tag.size() && tag[end] == ':' ? end + 1 : 0;
    if (prefix != 0)
        end = findAny(endsLocalElementName, tag, prefix);
    if (end == 0 || (end < tag.size() && tag[end] == '#'))
        return {};
    return { tag.substr(prefix, end - prefix), end };
}

/// One of the attributes `name="value" ...`.
struct Attribute {
    std::string_view name;  ///< with its prefix
    std::string_view local; ///< without
    std::string_view value; ///< as it stands between the quotes
    std::size_t end = 0;    ///< where the next one begins

    /// \return false if the text does not begin with an attribute that is well formed
    bool take(std::string_view text)
    {
        std::size_t nameEnd = findAny(endsAttributeName, text);
        std::size_t const prefix = nameEnd < text.size() && text[nameEnd] == ':' ? nameEnd + 1 : 0;
        if (prefix != 0)
            nameEnd = findAny(endsLocalAttributeName, text, prefix);
        std::size_t const equals = nameEnd < text.size() && text[nameEnd] == '=' ? nameEnd : text.find('=', nameEnd);
        std::size_t const quote = equals != text.npos ? NyWhiteSpace::findBlack(text, equals + 1) : text.size();
        if (nameEnd == 0 || quote >= text.size() || (text[quote] != '"' && text[quote] != '\''))
            return false;
        std::size_t const second = text.find(text[quote], quote + 1);
        if (second == text.npos)
            return false;
        name = text.substr(0, nameEnd);
        local = name.substr(prefix);
        value = text.substr(quote + 1, second - quote - 1);
        end = NyWhiteSpace::findBlack(text, second + 1);
        return true;
    }
};

} // namespace NyXmlTagText

#endif
