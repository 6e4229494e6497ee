#include <nyXmlKit/model/NyXmlPolymorphic.h>

#include <nyXml/platform/NyPrint.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <algorithm>
#include <typeinfo>

NyXmlPolymorphic::NyXmlPolymorphic(NyXmlPolymorphic const& other) : NyXmlBaseVariableCompoundType(other), NyXmlMemberKind(other)
{
    *this = other;
}

NyXmlPolymorphic& NyXmlPolymorphic::operator=(NyXmlPolymorphic const& other)
{
    if (this == &other)
        return *this;
    NyXmlBaseVariableCompoundType::operator=(other);
    std::vector<Child> children; // whole before ours go: the source may lie in one of them
    for (Child const& child : other.m_theChildren)
        children.push_back({ std::unique_ptr<NyXmlObject>(child.object->clone()), child.name, child.library });
    m_theFactory = other.m_theFactory;
    m_theChildren.swap(children);
    return *this;
}

NyXmlPolymorphic::~NyXmlPolymorphic() = default;

bool NyXmlPolymorphic::read(NyXmlReader& reader)
{
    if (!NyXmlObject::read(reader))
        return false;
    m_theChildren.clear();
    if (reader.mode() == NyXmlFileReader::XML_READER_EMPTY_TAG)
        return true;
    NyXmlFileReader::XML_READER_MODE event = reader.readXml();
    while (event == NyXmlFileReader::XML_READER_START_TAG || event == NyXmlFileReader::XML_READER_EMPTY_TAG) {
        NyToken const element = reader.element();
        std::string const library =
            reader.attributeValue(NyXml::NyLibraryToken); // first: it may bring the class of just this child
        if (!library.empty())
            m_theFactory.load(library, false);
        if (!readValueFromToken(element, reader)) {
            Ny::Print::write(Ny::Print::FAULT, "Bad token: %s on line %d\n", element.c_str(), reader.lineCountOfFile());
            reader.nextMatchingEndTag();
        }
        event = reader.readXml();
    }
    return event != NyXmlFileReader::XML_READER_ERROR;
}

bool NyXmlPolymorphic::readValueFromToken(NyToken const& element, NyXmlReader& reader)
{
    if (element == NyXml::NyAddLibrariesToken.token()) {
        m_AddLibraries.read(reader);
        processLibraries();
        return true;
    }
    std::unique_ptr<NyXmlObject> object(newObjectFromToken(element));
    if (!object && reader.factoryPointer() != nullptr)
        object.reset(reader.factoryPointer()->newObjectFromToken(element));
    if (!object || !isWanted(*object))
        return false;
    m_theChildren.push_back({ std::move(object), nameOf(element), m_theFactory.libraryOf(element) });
    m_theChildren.back().object->read(reader);
    return true;
}

bool NyXmlPolymorphic::write(NyXmlWriter& writer) const
{
    bool const result = NyXmlBaseVariableCompoundType::write(writer);
    for (Child const& child : m_theChildren) {
        if (child.name.namespaceName().empty())
            writer.writeStartTagUsingParentNamespace(child.name);
        else
            writer.writeStartTag(child.name);
        if (!child.library.empty()) {
            writer.setAttributeName(NyXml::NyLibraryToken);
            writer << child.library;
        }
        child.object->write(writer);
        writer.writeEndTag();
    }
    return result;
}

bool NyXmlPolymorphic::equalsDefault() const { return m_theChildren.empty() && addLibraries().size() == 0; }

bool NyXmlPolymorphic::equality(NyXmlObject const* other) const
{
    auto const* same = dynamic_cast<NyXmlPolymorphic const*>(other);
    if (same == nullptr || typeid(*this) != typeid(*same) || !(addLibraries() == same->addLibraries()))
        return false;
    return std::equal(m_theChildren.begin(), m_theChildren.end(), same->m_theChildren.begin(), same->m_theChildren.end(),
                      [](Child const& one, Child const& two) { return one.object->equality(two.object.get()); });
}

void NyXmlPolymorphic::registerComponentCreator(NyToken const& token, NyXmlCreator creator)
{
    m_theFactory.registerComponentCreator(token, creator);
}

NyXmlObject* NyXmlPolymorphic::newObjectFromToken(NyToken const& token) const
{
    if (!xmlInitialized()) // lazily, as a write does it: the creators are part of the object
        const_cast<NyXmlPolymorphic*>(this)->xmlInit();
    return m_theFactory.newObjectFromToken(token);
}

NyXmlFactory::CreatorMap const& NyXmlPolymorphic::creatorMap() const
{
    if (!xmlInitialized())
        const_cast<NyXmlPolymorphic*>(this)->xmlInit();
    return m_theFactory.creatorMap();
}

std::vector<NyXmlMemberKind::Alternative> NyXmlPolymorphic::alternatives() const
{
    std::vector<Alternative> result;
    for (auto const& [token, creator] : creatorMap())
        if (std::unique_ptr<NyXmlObject> prototype{ creator() })
            if (isWanted(*prototype))
                result.push_back({ token, std::move(prototype) });
    return result;
}

std::vector<std::string> NyXmlPolymorphic::ownAttributes() const { return { NyXml::NyLibraryToken.token() }; }

bool NyXmlPolymorphic::loadLibrary(std::string const& library) { return m_theFactory.load(library, false); }

void NyXmlPolymorphic::processLibraries()
{
    for (unsigned int i = 0; i < m_AddLibraries.size(); ++i)
        m_theFactory.load(m_AddLibraries[i].value() + ".nyp", true);
}

void NyXmlPolymorphic::add(std::unique_ptr<NyXmlObject> object)
{
    NyToken const name = object->token();
    m_theChildren.push_back({ std::move(object), name, m_theFactory.libraryOf(name) });
}

NyXmlObject* NyXmlPolymorphic::addByName(NyToken const& name)
{
    std::unique_ptr<NyXmlObject> object(newObjectFromToken(name));
    if (!object || !isWanted(*object))
        return nullptr;
    m_theChildren.push_back({ std::move(object), nameOf(name), m_theFactory.libraryOf(name) });
    return m_theChildren.back().object.get();
}

// The name with the namespace of its class: readers give names without.
NyToken NyXmlPolymorphic::nameOf(NyToken const& element) const
{
    auto const known = creatorMap().find(element);
    return known == creatorMap().end() ? element : known->first;
}

void NyXmlPolymorphic::Factory::registerComponentCreator(NyToken const& token, NyXmlCreator creator)
{
    NyXmlFactory::registerComponentCreator(token, creator);
    m_theOrigins[token.token()] = m_theLoading;
}

bool NyXmlPolymorphic::Factory::load(std::string const& library, bool isListed)
{
    auto const known =
        std::find_if(m_theLibraries.begin(), m_theLibraries.end(), [&](Library const& other) { return other.name == library; });
    if (known != m_theLibraries.end()) {
        known->isListed = known->isListed || isListed;
        return true;
    }
    m_theLoading = library;
    bool const isLoaded = loadLibrary(library);
    m_theLoading.clear();
    if (isLoaded)
        m_theLibraries.push_back({ library, isListed });
    return isLoaded;
}

std::string NyXmlPolymorphic::Factory::libraryOf(NyToken const& token) const
{
    auto const origin = m_theOrigins.find(token.token());
    if (origin == m_theOrigins.end())
        return std::string();
    auto const isListed = [&](Library const& library) { return library.isListed && library.name == origin->second; };
    return std::any_of(m_theLibraries.begin(), m_theLibraries.end(), isListed) ? std::string() : origin->second;
}
