// How a schema becomes XSD files. Every blank and line end in here is part of the format: the files of a model are compared from one
// release to the next.

#include <nyXml/schema/NyXmlSchema.h>

#include <fstream>
#include <ostream>

namespace {

constexpr char const* xmlSchemaNamespace = "http://www.w3.org/2001/XMLSchema";

/// What stands ahead of the last occurrence of \p ending, wherever that is; the whole name without one.
std::string cutAt(std::string const& name, char const* ending) { return name.substr(0, name.rfind(ending)); }

/// "demo:robot.Type" is "demo" and "robot.Type"; a name without a ":" is a local name.
std::string prefixOf(std::string const& name)
{
    auto const colon = name.find(':');
    return colon == std::string::npos ? std::string() : name.substr(0, colon);
}
std::string localNameOf(std::string const& name)
{
    return name.substr(name.find(':') + 1); // all of it without a ":": npos + 1 is 0
}

/// Both separators count on every platform: a model's file may have been named elsewhere.
std::string withoutDirectories(std::string const& fileName) { return fileName.substr(fileName.find_last_of("\\/") + 1); }

void writeAttributes(std::ostream& stream, std::vector<NyXmlSchemaAttributeType> const& attributes, char const* indent)
{
    for (NyXmlSchemaAttributeType const& attribute : attributes) {
        stream << indent << "<attribute name=\"" << attribute.elementName().token() << "\" type=\"" << attribute.type()
               << "\"/>\n";
    }
}

bool isChoice(NyXmlSchemaElementType::XML_STARTTAG_OPTION mode) { return mode == NyXmlSchemaElementType::XML_STARTTAG_CHOICE; }

} // namespace

bool NyXmlSchema::write(std::string fileName)
{
    std::string const base = cutAt(cutAt(fileName, ".xml"), ".xsd");
    std::vector<std::string> fileNames;
    for (std::string const& ns : m_theNamespaces)
        fileNames.push_back(base + "." + convertNamespaceToPrefix(ns) + ".xsd");

    bool allOpened = true;
    std::ofstream stream;
    for (std::size_t i = 0; i < fileNames.size(); ++i) {
        stream.open(fileNames[i]);
        if (!stream) {
            allOpened = false;
            continue;
        }
        writeDocument(stream, i, fileNames);
        stream.close();
    }
    return allOpened;
}

void NyXmlSchema::writeDocument(std::ostream& stream, std::size_t which, std::vector<std::string> const& fileNames)
{
    std::string const ns = m_theNamespaces[which];

    stream << "<schema xmlns=\"" << xmlSchemaNamespace << "\"\n";
    for (std::string const& declared : m_theNamespaces)
        stream << "  xmlns:" << convertNamespaceToPrefix(declared) << "=\"" << declared << "\"\n";
    stream << "  targetNamespace=\"" << ns << "\"\n";
    stream << "  elementFormDefault = \"qualified\">\n\n";

    // Imports go forward only, so that no two files import each other. A reference back to an earlier namespace has its prefix and no
    // import: validating parsers refuse the file for it, see docs/described-schema.md.
    for (std::size_t i = which + 1; i < m_theNamespaces.size(); ++i) {
        stream << "  <import namespace=\"" << m_theNamespaces[i] << "\" schemaLocation=\"" << withoutDirectories(fileNames[i])
               << "\"/>\n\n";
    }
    for (NyXmlSchemaGlobalElementType const& global : m_theGlobalElements) {
        if (global.getNamespace() == ns) {
            stream << "  <element name=\"" << global.elementName().token() << "\" type=\"" << global.type()
                   << "\" nillable=\"true\"/>\n";
        }
    }
    stream << "\n";

    writeComplexType(stream, ns);
    writeGroups(stream, ns);
    writeSimpleTypes(stream, ns);
    stream << "</schema>";
}

void NyXmlSchema::writeComplexType(std::ostream& stream, std::string ns)
{
    for (auto const& [name, type] : m_theComplexTypes) {
        if (type.getNamespace() != ns)
            continue;
        stream << "  <complexType name=\"" << localNameOf(name) << "\">\n";

        std::vector<NyXmlSchemaElementType> const& elements = type.elementVector();
        if (!elements.empty()) {
            bool const repeats = isChoice(elements.front().startTagMode());
            stream << (repeats ? "    <sequence minOccurs=\"0\" maxOccurs=\"unbounded\">\n" : "    <sequence>\n");
            for (NyXmlSchemaElementType const& element : elements) {
                if (isChoice(element.startTagMode()))
                    stream << "      <group ref=\"" << element.elementName().token() << "\"/>\n";
                else
                    writeElement(stream, element, ns);
            }
            stream << "    </sequence>\n\n";
        }

        if (type.contentType().empty()) {
            writeAttributes(stream, type.attributeVector(), "    ");
        } else {
            stream << "    <simpleContent>\n"
                   << "      <extension base=\"" << type.contentType() << "\">\n";
            writeAttributes(stream, type.attributeVector(), "        ");
            stream << "      </extension>\n"
                   << "    </simpleContent>\n";
        }
        stream << "  </complexType>\n\n";
    }
}

void NyXmlSchema::writeGroups(std::ostream& stream, std::string const& ns)
{
    for (auto const& [name, group] : m_theGroupTypes) {
        if (group.getNamespace() != ns)
            continue;
        char const* const kind = isChoice(group.startTagMode()) ? "choice" : "sequence";
        stream << "  <group name=\"" << localNameOf(name) << "\">\n"
               << "    <" << kind << ">\n";
        for (NyXmlSchemaElementType const& element : group.elementVector())
            writeElement(stream, element, ns);
        stream << "    </" << kind << ">\n"
               << "  </group>\n\n";
    }
}

// An element may always be missing, and if it is declared here it may be nil: what equals its default is often not written. Whether a
// merge has met an occurrence without it makes no difference.
void NyXmlSchema::writeElement(std::ostream& stream, NyXmlSchemaElementType const& element, std::string const& ns)
{
    bool const isOurs = element.getNamespace() == ns;
    std::string const localName = element.elementName().token();
    if (isOurs)
        stream << "      <element name=\"" << localName << "\" type=\"" << element.type() << "\"";
    else
        stream << "      <element ref=\"" << convertNamespaceToPrefix(element.getNamespace()) << ":" << localName << "\"";
    stream << " minOccurs=\"0\"";
    if (element.startTagMode() == NyXmlSchemaElementType::XML_STARTTAG_UNBOUNDED)
        stream << " maxOccurs=\"unbounded\"";
    if (isOurs)
        stream << " nillable=\"true\"";
    stream << "/>\n";
}

void NyXmlSchema::writeSimpleTypes(std::ostream& stream, std::string const& ns)
{
    std::string const prefix = convertNamespaceToPrefix(ns);
    for (auto const& [itemType, listType] : m_theSimpleTypes) {
        if (prefixOf(listType) != prefix)
            continue;
        stream << "  <simpleType name=\"" << localNameOf(listType) << "\">\n"
               << "    <list itemType=\"" << itemType << "\"/>\n"
               << "  </simpleType>\n\n";
    }
}
