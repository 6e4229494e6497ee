#ifndef NYXML_SCHEMA_NYXMLSCHEMAGLOBALELEMENTTYPE_H
#define NYXML_SCHEMA_NYXMLSCHEMAGLOBALELEMENTTYPE_H

#include <nyXml/core/NyToken.h>
#include <nyXml/platform/NyXmlExport.h>

#include <string>

/// One element declared at the top of a schema document: a document's root, or an element whose parent lies in another namespace
/// and can only refer to it.
class NYXML_EXPORT NyXmlSchemaGlobalElementType {
public:
    NyXmlSchemaGlobalElementType() = default;
    NyXmlSchemaGlobalElementType(NyXmlSchemaGlobalElementType const&) = default;
    NyXmlSchemaGlobalElementType(NyXmlSchemaGlobalElementType&&) = default;
    NyXmlSchemaGlobalElementType& operator=(NyXmlSchemaGlobalElementType const&) = default;
    NyXmlSchemaGlobalElementType& operator=(NyXmlSchemaGlobalElementType&&) = default;

    /// True if name, in both its parts, namespace and type are equal.
    bool operator==(NyXmlSchemaGlobalElementType const& other) const;

    virtual ~NyXmlSchemaGlobalElementType();

    virtual NyToken const& elementName() const { return m_theElementName; }
    virtual void setElementName(NyToken const& name) { m_theElementName = name; }

    /// The namespace whose document declares the element.
    virtual std::string const& getNamespace() const { return m_theNamespace; }
    virtual void setNamespace(std::string const& ns) { m_theNamespace = ns; }

    virtual std::string const& type() const { return m_theType; }
    virtual void setType(std::string const& type) { m_theType = type; }

private:
    NyToken m_theElementName;
    std::string m_theNamespace;
    std::string m_theType;
};

#endif
