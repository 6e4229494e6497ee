#ifndef NYXML_SCHEMA_NYXMLSCHEMAELEMENTTYPE_H
#define NYXML_SCHEMA_NYXMLSCHEMAELEMENTTYPE_H

#include <nyXml/core/NyToken.h>
#include <nyXml/platform/NyXmlExport.h>

#include <string>

/// One child element in a complex type or in a group of alternatives: its name, its type and how it occurs.
///
/// A type whose name contains "empty.Type" stands for an occurrence that had nothing in it, and tells nothing about the type: it
/// fits every type, and merging lets the other type win.
class NYXML_EXPORT NyXmlSchemaElementType {
public:
    /// How an element occurs inside its parent. Every writeSchema() speaks in these.
    enum XML_STARTTAG_OPTION : int {
        XML_STARTTAG_CHOICE = 0,    ///< one of several alternatives; such siblings become a group with a choice
        XML_STARTTAG_SINGLE = 1,    ///< an ordinary child
        XML_STARTTAG_UNBOUNDED = 2, ///< a repeated child: the items of sequences, sets, lists and maps
    };

    NyXmlSchemaElementType() = default;
    NyXmlSchemaElementType(NyXmlSchemaElementType const&) = default;
    NyXmlSchemaElementType(NyXmlSchemaElementType&&) = default;
    NyXmlSchemaElementType& operator=(NyXmlSchemaElementType const&) = default;
    NyXmlSchemaElementType& operator=(NyXmlSchemaElementType&&) = default;

    /// True if every field is equal, the name in both its parts.
    bool operator==(NyXmlSchemaElementType const& other) const;

    virtual ~NyXmlSchemaElementType();

    /// Says whether both records may be treated as one: equal names and namespaces, and types that are equal or one of them empty.
    ///
    /// The mode, the minimum occurrence and the nillable flag play no part: a repeated element and a single one may be one.
    /// \param checkGroupIndex  whether the group indices must be equal too: they tell siblings apart, and mean nothing across parents
    virtual bool isTypeConvertible(NyXmlSchemaElementType const& other, bool checkGroupIndex) const;

    virtual NyToken const& elementName() const { return m_theElementName; }
    virtual void setElementName(NyToken const& name) { m_theElementName = name; }

    virtual std::string const& getNamespace() const { return m_theNamespace; }
    virtual void setNamespace(std::string const& ns) { m_theNamespace = ns; }

    virtual XML_STARTTAG_OPTION startTagMode() const { return m_theStartTagMode; }
    virtual void setStartTagMode(XML_STARTTAG_OPTION mode) { m_theStartTagMode = mode; }

    /// The builder's group depth when the element was opened.
    virtual unsigned int groupIndex() const { return m_theGroupIndex; }
    virtual void setGroupIndex(unsigned int index) { m_theGroupIndex = index; }

    /// A type name with its prefix, as "demo:robot.Type", or the bare name of an XSD type, as "double".
    virtual std::string const& type() const { return m_theType; }
    virtual void setType(std::string const& type) { m_theType = type; }

    /// 1, or 0 once a merge has shown an occurrence without the element. Documents are not written from it: every element there is
    /// optional.
    virtual unsigned int minOccurs() const { return m_theMinOccurs; }
    virtual void setMinOccurs(unsigned int minOccurs) { m_theMinOccurs = minOccurs; }

    /// Whether an empty type has been met. Documents are not written from it either.
    virtual bool nillable() const { return m_theNillable; }
    virtual void setNillable(bool nillable) { m_theNillable = nillable; }

    /// True for the name of a type that tells nothing: "empty.Type" stands somewhere in it.
    static bool isEmptyType(std::string const& type) { return type.find("empty.Type") != std::string::npos; }

    /// Takes over what the other record knows better: a type that is not empty, a minimum occurrence of 0, a nillable flag.
    ///
    /// Does not ask whether the two are convertible, and leaves name, namespace, mode and group index alone.
    void convertType(NyXmlSchemaElementType const& other);

private:
    NyToken m_theElementName;
    std::string m_theNamespace;
    XML_STARTTAG_OPTION m_theStartTagMode = XML_STARTTAG_SINGLE;
    unsigned int m_theGroupIndex = 0;
    std::string m_theType;
    unsigned int m_theMinOccurs = 1;
    bool m_theNillable = false;
};

#endif
