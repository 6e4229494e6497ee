#include <nyXml/values/NyXmlVectorVector.h>

#include <nyXml/traversal/NyXmlObjectVisitor.h>
#include <nyXml/values/detail/NyXmlGeometry.h>
#include <nyXml/values/detail/NyXmlItemVector.h>
#include <nyXml/values/detail/NyXmlItems.h>

#include <string_view>
#include <typeinfo>

using namespace NyXmlGeometry;

NyXmlVectorVector::~NyXmlVectorVector() = default;

void NyXmlVectorVector::accept(NyXmlObjectVisitor* visitor) const { visitor->visit(this); }

NyXmlObject* NyXmlVectorVector::clone() const { return new NyXmlVectorVector(*this); }

namespace {

/// The numbers of a document, one after the other, as any reader gives them. There is no end to them, unless the reader tells it: a fast
/// path leaves the mode alone as long as it finds something.
class Numbers {
public:
    explicit Numbers(NyXmlReader& reader) : m_reader(reader), m_mode(reader.mode()) {}
    bool take(double& number)
    {
        number = NyXmlText::toDouble(m_reader.getAttributeValueFast());
        return m_reader.mode() == m_mode;
    }

private:
    NyXmlReader& m_reader;
    NyXmlFileReader::XML_READER_MODE const m_mode;
};

/// Hot: benchmarks readPath. The same from the library's own reader, without a copy and two virtual calls for each. False at the end of
/// the input.
class NumbersInPlace {
public:
    explicit NumbersInPlace(NyXmlReader& reader) : m_reader(reader) {}
    bool take(double& number)
    {
        if (m_reader.takeAttributeReal(number))
            return true;
        std::string_view text;
        bool const isThere = m_reader.takeAttributeText(text);
        number = NyXmlText::toDouble(text);
        return isThere;
    }

private:
    NyXmlReader& m_reader;
};

/// Appends vectors as far as their numbers go.
template <class N>
void appendVectors(std::vector<NyVector>& vectors, int count, N numbers)
{
    double x, y, z;
    for (int i = 0; i < count && numbers.take(x) && numbers.take(y) && numbers.take(z); ++i)
        vectors.emplace_back(x, y, z);
}

} // namespace

bool NyXmlVectorVector::read(NyXmlReader& reader)
{
    int const count = NyXmlText::toInt(reader.attributeValue());
    m_theVectors.clear();
    NyXmlItems::reserve(m_theVectors, count);
    if (typeid(reader) == typeid(NyXmlReader))
        appendVectors(m_theVectors, count, NumbersInPlace(reader));
    else
        appendVectors(m_theVectors, count, Numbers(reader));
    // What is left of the last child's tag passes for content, and the event for our own end tag.
    return count == 0 || reader.readXml() != NyXmlFileReader::XML_READER_ERROR;
}

bool NyXmlVectorVector::write(NyXmlWriter& writer) const
{
    bool const result = NyXmlObject::write(writer);
    NyXmlTogether together(writer);
    writer.setAttributeName(NyXml::NyCountToken);
    writer << size();
    for (NyVector const& vector : m_theVectors) {
        writer.writeStartTagUsingParentNamespace(NyXml::NyElementToken);
        writeComponents(writer, coordinateNames, { vector.x(), vector.y(), vector.z() });
        writer.writeEndTag();
    }
    together.end();
    return result;
}

bool NyXmlVectorVector::writeSchema(NyXmlSchema& schema) const
{
    bool const result = NyXmlObject::writeSchema(schema);
    schema.setAttributeName(NyXml::NyCountToken);
    schema.setType(typeid(unsigned int));
    schema.writeStartTagUsingParentNamespace(NyXml::NyElementToken.localName(), NyXmlSchemaElementType::XML_STARTTAG_UNBOUNDED);
    describeComponents(schema, coordinateNames);
    schema.writeEndTag();
    return result;
}

bool NyXmlVectorVector::equality(NyXmlObject const* other) const
{
    auto const* same = dynamic_cast<NyXmlVectorVector const*>(other);
    return same != nullptr && *this == *same;
}

NyXmlObject* NyXmlVectorVector::newObject() const { return new NyXmlVectorVector; }

NyToken const& NyXmlVectorVector::token() const { return classToken(); }

NyToken const& NyXmlVectorVector::classToken() { return NyXml::NyVectorTypeToken; }

bool NyXmlVectorVector::leftRotate(unsigned int index) { return NyXmlItems::leftRotate(m_theVectors, index); }
