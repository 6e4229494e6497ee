#ifndef NYXML_VALUES_NYXMLVECTORBASICTYPE_H
#define NYXML_VALUES_NYXMLVECTORBASICTYPE_H

#include <nyXml/core/NyXml.h>
#include <nyXml/core/NyXmlObject.h>
#include <nyXml/core/detail/NyWhiteSpace.h>
#include <nyXml/platform/NyXmlExport.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/reader/detail/NyXmlLeafRun.h>
#include <nyXml/reader/detail/NyXmlWordSink.h>
#include <nyXml/values/NyXmlBasicType.h>
#include <nyXml/values/detail/NyXmlItemVector.h>
#include <nyXml/values/detail/NyXmlItems.h>
#include <nyXml/values/detail/NyXmlLeaf.h>
#include <nyXml/values/detail/NyXmlTextValue.h>

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

/// A sequence of plain values: large arrays cost no object per item.
///
/// \code
///     NyXmlVectorBasicType<NyXmlBasicType<double>> m_theWeights; // <weights size="3"><group>1 2.5 3</group></weights>
///     for (double weight : m_theWeights.vectorContainer()) ...
/// \endcode
///
/// Strings may hold blanks and are written as one `element` each; all others are the words of one `group`. Reading takes both forms, and
/// replaces what the sequence held. A size attribute that is wrong or missing is reported with print type 3, and what was found is
/// kept. Indices are positions from 0.
///
/// \tparam B  a NyXmlBasicType<T> (or a class derived from one), which reads and writes the items. Compiled into the library for T =
///            `char`, `unsigned char`, `short`, `unsigned short`, `int`, `unsigned int`, `double` and std::string. There is none for
///            `bool`, whose standard vector is packed: take NyXmlVectorType<NyXmlBasicType<bool>>.
template <class B>
class NYXML_EXPORT NyXmlVectorBasicType : public NyXmlObject {
    using T = std::remove_cv_t<std::remove_reference_t<decltype(std::declval<B const&>().value())>>;
    static_assert(!std::is_same_v<T, bool>, "a sequence of bool is a NyXmlVectorType<NyXmlBasicType<bool>>");

public:
    NyXmlVectorBasicType() = default;
    /// \p count default-valued items
    explicit NyXmlVectorBasicType(unsigned int count) : m_theVector(count) {}
    NyXmlVectorBasicType(unsigned int count, T const& value) : m_theVector(count, value) {}
    NyXmlVectorBasicType(unsigned int count, B const& item) : m_theVector(count, item.value()) {}
    NyXmlVectorBasicType(std::vector<T> const& items)
        : m_theVector(items) {} // implicit: it is the same thing in a document's clothes
    NyXmlVectorBasicType(NyXmlVectorBasicType const& other) : NyXmlObject(other), m_theVector(other.m_theVector) {}
    /// Counts as a copy: the new object is specified and not initialised.
    NyXmlVectorBasicType(NyXmlVectorBasicType&& other) noexcept : NyXmlObject(other), m_theVector(std::move(other.m_theVector)) {}

    // NyXmlObject
    ~NyXmlVectorBasicType() override = default;
    [[nodiscard]] NyXmlObject* clone() const override { return new NyXmlVectorBasicType(*this); }
    /// \return false for a fault of the document's structure only; what was read before it is kept
    /// \throws std::length_error for a negative size attribute
    bool read(NyXmlReader& reader) override;
    bool write(NyXmlWriter& writer) const override;
    bool writeSchema(NyXmlSchema& schema) const override;
    bool equality(NyXmlObject const* other) const override
    {
        auto const* same = dynamic_cast<NyXmlVectorBasicType const*>(other);
        return same != nullptr && *this == *same;
    }
    [[nodiscard]] NyXmlObject* newObject() const override { return new NyXmlVectorBasicType; }
    NyToken const& token() const override { return classToken(); }

