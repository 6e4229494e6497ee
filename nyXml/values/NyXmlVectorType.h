#ifndef NYXML_VALUES_NYXMLVECTORTYPE_H
#define NYXML_VALUES_NYXMLVECTORTYPE_H

#include <nyXml/core/NyXml.h>
#include <nyXml/core/NyXmlObject.h>
#include <nyXml/platform/NyXmlExport.h>
#include <nyXml/traversal/NyXmlObjectVisitor.h>
#include <nyXml/values/NyXmlBasicType.h>
#include <nyXml/values/NyXmlOrientation.h>
#include <nyXml/values/NyXmlPairType.h>
#include <nyXml/values/NyXmlVector.h>
#include <nyXml/values/NyXmlVectorBasicType.h>
#include <nyXml/values/NyXmlVectorVector.h>
#include <nyXml/values/detail/NyXmlItemClass.h>
#include <nyXml/values/detail/NyXmlItemVector.h>
#include <nyXml/values/detail/NyXmlItems.h>
#include <nyXml/values/detail/NyXmlLeaf.h>
#include <nyXml/values/detail/NyXmlTextValue.h>

#include <iosfwd>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

/// A sequence of objects of one type, held by value.
///
/// \code
///     NyXmlVectorType<Joint> m_theJoints; // <joints size="2"><element name="a"/><element name="b"/></joints>
///     for (Joint const& joint : m_theJoints.vectorContainer()) ...
/// \endcode
///
/// Items whose isBasicType() is true are the words of one `group`, others one `element` each with attributes and children of their own.
/// Reading takes both forms, and replaces what the sequence held. A size attribute that is wrong or missing is reported with print
/// type 3, and what was found is kept. Indices are positions from 0.
///
/// An item is read where it will live: it starts as a copy of a default item and never moves while it is read. When the sequence grows
/// beyond its capacity the items move, and pointers to them are void.
///
/// \tparam E  any class that derives from NyXmlObject, with a default constructor, copies and ==. Compiled into the library for those
///            at the end of this header.
template <class E>
class NYXML_EXPORT NyXmlVectorType : public NyXmlObject {
public:
    NyXmlVectorType() = default;
    /// \p count default-valued items
    explicit NyXmlVectorType(unsigned int count) : m_theVector(count) {}
    NyXmlVectorType(unsigned int count, E const& item) : m_theVector(count, item) {}
    NyXmlVectorType(NyXmlVectorType const& other) : NyXmlObject(other), m_theVector(other.m_theVector) {}
    /// Counts as a copy: the new object is specified and not initialised.
    NyXmlVectorType(NyXmlVectorType&& other) noexcept : NyXmlObject(other), m_theVector(std::move(other.m_theVector)) {}

    // NyXmlObject
    ~NyXmlVectorType() override { static_assert(NyXmlItems::WholeClass<E>::value); }
    void accept(NyXmlObjectVisitor* visitor) const override { visitor->visit(this); }
    [[nodiscard]] NyXmlObject* clone() const override { return new NyXmlVectorType(*this); }
    /// \return false for a fault of the document's structure only; what was read before it is kept
    /// \throws std::length_error for a negative size attribute
    bool read(NyXmlReader& reader) override;
    bool write(NyXmlWriter& writer) const override;
    bool writeSchema(NyXmlSchema& schema) const override;
    bool equality(NyXmlObject const* other) const override
    {
        auto const* same = dynamic_cast<NyXmlVectorType const*>(other);
        return same != nullptr && *this == *same;
    }
    [[nodiscard]] NyXmlObject* newObject() const override { return new NyXmlVectorType; }
    NyToken const& token() const override { return classToken(); }

