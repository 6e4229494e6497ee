#ifndef NYXML_VALUES_NYXMLSETTYPE_H
#define NYXML_VALUES_NYXMLSETTYPE_H

#include <nyXml/core/NyXml.h>
#include <nyXml/core/NyXmlObject.h>
#include <nyXml/platform/NyXmlExport.h>
#include <nyXml/values/NyXmlBasicType.h>
#include <nyXml/values/detail/NyXmlItemClass.h>
#include <nyXml/values/detail/NyXmlItemCopies.h>
#include <nyXml/values/detail/NyXmlItems.h>

#include <set>

/// A set of objects, in ascending order in the document: `<ids size="3"><group>1 2 5</group></ids>`.
///
/// An empty one has no size attribute. See NyXmlVectorType for the two forms of items.
///
/// \tparam E  an NyXmlObject with `<` and `==`. Compiled into the library: NyXmlBasicType<unsigned int>.
template <class E>
class NYXML_EXPORT NyXmlSetType : public NyXmlObject {
public:
    NyXmlSetType() = default;
    NyXmlSetType(NyXmlSetType const&) = default;
    NyXmlSetType& operator=(NyXmlSetType const&) = default;

    // NyXmlObject
    ~NyXmlSetType() override { static_assert(NyXmlItems::WholeClass<E>::value); }
    [[nodiscard]] NyXmlObject* clone() const override { return new NyXmlSetType(*this); }

    /// Replaces the items. A size that differs from the items read, those counted that were present already, is reported with print
    /// type 3 and forgiven.
    ///
    /// One object serves all items: where an empty element leaves a value alone, that is the value of the item before.
    /// \return false for an error of the reader, and for a `group` without content, reported with print type 4
    bool read(NyXmlReader& reader) override
    {
        return NyXmlObject::read(reader) && NyXmlItems::readCopies(reader, NyXmlItems::setType, __PRETTY_FUNCTION__, m_theSet);
    }
    bool write(NyXmlWriter& writer) const override
    {
        bool const result = NyXmlObject::write(writer);
        NyXmlItems::writeUnlessEmpty(writer, m_theSet);
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
        auto const* same = dynamic_cast<NyXmlSetType const*>(other);
        return same != nullptr && *this == *same;
    }
    [[nodiscard]] NyXmlObject* newObject() const override { return new NyXmlSetType; }
    NyToken const& token() const override { return classToken(); }

    // Its own
    virtual bool find(E const& item) const { return m_theSet.count(item) != 0; }
    virtual void clear() { m_theSet.clear(); }
    virtual unsigned int size() const { return static_cast<unsigned int>(m_theSet.size()); }
    virtual void add(E const& item) { m_theSet.insert(item); }
    /// \return false if the item is absent
    virtual bool erase(E const& item) { return m_theSet.erase(item) != 0; }
    virtual std::set<E> const& setContainer() const { return m_theSet; }
    virtual std::set<E>& setContainer() { return m_theSet; }

    bool operator==(NyXmlSetType const& other) const { return NyXmlObject::operator==(other) && m_theSet == other.m_theSet; }

    static NyToken const& classToken() { return NyXml::NySetTypeToken; }
    static NyXmlSetType nullObject() { return NyXmlSetType(); }

private:
    std::set<E> m_theSet;
};

extern template class NyXmlSetType<NyXmlBasicType<unsigned int>>;

#endif
