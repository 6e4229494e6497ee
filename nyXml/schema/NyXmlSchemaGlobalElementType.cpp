#include <nyXml/schema/NyXmlSchemaGlobalElementType.h>

NyXmlSchemaGlobalElementType::~NyXmlSchemaGlobalElementType() = default;

bool NyXmlSchemaGlobalElementType::operator==(NyXmlSchemaGlobalElementType const& other) const
{
    return m_theElementName == other.m_theElementName && m_theNamespace == other.m_theNamespace && m_theType == other.m_theType;
}
