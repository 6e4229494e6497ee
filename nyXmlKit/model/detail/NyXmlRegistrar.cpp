#include <nyXmlKit/model/detail/NyXmlRegistrar.h>

#include <nyXml/compound/NyXmlCompoundType.h>
#include <nyXml/platform/NyPrint.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/schema/NyXmlSchema.h>
#include <nyXml/values/NyXmlOrientation.h>
#include <nyXml/values/NyXmlVector.h>
#include <nyXml/values/NyXmlVectorVector.h>
#include <nyXml/writer/NyXmlWriter.h>
#include <nyXmlKit/model/NyXmlMemberKind.h>

#include <algorithm>
#include <cstring>
#include <cxxabi.h>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace {

// Asked twice for each registration, so it must not cost a call.
thread_local NyXmlRegistrar* theRegistrar __attribute__((tls_model("initial-exec"))) = nullptr;

std::ptrdiff_t distanceOf(NyXmlCompoundType const& compound, NyXmlObject const* object) noexcept
{
    return static_cast<char const*>(static_cast<void const*>(object)) -
           static_cast<char const*>(static_cast<void const*>(&compound));
}

NyXmlObject& memberAt(NyXmlCompoundType& compound, std::ptrdiff_t distance)
{
    return NyXmlClass::object(compound, { false, false, NyToken(), distance, nullptr, nullptr, NyXmlClass::noOccurrence });
}

std::string readableName(std::type_info const& type)
{
    int status = 0;
    std::unique_ptr<char, void (*)(void*)> const name(abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), std::free);
    return name ? name.get() : type.name();
}

// The core initialises objects on first use, under const operations, too.
void initialise(NyXmlCompoundType const& compound)
{
    if (!compound.xmlInitialized())
        const_cast<NyXmlCompoundType&>(compound).xmlInit();
}

NyXmlCompoundType::ComponentMap const& mapOf(NyXmlCompoundType const& compound, bool ofAttributes)
{
    return ofAttributes ? const_cast<NyXmlCompoundType&>(compound).attributeComponentMap() : compound.componentMap();
}

// Attributes or elements in the order of writing, those of a varying class from its maps.
template <class Action> // (NyToken const& token, NyXmlObject& object, NyXmlOccurrence* occurrence)
void forEach(NyXmlCompoundType const& compound, NyXmlClass const& ofClass, bool ofAttributes, Action action)
{
    if (NyXmlClass::Members const* const members = ofClass.members()) {
        for (NyXmlClass::Member const& member : ofAttributes ? members->attributes : members->elements)
            action(member.token, NyXmlClass::object(compound, member), NyXmlClass::occurrence(compound, member));
        return;
    }
    for (auto const& [token, object] : mapOf(compound, ofAttributes))
        action(token, *object, dynamic_cast<NyXmlOccurrence*>(object));
}

// Hot: twice for each object that is read and has any.
template <class Action> // (bool isAttribute, NyToken const& token, NyXmlObject& object)
void forEachRequired(NyXmlCompoundType const& compound, NyXmlClass const& ofClass, Action action)
{
    if (NyXmlClass::Members const* const members = ofClass.members()) {
        for (NyXmlClass::Member const& member : members->required)
            action(member.isAttribute, member.token, NyXmlClass::object(compound, member));
        return;
    }
    for (bool const ofAttributes : { true, false })
        for (auto const& [token, object] : mapOf(compound, ofAttributes))
            if (ofClass.isRequired(ofAttributes, token.localName()))
                action(ofAttributes, token, *object);
}

bool sameMaps(NyXmlCompoundType::ComponentMap const& one, NyXmlCompoundType::ComponentMap const& two)
{
    auto other = two.begin();
    for (auto const& [token, object] : one) {
        if (other == two.end() || token != other->first || !object->equality(other->second))
            return false;
        ++other;
    }
    return other == two.end();
}

} // namespace

NyXmlRegistrar::NyXmlRegistrar(NyXmlCompoundType& compound, NyXmlModelKind& kind)
    : m_theCompound(compound),
      m_theKind(kind),
      m_theClass(kind.xmlClass()),
      m_theKnown(m_theClass.members()),
      m_theOuter(theRegistrar)
{
    theRegistrar = this;
    if (m_theKnown != nullptr) {
        m_theNext = m_theKnown->registered.data();
        m_theEnd = m_theNext + m_theKnown->registered.size();
    }
    if (&typeid(compound) != &m_theClass.type() && typeid(compound) != m_theClass.type()) {
        std::string const name = readableName(typeid(compound)), base = readableName(m_theClass.type());
        Ny::Print::write(
            Ny::Print::FAULT,
            "NyXmlModel Error: class %s derives from %s and not from NyXmlModel<%s, %s>.\n\tIts copies would be of class %s.\n",
            name.c_str(), base.c_str(), name.c_str(), base.c_str(), base.c_str());
        m_differs = true;
    }
}

