#ifndef NYXMLKIT_SCHEMA_NYXMLEXACTSCHEMA_H
#define NYXMLKIT_SCHEMA_NYXMLEXACTSCHEMA_H

#include <nyXml/platform/NyXmlExport.h>
#include <nyXml/schema/NyXmlSchema.h>

#include <map>
#include <memory>
#include <string>
#include <typeinfo>

class NyExactWalk;
class NyXmlObject;

/// Writes XSD 1.0 that accepts every document that the library writes for an object, and refuses one with a member that nobody knows, a
/// text that is no number or a word that is none of an enumeration's. NyXmlObject::createSchema() writes what it always wrote.
///
/// \code
///     NyXmlExactSchema::create(cell, "cell.xml", NyToken("urn:demo/cell", "cell")); // cell.cell.xsd, beside cell.xml
/// \endcode
///
/// Every integer has the type of its width, `size` among them; a real may be `inf` or `nan`; `bool` is 0 or 1 and `char` one character;
/// enumerations have the words of the object's table. Sets and lists, binary and embedded strings are described as they are written. What
/// is chosen by the document may carry a `library`. Elements stand in the order in which they are written, or in any order where the class
/// derives from NyXmlAnyOrder. All are optional, since reading asks for none; only the parts of a vector, an orientation and a map's
/// entry are required, and what a class of the model registers as required. Every element may be nil.
///
/// Types go by what an object of the name holds, not by its class alone: classes and objects that share a name get types of their own
/// (`joint.Type`, `joint.Type_1`), and what is alike shares one. Where createSchema() is right already the types are the same, by name
/// and content, apart from a choice, which needs no group of its own.
///
/// There is one file for each namespace, under the name that documents point to; of two namespaces with the same last segment the later
/// one's has a number behind it. The files import each other as needed. Namespaces are those that a validator sees: an element without
/// one is in that of the root, since the writer declares it for all.
///
/// As a builder it is filled as any NyXmlSchema, by calls or by an object's writeSchema(); the tables of the base stay empty, and
/// writeComplexType() prints nothing. It asks the objects themselves, which is why each override of writeSchema() has to call its base.
///
/// Nothing is printed and nothing is thrown. Use from one thread at a time.
class NYXML_EXPORT NyXmlExactSchema : public NyXmlSchema {
public:
    NyXmlExactSchema();
    NyXmlExactSchema(NyXmlExactSchema const&) = delete;
    NyXmlExactSchema& operator=(NyXmlExactSchema const&) = delete;
    ~NyXmlExactSchema() override;

    /// Describes an object as the root of documents, which may carry a version, and writes the files.
    ///
    /// \param fileName   everything from the last ".xml" or ".xsd" on is cut off; prefix and ".xsd" of each namespace are put behind
    /// \param rootToken  name and namespace of the document's root element
    /// \return false if a file could not be written; the others are written all the same
    static bool create(NyXmlObject const& object, std::string const& fileName, NyToken const& rootToken);

    /// The same, without writing: the text of each file by its name.
    static std::map<std::string, std::string> describe(NyXmlObject const& object, std::string const& fileName,
                                                       NyToken const& rootToken);

    /// What has been built so far, open elements left out.
    std::map<std::string, std::string> files(std::string const& fileName) const;

    // NyXmlSchema
    bool writeStartTag(NyToken const& token, XML_STARTTAG_OPTION mode) override;
    bool writeStartTagUsingParentNamespace(std::string const& localName, XML_STARTTAG_OPTION mode) override;
    void setAttributeName(NyToken const& token) override;
    void setType(std::type_info const& info) override;
    void writeEndTag() override;
    void writeEndTagRecursive() override; ///< as writeEndTag()
    void openGroup() override;
    void closeGroup() override;
    /// \return false if a file could not be written; the others are written all the same
    bool write(std::string fileName) override;
    /// True only inside of what is described elsewhere: the same name and class may hold something else here.
    bool isRegistered(NyToken const& token, std::string const& typeId) override;
    /// The name of a type of XSD, as "dateTime"; any other is a string.
    void setAttributeType(std::string const& type) override;
    void setContentType(std::string const& type) override;
    void describing(NyXmlObject const& object) override;

private:
    std::unique_ptr<NyExactWalk> m_walk;
};

#endif
