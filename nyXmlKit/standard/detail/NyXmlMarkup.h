// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXMLKIT_STANDARD_DETAIL_NYXMLMARKUP_H
#define NYXMLKIT_STANDARD_DETAIL_NYXMLMARKUP_H

#include <cstddef>
#include <string>
#include <string_view>

/// Texts as XML writes them.
namespace NyXmlMarkup {

inline constexpr std::string_view white = " \t\n\r";

inline bool isWhite(char c) noexcept { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

/// The place of the first byte from \p from on that is not white, or that is; the text's size if there is none.
std::size_t findBlack(std::string_view text, std::size_t from = 0) noexcept;
std::size_t findWhite(std::string_view text, std::size_t from = 0) noexcept;

/// The text without the white space at its bounds; empty for a white text.
inline std::string_view trimmed(std::string_view text) noexcept
{
    while (!text.empty() && isWhite(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isWhite(text.back()))
        text.remove_suffix(1);
    return text;
}

/// Appends a character reference for a byte: "&#10;".
void appendReference(std::string& target, char c);

// All of these write `&`, `<`, `>` and carriage returns as references, and leave out what no document can hold: control characters,
// U+FFFE, U+FFFF, and bytes that are not UTF-8. They return how many bytes were left out.

/// White space at the ends is written as references, too, since readers take it for layout.
std::size_t appendText(std::string& target, std::string_view text);

/// A part of a text: white space stays.
std::size_t appendPartOfText(std::string& target, std::string_view text);

/// The value of an attribute in double quotes, without them.
std::size_t appendValue(std::string& target, std::string_view value);

/// Markup stays markup.
std::size_t appendMarkup(std::string& target, std::string_view markup);

/// Whether it can be the name of an element or attribute, without a prefix.
bool isName(std::string_view text) noexcept;

/// The nearest text that is a name.
std::string nameOf(std::string_view text);

} // namespace NyXmlMarkup

#endif
