#include <nyXmlKit/schema/NyXmlExactSchema.h>

#include <nyXml/core/NyXml.h>
#include <nyXml/core/NyXmlObject.h>
#include <nyXml/values/NyXmlBasicType.h>
#include <nyXmlKit/schema/detail/NyExactDocument.h>
#include <nyXmlKit/schema/detail/NyExactWalk.h>

#include <fstream>

namespace {

bool writeFiles(std::map<std::string, std::string> const& files)
{
    bool isWritten = true;
    for (auto const& [name, text] : files) {
        std::ofstream stream(name, std::ios::binary);
        stream << text;
        stream.close();
        isWritten = isWritten && stream.good();
    }
    return isWritten;
}

} // namespace

NyXmlExactSchema::NyXmlExactSchema() : m_walk(std::make_unique<NyExactWalk>()) {}

NyXmlExactSchema::~NyXmlExactSchema() = default;

bool NyXmlExactSchema::create(NyXmlObject const& object, std::string const& fileName, NyToken const& rootToken)
{
    return writeFiles(describe(object, fileName, rootToken));
}

std::map<std::string, std::string> NyXmlExactSchema::describe(NyXmlObject const& object, std::string const& fileName,
                                                              NyToken const& rootToken)
{
    NyXmlExactSchema schema;
    do {
        schema.writeStartTag(rootToken, NyXmlSchemaElementType::XML_STARTTAG_SINGLE);
        schema.setAttributeName(NyXml::NyVersionToken); // every document may tell its version
        NyXmlBasicType<std::string>().writeSchema(schema);
        object.writeSchema(schema);
        schema.writeEndTag();
    } while (schema.m_walk->wantsAnother());
    return schema.files(fileName);
}

std::map<std::string, std::string> NyXmlExactSchema::files(std::string const& fileName) const
{
    return NyExactDocument::files(m_walk->grammar(), fileName);
}

bool NyXmlExactSchema::writeStartTag(NyToken const& token, XML_STARTTAG_OPTION mode) { return m_walk->open(token, mode); }

bool NyXmlExactSchema::writeStartTagUsingParentNamespace(std::string const& localName, XML_STARTTAG_OPTION mode)
{
    return m_walk->openInParentNamespace(localName, mode);
}

void NyXmlExactSchema::setAttributeName(NyToken const& token) { m_walk->nameAttribute(token); }

void NyXmlExactSchema::setType(std::type_info const& info) { m_walk->giveType(info); }

void NyXmlExactSchema::writeEndTag() { m_walk->close(); }

void NyXmlExactSchema::writeEndTagRecursive() { m_walk->close(); }

void NyXmlExactSchema::openGroup() { m_walk->openGroup(); }

void NyXmlExactSchema::closeGroup() { m_walk->closeGroup(); }

bool NyXmlExactSchema::write(std::string fileName) { return writeFiles(files(fileName)); }

bool NyXmlExactSchema::isRegistered(NyToken const& token, std::string const& typeId) { return m_walk->isKnown(token, typeId); }

void NyXmlExactSchema::setAttributeType(std::string const& type) { m_walk->give(NyExactText::ofName(type)); }

void NyXmlExactSchema::setContentType(std::string const& type) { m_walk->give(NyExactText::ofName(type)); }

void NyXmlExactSchema::describing(NyXmlObject const& object) { m_walk->describing(object); }
