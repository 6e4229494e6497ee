// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_CORE_DETAIL_NYWHITESPACE_H
#define NYXML_CORE_DETAIL_NYWHITESPACE_H

#include <array>
#include <cstddef>
#include <string_view>

/// White space as the document format has it: space, tab, newline and carriage return, whatever the locale says.
namespace NyWhiteSpace {

inline constexpr std::string_view characters = " \t\n\r";

namespace detail {
constexpr std::array<bool, 256> makeTable()
{
    std::array<bool, 256> table{};
    for (char c : characters)
        table[static_cast<unsigned char>(c)] = true;
    return table;
}
inline constexpr std::array<bool, 256> table = makeTable();
} // namespace detail

constexpr bool is(char c) noexcept { return detail::table[static_cast<unsigned char>(c)]; }

/// Offset of the first white byte from \p from on, text.size() if there is none.
constexpr std::size_t findWhite(std::string_view text, std::size_t from = 0) noexcept
{
    while (from < text.size() && !is(text[from]))
        ++from;
    return from;
}

/// Offset of the first byte that is not white from \p from on, text.size() if there is none.
constexpr std::size_t findBlack(std::string_view text, std::size_t from = 0) noexcept
{
    while (from < text.size() && is(text[from]))
        ++from;
    return from;
}

/// True if the text holds nothing but white space; the empty text counts as white.
constexpr bool isAll(std::string_view text) noexcept { return findBlack(text) == text.size(); }

/// The text without the white space at its bounds; empty for a white text.
constexpr std::string_view trimmed(std::string_view text) noexcept
{
    text.remove_prefix(findBlack(text));
    while (!text.empty() && is(text.back()))
        text.remove_suffix(1);
    return text;
}

} // namespace NyWhiteSpace

#endif
