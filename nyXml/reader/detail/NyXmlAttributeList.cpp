// The attributes of one tag. As a rule they come in order, so that nothing is to be sorted; if not, all are sorted at once when somebody
// looks, so that a tag of a hundred thousand attributes costs no more than that.

#include <nyXml/reader/detail/NyXmlAttributeList.h>

#include <algorithm>

namespace {

constexpr std::size_t few = 16; // up to here a walk through all is faster than anything clever

} // namespace

void NyXmlAttributeList::addCopy(NyToken const& name, std::string_view value)
{
    Slot& own = slot();
    own.m_token = name;
    own.m_value.assign(value);
    add(own.m_token.localName(), own.m_value, &own.m_token);
    m_entries.back().m_slot = &own;
    m_entries.back().m_isOwned = true;
}

void NyXmlAttributeList::sort() const
{
    auto const isBefore = [](Entry const& a, Entry const& b) { return compare(a.m_name, b.m_name) < 0; };
    if (m_entries.size() > few)
        std::stable_sort(m_entries.begin(), m_entries.end(), isBefore);
    else // without the memory that stable_sort() takes
        for (auto next = m_entries.begin(); next != m_entries.end(); ++next)
            std::rotate(std::upper_bound(m_entries.begin(), next, *next, isBefore), next, next + 1);
    auto const sameName = [](Entry const& a, Entry const& b) { return a.m_name == b.m_name; };
    auto const repeated = std::adjacent_find(m_entries.begin(), m_entries.end(), sameName);
    if (repeated != m_entries.end()) {
        m_isAnyRepeated = true;
        m_repeated.assign(repeated->m_name);
        m_entries.erase(std::unique(repeated, m_entries.end(), sameName), m_entries.end());
    }
    m_remaining = m_entries.size(); // whoever adds attributes has taken none yet
    m_isSorted = true;
}

NyXmlAttributeList::Entry* NyXmlAttributeList::place(std::string_view localName) const
{
    settle();
    auto found = m_entries.begin();
    if (m_entries.size() <= few)
        while (found != m_entries.end() && found->m_name != localName)
            ++found;
    else
        found = std::lower_bound(found, m_entries.end(), localName,
                                 [](Entry const& entry, std::string_view name) { return entry.m_name < name; });
    return found != m_entries.end() && found->m_name == localName && !found->m_isTaken ? &*found : nullptr;
}

NyToken const& NyXmlAttributeList::makeToken(Entry& entry) const
{
    NyToken& token = slotOf(entry).m_token;
    token = NyToken(std::string(), std::string(entry.m_name));
    entry.m_token = &token;
    return token;
}

NyToken const* NyXmlAttributeList::find(std::string const& localName) const
{
    Entry* const entry = place(localName);
    return entry != nullptr ? &tokenOf(*entry) : nullptr;
}

bool NyXmlAttributeList::take(std::string const& localName, std::string_view& value)
{
    Entry* const entry = place(localName);
    return entry != nullptr && takeOut(*entry, value);
}

NyXmlAttributeList::Slot& NyXmlAttributeList::slot() const
{
    if (m_slotsUsed == m_slots.size())
        m_slots.emplace_back();
    return m_slots[m_slotsUsed++];
}

NyXmlAttributeList::Slot& NyXmlAttributeList::slotOf(Entry& entry) const
{
    if (entry.m_slot == nullptr)
        entry.m_slot = &slot();
    return *entry.m_slot;
}

void NyXmlAttributeList::keep(Entry& entry) const
{
    Slot& own = slotOf(entry);
    own.m_name.assign(entry.m_name);
    own.m_value.assign(entry.m_value);
    entry.m_name = own.m_name;
    entry.m_value = own.m_value;
    entry.m_isOwned = true;
}

void NyXmlAttributeList::own()
{
    if (remaining() == 0)
        return clear();
    for (Entry& entry : m_entries)
        if (!entry.m_isOwned)
            keep(entry);
}

NyXmlAttributeList& NyXmlAttributeList::operator=(NyXmlAttributeList const& other)
{
    if (this == &other)
        return *this;
    clear();
    m_entries = other.m_entries;
    m_remaining = other.m_remaining;
    m_first = other.m_first;
    m_isSorted = other.m_isSorted;
    m_isAnyRepeated = other.m_isAnyRepeated;
    m_repeated = other.m_repeated;
    for (Entry& entry : m_entries) {
        entry.m_slot = nullptr;
        keep(entry);
        if (entry.m_token != nullptr) // the other's tokens do not outlive the other
            entry.m_token = &(entry.m_slot->m_token = *entry.m_token);
    }
    return *this;
}
