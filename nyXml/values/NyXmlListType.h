#ifndef NYXML_VALUES_NYXMLLISTTYPE_H
#define NYXML_VALUES_NYXMLLISTTYPE_H

#include <nyXml/core/NyXml.h>
#include <nyXml/core/NyXmlObject.h>
#include <nyXml/platform/NyXmlExport.h>
#include <nyXml/values/NyXmlBasicType.h>
#include <nyXml/values/NyXmlVector.h>
#include <nyXml/values/detail/NyXmlItemClass.h>
#include <nyXml/values/detail/NyXmlItemCopies.h>
#include <nyXml/values/detail/NyXmlItems.h>

#include <algorithm>
#include <list>

/// A list of objects: `<ids size="3"><group>5 1 2</group></ids>`.
///
/// An empty one has no size attribute. See NyXmlVectorType for the two forms of items.
///
/// \tparam E  an NyXmlObject with `==`. Compiled into the library: NyXmlBasicType<unsigned int>, NyXmlVector.
template <class E>
class NYXML_EXPORT NyXmlListType : public NyXmlObject {
public:
    NyXmlListType() = default;
    NyXmlListType(NyXmlListType const&) = default;
    NyXmlListType& operator=(NyXmlListType const&) = default;

    // NyXmlObject
    ~NyXmlListType() override { static_assert(NyXmlItems::WholeClass<E>::value); }
    [[nodiscard]] NyXmlObject* clone() const override { return new NyXmlListType(*this); }

    /// Replaces the items. A size that differs from the items read is reported with print type 3 and forgiven.
    ///
    /// One object serves all items: where an empty element leaves a value alone, that is the value of the item before.
    /// \return false for an error of the reader, and for a `group` without content, reported with print type 4
    bool read(NyXmlReader& reader) override
    {
        return NyXmlObject::read(reader) && NyXmlItems::readCopies(reader, NyXmlItems::listType, __PRETTY_FUNCTION__, m_theList);
    }
    bool write(NyXmlWriter& writer) const override
    {
        bool const result = NyXmlObject::write(writer);
        NyXmlItems::writeUnlessEmpty(writer, m_theList);
        return result;
    }
    /// Describes an `element` that holds a `key`, which is not the form that documents have: schemas in the field are so.
    bool writeSchema(NyXmlSchema& schema) const override
    {
        bool const result = NyXmlObject::writeSchema(schema);
        NyXmlItems::writeKeySchema(schema, E());
        return result;
    }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* same = dynamic_cast<NyXmlListType const*>(other);
        return same != nullptr && *this == *same;
    }
    [[nodiscard]] NyXmlObject* newObject() const override { return new NyXmlListType; }
    NyToken const& token() const override { return classToken(); }

    // Its own
    virtual bool find(E const& item) const { return std::find(m_theList.begin(), m_theList.end(), item) != m_theList.end(); }
    virtual void clear() { m_theList.clear(); }
    virtual unsigned int size() const { return static_cast<unsigned int>(m_theList.size()); }
    virtual void pushBack(E const& item) { m_theList.push_back(item); }
    virtual void pushFront(E const& item) { m_theList.push_front(item); }
    /// Removes the first that equals the item, and no other. \return false if there is none
    virtual bool erase(E const& item)
    {
        auto const found = std::find(m_theList.begin(), m_theList.end(), item);
        if (found == m_theList.end())
            return false;
        m_theList.erase(found);
        return true;
    }
    virtual std::list<E> const& listContainer() const { return m_theList; }
    virtual std::list<E>& listContainer() { return m_theList; }
    virtual void setListContainer(std::list<E> const& items) { m_theList = items; }

    bool operator==(NyXmlListType const& other) const { return NyXmlObject::operator==(other) && m_theList == other.m_theList; }

    static NyToken const& classToken() { return NyXml::NyListTypeToken; }
    static NyXmlListType nullObject() { return NyXmlListType(); }

private:
    std::list<E> m_theList;
};

extern template class NyXmlListType<NyXmlBasicType<unsigned int>>;
extern template class NyXmlListType<NyXmlVector>;

#endif
