#include <nyXml/schema/NyXmlSchemaGroupType.h>

#include <nyXml/schema/detail/NyXmlSchemaConvertible.h>

NyXmlSchemaGroupType::~NyXmlSchemaGroupType() = default;

bool NyXmlSchemaGroupType::operator==(NyXmlSchemaGroupType const& other) const
{
    return m_theNamespace == other.m_theNamespace && m_theStartTagMode == other.m_theStartTagMode &&
           m_theElements == other.m_theElements;
}

bool NyXmlSchemaGroupType::isTypeConvertible(NyXmlSchemaGroupType const& other) const
{
    return m_theNamespace == other.m_theNamespace && m_theStartTagMode == other.m_theStartTagMode &&
           Ny::schema::elementsAreConvertible(m_theElements, other.m_theElements);
}
