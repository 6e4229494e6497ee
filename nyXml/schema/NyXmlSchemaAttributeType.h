#ifndef NYXML_SCHEMA_NYXMLSCHEMAATTRIBUTETYPE_H
#define NYXML_SCHEMA_NYXMLSCHEMAATTRIBUTETYPE_H

#include <nyXml/core/NyToken.h>
#include <nyXml/platform/NyXmlExport.h>

#include <string>

/// One attribute of a complex type: its name and its type.
class NYXML_EXPORT NyXmlSchemaAttributeType {
public:
    NyXmlSchemaAttributeType() = default;
    NyXmlSchemaAttributeType(NyXmlSchemaAttributeType const&) = default;
    NyXmlSchemaAttributeType(NyXmlSchemaAttributeType&&) = default;
    NyXmlSchemaAttributeType& operator=(NyXmlSchemaAttributeType const&) = default;
    NyXmlSchemaAttributeType& operator=(NyXmlSchemaAttributeType&&) = default;

    /// True if name, in both its parts, and type are equal.
    bool operator==(NyXmlSchemaAttributeType const& other) const;

    virtual ~NyXmlSchemaAttributeType();

    /// Documents show its local name only.
    virtual NyToken const& elementName() const { return m_theElementName; }
    virtual void setElementName(NyToken const& name) { m_theElementName = name; }

    /// The bare name of an XSD type, as "double".
    virtual std::string const& type() const { return m_theType; }
    virtual void setType(std::string const& type) { m_theType = type; }

private:
    NyToken m_theElementName;
    std::string m_theType;
};

#endif
