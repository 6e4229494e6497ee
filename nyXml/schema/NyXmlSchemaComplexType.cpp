#include <nyXml/schema/NyXmlSchemaComplexType.h>

#include <nyXml/schema/detail/NyXmlSchemaConvertible.h>

#include <cstddef>

NyXmlSchemaComplexType::~NyXmlSchemaComplexType() = default;

bool NyXmlSchemaComplexType::operator==(NyXmlSchemaComplexType const& other) const
{
    return m_theElementName == other.m_theElementName && m_theNamespace == other.m_theNamespace &&
           m_theContentType == other.m_theContentType && m_theElements == other.m_theElements &&
           m_theAttributes == other.m_theAttributes;
}

bool NyXmlSchemaComplexType::isTypeConvertible(NyXmlSchemaComplexType const& other) const
{
    return m_theElementName == other.m_theElementName && m_theNamespace == other.m_theNamespace &&
           m_theContentType == other.m_theContentType && Ny::schema::elementsAreConvertible(m_theElements, other.m_theElements) &&
           m_theAttributes == other.m_theAttributes;
}

void NyXmlSchemaComplexType::convertType(NyXmlSchemaComplexType const& other)
{
    auto const mayBeMissing = [this] {
        for (NyXmlSchemaElementType& element : m_theElements)
            element.setMinOccurs(0);
    };

    if (m_theElements.size() == other.m_theElements.size()) {
        for (std::size_t i = 0; i < m_theElements.size(); ++i)
            m_theElements[i].convertType(other.m_theElements[i]);
    } else if (m_theElements.empty()) {
        m_theElements = other.m_theElements;
        mayBeMissing();
    } else if (other.m_theElements.empty()) {
        mayBeMissing();
    }
}
