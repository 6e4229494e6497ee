// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_READER_DETAIL_NYXMLNAMETABLE_H
#define NYXML_READER_DETAIL_NYXMLNAMETABLE_H

#include <nyXml/core/NyToken.h>
#include <nyXml/core/detail/NyShortText.h>
#include <nyXml/reader/detail/NyXmlTagText.h>

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

/// A name of a document as a token, and the names that came behind it the last time: documents repeat themselves, so that comparing
/// with those is as a rule all that it takes to know what stands there.
struct NyXmlName {
    NyXmlName() : NyXmlName(std::string_view()) {}
    explicit NyXmlName(std::string_view name)
        : token(std::string(), std::string(name)),
          pattern(token.localName()),
          attributeStart(' ' + token.localName() + "=\""),
          attributePattern(attributeStart)
    {}
    NyXmlName(NyXmlName const&) = delete; // the patterns look at the texts
    NyXmlName& operator=(NyXmlName const&) = delete;

    NyToken const token; ///< without a namespace
    NyShortText::Pattern const pattern;
    std::string const attributeStart; ///< ` name="`: how nearly all writers put an attribute of this name in front of its value
    NyShortText::Pattern const attributePattern;
    /// What came behind the start tag of this name, by the event that was the last before it: its first child, its next sibling, what
    /// stands behind the element around it. Null if nothing is known.
    std::array<NyXmlName*, 6> elements{};
    NyXmlName* attribute = nullptr; ///< the first of the element, or the one behind the attribute, of this name
};

/// The names that come again and again in a document, as tokens. A part of NyXmlFileReader, of no use to others.
///
/// A document has few names and many tags: a token is made once for each name, and a tag that has it costs a look-up. The table is of
/// fixed size and forgets nothing, so that a token stays where it is as long as the table lives and a document of a million names takes
/// no memory for them: names that find no place are for the caller to keep.
class NyXmlNameTable {
public:
    NyXmlNameTable() = default;
    NyXmlNameTable(NyXmlNameTable const&) = delete; // names are referred to by address
    NyXmlNameTable& operator=(NyXmlNameTable const&) = delete;

    /// Takes the name that stands at a place in a reader's block. Hot: once for each tag and each attribute.
    /// \param expected  is compared first, and becomes what was found; may be null
    /// \return null if there is no place for it
    NyXmlName* take(char const*& at, NyXmlName*& expected, NyXmlTagText::Table const& ends)
    {
        NyXmlName* const guess = expected;
        if (guess != nullptr && guess->pattern.isAt(at) && ends[static_cast<unsigned char>(at[guess->pattern.size()])]) {
            at += guess->pattern.size();
            return guess;
        }
        char const* const start = std::exchange(at, NyXmlTagText::skipTo(ends, at));
        NyXmlName* const found = find({ start, static_cast<std::size_t>(at - start) });
        return found != nullptr ? expected = found : nullptr;
    }

    /// \return the name; null if there is no place for it
    NyXmlName* find(std::string_view name)
    {
        if (name.empty() || name.size() > longestName)
            return nullptr;
        auto const byte = [name](std::size_t i) { return static_cast<std::size_t>(static_cast<unsigned char>(name[i])); };
        std::size_t const hash = name.size() + 5 * byte(0) + 33 * byte(name.size() / 2) + 129 * byte(name.size() - 1);
        for (std::size_t way = 0; way != 2; ++way) {
            std::unique_ptr<NyXmlName>& entry = m_names[(hash + way) % places];
            if (!entry) {
                entry = std::make_unique<NyXmlName>(name);
                ++m_count;
            }
            if (NyShortText::same(entry->token.localName(), name))
                return entry.get();
        }
        return nullptr;
    }

    /// The same as a token, null if there is no place.
    NyToken const* token(std::string_view name)
    {
        NyXmlName const* const found = find(name);
        return found != nullptr ? &found->token : nullptr;
    }

    /// Stands for what comes before a document's first name, and for names without a place.
    NyXmlName& noName() noexcept { return m_noName; }

    /// Whether names of another document would hardly find a place.
    bool isCrowded() const noexcept { return m_count > places / 2; }

private:
    static constexpr std::size_t places = 256;
    static constexpr std::size_t longestName = 64;

    std::array<std::unique_ptr<NyXmlName>, places> m_names;
    NyXmlName m_noName;
    std::size_t m_count = 0;
};

#endif
