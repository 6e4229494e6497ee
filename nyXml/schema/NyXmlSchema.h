#ifndef NYXML_SCHEMA_NYXMLSCHEMA_H
#define NYXML_SCHEMA_NYXMLSCHEMA_H

#include <nyXml/schema/NyXmlSchemaComplexType.h>
#include <nyXml/schema/NyXmlSchemaElement.h>
#include <nyXml/schema/NyXmlSchemaElementType.h>
#include <nyXml/schema/NyXmlSchemaGlobalElementType.h>
#include <nyXml/schema/NyXmlSchemaGroupType.h>

#include <cstddef>
#include <iosfwd>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <tuple>
#include <typeinfo>
#include <utility>
#include <vector>

class NyXmlObject;

/// Collects XML Schema types from a walk over an object and writes them as XSD files, one for each namespace.
///
/// It is called as a document writer is: open an element, name an attribute, give a type, close the element. What looks alike
/// becomes one type. A walk, and what an object's writeSchema() does inside an element:
/// \code
///     NyXmlSchema schema;
///     schema.writeStartTag(NyToken("a/b/demo", "robot"), NyXmlSchemaElementType::XML_STARTTAG_SINGLE);
///     schema.setAttributeName("mass");
///     schema.setType(typeid(double)); // of the attribute just named
///     schema.writeStartTagUsingParentNamespace("name", NyXmlSchemaElementType::XML_STARTTAG_SINGLE);
///     schema.setType(typeid(std::string)); // no attribute open: of the element's content
///     schema.writeEndTag();
///     schema.writeEndTag();
///     bool written = schema.write("robot.xml"); // robot.demo.xsd
/// \endcode
/// The first namespace met is the first one everywhere: in the order of files, of declarations and of imports.
///
/// Nothing is printed and nothing is thrown. An end tag too many is ignored. Use from one thread at a time.
class NYXML_EXPORT NyXmlSchema {
public:
    using XML_STARTTAG_OPTION = NyXmlSchemaElementType::XML_STARTTAG_OPTION;

    NyXmlSchema();

    /// A copy has all tables, but no registry, and its open element is still the one in the source's tree: read or write its tables
    /// and don't go on building with it. Assignment leaves the target's registry as it was.
    NyXmlSchema(NyXmlSchema const& other);
    NyXmlSchema& operator=(NyXmlSchema const& other);

    /// Compares everything but the registry. The open element is compared by address, so a schema equals its copies and never one
    /// that was built separately.
    bool operator==(NyXmlSchema const& other) const;

    /// Writes no file.
    virtual ~NyXmlSchema();

    /// Opens a child of the open element. A namespace met for the first time gets its prefix: what stands behind its last "/".
    /// Prefixes are not made unique.
    /// \return whether an element of this name is already open
    virtual bool writeStartTag(NyToken const& token, XML_STARTTAG_OPTION mode);

    /// The same, in the namespace of the open element.
    virtual bool writeStartTagUsingParentNamespace(std::string const& localName, XML_STARTTAG_OPTION mode);

    /// Adds an attribute to the open element; the next setType() is the attribute's.
    virtual void setAttributeName(NyToken const& token);

    /// Gives the XSD type of a run-time type, typeWord(), to the attribute just named, or else to the open element's content.
    virtual void setType(std::type_info const& info);

    /// Closes the open element and merges its type into the tables.
    virtual void writeEndTag();

    /// Closes the open element without entering a type: it is named after the conventional type of its name.
    virtual void writeEndTagRecursive();

    /// Brackets around children that belong together. Children opened at the same depth of brackets form one group if the first of
    /// them is a choice.
    virtual void openGroup() { ++m_theGroupIndex; }
    virtual void closeGroup() { --m_theGroupIndex; }

    /// Writes one XSD file for each namespace: base name, ".", prefix, ".xsd".
    ///
    /// The base name is \p fileName up to its last ".xml", and of that what stands before its last ".xsd". Files that exist are
    /// overwritten; namespaces with equal prefixes overwrite each other. Can be called again.
    /// \return false if a file could not be opened; the others are written all the same
    virtual bool write(std::string fileName);

    /// To be asked when an element has been opened, before an object of the run-time type \p typeId describes itself in it.
    ///
    /// \return true if this element and type have been described or are being described; the element has been closed then, and the
    ///         caller goes on behind it. False if they are new: the caller describes the object and closes the element.
    virtual bool isRegistered(NyToken const& token, std::string const& typeId);
    virtual void unRegister(NyToken const& token, std::string const& typeId);

    /// Gives the attribute just named a type by its name.
    virtual void setAttributeType(std::string const& type);

