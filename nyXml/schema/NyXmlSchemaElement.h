#ifndef NYXML_SCHEMA_NYXMLSCHEMAELEMENT_H
#define NYXML_SCHEMA_NYXMLSCHEMAELEMENT_H

#include <nyXml/schema/NyXmlSchemaAttributeType.h>
#include <nyXml/schema/NyXmlSchemaComplexType.h>
#include <nyXml/schema/NyXmlSchemaElementType.h>

#include <string>
#include <vector>

class NyXmlSchema;

/// One open element of the tree that NyXmlSchema builds while an object describes itself.
///
/// When the element closes, it is reduced to records in the schema's tables and its children are thrown away. So the tree is never
/// deeper than the open element and never wider than its parent.
///
/// A parent holds its children by value, and only its last child can be open. Growing the vector therefore moves closed children
/// only, and the open one keeps its address, to which its own children point.
class NYXML_EXPORT NyXmlSchemaElement {
public:
    using XML_STARTTAG_OPTION = NyXmlSchemaElementType::XML_STARTTAG_OPTION;

    NyXmlSchemaElement() = default;

    /// \param schema  the builder whose tables take the records; not owned. An element without one is for filling in and comparing: it
    ///                must not be closed
    /// \param parent  null for the root of a tree; not owned
    NyXmlSchemaElement(NyXmlSchema* schema, NyXmlSchemaElement* parent);

    /// A copy points at the same schema and the same parent, and its children at the parents that they had.
    NyXmlSchemaElement(NyXmlSchemaElement const&) = default;
    NyXmlSchemaElement(NyXmlSchemaElement&&) = default;
    NyXmlSchemaElement& operator=(NyXmlSchemaElement const&) = default;
    NyXmlSchemaElement& operator=(NyXmlSchemaElement&&) = default;

    /// True if every field is equal, the pointers included.
    bool operator==(NyXmlSchemaElement const& other) const;

    virtual ~NyXmlSchemaElement();

    /// Opens a child. \return the child, which stays ours and stays where it is until we close
    virtual NyXmlSchemaElement* writeStartTag(NyToken const& token, XML_STARTTAG_OPTION mode, unsigned int groupIndex);

    /// \return this element
    virtual NyXmlSchemaElement* setName(NyToken const& token, XML_STARTTAG_OPTION mode, unsigned int groupIndex);

    virtual NyToken const& elementName() const { return m_theElementName; }

    /// Adds an attribute without a type.
    virtual void setAttributeName(NyToken const& token);

    /// Sets the type of the last attribute. Does nothing if there is none.
    virtual void setAttributeType(std::string const& type);

    virtual std::string const& contentType() const { return m_theContentType; }

    /// Gives the content a type. Content given a second time is a list of words, and the type becomes the list type of \p type.
    virtual void setContentType(std::string const& type);

    /// Closes the element: enters its type in the schema's tables and drops its children.
    /// \return the parent, null for the root
    virtual NyXmlSchemaElement* writeEndTag();

    /// Closes an element that is described elsewhere: it gets the conventional name of its type, and no type is entered.
    /// \return the parent, null for the root
    virtual NyXmlSchemaElement* writeEndTagRecursive();

    /// What the parent's type says of this element. It is complete when the element has closed.
    virtual NyXmlSchemaElementType elementType();

    /// Ties the element to its builder and its parent. Both are changed through it later, although the face takes them const.
    virtual void setPointers(NyXmlSchema const* schema, NyXmlSchemaElement const* parent);

    virtual std::string const& getNamespace() const { return m_theNamespace; }
    virtual NyXmlSchemaElement* parent() const { return m_theParent; }

    /// True if this element or one of its ancestors has this name.
    virtual bool isRecursiveElement(NyToken const& token) const;

    /// The run-time type name of the object that describes itself here; empty if nobody asked whether it is registered.
    void setTypeIdString(std::string const& typeId) { m_theTypeIdString = typeId; }

private:
    void enterComplexType();
    std::vector<NyXmlSchemaElementType> recordsOfChildren();
    void distribute(std::vector<NyXmlSchemaElementType>& records, NyXmlSchemaComplexType& complexType);
    void closeGroup(NyXmlSchemaElementType& last, std::vector<NyXmlSchemaElementType>& members,
                    NyXmlSchemaComplexType& complexType);
    void enterEmptyType();
    void declareIfGlobal();
    std::string qualifiedName(char const* suffix) const; ///< "demo:robot.Type"

    NyXmlSchema* m_theSchema = nullptr;
    NyXmlSchemaElement* m_theParent = nullptr;
    NyToken m_theElementName;
    std::string m_theNamespace;
    XML_STARTTAG_OPTION m_theStartTagMode = NyXmlSchemaElementType::XML_STARTTAG_SINGLE;
    unsigned int m_theGroupIndex = 0;
    std::string m_theContentType;
    std::string m_theTypeIdString;
    std::string m_theType;
    std::vector<NyXmlSchemaElement> m_theChildren;
    std::vector<NyXmlSchemaAttributeType> m_theAttributes;
};

#endif
