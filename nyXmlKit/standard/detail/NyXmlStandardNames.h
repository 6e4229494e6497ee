// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXMLKIT_STANDARD_DETAIL_NYXMLSTANDARDNAMES_H
#define NYXMLKIT_STANDARD_DETAIL_NYXMLSTANDARDNAMES_H

#include <nyXml/core/NyToken.h>

#include <cstddef>
#include <cstring>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

/// A name as it is written in tags, taken apart once.
struct NyXmlStandardName {
    enum class Kind : char {
        ORDINARY,
        DECLARATION, ///< xmlns or xmlns:p: the token is p
        SPACE,       ///< xml:space
    };

    explicit NyXmlStandardName(std::string_view name) : written(name)
    {
        std::size_t const colon = name.find(':');
        std::string local(name);
        if (colon != name.npos) {
            prefix = name.substr(0, colon);
            local.erase(0, colon + 1);
        }
        if (name == "xmlns") {
            kind = Kind::DECLARATION;
            local.clear();
        } else if (prefix == "xmlns") {
            kind = Kind::DECLARATION;
        } else if (name == "xml:space") {
            kind = Kind::SPACE;
        }
        token.assign(local);
        isInclude = local == "NyInclude";
    }

    std::string written;
    std::string prefix;
    NyToken token; ///< the local name
    Kind kind = Kind::ORDINARY;
    bool isInclude = false;
    mutable NyXmlStandardName const* next = nullptr; ///< what followed it last in the document
};

/// All names of a document, each once. (The parser keeps them all, too.)
class NyXmlStandardNames {
public:
    /// Hot: once for each tag and attribute. Documents repeat themselves, so that what followed the last name before is tried first: a
    /// third of a search. \return the name, which stays where it is as long as we live
    NyXmlStandardName const* find(char const* written)
    {
        NyXmlStandardName const* const guess = m_last != nullptr ? m_last->next : nullptr;
        if (guess != nullptr && std::strcmp(guess->written.c_str(), written) == 0)
            return m_last = guess;
        NyXmlStandardName const* const found = search(written);
        if (m_last != nullptr)
            m_last->next = found;
        return m_last = found;
    }

private:
    NyXmlStandardName const* search(char const* written)
    {
        std::string_view const name(written);
        std::size_t const hash = hashOf(name);
        for (std::size_t place = hash;; ++place) {
            NyXmlStandardName const*& entry = m_table[place & (m_table.size() - 1)];
            if (entry == nullptr)
                return enter(entry, name);
            if (entry->written == name)
                return entry;
        }
    }

    static std::size_t hashOf(std::string_view name) noexcept
    {
        std::size_t hash = name.size();
        for (char const c : name)
            hash = hash * 31 + static_cast<unsigned char>(c);
        return hash ^ hash >> 15;
    }

    NyXmlStandardName const* enter(NyXmlStandardName const*& entry, std::string_view name)
    {
        NyXmlStandardName const* const made = entry = &m_names.emplace_back(name);
        if (2 * m_names.size() > m_table.size())
            grow();
        return made;
    }

    void grow()
    {
        std::vector<NyXmlStandardName const*> table(2 * m_table.size());
        for (NyXmlStandardName const& name : m_names) {
            std::size_t place = hashOf(name.written);
            while (table[place & (table.size() - 1)] != nullptr)
                ++place;
            table[place & (table.size() - 1)] = &name;
        }
        m_table.swap(table);
    }

    std::deque<NyXmlStandardName> m_names;
    NyXmlStandardName const* m_last = nullptr;
    std::vector<NyXmlStandardName const*> m_table = std::vector<NyXmlStandardName const*>(256); ///< its size is a power of two
};

#endif
