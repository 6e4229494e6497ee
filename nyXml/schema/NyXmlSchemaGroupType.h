#ifndef NYXML_SCHEMA_NYXMLSCHEMAGROUPTYPE_H
#define NYXML_SCHEMA_NYXMLSCHEMAGROUPTYPE_H

#include <nyXml/schema/NyXmlSchemaElementType.h>

#include <string>
#include <vector>

/// One group of alternatives, to which complex types refer by name.
///
/// The record doesn't know its own name, which is the key under which NyXmlSchema keeps it. Indices are not checked.
class NYXML_EXPORT NyXmlSchemaGroupType {
public:
    using XML_STARTTAG_OPTION = NyXmlSchemaElementType::XML_STARTTAG_OPTION;

    NyXmlSchemaGroupType() = default;
    NyXmlSchemaGroupType(NyXmlSchemaGroupType const&) = default;
    NyXmlSchemaGroupType(NyXmlSchemaGroupType&&) = default;
    NyXmlSchemaGroupType& operator=(NyXmlSchemaGroupType const&) = default;
    NyXmlSchemaGroupType& operator=(NyXmlSchemaGroupType&&) = default;

    /// True if namespace, mode and elements are equal.
    bool operator==(NyXmlSchemaGroupType const& other) const;

    virtual ~NyXmlSchemaGroupType();

    /// Says whether one group can serve for both: equal namespaces and modes, and elements that fit one by one, or none in one of
    /// them. Groups are never merged: the one that was there first serves as it stands.
    virtual bool isTypeConvertible(NyXmlSchemaGroupType const& other) const;

    virtual std::string const& getNamespace() const { return m_theNamespace; }
    virtual void setNamespace(std::string const& ns) { m_theNamespace = ns; }

    /// XML_STARTTAG_CHOICE is written as a choice, every other mode as a sequence.
    virtual XML_STARTTAG_OPTION startTagMode() const { return m_theStartTagMode; }
    virtual void setStartTagMode(XML_STARTTAG_OPTION mode) { m_theStartTagMode = mode; }

    virtual unsigned int size() const { return static_cast<unsigned int>(m_theElements.size()); }
    virtual std::vector<NyXmlSchemaElementType> const& elementVector() const { return m_theElements; }
    virtual std::vector<NyXmlSchemaElementType>& elementVector() { return m_theElements; }
    virtual void setElementVector(std::vector<NyXmlSchemaElementType> const& elements) { m_theElements = elements; }

    NyXmlSchemaElementType const& operator[](unsigned int index) const { return m_theElements[index]; }
    NyXmlSchemaElementType& operator[](unsigned int index) { return m_theElements[index]; }

private:
    std::string m_theNamespace;
    XML_STARTTAG_OPTION m_theStartTagMode = NyXmlSchemaElementType::XML_STARTTAG_SINGLE;
    std::vector<NyXmlSchemaElementType> m_theElements;
};

#endif