NyXmlRegistrar::~NyXmlRegistrar()
{
    registerBasesOnce(); // nothing was registered by the class itself
    theRegistrar = m_theOuter;
    if (!m_theVersioned.empty())
        m_theClass.publish(std::move(m_theVersioned));
    if (m_differs || m_theNext != m_theEnd)
        m_theClass.setVarying();
    else if (m_theKnown == nullptr && !m_theClass.isVarying())
        m_theClass.publish(m_theCompound, std::move(m_theNoted));
}

void NyXmlRegistrar::registerBasesOnce()
{
    if (!std::exchange(m_hasBases, true))
        m_theKind.registerBases();
}

// Hot: once for each member of each object that is read. What is not as the last time is done elsewhere, so that this stays small.
void NyXmlRegistrar::enter(NyXmlCompoundType& compound, NyXmlClass const* ofClass, bool isAttribute, char const* scope,
                           char const* name, NyXmlObject* object)
{
    NyXmlRegistrar* const registrar = theRegistrar;
    if (registrar == nullptr || &registrar->m_theCompound != &compound || !registrar->m_hasBases)
        return enterAnew(compound, ofClass, isAttribute, scope, name, object);
    NyXmlClass::Member const* const next = registrar->m_theNext;
    if (next == registrar->m_theEnd || next->name != name || next->scope != scope || next->isAttribute != isAttribute ||
        next->distance != distanceOf(compound, object) || next->isReadOnly || next->isRequired != (ofClass != nullptr))
        return enterAnew(compound, ofClass, isAttribute, scope, name, object);
    registrar->m_theNext = next + 1;
    registrar->m_isCompared = true;
    if (isAttribute)
        compound.registerAttributeComponent(next->token, object);
    else
        compound.registerComponent(next->token, object);
    registrar->m_isCompared = false; // an override may have kept it from us
}

void NyXmlRegistrar::enterAnew(NyXmlCompoundType& compound, NyXmlClass const* ofClass, bool isAttribute, char const* scope,
                               char const* name, NyXmlObject* object)
{
    NyXmlRegistrar* const registrar =
        theRegistrar != nullptr && &theRegistrar->m_theCompound == &compound ? theRegistrar : nullptr;
    if (registrar != nullptr && !registrar->m_hasBases) {
        registrar->registerBasesOnce();
        return enter(compound, ofClass, isAttribute, scope, name, object);
    }
    NyToken const token = NyXmlModelWork::tokenInScopeOf(isAttribute ? "" : scope, name);
    bool const isRequired = ofClass != nullptr;
    if (isRequired)
        ofClass->addRequired(isAttribute, token.localName());
    auto const registerIt = [&] {
        if (isAttribute)
            compound.registerAttributeComponent(token, object);
        else
            compound.registerComponent(token, object);
    };
    if (registrar == nullptr)
        return registerIt();
    char const* const outerScope = std::exchange(registrar->m_theScope, scope);
    char const* const outerName = std::exchange(registrar->m_theName, name);
    bool const wasRequired = std::exchange(registrar->m_isRequired, isRequired);
    registerIt();
    registrar->m_theScope = outerScope;
    registrar->m_theName = outerName;
    registrar->m_isRequired = wasRequired;
}

NyXmlRegistrar* NyXmlRegistrar::noterOfVersions(NyXmlCompoundType const& compound)
{
    NyXmlRegistrar* const registrar = theRegistrar;
    if (registrar == nullptr || &registrar->m_theCompound != &compound)
        return nullptr;
    registrar->registerBasesOnce();
    return registrar->m_theClass.versioned().empty() ? registrar : nullptr;
}

bool NyXmlRegistrar::enterVersioned(NyXmlCompoundType& compound, NyXmlClass const& ofClass, bool isRequired, bool isAttribute,
                                    char const* name, NyXmlVersions versions, NyXmlObject* object)
{
    std::ptrdiff_t const distance = distanceOf(compound, object);
    if (NyXmlRegistrar* const noter = noterOfVersions(compound); noter != nullptr && ofClass.isInside(compound, distance)) {
        auto const read = [distance](NyXmlCompoundType& into, NyXmlReader& reader, bool asAttribute) {
            NyXmlObject& member = memberAt(into, distance);
            if (asAttribute)
                member.readAttribute(reader);
            else
                member.read(reader);
        };
        noter->m_theVersioned.push_back({ isAttribute, name, versions, read, isRequired, distance });
        if (isRequired)
            ofClass.addRequired(isAttribute, name);
    }
    return versions.hold(ofClass.currentVersion());
}

