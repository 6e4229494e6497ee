#include <nyXml/schema/NyXmlSchemaElementType.h>

NyXmlSchemaElementType::~NyXmlSchemaElementType() = default;

bool NyXmlSchemaElementType::operator==(NyXmlSchemaElementType const& other) const
{
    return m_theElementName == other.m_theElementName && m_theNamespace == other.m_theNamespace &&
           m_theStartTagMode == other.m_theStartTagMode && m_theGroupIndex == other.m_theGroupIndex &&
           m_theType == other.m_theType && m_theMinOccurs == other.m_theMinOccurs && m_theNillable == other.m_theNillable;
}

bool NyXmlSchemaElementType::isTypeConvertible(NyXmlSchemaElementType const& other, bool checkGroupIndex) const
{
    if (m_theElementName != other.m_theElementName)
        return false;
    if (m_theNamespace != other.m_theNamespace)
        return false;
    if (checkGroupIndex && m_theGroupIndex != other.m_theGroupIndex)
        return false;
    return m_theType == other.m_theType || isEmptyType(m_theType) || isEmptyType(other.m_theType);
}

void NyXmlSchemaElementType::convertType(NyXmlSchemaElementType const& other)
{
    if (!isEmptyType(other.m_theType))
        m_theType = other.m_theType;
    if (other.m_theMinOccurs == 0)
        m_theMinOccurs = 0;
    if (other.m_theNillable)
        m_theNillable = true;
}
