// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_VALUES_DETAIL_NYXMLITEMCOPIES_H
#define NYXML_VALUES_DETAIL_NYXMLITEMCOPIES_H

#include <nyXml/core/NyXmlObject.h>
#include <nyXml/values/detail/NyXmlItems.h>
#include <nyXml/values/detail/NyXmlLeaf.h>
#include <nyXml/values/detail/NyXmlTextValue.h>

/// What sets and lists have in common, for the families' own use: they take copies of one item, and say nothing of their size when empty.
namespace NyXmlItems {

/// Reads item after item into one object and enters copies of it.
///
/// \tparam Container  a standard set or list. For a set the end is a guess, and the right one: documents are in ascending order.
template <class Container>
class CopySink final : public NyXmlItemSink {
public:
    explicit CopySink(Container& items) : m_items(items) {}
    void expect(int) override {}
    void begin() override { m_item.xmlInit(); }
    void readItem(NyXmlReader& reader) override
    {
        m_item.read(reader);
        m_items.insert(m_items.end(), m_item);
    }
    bool takeItem(NyXmlLeafRun& run, NyToken const& name) override
    {
        if (m_taker == nullptr || !m_taker(m_item, run, name))
            return false;
        m_items.insert(m_items.end(), m_item);
        return true;
    }
    bool isOfWords() const override { return isNyXmlTextValue<typename Container::value_type>; }

private:
    Container& m_items;
    typename Container::value_type m_item;
    NyXmlLeaf::Taker const m_taker = NyXmlLeaf::takerOf(m_item);
};

/// read() for a container that it empties first.
template <class Container>
bool readCopies(NyXmlReader& reader, NyXmlItemFamily const& family, char const* where, Container& items)
{
    items.clear();
    CopySink<Container> sink(items);
    return read(reader, family, where, sink);
}

/// Writes size and body; nothing for an empty container.
template <class Container>
void writeUnlessEmpty(NyXmlWriter& writer, Container const& items)
{
    if (items.empty())
        return;
    auto const size = static_cast<unsigned int>(items.size());
    NyXmlObjectSource source(items.begin());
    writeSize(writer, size);
    writeItems(writer, size, source);
}

} // namespace NyXmlItems

#endif