    // Its own
    virtual void pushBack(E const& item) { m_theVector.push_back(item); }
    /// Erases the items from \p first up to but not including \p last. \return false, with a report of print type 4, if there is no such
    /// range; nothing is erased then
    virtual bool erase(unsigned int first, unsigned int last)
    {
        return NyXmlItems::erase(m_theVector, __PRETTY_FUNCTION__, first, last);
    }
    virtual bool erase(unsigned int index) ///< the same for one item
    {
        return NyXmlItems::erase(m_theVector, NyXmlItems::vectorType, __PRETTY_FUNCTION__, index);
    }
    virtual std::vector<E> const& vectorContainer() const { return m_theVector; }
    virtual std::vector<E>& vectorContainer() { return m_theVector; }
    virtual void reserve(unsigned int count) { m_theVector.reserve(count); }
    virtual void resize(unsigned int count) { m_theVector.resize(count); }
    virtual void resizeToAtLeast(unsigned int count) ///< never shrinks
    {
        if (size() < count)
            resize(count);
    }
    virtual void clear() { m_theVector.clear(); }
    virtual void assign(unsigned int count, E const& item) { m_theVector = std::vector<E>(count, item); }
    virtual unsigned int size() const { return static_cast<unsigned int>(m_theVector.size()); }
    /// Makes the item at \p index the first and keeps the order cyclically. \return false if there is no such item
    virtual bool leftRotate(unsigned int index) { return NyXmlItems::leftRotate(m_theVector, index); }

    /// Begins a document of a sequence that need not be in memory as a whole: header, then body or items, then footer.
    ///
    /// The size attribute states our present size, whatever is appended afterwards.
    /// \param writer  set to a new writer, which writeFooterToStream() deletes; left alone on failure
    /// \return false if the stream has failed
    virtual bool writeHeaderToStream(std::ostream& stream, NyXmlWriter*& writer, std::string const& fileName,
                                     NyToken const& rootTag) const
    {
        return NyXmlItems::writeHeader(*this, stream, writer, fileName, rootTag, size(), E().isBasicType());
    }
    /// Writes our items. \return false for a null writer
    virtual bool writeBodyToStream(NyXmlWriter* writer) const;
    /// Writes one item. \return false for a null writer
    virtual bool appendElementToStream(NyXmlWriter* writer, E const& item) const
    {
        NyXmlObjectSource<E const*> items(&item);
        return NyXmlItems::writeBody(writer, 1, items);
    }
    /// Ends the document and deletes the writer. \return false for a null writer
    virtual bool writeFooterToStream(NyXmlWriter*& writer) const { return NyXmlItems::writeFooter(writer, E().isBasicType()); }
    virtual void append(NyXmlVectorType const& other) { NyXmlItems::append(m_theVector, other.m_theVector); }

    NyXmlVectorType& operator=(NyXmlVectorType const& other)
    {
        NyXmlObject::operator=(other);
        m_theVector = other.m_theVector;
        return *this;
    }
    NyXmlVectorType& operator=(NyXmlVectorType&& other) noexcept
    {
        NyXmlObject::operator=(other);
        m_theVector = std::move(other.m_theVector);
        return *this;
    }
    /// Exact, item by item.
    bool operator==(NyXmlVectorType const& other) const
    {
        return NyXmlObject::operator==(other) && m_theVector == other.m_theVector;
    }
    E const& operator[](unsigned int index) const { return m_theVector[index]; } ///< unchecked

    static NyXmlVectorType nullObject() { return NyXmlVectorType(); }
    static NyToken const& classToken() { return NyXml::NyVectorTypeToken; } ///< the same for all E

private:
    class Sink;
    using Source = NyXmlObjectSource<typename std::vector<E>::const_iterator>;

    std::vector<E> m_theVector;
};

/// Appends a copy of one default item and reads it in place: what an item registers with itself while it is read stays true.
template <class E>
class NyXmlVectorType<E>::Sink final : public NyXmlItemSink {
public:
    explicit Sink(std::vector<E>& items) : m_items(items) {}

    void expect(int count) override { NyXmlItems::reserve(m_items, count); }

