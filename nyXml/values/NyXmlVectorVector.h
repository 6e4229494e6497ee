#ifndef NYXML_VALUES_NYXMLVECTORVECTOR_H
#define NYXML_VALUES_NYXMLVECTORVECTOR_H

#include <nyXml/core/NyXmlObject.h>
#include <nyXml/platform/NyVector.h>
#include <nyXml/platform/NyXmlExport.h>

#include <vector>

/// Many vectors, made for bulk data: `<path size="2"><element x="1" y="2" z="3"/><element x="4" y="5" z="6"/></path>`.
///
/// Reading trusts the document to have the form that write() gives, and cuts the numbers straight from the text.
class NYXML_EXPORT NyXmlVectorVector : public NyXmlObject {
public:
    NyXmlVectorVector() = default;
    NyXmlVectorVector(NyXmlVectorVector const&) = default;
    explicit NyXmlVectorVector(unsigned int count) : m_theVectors(count) {}
    NyXmlVectorVector(unsigned int count, NyVector const& value) : m_theVectors(count, value) {}
    NyXmlVectorVector& operator=(NyXmlVectorVector const&) = default;

    // NyXmlObject
    ~NyXmlVectorVector() override;
    void accept(NyXmlObjectVisitor* visitor) const override;
    [[nodiscard]] NyXmlObject* clone() const override;

    /// Takes the first attribute as the count, whatever its name, and then the next three times as many double-quoted texts as x, y, z
    /// of one vector after the other, whatever names and tags stand around them.
    ///
    /// The document must hold that many. Where it doesn't, the library's own reader gives the vectors that are whole and an error; a
    /// derived one is asked through getAttributeValueFast(), which does not return then. A count of 0 leaves the end tag to the caller.
    /// Neither initialises the object nor marks it specified.
    ///
    /// \return false if the reader reports an error behind the vectors
    /// \throws std::length_error for a negative count
    bool read(NyXmlReader& reader) override;
    bool write(NyXmlWriter& writer) const override;
    bool writeSchema(NyXmlSchema& schema) const override;
    bool equality(NyXmlObject const* other) const override;
    [[nodiscard]] NyXmlObject* newObject() const override;
    NyToken const& token() const override; ///< classToken()

    static NyToken const& classToken(); ///< NyXml::NyVectorTypeToken
    static NyXmlVectorVector nullObject() { return {}; }

    unsigned int size() const noexcept { return static_cast<unsigned int>(m_theVectors.size()); }
    NyVector const& operator[](unsigned int index) const noexcept { return m_theVectors[index]; } ///< unchecked
    void clear() noexcept { m_theVectors.clear(); }
    void reserve(unsigned int count) { m_theVectors.reserve(count); }
    void resize(unsigned int count) { m_theVectors.resize(count); }
    void assign(unsigned int count, NyVector const& value) { m_theVectors.assign(count, value); }
    void pushBack(NyVector const& value) { m_theVectors.push_back(value); }
    /// Makes the vector at \p index the first and keeps the cyclic order. \return false, with nothing moved, if there is none there
    bool leftRotate(unsigned int index);

    /// Exact, without a tolerance.
    bool operator==(NyXmlVectorVector const& other) const { return m_theVectors == other.m_theVectors; }

private:
    std::vector<NyVector> m_theVectors;
};

#endif
