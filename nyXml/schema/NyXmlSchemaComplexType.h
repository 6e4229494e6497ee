#ifndef NYXML_SCHEMA_NYXMLSCHEMACOMPLEXTYPE_H
#define NYXML_SCHEMA_NYXMLSCHEMACOMPLEXTYPE_H

#include <nyXml/schema/NyXmlSchemaAttributeType.h>
#include <nyXml/schema/NyXmlSchemaElementType.h>

#include <string>
#include <vector>

/// One complex type: the children and attributes of an element, and its simple content if it has any.
///
/// The record doesn't know its own name, which is the key under which NyXmlSchema keeps it. Indices are not checked.
class NYXML_EXPORT NyXmlSchemaComplexType {
public:
    NyXmlSchemaComplexType() = default;
    NyXmlSchemaComplexType(NyXmlSchemaComplexType const&) = default;
    NyXmlSchemaComplexType(NyXmlSchemaComplexType&&) = default;
    NyXmlSchemaComplexType& operator=(NyXmlSchemaComplexType const&) = default;
    NyXmlSchemaComplexType& operator=(NyXmlSchemaComplexType&&) = default;

    /// True if every field is equal, the vectors item by item. Stricter than isTypeConvertible().
    bool operator==(NyXmlSchemaComplexType const& other) const;

    virtual ~NyXmlSchemaComplexType();

    /// The element that gave rise to the type.
    virtual NyToken const& elementName() const { return m_theElementName; }
    virtual void setElementName(NyToken const& name) { m_theElementName = name; }

    virtual std::string const& getNamespace() const { return m_theNamespace; }
    virtual void setNamespace(std::string const& ns) { m_theNamespace = ns; }

    /// Type name of the simple content, empty if there is none.
    virtual std::string const& contentType() const { return m_theContentType; }
    virtual void setContentType(std::string const& type) { m_theContentType = type; }

    virtual NyXmlSchemaElementType const& element(unsigned int index) const { return m_theElements[index]; }
    virtual void setElement(unsigned int index, NyXmlSchemaElementType const& element) { m_theElements[index] = element; }
    virtual void pushBack(NyXmlSchemaElementType const& element) { m_theElements.push_back(element); }
    virtual unsigned int elementSize() const { return static_cast<unsigned int>(m_theElements.size()); }
    virtual std::vector<NyXmlSchemaElementType> const& elementVector() const { return m_theElements; }
    virtual std::vector<NyXmlSchemaElementType>& elementVector() { return m_theElements; }
    virtual void setElementVector(std::vector<NyXmlSchemaElementType> const& elements) { m_theElements = elements; }

    virtual NyXmlSchemaAttributeType const& attribute(unsigned int index) const { return m_theAttributes[index]; }
    virtual void setAttribute(unsigned int index, NyXmlSchemaAttributeType const& attribute)
    {
        m_theAttributes[index] = attribute;
    }
    virtual unsigned int attributeSize() const { return static_cast<unsigned int>(m_theAttributes.size()); }
    virtual std::vector<NyXmlSchemaAttributeType> const& attributeVector() const { return m_theAttributes; }
    virtual std::vector<NyXmlSchemaAttributeType>& attributeVector() { return m_theAttributes; }
    virtual void setAttributeVector(std::vector<NyXmlSchemaAttributeType> const& attributes) { m_theAttributes = attributes; }

    /// Says whether one complex type can serve for both.
    ///
    /// Name, namespace, content type and attributes (with their order) must be equal. The elements must fit one by one, or one of
    /// the two types has none: then it came from an occurrence with nothing in it.
    bool isTypeConvertible(NyXmlSchemaComplexType const& other) const;

    /// Merges the other type into this one, which is to be convertible with it.
    ///
    /// Elements learn from their counterparts. If one of the two has no elements, those of the other stay, and may be missing from
    /// now on: their minimum occurrence becomes 0.
    void convertType(NyXmlSchemaComplexType const& other);

private:
    NyToken m_theElementName;
    std::string m_theNamespace;
    std::string m_theContentType;
    std::vector<NyXmlSchemaElementType> m_theElements;
    std::vector<NyXmlSchemaAttributeType> m_theAttributes;
};

#endif