void NyXmlRegistrar::enterOld(NyXmlCompoundType& compound, bool isAttribute, char const* name, NyXmlVersions versions,
                              NyXmlClass::ReadOld read)
{
    if (NyXmlRegistrar* const noter = noterOfVersions(compound))
        noter->m_theVersioned.push_back({ isAttribute, name, versions, std::move(read) });
}

void NyXmlRegistrar::note(NyXmlCompoundType const& compound, NyXmlModelKind const& kind, bool isAttribute, bool isReadOnly,
                          NyToken const& token, NyXmlObject* object)
{
    NyXmlRegistrar* const registrar = theRegistrar;
    if (registrar == nullptr || &registrar->m_theCompound != &compound) {
        kind.xmlClass().setVarying(); // at another time than the others of the class
        return;
    }
    if (std::exchange(registrar->m_isCompared, false))
        return;
    registrar->registerBasesOnce();
    std::ptrdiff_t const distance = distanceOf(compound, object);
    if (registrar->m_theKnown == nullptr) {
        registrar->m_theNoted.push_back({ isAttribute, isReadOnly, token, distance, registrar->m_theScope, registrar->m_theName,
                                          NyXmlClass::noOccurrence, registrar->m_isRequired });
        return;
    }
    NyXmlClass::Member const* const next = registrar->m_theNext;
    if (next != registrar->m_theEnd && next->distance == distance && next->isAttribute == isAttribute &&
        next->isReadOnly == isReadOnly && next->isRequired == registrar->m_isRequired &&
        (&next->token == &token || next->token == token))
        ++registrar->m_theNext;
    else
        registrar->m_differs = true;
}

NyToken NyXmlModelWork::tokenInScopeOf(char const* scope, char const* name)
{
    std::string_view const scopeText(scope);
    std::size_t const endOfNamespace = scopeText.find('#');
    if (endOfNamespace == std::string_view::npos || std::strchr(name, '#') != nullptr)
        return NyToken(name);
    return NyToken(std::string(scopeText.substr(0, endOfNamespace)), name);
}

bool NyXmlModelWork::sameMembers(NyXmlCompoundType const& one, NyXmlCompoundType const& two, NyXmlClass const& ofClass)
{
    if (ofClass.members() == nullptr) {
        initialise(one);
        initialise(two);
    }
    NyXmlClass::Members const* const members = ofClass.members();
    if (members == nullptr)
        return sameMaps(mapOf(one, true), mapOf(two, true)) && sameMaps(mapOf(one, false), mapOf(two, false));
    auto const isSame = [&](NyXmlClass::Member const& member) {
        return NyXmlClass::object(one, member).equality(&NyXmlClass::object(two, member));
    };
    for (auto const* const list : { &members->attributes, &members->elements })
        for (NyXmlClass::Member const& member : *list)
            if (!isSame(member))
                return false;
    return true;
}

void NyXmlModelWork::forget(NyXmlCompoundType& compound, NyXmlClass const& ofClass)
{
    if (ofClass.members() == nullptr)
        initialise(compound); // the first of its class; members of a copy count as read
    NyXmlClass::Members const* const members = ofClass.members();
    if (members == nullptr || members->hasOccurrences)
        for (bool const ofAttributes : { true, false })
            forEach(compound, ofClass, ofAttributes, [](NyToken const&, NyXmlObject&, NyXmlOccurrence* occurrence) {
                if (occurrence != nullptr)
                    occurrence->forget();
            });
    if (!ofClass.hasRequired())
        return;
    forEachRequired(compound, ofClass, [](bool, NyToken const&, NyXmlObject& object) { object.setSpecified(false); });
    for (NyXmlClass::Versioned const& each : ofClass.versioned())
        if (each.isRequired)
            memberAt(compound, each.distance).setSpecified(false);
}

bool NyXmlModelWork::tellsWhetherRead(NyXmlObject const& member)
{
    return dynamic_cast<NyXmlVector const*>(&member) == nullptr && dynamic_cast<NyXmlOrientation const*>(&member) == nullptr &&
           dynamic_cast<NyXmlVectorVector const*>(&member) == nullptr;
}