    void readItem(NyXmlReader& reader) override
    {
        m_items.push_back(m_item);
        m_items.back().read(reader);
    }

    bool takeItem(NyXmlLeafRun& run, NyToken const& name) override
    {
        if (m_taker == nullptr)
            return false;
        m_items.push_back(m_item);
        if (m_taker(m_items.back(), run, name))
            return true;
        m_items.pop_back();
        return false;
    }

    bool isOfWords() const override { return isNyXmlTextValue<E>; }

private:
    std::vector<E>& m_items;
    E m_item;
    NyXmlLeaf::Taker const m_taker = NyXmlLeaf::takerOf(m_item);
};

template <class E>
bool NyXmlVectorType<E>::read(NyXmlReader& reader)
{
    if (!NyXmlObject::read(reader))
        return false;
    m_theVector.clear(); // what we held is gone even if the read fails
    Sink sink(m_theVector);
    return NyXmlItems::read(reader, NyXmlItems::vectorType, __PRETTY_FUNCTION__, sink);
}

template <class E>
bool NyXmlVectorType<E>::write(NyXmlWriter& writer) const
{
    bool const result = NyXmlObject::write(writer); // does not stop the writing
    Source items(m_theVector.begin());
    NyXmlItems::writeSize(writer, size());
    NyXmlItems::writeItems(writer, size(), items);
    return result;
}

template <class E>
bool NyXmlVectorType<E>::writeSchema(NyXmlSchema& schema) const
{
    bool const result = NyXmlObject::writeSchema(schema);
    E item;
    NyXmlItems::writeSchema(schema, item, item.isBasicType());
    return result;
}

template <class E>
bool NyXmlVectorType<E>::writeBodyToStream(NyXmlWriter* writer) const
{
    Source items(m_theVector.begin());
    return NyXmlItems::writeBody(writer, size(), items);
}

// The nested forms count as items like any other.
extern template class NyXmlVectorType<NyXmlBasicType<std::string>>;
extern template class NyXmlVectorType<NyXmlVectorType<NyXmlBasicType<std::string>>>;
extern template class NyXmlVectorType<NyXmlVectorType<NyXmlVectorType<NyXmlBasicType<std::string>>>>;
extern template class NyXmlVectorType<NyXmlBasicType<bool>>;
extern template class NyXmlVectorType<NyXmlVectorType<NyXmlBasicType<bool>>>;
extern template class NyXmlVectorType<NyXmlPairType<NyXmlBasicType<unsigned int>, NyXmlBasicType<unsigned int>>>;
extern template class NyXmlVectorType<NyXmlVectorType<NyXmlPairType<NyXmlBasicType<unsigned int>, NyXmlBasicType<unsigned int>>>>;
extern template class NyXmlVectorType<NyXmlPairType<NyXmlBasicType<double>, NyXmlBasicType<double>>>;
extern template class NyXmlVectorType<NyXmlVectorBasicType<NyXmlBasicType<unsigned char>>>;
extern template class NyXmlVectorType<NyXmlVectorBasicType<NyXmlBasicType<int>>>;
extern template class NyXmlVectorType<NyXmlVectorBasicType<NyXmlBasicType<unsigned int>>>;
extern template class NyXmlVectorType<NyXmlVectorType<NyXmlVectorBasicType<NyXmlBasicType<unsigned int>>>>;
extern template class NyXmlVectorType<NyXmlVectorBasicType<NyXmlBasicType<double>>>;
extern template class NyXmlVectorType<NyXmlVectorType<NyXmlVectorBasicType<NyXmlBasicType<double>>>>;
extern template class NyXmlVectorType<NyXmlVector>;
extern template class NyXmlVectorType<NyXmlOrientation>;
extern template class NyXmlVectorType<NyXmlVectorVector>;
extern template class NyXmlVectorType<NyXmlVectorType<NyXmlVectorVector>>;

#endif
