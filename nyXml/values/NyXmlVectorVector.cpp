#include <nyXml/values/NyXmlVectorVector.h>

#include <nyXml/traversal/NyXmlObjectVisitor.h>
#include <nyXml/values/NyXmlGeometry.h>

#include <algorithm>
#include <stdexcept>
#include <typeinfo>

using namespace NyXmlGeometry;

NyXmlVectorVector::~NyXmlVectorVector() = default;

void NyXmlVectorVector::accept(NyXmlObjectVisitor* visitor) const { visitor->visit(this); }

NyXmlObject* NyXmlVectorVector::clone() const { return new NyXmlVectorVector(*this); }

bool NyXmlVectorVector::read(NyXmlReader& reader)
{
    int const count = NyXmlText::toInt(reader.attributeValue());
    if (count < 0)
        throw std::length_error("vector<T> too long");

    // A count may lie: memory is set aside for what a document of moderate size can hold, and then follows what really comes.
    constexpr int believed = (64 << 20) / sizeof(NyVector);
    m_theVectors.clear();
    m_theVectors.reserve(static_cast<std::size_t>(std::min(count, believed)));
    for (int i = 0; i < count; ++i) {
        double const x = NyXmlText::toDouble(reader.getAttributeValueFast());
        double const y = NyXmlText::toDouble(reader.getAttributeValueFast());
        double const z = NyXmlText::toDouble(reader.getAttributeValueFast());
        m_theVectors.emplace_back(x, y, z);
    }
    // What is left of the last child's tag passes for content, and the event for our own end tag.
    return count == 0 || reader.readXml() != NyXmlFileReader::XML_READER_ERROR;
}

bool NyXmlVectorVector::write(NyXmlWriter& writer) const
{
    bool const result = NyXmlObject::write(writer);
    writer.setAttributeName(NyXml::NyCountToken);
    writer << size();
    for (NyVector const& vector : m_theVectors) {
        writer.writeStartTagUsingParentNamespace(NyXml::NyElementToken);
        writeComponents(writer, coordinateNames, { vector.x(), vector.y(), vector.z() });
        writer.writeEndTag();
    }
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

bool NyXmlVectorVector::leftRotate(unsigned int index)
{
    if (index >= size())
        return false;
    std::rotate(m_theVectors.begin(), m_theVectors.begin() + index, m_theVectors.end());
    return true;
}