void NyXmlModelWork::reportMissing(NyXmlCompoundType& compound, NyXmlClass const& ofClass, NyXmlReader const& reader,
                                   unsigned int version)
{
    auto const look = [&](bool isAttribute, std::string const& name, NyXmlObject const& member) {
        if (!member.specified() && tellsWhetherRead(member))
            Ny::Print::write(Ny::Print::FAULT,
                             "NyXmlModel Error: file not valid.\n\tRequired member is missing: %s \"%s\" of \"%s\".\n\tFile: "
                             "%s\n\tLine: %d\n",
                             isAttribute ? "attribute" : "element", name.c_str(), compound.token().c_str(), reader.filename(),
                             reader.lineCountOfFile());
    };
    std::vector<NyXmlClass::Versioned> const& versioned = ofClass.versioned();
    auto const isVersioned = [&](bool isAttribute, std::string const& name) {
        return std::any_of(versioned.begin(), versioned.end(), [&](NyXmlClass::Versioned const& each) {
            return each.isAttribute == isAttribute && each.name == name;
        });
    };
    forEachRequired(compound, ofClass, [&](bool isAttribute, NyToken const& token, NyXmlObject const& object) {
        if (!isVersioned(isAttribute, token.localName()))
            look(isAttribute, token.localName(), object);
    });
    for (NyXmlClass::Versioned const& each : versioned)
        if (each.isRequired && each.versions.hold(version == NyXmlVersions::latest ? ofClass.currentVersion() : version))
            look(each.isAttribute, each.name, memberAt(compound, each.distance));
}

bool NyXmlModelWork::write(NyXmlCompoundType const& compound, NyXmlClass const& ofClass, NyXmlWriter& writer)
{
    if (!writer.writeDefaultDataFlag()) {
        initialise(compound);
        if (ofClass.hasRequired())
            return compound.writeAttributes(writer) && compound.writeElements(writer);
    }
    return compound.NyXmlCompoundType::write(writer);
}

bool NyXmlModelWork::writesAsCore(NyXmlCompoundType const& compound, NyXmlClass const& ofClass, NyXmlWriter const& writer)
{
    return describesAsCore(compound, ofClass) && (writer.writeDefaultDataFlag() || !ofClass.hasRequired());
}

bool NyXmlModelWork::describesAsCore(NyXmlCompoundType const& compound, NyXmlClass const& ofClass)
{
    if (!compound.xmlInitialized())
        return true; // with nothing to write
    NyXmlClass::Members const* const members = ofClass.members();
    return members != nullptr && !members->hasOccurrences && members->isInOrderOfCore;
}

void NyXmlModelWork::writeAttributes(NyXmlCompoundType const& compound, NyXmlClass const& ofClass, NyXmlWriter& writer,
                                     IsReadOnly isReadOnly)
{
    NyXmlClass::Members const* const members = ofClass.members();
    bool const hasMarks = members == nullptr || members->hasReadOnly;
    forEach(compound, ofClass, true, [&](NyToken const& token, NyXmlObject const& object, NyXmlOccurrence const* occurrence) {
        if ((hasMarks && isReadOnly(compound, token)) || (occurrence != nullptr && occurrence->isAbsent()))
            return;
        writer.setAttributeName(token);
        object.write(writer);
    });
}

void NyXmlModelWork::writeElements(NyXmlCompoundType const& compound, NyXmlClass const& ofClass, NyXmlWriter& writer,
                                   IsReadOnly isReadOnly)
{
    NyXmlClass::Members const* const members = ofClass.members();
    bool const hasMarks = members == nullptr || members->hasReadOnly;
    forEach(compound, ofClass, false, [&](NyToken const& token, NyXmlObject const& object, NyXmlOccurrence const* occurrence) {
        if (hasMarks && isReadOnly(compound, token))
            return;
        if (occurrence != nullptr) {
            occurrence->writeElements(writer, token);
            return;
        }
        if (!writer.writeDefaultDataFlag() && !object.isBasicType() && !ofClass.isRequired(false, token.localName()) &&
            object.equalsDefault())
            return;
        writer.writeStartTag(token);
        object.write(writer);
        writer.writeEndTag();
    });
}

void NyXmlModelWork::writeSchemaElements(NyXmlCompoundType const& compound, NyXmlClass const& ofClass, NyXmlSchema& schema)
{
    schema.openGroup();
    forEach(compound, ofClass, false, [&](NyToken const& token, NyXmlObject const& object, NyXmlOccurrence const* occurrence) {
        bool const isMany = occurrence != nullptr && occurrence->maxOccurs() > 1;
        schema.writeStartTag(token, isMany ? NyXmlSchemaElementType::XML_STARTTAG_UNBOUNDED
                                           : NyXmlSchemaElementType::XML_STARTTAG_SINGLE);
        if (schema.isRegistered(token, typeid(object).name()))
            return; // a class that holds itself: the schema has closed the element
        object.writeSchema(schema);
        schema.writeEndTag();
    });
    schema.closeGroup();
}
