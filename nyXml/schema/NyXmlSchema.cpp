#include <nyXml/schema/NyXmlSchema.h>

#include <nyXml/schema/detail/NyXmlSchemaIndex.h>

#include <typeinfo>

NyXmlSchema::NyXmlSchema() : m_theCurrentElement(&m_theRootElement) { m_theRootElement.setPointers(this, nullptr); }

NyXmlSchema::NyXmlSchema(NyXmlSchema const& other) : NyXmlSchema() { *this = other; } // which leaves the registry out

NyXmlSchema& NyXmlSchema::operator=(NyXmlSchema const& other)
{
    if (this == &other)
        return *this;
    m_theLastOperation = other.m_theLastOperation;
    m_theRootElement = other.m_theRootElement;
    m_theCurrentElement = other.m_theCurrentElement;
    m_theGlobalElements = other.m_theGlobalElements;
    m_theSimpleTypes = other.m_theSimpleTypes;
    m_theComplexTypes = other.m_theComplexTypes;
    m_theGroupTypes = other.m_theGroupTypes;
    m_theGroupIndex = other.m_theGroupIndex;
    m_thePrefixes = other.m_thePrefixes;
    m_theNamespaces = other.m_theNamespaces;
    m_theOpenNames = other.m_theOpenNames;
    m_theIndex.reset();
    return *this;
}

bool NyXmlSchema::operator==(NyXmlSchema const& other) const
{
    return m_theLastOperation == other.m_theLastOperation && m_theRootElement == other.m_theRootElement &&
           m_theCurrentElement == other.m_theCurrentElement && m_theGlobalElements == other.m_theGlobalElements &&
           m_theSimpleTypes == other.m_theSimpleTypes && m_theComplexTypes == other.m_theComplexTypes &&
           m_theGroupTypes == other.m_theGroupTypes && m_theGroupIndex == other.m_theGroupIndex &&
           m_thePrefixes == other.m_thePrefixes && m_theNamespaces == other.m_theNamespaces;
}

NyXmlSchema::~NyXmlSchema() = default;

bool NyXmlSchema::writeStartTag(NyToken const& token, XML_STARTTAG_OPTION mode)
{
    bool const wasOpen = isOpen(token);
    std::string const ns = token.xmlNamespace();
    if (m_thePrefixes.count(ns) == 0) {
        m_thePrefixes[ns] = ns.substr(ns.rfind('/') + 1); // all of it without a "/": npos + 1 is 0
        m_theNamespaces.push_back(ns);
    }
    m_theLastOperation = START_TAG;
    m_theOpenNames.emplace(token.token(), ns);
    m_theCurrentElement = m_theCurrentElement->writeStartTag(token, mode, m_theGroupIndex);
    return wasOpen;
}

bool NyXmlSchema::writeStartTagUsingParentNamespace(std::string const& localName, XML_STARTTAG_OPTION mode)
{
    return writeStartTag(m_theCurrentElement->getNamespace() + "#" + localName, mode);
}

void NyXmlSchema::setAttributeName(NyToken const& token)
{
    m_theLastOperation = ATTRIBUTE_NAME;
    m_theCurrentElement->setAttributeName(token);
}

void NyXmlSchema::setAttributeType(std::string const& type)
{
    m_theLastOperation = ATTRIBUTE_TYPE;
    m_theCurrentElement->setAttributeType(type);
}

void NyXmlSchema::setContentType(std::string const& type)
{
    m_theLastOperation = CONTENT_TYPE;
    m_theCurrentElement->setContentType(type);
}

char const* NyXmlSchema::typeWord(std::type_info const& info) noexcept
{
    struct Row {
        std::type_info const& info;
        char const* word;
    };
    static constexpr char const* otherwise = "string";
    static Row const rows[] = {
        { typeid(bool), "boolean" },
        { typeid(float), "float" },
        { typeid(double), "double" },
        { typeid(unsigned long), "unsignedLong" },
        { typeid(long), "long" },
        { typeid(unsigned short), "unsignedShort" },
        { typeid(short), "short" },
        { typeid(unsigned char), "unsignedByte" },
        { typeid(char), "byte" },
        // Schemas in the field declare every "size" as a string. These are as any other type, but so frequent that the search should
        // end early.
        { typeid(int), otherwise },
        { typeid(unsigned int), otherwise },
        { typeid(std::string), otherwise },
    };
    for (Row const& row : rows) { // the addresses first: types are nearly always one object for the whole process
        if (&info == &row.info)
            return row.word;
    }
    for (Row const& row : rows) {
        if (info == row.info)
            return row.word;
    }
    return otherwise;
}

