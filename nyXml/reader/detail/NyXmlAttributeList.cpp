// The attributes of one tag. Few are kept sorted as they come; many are sorted when somebody looks, so that a tag of a hundred thousand
// attributes costs no more than sorting them.

#include <nyXml/reader/detail/NyXmlAttributeList.h>

#include <algorithm>

namespace {

constexpr std::size_t few = 16; // up to here a walk through all is faster than anything clever

// Most names differ in their first byte.
int compare(std::string_view a, std::string_view b)
{
    if (!a.empty() && !b.empty() && a[0] != b[0])
        return static_cast<unsigned char>(a[0]) < static_cast<unsigned char>(b[0]) ? -1 : 1;
    return a.compare(b);
}

} // namespace

void NyXmlAttributeList::add(std::string_view name, std::string_view value, NyToken const* token)
{
    insert({ name, value, token, m_slotsUsed++, false, false });
}

void NyXmlAttributeList::addCopy(NyToken const& name, std::string_view value)
{
    Entry entry{ name.localName(), value, nullptr, m_slotsUsed++, false, false };
    Slot& texts = slot(entry.m_slot);
    texts.m_token = name;
    entry.m_token = &texts.m_token;
    keepIn(texts, entry);
    insert(entry);
}

void NyXmlAttributeList::insert(Entry const& entry)
{
    m_first = 0;
    if (m_entries.size() >= few) {
        m_entries.push_back(entry);
        m_isSorted = false;
        return;
    }
    std::size_t index = m_entries.size();
    int order = 1;
    while (index != 0 && (order = compare(entry.m_name, m_entries[index - 1].m_name)) < 0)
        --index;
    if (order == 0)
        return;
    m_entries.push_back(entry);
    std::rotate(m_entries.begin() + static_cast<std::ptrdiff_t>(index), m_entries.end() - 1, m_entries.end());
    ++m_remaining;
}

void NyXmlAttributeList::sort() const
{
    std::stable_sort(m_entries.begin(), m_entries.end(), [](Entry const& a, Entry const& b) { return a.m_name < b.m_name; });
    auto const sameName = [](Entry const& a, Entry const& b) { return a.m_name == b.m_name; };
    m_entries.erase(std::unique(m_entries.begin(), m_entries.end(), sameName), m_entries.end());
    auto const isLeft = [](Entry const& entry) { return !entry.m_isTaken; };
    m_remaining = static_cast<std::size_t>(std::count_if(m_entries.begin(), m_entries.end(), isLeft));
    m_isSorted = true;
}

NyXmlAttributeList::Entry* NyXmlAttributeList::first() const
{
    settle();
    while (m_first != m_entries.size() && m_entries[m_first].m_isTaken)
        ++m_first;
    return m_first != m_entries.size() ? &m_entries[m_first] : nullptr;
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

NyToken const& NyXmlAttributeList::tokenOf(Entry& entry) const
{
    if (entry.m_token == nullptr) {
        NyToken& token = slot(entry.m_slot).m_token;
        token = NyToken(std::string(), std::string(entry.m_name));
        entry.m_token = &token;
    }
    return *entry.m_token;
}

NyToken const* NyXmlAttributeList::firstName() const
{
    Entry* const entry = first();
    return entry != nullptr ? &tokenOf(*entry) : nullptr;
}

NyToken const* NyXmlAttributeList::find(std::string const& localName) const
{
    Entry* const entry = place(localName);
    return entry != nullptr ? &tokenOf(*entry) : nullptr;
}

bool NyXmlAttributeList::takeOut(Entry* entry, std::string_view& value)
{
    if (entry == nullptr)
        return false;
    value = entry->m_value;
    entry->m_isTaken = true;
    --m_remaining;
    return true;
}

bool NyXmlAttributeList::takeFirst(std::string_view& value) { return takeOut(first(), value); }

bool NyXmlAttributeList::take(std::string const& localName, std::string_view& value) { return takeOut(place(localName), value); }

NyXmlAttributeList::Slot& NyXmlAttributeList::slot(std::size_t index) const
{
    while (m_slots.size() <= index)
        m_slots.emplace_back();
    return m_slots[index];
}

void NyXmlAttributeList::keepIn(Slot& slot, Entry& entry) const
{
    slot.m_name.assign(entry.m_name);
    slot.m_value.assign(entry.m_value);
    entry.m_name = slot.m_name;
    entry.m_value = slot.m_value;
    entry.m_isOwned = true;
}

void NyXmlAttributeList::own()
{
    if (remaining() == 0)
        return clear();
    for (Entry& entry : m_entries)
        if (!entry.m_isOwned)
            keepIn(slot(entry.m_slot), entry);
}

NyXmlAttributeList& NyXmlAttributeList::operator=(NyXmlAttributeList const& other)
{
    if (this == &other)
        return *this;
    m_entries = other.m_entries;
    m_slots = other.m_slots;
    m_slotsUsed = other.m_slotsUsed;
    m_remaining = other.m_remaining;
    m_first = other.m_first;
    m_isSorted = other.m_isSorted;
    for (Entry& entry : m_entries) {
        Slot& texts = slot(entry.m_slot);
        keepIn(texts, entry);
        if (entry.m_token != nullptr) { // the other's tokens do not outlive the other
            texts.m_token = *entry.m_token;
            entry.m_token = &texts.m_token;
        }
    }
    return *this;
}
