// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_READER_DETAIL_NYXMLNAMETABLE_H
#define NYXML_READER_DETAIL_NYXMLNAMETABLE_H

#include <nyXml/core/NyToken.h>
#include <nyXml/core/detail/NyShortText.h>

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

/// The names that come again and again in a document, as tokens. A part of NyXmlFileReader, of no use to others.
///
/// A document has few names and many tags: a token is made once for each name, and a tag that has it costs a look-up. The table is of
/// fixed size and forgets nothing, so that a token stays where it is as long as the table lives and a document of a million names takes
/// no memory for them: names that find no place are for the caller to keep.
class NyXmlNameTable {
public:
    NyXmlNameTable() = default;
    NyXmlNameTable(NyXmlNameTable const&) = delete; // tokens are referred to by address
    NyXmlNameTable& operator=(NyXmlNameTable const&) = delete;

    /// \return the token of this local name, without a namespace; null if there is no place for it
    NyToken const* token(std::string_view name)
    {
        if (name.empty() || name.size() > longestName)
            return nullptr;
        auto const byte = [name](std::size_t i) { return static_cast<std::size_t>(static_cast<unsigned char>(name[i])); };
        std::size_t const place = name.size() + 5 * byte(0) + 33 * byte(name.size() / 2) + 129 * byte(name.size() - 1);
        for (std::size_t way = 0; way != 2; ++way) {
            std::unique_ptr<NyToken>& entry = m_tokens[(place + way) % places];
            if (!entry) {
                entry = std::make_unique<NyToken>(std::string(), std::string(name));
                ++m_count;
            }
            if (NyShortText::same(entry->localName(), name))
                return entry.get();
        }
        return nullptr;
    }

    /// Whether names of another document would hardly find a place.
    bool isCrowded() const noexcept { return m_count > places / 2; }

private:
    static constexpr std::size_t places = 128;
    static constexpr std::size_t longestName = 64;

    std::array<std::unique_ptr<NyToken>, places> m_tokens;
    std::size_t m_count = 0;
};

#endif