    // Its own
    virtual void pushBack(T const& value) { m_theVector.push_back(value); }
    virtual void pushBack(B const& item) { m_theVector.push_back(item.value()); }
    /// Erases the items from \p first up to but not including \p last. \return false, with a report of print type 4, if there is no such
    /// range; nothing is erased then
    virtual bool erase(unsigned int first, unsigned int last)
    {
        return NyXmlItems::erase(m_theVector, __PRETTY_FUNCTION__, first, last);
    }
    virtual bool erase(unsigned int index) ///< the same for one item
    {
        return NyXmlItems::erase(m_theVector, NyXmlItems::vectorBasicType, __PRETTY_FUNCTION__, index);
    }
    virtual std::vector<T> const& vectorContainer() const { return m_theVector; }
    virtual std::vector<T>& vectorContainer() { return m_theVector; }
    virtual void reserve(unsigned int count) { m_theVector.reserve(count); }
    virtual void resize(unsigned int count) { m_theVector.resize(count); }
    virtual void resizeToAtLeast(unsigned int count) ///< never shrinks
    {
        if (size() < count)
            resize(count);
    }
    virtual void clear() { m_theVector.clear(); }
    virtual void assign(unsigned int count, T const& value) { m_theVector = std::vector<T>(count, value); }
    virtual void assign(unsigned int count, B const& item) { m_theVector = std::vector<T>(count, item.value()); }
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
        return NyXmlItems::writeHeader(*this, stream, writer, fileName, rootTag, size(), B().isBasicType());
    }
    /// Writes our items. \return false for a null writer
    virtual bool writeBodyToStream(NyXmlWriter* writer) const;
    /// Writes one item. \return false for a null writer
    virtual bool appendElementToStream(NyXmlWriter* writer, B const& item) const
    {
        NyXmlObjectSource<B const*> items(&item);
        return NyXmlItems::writeBody(writer, 1, items);
    }
    /// Ends the document and deletes the writer. \return false for a null writer
    virtual bool writeFooterToStream(NyXmlWriter*& writer) const { return NyXmlItems::writeFooter(writer, B().isBasicType()); }
    virtual void append(NyXmlVectorBasicType const& other) { NyXmlItems::append(m_theVector, other.m_theVector); }

    NyXmlVectorBasicType& operator=(NyXmlVectorBasicType const& other)
    {
        NyXmlObject::operator=(other);
        m_theVector = other.m_theVector;
        return *this;
    }
    NyXmlVectorBasicType& operator=(NyXmlVectorBasicType&& other) noexcept
    {
        NyXmlObject::operator=(other);
        m_theVector = std::move(other.m_theVector);
        return *this;
    }
    /// Exact, item by item.
    bool operator==(NyXmlVectorBasicType const& other) const
    {
        return NyXmlObject::operator==(other) && m_theVector == other.m_theVector;
    }
    T const& operator[](unsigned int index) const { return m_theVector[index]; } ///< unchecked

    static NyXmlVectorBasicType nullObject() { return NyXmlVectorBasicType(); }
    static NyToken const& classToken() { return NyXml::NyVectorTypeToken; } ///< the same for all B

private:
    class Sink;
    class Source;

    std::vector<T> m_theVector;
};

/// Reads through one temporary item, so that a word costs no allocation.
template <class B>
class NyXmlVectorBasicType<B>::Sink final : public NyXmlItemSink, private NyXmlWordSink {
public:
    explicit Sink(std::vector<T>& items) : m_items(items) {}

    void expect(int count) override { NyXmlItems::reserve(m_items, count); }

    void readItem(NyXmlReader& reader) override
    {
        m_item.read(reader);
        m_items.push_back(m_item.value());
    }
    bool takeItem(NyXmlLeafRun& run, NyToken const& name) override
    {
        // Hot: benchmark readTexts. One copy of the text and not two.
        if constexpr (std::is_same_v<B, NyXmlBasicType<std::string>>) {
            std::string_view text;
            bool const isTaken = run.takeText(name, text);
            if (isTaken)
                m_items.emplace_back(text);
            return isTaken;
        }
        if (m_taker == nullptr || !m_taker(m_item, run, name))
            return false;
        m_items.push_back(m_item.value());
        return true;
    }
    bool isOfWords() const override { return isNyXmlTextValue<B>; }

