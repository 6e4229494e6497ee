// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_READER_DETAIL_NYXMLATTRIBUTELIST_H
#define NYXML_READER_DETAIL_NYXMLATTRIBUTELIST_H

#include <nyXml/core/NyToken.h>
#include <nyXml/platform/NyXmlExport.h>

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The attributes of one tag, ordered by local name, and consumed by being taken. A part of NyXmlFileReader, of no use to others.
///
/// Names and values are looked at where they stand in the reader's block. They become strings of the list's own when the block is about
/// to change (own()), and a name that is no token yet becomes one when somebody asks for it. Tokens and strings serve again for later
/// tags.
///
/// What was taken stays in its place, marked, so that nothing moves and a name handed out stays where it is until the next tag.
class NYXML_EXPORT NyXmlAttributeList {
public:
    NyXmlAttributeList() = default;
    NyXmlAttributeList(NyXmlAttributeList const& other) { *this = other; }
    /// The copy owns all that it holds.
    NyXmlAttributeList& operator=(NyXmlAttributeList const& other);
    ~NyXmlAttributeList() = default;

    /// Whether it is plain to see that none remains.
    bool isSpent() const noexcept { return m_isSorted && m_remaining == 0; }

    /// Whether some tag had so many attributes that what they took is better given back.
    bool isLarge() const noexcept { return m_slots.size() > 64; }

    void swap(NyXmlAttributeList& other) noexcept
    {
        m_entries.swap(other.m_entries);
        m_slots.swap(other.m_slots);
        std::swap(m_slotsUsed, other.m_slotsUsed);
        std::swap(m_remaining, other.m_remaining);
        std::swap(m_first, other.m_first);
        std::swap(m_isSorted, other.m_isSorted);
        std::swap(m_isAnyRepeated, other.m_isAnyRepeated);
        m_repeated.swap(other.m_repeated);
    }

    void clear() noexcept
    {
        m_entries.clear();
        m_remaining = m_first = m_slotsUsed = 0;
        m_isSorted = true;
        m_isAnyRepeated = false;
    }

    /// Adds an attribute whose texts stay where they are until own() or clear(). A name that is there already keeps its first value.
    /// \param token  the name as a token that outlives the tag; null to have one made should somebody ask
    void add(std::string_view name, std::string_view value, NyToken const* token)
    {
        if (!m_entries.empty() && compare(m_entries.back().m_name, name) >= 0)
            m_isSorted = false;
        m_entries.emplace_back(name, value, token);
        ++m_remaining;
    }

    /// The same with a copy of both, for a name that may have a namespace.
    void addCopy(NyToken const& name, std::string_view value);

    /// How many have not been taken.
    std::size_t remaining() const
    {
        settle();
        return m_remaining;
    }

    /// A name that was added more than once, null if there is none.
    std::string const* repeatedName() const
    {
        settle();
        return m_isAnyRepeated ? &m_repeated : nullptr;
    }

    /// The first one's name, null if none remains.
    NyToken const* firstName() const
    {
        settle();
        return m_remaining != 0 ? &tokenOf(m_entries[m_first]) : nullptr;
    }

    /// The stored name that has this local name, null if there is none.
    NyToken const* find(std::string const& localName) const;

    /// Takes the first one, or the one of this name. \return false if there is none; \p value stays
    /// \param value  valid until own() or clear(), or the block changes
    bool takeFirst(std::string_view& value)
    {
        settle();
        return m_remaining != 0 && takeOut(m_entries[m_first], value);
    }
    bool take(std::string const& localName, std::string_view& value);

    /// Makes the texts independent of the block they stand in.
    void own();

private:
    /// What an entry has of its own, if it has to.
    struct Slot {
        NyToken m_token;
        std::string m_name;
        std::string m_value;
    };
    struct Entry {
        Entry(std::string_view name, std::string_view value, NyToken const* token) : m_name(name), m_value(value), m_token(token)
        {}

        std::string_view m_name;
        std::string_view m_value;
        NyToken const* m_token; ///< null as long as nobody asks
        Slot* m_slot = nullptr; ///< null as long as it has nothing of its own
        bool m_isTaken = false;
        bool m_isOwned = false;
    };

    /// Most names differ in their first byte.
    static int compare(std::string_view a, std::string_view b) noexcept
    {
        if (!a.empty() && !b.empty() && a[0] != b[0])
            return static_cast<unsigned char>(a[0]) < static_cast<unsigned char>(b[0]) ? -1 : 1;
        return a.compare(b);
    }

    void settle() const
    {
        if (!m_isSorted)
            sort();
    }
    void sort() const;
    Slot& slot() const;
    Slot& slotOf(Entry& entry) const;
    void keep(Entry& entry) const;

    Entry* place(std::string_view localName) const;
    NyToken const& tokenOf(Entry& entry) const { return entry.m_token != nullptr ? *entry.m_token : makeToken(entry); }
    NyToken const& makeToken(Entry& entry) const;
    bool takeOut(Entry& entry, std::string_view& value)
    {
        value = entry.m_value;
        entry.m_isTaken = true;
        if (--m_remaining != 0)
            while (m_entries[m_first].m_isTaken)
                ++m_first;
        return true;
    }

    mutable std::vector<Entry> m_entries;
    mutable std::deque<Slot> m_slots; ///< a deque: names handed out stay where they are when it grows
    mutable std::size_t m_slotsUsed = 0;
    mutable std::size_t m_remaining = 0;
    mutable std::size_t m_first = 0; ///< of those that are not taken, if any is left
    mutable bool m_isSorted = true;  ///< and without doubles; otherwise sorted at once when somebody looks
    mutable bool m_isAnyRepeated = false;
    mutable std::string m_repeated; ///< good if one is
};

#endif