void NyXmlSchema::setType(std::type_info const& info)
{
    std::string const type = typeWord(info);
    if (m_theLastOperation == ATTRIBUTE_NAME)
        setAttributeType(type);
    else
        setContentType(type);
}

void NyXmlSchema::writeEndTag()
{
    m_theLastOperation = END_TAG;
    if (leaveOpenElement())
        m_theCurrentElement = m_theCurrentElement->writeEndTag();
}

void NyXmlSchema::writeEndTagRecursive()
{
    m_theLastOperation = END_TAG;
    if (leaveOpenElement())
        m_theCurrentElement = m_theCurrentElement->writeEndTagRecursive();
}

// What the open element's isRecursiveElement() says. The nameless root counts as one of the ancestors.
bool NyXmlSchema::isOpen(NyToken const& token) const
{
    return token == m_theRootElement.elementName() || m_theOpenNames.count({ token.token(), token.xmlNamespace() }) != 0;
}

// False if nothing is open, for an end tag too many.
bool NyXmlSchema::leaveOpenElement()
{
    if (m_theCurrentElement->parent() == nullptr)
        return false;
    NyToken const& name = m_theCurrentElement->elementName();
    auto const open = m_theOpenNames.find({ name.token(), name.xmlNamespace() });
    if (open != m_theOpenNames.end())
        m_theOpenNames.erase(open);
    return true;
}

// The registry ends the walk through classes that have members of their own class, and spares describing anything twice. The first
// visit leaves an entry while its element is still open; a visit inside it finds that entry, closes at once under the conventional
// type name and turns back; and the outer element's type is entered under that same name.

bool NyXmlSchema::isRegistered(NyToken const& token, std::string const& typeId)
{
    bool const isNew = m_theRegistry.try_emplace(visitKey(token, typeId)).second;
    if (!isNew)
        writeEndTagRecursive();
    // Of the element that is open now: after a hit that is the parent, which from now on goes by its child's class. Its own entry is
    // never completed then, but it stays, and that it is there is all that the walk asks for.
    m_theCurrentElement->setTypeIdString(typeId);
    return !isNew;
}

void NyXmlSchema::unRegister(NyToken const& token, std::string const& typeId) { m_theRegistry.erase(visitKey(token, typeId)); }

void NyXmlSchema::updateRegistry(NyToken const& token, std::string const& typeId, std::string const& type,
                                 std::string const& contentType)
{
    auto const entry = m_theRegistry.find(visitKey(token, typeId));
    if (entry != m_theRegistry.end())
        entry->second = { type, contentType };
}

void NyXmlSchema::getFromRegistry(NyToken const& token, std::string const& typeId, std::string& type,
                                  std::string& contentType) const
{
    auto const entry = m_theRegistry.find(visitKey(token, typeId));
    if (entry == m_theRegistry.end())
        return;
    type = entry->second.type;
    contentType = entry->second.contentType;
}

NyXmlSchema::VisitKey NyXmlSchema::visitKey(NyToken const& token, std::string const& typeId)
{
    return { token.token(), token.xmlNamespace(), typeId };
}

void NyXmlSchema::globalElement(NyToken name, std::string ns, std::string type)
{
    if (!index().globalElements.insert(visitKey(name, ns)).second)
        return;
    NyXmlSchemaGlobalElementType& global = m_theGlobalElements.emplace_back();
    global.setElementName(name);
    global.setNamespace(ns);
    global.setType(type);
}

void NyXmlSchema::describing(NyXmlObject const&) {}
void NyXmlSchema::describingWords(std::vector<std::string> const&) {}

std::string NyXmlSchema::convertNamespaceToPrefix(std::string ns) { return m_thePrefixes[ns]; }

std::string NyXmlSchema::insertSimpleType(std::string const& itemType, std::string const& ns)
{
    auto const known = m_theSimpleTypes.find(itemType);
    if (known != m_theSimpleTypes.end())
        return known->second;
    return m_theSimpleTypes[itemType] = convertNamespaceToPrefix(ns) + ":" + itemType + ".ListType";
}

std::string NyXmlSchema::insertComplexType(NyXmlSchemaComplexType const& type, std::string const& name)
{
    auto& types = index().complexTypes;
    auto* const fitting = types.find(type);
    if (fitting == nullptr)
        return types.enter(type, name);
    types.merge(*fitting, type);
    return fitting->first;
}

std::string NyXmlSchema::insertGroupType(NyXmlSchemaGroupType const& type, std::string const& name)
{
    auto& groups = index().groupTypes;
    auto const* const fitting = groups.find(type);
    return fitting != nullptr ? fitting->first : groups.enter(type, name);
}

NyXmlSchema::Index& NyXmlSchema::index()
{
    if (!m_theIndex)
        m_theIndex = std::make_unique<Index>(*this);
    return *m_theIndex;
}
