// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_WRITER_DETAIL_NYXMLTAGSTACK_H
#define NYXML_WRITER_DETAIL_NYXMLTAGSTACK_H

#include <nyXml/core/NyToken.h>

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// The open elements of a document that is being written, innermost at the back, and the namespace prefixes in force at that element.
///
/// Part of NyXmlWriter. What an element declares reaches its descendants and ends with it. Declarations of all open elements share
/// one map, since no prefix is ever declared twice on the way from the root: nothing is copied for a child, and only one whose
/// namespace is not its parent's costs a look-up. Records of closed elements stay for the next ones, so that their strings are
/// allocated once.
class NyXmlTagStack {
public:
    struct Record {
        NyToken token;            ///< the tag as written, "name" or "prefix:name"; without a namespace
        std::string ownNamespace; ///< the enclosing element's is in the record below
        std::string prefix;       ///< what this element declared; of no meaning if it declares nothing
        bool declares = false;
    };

    bool empty() const noexcept { return m_Depth == 0; }
    /// Number of open elements.
    unsigned int depth() const noexcept { return static_cast<unsigned int>(m_Depth); }

    /// The innermost open element; there must be one. Valid until the next push.
    Record& back() noexcept { return m_Records[m_Depth - 1]; }
    Record const& back() const noexcept { return m_Records[m_Depth - 1]; }

    /// Lets the next push leave all records where they are, so that it may take its strings from one of them.
    void makeRoom()
    {
        if (m_Depth == m_Records.size())
            m_Records.emplace_back();
    }

    /// Opens an element that declares nothing yet.
    void push(std::string const& tag, std::string const& xmlNamespace)
    {
        makeRoom();
        Record& record = m_Records[m_Depth++];
        record.token = tag;
        record.ownNamespace = xmlNamespace;
        record.declares = false;
    }

    /// Closes the innermost element and takes back what it declared. Does nothing if none is open.
    void pop()
    {
        if (empty())
            return;
        if (back().declares)
            m_Prefixes.erase(back().prefix);
        --m_Depth;
    }

    bool isDeclared(std::string_view prefix) const { return m_Prefixes.find(prefix) != m_Prefixes.end(); }

    /// Declares a prefix on the innermost element, once for each element at most. \return false if it is in force already, for
    /// whatever namespace: the prefix alone is compared
    bool declare(std::string_view prefix, std::string const& xmlNamespace)
    {
        if (!m_Prefixes.emplace(prefix, xmlNamespace).second)
            return false;
        back().prefix = prefix;
        back().declares = true;
        return true;
    }

private:
    std::vector<Record> m_Records; ///< the first m_Depth are open, the others are spare
    std::size_t m_Depth = 0;
    std::map<std::string, std::string, std::less<>>
        m_Prefixes; ///< prefix to namespace; the default namespace has the empty prefix
};

#endif
