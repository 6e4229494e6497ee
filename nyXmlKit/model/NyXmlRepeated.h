#ifndef NYXMLKIT_MODEL_NYXMLREPEATED_H
#define NYXMLKIT_MODEL_NYXMLREPEATED_H

#include <nyXml/core/NyXmlObject.h>
#include <nyXml/traversal/NyXmlObjectVisitor.h>
#include <nyXmlKit/model/NyXmlMemberKind.h>
#include <nyXmlKit/model/NyXmlObjectOf.h>
#include <nyXmlKit/model/NyXmlOptional.h>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

/// Children of one name, directly in their owner, as many formats have them: `<trk><trkseg/><trkseg/></trk>`.
///
/// \code
///     NyXmlRepeated<Segment> segments;                 // element("trkseg", segments);
///     for (Segment const& segment : segments) ...
///     segments.append().points = ...;                  // a new item, in place
///     segments.items().erase(segments.items().begin());
/// \endcode
/// All items are written, those that equal their default too. Other children may stand between them; they are read in their order and
/// written together.
///
/// An item may be of the class that it is a member of. When the items grow in number they move, and pointers to them are void.
///
/// A model class that is read anew forgets the items that it had. In a class that derives from NyXmlCompoundType by hand reading goes on
/// behind them: clear() before. Such a class also writes all items in one element, so only model classes write them.
///
/// \tparam T  a plain value, an enumeration or a class of objects; may be incomplete
template <class T>
class NYXML_EXPORT NyXmlRepeated : public NyXmlObject, public NyXmlOccurrence {
public:
    using Object = typename NyXmlObjectOf<T>::Type;

    NyXmlRepeated() { static_assert(NyXmlWholeClass<Object>::value); }

    std::vector<Object> const& items() const noexcept { return m_theItems; }
    std::vector<Object>& items() noexcept { return m_theItems; }

    bool empty() const noexcept { return m_theItems.empty(); }
    std::size_t size() const noexcept { return m_theItems.size(); }
    Object const& operator[](std::size_t index) const { return m_theItems[index]; }
    Object& operator[](std::size_t index) { return m_theItems[index]; }
    auto begin() const noexcept { return m_theItems.begin(); }
    auto end() const noexcept { return m_theItems.end(); }
    auto begin() noexcept { return m_theItems.begin(); }
    auto end() noexcept { return m_theItems.end(); }
    void clear() noexcept { m_theItems.clear(); }

    /// Adds an item in its default state. \return it
    Object& append()
    {
        makeRoom();
        m_theItems.emplace_back();
        return m_theItems.back();
    }
    Object& append(Object item)
    {
        makeRoom();
        m_theItems.push_back(std::move(item));
        return m_theItems.back();
    }

    bool operator==(NyXmlRepeated const& other) const { return equality(&other); }
    bool operator!=(NyXmlRepeated const& other) const { return !equality(&other); }

    // NyXmlObject
    /// Shows each item.
    void accept(NyXmlObjectVisitor* visitor) const override
    {
        for (Object const& item : m_theItems)
            item.accept(visitor);
    }
    [[nodiscard]] NyXmlObject* clone() const override { return new NyXmlRepeated(*this); }
    [[nodiscard]] NyXmlObject* newObject() const override { return new NyXmlRepeated; }
    /// Adds one item and reads it.
    bool read(NyXmlReader& reader) override { return NyXmlObject::read(reader) && append().read(reader); }
    bool write(NyXmlWriter& writer) const override
    {
        bool result = NyXmlObject::write(writer);
        for (Object const& item : m_theItems)
            result = item.write(writer) && result;
        return result;
    }
    bool writeSchema(NyXmlSchema& schema) const override
    {
        return NyXmlObject::writeSchema(schema) && Object().writeSchema(schema);
    }
    bool equalsDefault() const override { return m_theItems.empty(); }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* same = dynamic_cast<NyXmlRepeated const*>(other);
        if (same == nullptr || m_theItems.size() != same->m_theItems.size())
            return false;
        for (std::size_t i = 0; i < m_theItems.size(); ++i)
            if (!m_theItems[i].equality(&same->m_theItems[i]))
                return false;
        return true;
    }
    /// That of the items.
    NyToken const& token() const override
    {
        static Object const theItem;
        return theItem.token();
    }

    // NyXmlMemberKind
    unsigned int minOccurs() const override { return 0; }
    unsigned int maxOccurs() const override { return unbounded; }
    std::unique_ptr<NyXmlObject> newItem() const override { return std::make_unique<Object>(); }

    // NyXmlOccurrence
    bool isAbsent() const override { return m_theItems.empty(); }
    void forget() override { m_theItems.clear(); }
    void writeElements(NyXmlWriter& writer, NyToken const& name) const override
    {
        for (Object const& item : m_theItems)
            NyXmlOccurrenceWork::writeElement(writer, name, item);
    }

private:
    // Items move when they grow in number, instead of being copied with all that is in them: their moves may not be noexcept, since a
    // compound has only a copy, which a vector would then take for the whole.
    void makeRoom()
    {
        if (m_theItems.size() < m_theItems.capacity())
            return;
        std::vector<Object> grown;
        grown.reserve(m_theItems.empty() ? 1 : 2 * m_theItems.size());
        for (Object& item : m_theItems)
            grown.push_back(std::move(item));
        m_theItems.swap(grown);
    }

    std::vector<Object> m_theItems;
};

#endif