    // Hot: once per word of every numeric array, benchmarks readNumbers. Words are converted where they stand in the reader's text, a
    // long run block by block; the plain way copies each word and costs a dozen virtual calls. Nobody can tell, since the item is exactly
    // the library's own, and the reader is or has offered it. A test compares the two.
    NyXmlFileReader::XML_READER_MODE beginRun(NyXmlReader& reader) override
    {
        m_countBefore = m_items.size();
        return isInPlace(reader) ? reader.readRun(*this) : reader.readXml();
    }
    unsigned int readWords(NyXmlReader& reader) override
    {
        if (!isInPlace(reader))
            return NyXmlItemSink::readWords(reader);
        takeWords(reader.takeRun());
        return static_cast<unsigned int>(m_items.size() - m_countBefore);
    }

    // NyXmlWordSink
    void takeWords(std::string_view words) override
    {
        if constexpr (std::is_same_v<T, double>) {
            NyXmlText::appendDoubles(words, m_items);
        } else {
            for (std::size_t at = NyWhiteSpace::findBlack(words); at != words.size(); at = NyWhiteSpace::findBlack(words, at)) {
                std::size_t const end = NyWhiteSpace::findWhite(words, at);
                NyXmlTextOf<T>::take(m_item.value(), words.substr(at, end - at));
                m_items.push_back(m_item.value());
                at = end;
            }
        }
    }
    void forgetWords() override { m_items.resize(m_countBefore); }

private:
    static bool isInPlace(NyXmlReader const& reader) { return isNyXmlTextValue<B> && reader.hasWholeRuns(); }

    std::vector<T>& m_items;
    std::size_t m_countBefore = 0; ///< items before the run
    B m_item;
    NyXmlLeaf::Taker const m_taker = NyXmlLeaf::takerOf(m_item);
};

template <class B>
class NyXmlVectorBasicType<B>::Source final : public NyXmlItemSource {
public:
    explicit Source(std::vector<T> const& items) : m_next(items.begin()) {}

    bool isBasic() const override { return m_item.isBasicType(); }
    bool isOurs() const override { return NyXmlOwnValues::has(m_item); }
    void writeRun(NyXmlWriter& writer, unsigned int count) override
    {
        while (count-- != 0)
            Source::writeNext(writer); // without a look-up for each
    }
    void writeNext(NyXmlWriter& writer) override
    {
        if constexpr (std::is_same_v<B, NyXmlBasicType<T>>) {
            NyXmlTextOf<T>::give(writer, *m_next++); // all that B's write would do
        } else {
            m_item.setValue(*m_next++);
            m_item.write(writer);
        }
    }

private:
    typename std::vector<T>::const_iterator m_next;
    B m_item;
};

template <class B>
bool NyXmlVectorBasicType<B>::read(NyXmlReader& reader)
{
    if (!NyXmlObject::read(reader))
        return false;
    m_theVector.clear(); // what we held is gone even if the read fails
    Sink sink(m_theVector);
    return NyXmlItems::read(reader, NyXmlItems::vectorBasicType, __PRETTY_FUNCTION__, sink);
}

template <class B>
bool NyXmlVectorBasicType<B>::write(NyXmlWriter& writer) const
{
    bool const result = NyXmlObject::write(writer); // does not stop the writing
    Source items(m_theVector);
    NyXmlItems::writeSize(writer, size());
    NyXmlItems::writeItems(writer, size(), items);
    return result;
}

template <class B>
bool NyXmlVectorBasicType<B>::writeSchema(NyXmlSchema& schema) const
{
    bool const result = NyXmlObject::writeSchema(schema);
    NyXmlItems::writeSchema(schema, B(), true); // of strings, too: a run of words is no form that we write, but one that we read
    return result;
}

template <class B>
bool NyXmlVectorBasicType<B>::writeBodyToStream(NyXmlWriter* writer) const
{
    Source items(m_theVector);
    return NyXmlItems::writeBody(writer, size(), items);
}

extern template class NyXmlVectorBasicType<NyXmlBasicType<char>>;
extern template class NyXmlVectorBasicType<NyXmlBasicType<unsigned char>>;
extern template class NyXmlVectorBasicType<NyXmlBasicType<short>>;
extern template class NyXmlVectorBasicType<NyXmlBasicType<unsigned short>>;
extern template class NyXmlVectorBasicType<NyXmlBasicType<int>>;
extern template class NyXmlVectorBasicType<NyXmlBasicType<unsigned int>>;
extern template class NyXmlVectorBasicType<NyXmlBasicType<double>>;
extern template class NyXmlVectorBasicType<NyXmlBasicType<std::string>>;

#endif
