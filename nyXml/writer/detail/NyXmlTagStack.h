// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_WRITER_DETAIL_NYXMLTAGSTACK_H
#define NYXML_WRITER_DETAIL_NYXMLTAGSTACK_H

#include <nyXml/core/detail/NyShortText.h>
#include <nyXml/writer/detail/NyXmlBytes.h>

#include <cstddef>
#include <cstring>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// The open elements of a document that is being written, innermost at the back, and the namespace prefixes in force at that element.
///
/// Part of NyXmlWriter. What an element declares reaches its descendants and ends with it. Declarations of all open elements share
/// one map, since no prefix is ever declared twice on the way from the root. An element in its parent's namespace, as most are, copies
/// nothing but its tag. Records of closed elements stay for the next ones, so that their strings are allocated once.
class NyXmlTagStack {
public:
    bool empty() const noexcept { return m_Depth == 0; }
    /// Number of open elements.
    unsigned int depth() const noexcept { return static_cast<unsigned int>(m_Depth); }

    // Of the innermost open element; there must be one. Valid until the next push.

    /// "name" or "prefix:name".
    std::string_view tag() const noexcept { return m_Tags.view().substr(back().tagAt); }
    /// The tag as a token has it, that is without what stands before a `#`.
    std::string_view name() const noexcept { return m_Tags.view().substr(back().nameAt); }
    std::string const& ownNamespace() const noexcept { return m_Records[back().source].ownNamespace; }

    /// Whether the namespace holds a "#", so that a text with it in front names something else.
    bool ownNamespaceSplits() const noexcept { return m_Records[back().source].splits; }

    /// Opens an element that declares nothing yet.
    void push(std::string const& xmlNamespace, std::string_view prefix, bool isPrefixed, std::string_view localName)
    {
        Record& record = open(localName.size() + prefix.size() + 1);
        record.ownNamespace = xmlNamespace;
        record.splits = xmlNamespace.find('#') != std::string::npos;
        record.prefix = prefix;
        record.isPrefixed = isPrefixed;
        record.source = m_Depth;
        name(record, record, localName);
    }

    /// Opens one in the namespace of the innermost element, which there must be.
    void pushIntoOwnNamespace(std::string_view localName)
    {
        std::size_t const source = back().source;
        Record& record = open(localName.size() + m_Records[source].prefix.size() + 1);
        record.source = source;
        name(record, m_Records[source], localName);
    }

    /// Closes the innermost element and takes back what it declared. Does nothing if none is open.
    void pop()
    {
        if (empty())
            return;
        if (back().declares)
            m_Prefixes.erase(back().prefix);
        m_Tags.truncate(back().tagAt);
        --m_Depth;
    }

    bool isDeclared(std::string_view prefix) const { return m_Prefixes.find(prefix) != m_Prefixes.end(); }

    /// Declares a prefix on the innermost element, once for each element at most. \return false if it is in force already, for
    /// whatever namespace: the prefix alone is compared
    bool declare(std::string_view prefix, std::string const& xmlNamespace)
    {
        if (!m_Prefixes.emplace(prefix, xmlNamespace).second)
            return false;
        m_Records[m_Depth - 1].declares = true;
        return true;
    }

private:
    struct Record {
        std::size_t tagAt = 0;  ///< in the tags of all
        std::size_t nameAt = 0; ///< there, too
        std::size_t source = 0; ///< the record that holds namespace and prefix: our own, or that of an element around us
        bool declares = false;
        bool isPrefixed = false; ///< by an empty one perhaps
        bool splits = false;
        std::string ownNamespace;
        std::string prefix;
    };

    Record const& back() const noexcept { return m_Records[m_Depth - 1]; }

    /// The next record, with room for its tag: what follows throws nothing.
    Record& open(std::size_t tagSize)
    {
        if (m_Depth == m_Records.size())
            m_Records.emplace_back();
        m_Tags.room(tagSize);
        return m_Records[m_Depth];
    }

    void name(Record& record, Record const& source, std::string_view localName) noexcept
    {
        record.declares = false;
        record.tagAt = record.nameAt = m_Tags.size();
        char* at = m_Tags.room(0);
        if (source.isPrefixed) {
            at = NyXmlBytes::put(at, source.prefix);
            *at++ = ':';
        }
        m_Tags.endAt(NyXmlBytes::put(at, localName));
        ++m_Depth;
        if (void const* const hash = std::memchr(tag().data(), '#', tag().size()))
            record.nameAt = static_cast<std::size_t>(static_cast<char const*>(hash) - m_Tags.view().data()) + 1;
    }

    std::vector<Record> m_Records; ///< the first m_Depth are open, the others are spare
    std::size_t m_Depth = 0;
    NyXmlBytes m_Tags; ///< of the open elements, one behind the other
    std::map<std::string, std::string, std::less<>>
        m_Prefixes; ///< prefix to namespace; the default namespace has the empty prefix
};

#endif
