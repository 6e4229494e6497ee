#include <nyXml/compound/NyXmlBaseVariableCompoundType.h>

#include <nyXml/core/NyXml.h>
#include <nyXml/platform/NyPrint.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/schema/NyXmlSchema.h>
#include <nyXml/traversal/NyXmlObjectVisitor.h>
#include <nyXml/writer/NyXmlWriter.h>
#include <nyXml/writer/detail/NyXmlTogether.h>

#include <memory>
#include <typeinfo>

NyXmlBaseVariableCompoundType::NyXmlBaseVariableCompoundType() = default;

NyXmlBaseVariableCompoundType::NyXmlBaseVariableCompoundType(NyXmlBaseVariableCompoundType const& other)
    : NyXmlObject(other),
      m_AddLibraries(other.m_AddLibraries)
{}

NyXmlBaseVariableCompoundType::~NyXmlBaseVariableCompoundType() = default;

NyXmlBaseVariableCompoundType& NyXmlBaseVariableCompoundType::operator=(NyXmlBaseVariableCompoundType const& other)
{
    NyXmlObject::operator=(other);
    m_AddLibraries = other.m_AddLibraries;
    return *this;
}

bool NyXmlBaseVariableCompoundType::operator==(NyXmlBaseVariableCompoundType const& other) const
{
    if (xmlInitialized() && other.xmlInitialized() && !(m_Factory == other.m_Factory))
        return false;
    return m_AddLibraries == other.m_AddLibraries;
}

void NyXmlBaseVariableCompoundType::accept(NyXmlObjectVisitor* visitor) const { visitor->visit(this); }

bool NyXmlBaseVariableCompoundType::xmlInit()
{
    bool const wasInitialized = xmlInitialized();
    NyXmlObject::xmlInit();
    try {
        registerComponents();
    } catch (...) { // half registered is not initialised: the next use begins anew
        setXmlInitialized(wasInitialized);
        throw;
    }
    return true;
}

bool NyXmlBaseVariableCompoundType::read(NyXmlReader& reader)
{
    if (!NyXmlObject::read(reader))
        return false;
    if (reader.mode() == NyXmlFileReader::XML_READER_EMPTY_TAG)
        return true;
    NyXmlFileReader::XML_READER_MODE event = reader.readXml();
    while (event == NyXmlFileReader::XML_READER_START_TAG || event == NyXmlFileReader::XML_READER_EMPTY_TAG) {
        NyToken const element = reader.element();
        // First the library, then the child: it may bring the class of just this child.
        std::string const library = reader.attributeValue(NyXml::NyLibraryToken);
        if (!library.empty())
            m_Factory.loadLibrary(library);
        if (!readValueFromToken(element, reader)) {
            Ny::Print::write(Ny::Print::FAULT, "Bad token: %s on line %d\n", element.namespaceAndToken().c_str(),
                             reader.lineCountOfFile());
            reader.nextMatchingEndTag();
        }
        event = reader.readXml();
    }
    return event != NyXmlFileReader::XML_READER_ERROR;
}

bool NyXmlBaseVariableCompoundType::write(NyXmlWriter& writer) const
{
    bool const result = NyXmlObject::write(writer);
    if (m_AddLibraries.size() != 0) {
        NyXmlTogether together(writer);
        writer.writeStartTagUsingParentNamespace(NyXml::NyAddLibrariesToken);
        m_AddLibraries.write(writer);
        writer.writeEndTag();
        together.end();
    }
    return result;
}

bool NyXmlBaseVariableCompoundType::writeSchema(NyXmlSchema& schema) const
{
    bool const result = NyXmlObject::writeSchema(schema);
    if (creatorMap().empty())
        return result;
    schema.openGroup();
    schema.writeStartTagUsingParentNamespace(NyXml::NyAddLibrariesToken, NyXmlSchemaElementType::XML_STARTTAG_CHOICE);
    LibraryVector().writeSchema(schema);
    schema.writeEndTag();
    for (auto const& [token, creator] : creatorMap()) {
        std::unique_ptr<NyXmlObject const> const object(creator());
        if (!object)
            continue;
        NyXmlObject const& member = *object;
        schema.writeStartTag(token, NyXmlSchemaElementType::XML_STARTTAG_CHOICE);
        if (schema.isRegistered(token, typeid(member).name()))
            continue; // described already: the schema has closed the element
        member.writeSchema(schema);
        schema.writeEndTag();
    }
    schema.closeGroup();
    return result;
}

void NyXmlBaseVariableCompoundType::registerComponentCreator(NyToken const& token, NyXmlCreator creator)
{
    m_Factory.registerComponentCreator(token, creator);
}

NyXmlObject* NyXmlBaseVariableCompoundType::newObjectFromToken(NyToken const& token) const
{
    if (!xmlInitialized()) // lazily, as a write does it: the creators are part of the object
        const_cast<NyXmlBaseVariableCompoundType*>(this)->xmlInit();
    return m_Factory.newObjectFromToken(token);
}

NyXmlVectorType<NyXmlBasicType<std::string>> const& NyXmlBaseVariableCompoundType::addLibraries() const { return m_AddLibraries; }

void NyXmlBaseVariableCompoundType::setAddLibraries(NyXmlVectorType<NyXmlBasicType<std::string>> const& libraries)
{
    m_AddLibraries = libraries;
}

NyXmlFactory::CreatorMap const& NyXmlBaseVariableCompoundType::creatorMap() const { return m_Factory.creatorMap(); }

void NyXmlBaseVariableCompoundType::processLibraries()
{
    for (unsigned int i = 0; i < m_AddLibraries.size(); ++i)
        m_Factory.loadLibrary(m_AddLibraries[i].value() + ".nyp");
}
