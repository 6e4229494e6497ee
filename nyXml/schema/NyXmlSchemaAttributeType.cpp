#include <nyXml/schema/NyXmlSchemaAttributeType.h>

NyXmlSchemaAttributeType::~NyXmlSchemaAttributeType() = default;

bool NyXmlSchemaAttributeType::operator==(NyXmlSchemaAttributeType const& other) const
{
    return m_theElementName == other.m_theElementName && m_theType == other.m_theType;
}