    /// Gives the open element's content a type by its name. The second time it becomes a list of such items.
    virtual void setContentType(std::string const& type);

    /// Prints the complex types of one namespace as they stand in its file.
    virtual void writeComplexType(std::ostream& stream, std::string ns);

    /// Declares a global element. The first declaration of a name in a namespace stays, whatever the type of a later one.
    virtual void globalElement(NyToken name, std::string ns, std::string type);

    /// An unknown namespace is entered with an empty prefix, and gets no file for it.
    virtual std::string convertNamespaceToPrefix(std::string ns);

    /// \return the name of the list type for these items, which is the one made first, in whatever namespace that was
    virtual std::string insertSimpleType(std::string const& itemType, std::string const& ns);

    /// Merges a complex type into the first one, by name, that is convertible with it, or else enters it.
    /// \return the name of the type that serves: not \p name if it was merged or \p name was taken
    virtual std::string insertComplexType(NyXmlSchemaComplexType const& type, std::string const& name);

    /// Finds the first group, by name, that is convertible with this one, or else enters it; nothing is merged.
    /// \return the name of the group that serves
    virtual std::string insertGroupType(NyXmlSchemaGroupType const& type, std::string const& name);

    /// Notes what a registered element turned out to be. Does nothing if it is not registered.
    virtual void updateRegistry(NyToken const& token, std::string const& typeId, std::string const& type,
                                std::string const& contentType);

    /// Leaves \p type and \p contentType alone if the element is not registered.
    virtual void getFromRegistry(NyToken const& token, std::string const& typeId, std::string& type,
                                 std::string& contentType) const;

    /// Told by NyXmlObject::writeSchema(), with which every object begins to describe itself: for subclasses that look at the object, since
    /// the calls that follow tell types and no words, creators or members. Does nothing here.
    /// \param object  initialised; of items and alternatives a default one, which is gone when its element closes
    virtual void describing(NyXmlObject const& object);

    /// Told by an enumeration of whatever type before its setType(), for the same subclasses: the words that it has. Does nothing here.
    virtual void describingWords(std::vector<std::string> const& words);

    /// The XSD type of a run-time type. bool is "boolean", char "byte", unsigned char "unsignedByte"; short, long, float and double keep
    /// their names, and their unsigned kinds are "unsignedShort" and "unsignedLong". Anything else, int and unsigned int among them, is
    /// "string".
    static char const* typeWord(std::type_info const& info) noexcept;

private:
    /// The last tag operation, for setType(): does the type belong to an attribute?
    enum Operation : int { NONE = 0, START_TAG = 1, ATTRIBUTE_NAME = 2, ATTRIBUTE_TYPE = 3, CONTENT_TYPE = 4, END_TAG = 5 };

    /// What a visited element turned out to be.
    struct Description {
        std::string type;
        std::string contentType;
    };

    /// Local name, namespace and run-time type name of a visited element.
    using VisitKey = std::tuple<std::string, std::string, std::string>;
    static VisitKey visitKey(NyToken const& token, std::string const& typeId);

    bool isOpen(NyToken const& token) const;
    bool leaveOpenElement();

    class Index;
    Index& index();
    void writeDocument(std::ostream& stream, std::size_t which, std::vector<std::string> const& fileNames);
    void writeGroups(std::ostream& stream, std::string const& ns);
    void writeSimpleTypes(std::ostream& stream, std::string const& ns);
    void writeElement(std::ostream& stream, NyXmlSchemaElementType const& element, std::string const& ns);

    Operation m_theLastOperation = NONE;
    NyXmlSchemaElement m_theRootElement;
    NyXmlSchemaElement* m_theCurrentElement; ///< the open element, in our tree (a copy's: in its source's)
    std::vector<NyXmlSchemaGlobalElementType> m_theGlobalElements;
    std::map<std::string, std::string> m_theSimpleTypes; ///< item type to list type
    std::map<std::string, NyXmlSchemaComplexType> m_theComplexTypes;
    std::map<std::string, NyXmlSchemaGroupType> m_theGroupTypes;
    unsigned int m_theGroupIndex = 0;
    std::map<std::string, std::string> m_thePrefixes; ///< namespace to prefix
    std::vector<std::string> m_theNamespaces;         ///< in the order of their first use
    std::map<VisitKey, Description> m_theRegistry;
    /// Local name and namespace of every open element: with classes nested a thousand deep, to ask each ancestor took ten times as
    /// long as all the rest of a walk.
    std::multiset<std::pair<std::string, std::string>> m_theOpenNames;
    /// Faster ways into the tables above, null until needed. A copy makes its own, since ours points into our tables.
    std::unique_ptr<Index> m_theIndex;
};

#endif
