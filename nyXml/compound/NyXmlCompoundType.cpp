#include <nyXml/compound/NyXmlCompoundType.h>

#include <nyXml/compound/detail/NyComponentShape.h>
#include <nyXml/core/NyXml.h>
#include <nyXml/core/detail/NyShortText.h>
#include <nyXml/core/detail/NyVirtualSlot.h>
#include <nyXml/platform/NyPrint.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/reader/detail/NyXmlLeafRun.h>
#include <nyXml/schema/NyXmlSchema.h>
#include <nyXml/traversal/NyXmlObjectVisitor.h>
#include <nyXml/values/detail/NyXmlLeaf.h>
#include <nyXml/values/detail/NyXmlOwnValues.h>
#include <nyXml/writer/NyXmlWriter.h>
#include <nyXml/writer/detail/NyXmlTogether.h>

#include <algorithm>
#include <cstddef>
#include <typeinfo>
#include <utility>
#include <vector>

namespace {

bool isChild(NyXmlFileReader::XML_READER_MODE event)
{
    return event == NyXmlFileReader::XML_READER_START_TAG || event == NyXmlFileReader::XML_READER_EMPTY_TAG;
}

// What a hook left empty is filled here, so that the accessors have something to refer to.
template <class Map>
Map& existing(std::unique_ptr<Map>& map)
{
    if (!map)
        map = std::make_unique<Map>();
    return *map;
}

// A compound that overrides nothing of what compounds are made of.
class Unadorned final : public NyXmlCompoundType {
public:
    NyXmlObject* clone() const override { return new Unadorned; }
    NyXmlObject* newObject() const override { return new Unadorned; }
    NyToken const& token() const override { return NyXml::NyNullToken; }
    bool equality(NyXmlObject const*) const override { return true; }
    void registerComponents() override {}
};

} // namespace

// Each null until first needed. The maps are the compound's; the objects in them lie in the derived object.
struct NyXmlCompoundType::Maps : NyRegistered {
    Maps() noexcept : NyRegistered(false) {}

    std::unique_ptr<ComponentMap> m_ComponentMap;
    std::unique_ptr<ComponentMap> m_AttributeComponentMap;
    std::unique_ptr<SpecialDescriptorMap> m_SpecialDescriptorMap;

    std::unique_ptr<ComponentMap>& of(NyComponentKind kind);
    void insert(NyComponentKind kind, bool readOnly, NyToken const& token, NyXmlObject* object);
};

// The operations that a class may override so that a shape cannot stand for its objects, or not everywhere.
struct NyXmlCompoundType::Operations {
    static NyComponentShape::Class classOf(NyXmlCompoundType const& object) noexcept
    {
        using Self = NyXmlCompoundType;
        auto const function = [&object](auto operation) { return NyVirtualSlot::functionOf<Self>(object, operation); };
        return { &typeid(object),
                 { // these supply maps, and have to be called whenever a map is needed
                   function(&Self::componentMap), function(&Self::attributeComponentMap), function(&Self::specialDescriptorMap),
                   function(&Self::newComponentMap), function(&Self::newSpecialDescriptorMap),
                   function(&Self::createComponentMap), function(&Self::createAttributeComponentMap),
                   function(&Self::createSpecialDescriptorMap),
                   // and these ask the maps
                   function(&Self::readValueFromToken), function(&Self::readAttributeFromToken) } };
    }
    static constexpr std::size_t supplying = 8; ///< how many of them supply maps

    static NyComponentShape const& publish(NyXmlCompoundType const& object,
                                           std::vector<NyComponentShape::Registration> registrations)
    {
        NyComponentShape::Class const ofClass = classOf(object);
        NyComponentShape::Class const plain = classOf(Unadorned());
        auto const firstOverride =
            std::mismatch(ofClass.operations.begin(), ofClass.operations.end(), plain.operations.begin(), NyVirtualSlot::isSame);
        auto const sameCount = static_cast<std::size_t>(firstOverride.first - ofClass.operations.begin());
        if (sameCount < supplying || registrations.size() > NyComponentShape::maxRegistrations)
            registrations.clear(); // an empty shape stands for nothing
        return NyComponentShape::publish(ofClass, sameCount == plain.operations.size(), std::move(registrations));
    }
};

#ifdef __LP64__
static_assert(sizeof(NyXmlCompoundType) == 24, "there are hundreds of thousands of compounds");
#endif

NyXmlCompoundType::NyXmlCompoundType() = default;

NyXmlCompoundType::NyXmlCompoundType(NyXmlCompoundType const& other) : NyXmlObject(other) {}

NyXmlCompoundType::~NyXmlCompoundType() = default;

NyXmlCompoundType& NyXmlCompoundType::operator=(NyXmlCompoundType const& other)
{
    NyXmlObject::operator=(other);
    return *this;
}

bool NyXmlCompoundType::operator==(NyXmlCompoundType const& other) const
{
    if (!xmlInitialized() || !other.xmlInitialized())
        return true;
    if (shape() != nullptr && shape() == other.shape() && !m_isRegistering && !other.m_isRegistering)
        return true;
    Maps const& mine = maps();
    Maps const& others = other.maps();
    if (mine.m_SpecialDescriptorMap && others.m_SpecialDescriptorMap &&
        *mine.m_SpecialDescriptorMap != *others.m_SpecialDescriptorMap)
        return false;
    if (!mine.m_ComponentMap || !others.m_ComponentMap)
        return true;
    auto const sameToken = [](auto const& one, auto const& two) { return one.first == two.first; };
    return mine.m_ComponentMap->size() == others.m_ComponentMap->size() &&
           std::equal(mine.m_ComponentMap->begin(), mine.m_ComponentMap->end(), others.m_ComponentMap->begin(), sameToken);
}

void NyXmlCompoundType::accept(NyXmlObjectVisitor* visitor) const { visitor->visit(this); }

bool NyXmlCompoundType::xmlInit()
{
    leaveShape();
    bool const wasInitialized = xmlInitialized();
    NyXmlObject::xmlInit();
    bool const isFirst = !m_theRegistered;
    try {
        registerAll();
    } catch (...) { // half registered is not initialised: the next use begins anew
        m_isRegistering = false;
        if (isFirst)
            m_theRegistered.reset();
        setXmlInitialized(wasInitialized);
        throw;
    }
    return true;
}

void NyXmlCompoundType::registerAll()
{
    if (m_theRegistered) // not the first time: enter into what is there
        registerComponents();
    else if (NyComponentShape const* const shape = NyComponentShape::find(Operations::classOf(*this)))
        registerAlong(*shape);
    else
        registerFirst();
}

// Our class has a shape: should we register just what it tells, it stands for our maps.
void NyXmlCompoundType::registerAlong(NyComponentShape const& shape)
{
    if (!shape.registrations().empty())
        m_theRegistered.reset(&shape);
    m_theFollowed = 0;
    m_isRegistering = true;
    registerComponents();
    if (NyComponentShape const* const followed = this->shape(); followed && m_theFollowed < followed->registrations().size())
        leaveShape();
    m_isRegistering = false;
}

// Nobody of our class has registered yet: leave a shape to those who come after us, if it can stand for their maps.
void NyXmlCompoundType::registerFirst()
{
    NyComponentRecorder recorder(*this);
    registerComponents();
    Operations::publish(*this, recorder.take());
}

bool NyXmlCompoundType::read(NyXmlReader& reader) { return readAttributes(reader) && readElements(reader); }

bool NyXmlCompoundType::readAttributes(NyXmlReader& reader)
{
    if (!NyXmlObject::read(reader))
        return false;
    NyToken copy;
    m_theNext = 0;
    unsigned int left = reader.remainingNumOfAttributes();
    for (unsigned int count = left; count > 0; --count) {
        readAttributeFromToken(lastingName(NyComponentKind::ATTRIBUTE, reader.attributeName(), copy), reader);
        if (left > 0 && reader.remainingNumOfAttributes() == left)
            reader.attributeValue(); // nobody took it, and it would hide those behind it
        left = reader.remainingNumOfAttributes();
    }
    return true;
}

bool NyXmlCompoundType::readAttributeFromToken(NyToken const& token, NyXmlReader& reader)
{
    NyXmlObject* const object = find(NyComponentKind::ATTRIBUTE, token);
    if (object == nullptr) {
        Ny::Print::write(Ny::Print::FAULT, "Bad attribute token: %s on line %d\n", token.c_str(), reader.lineCountOfFile());
        return false;
    }
    object->readAttribute(reader);
    return true;
}

bool NyXmlCompoundType::readElements(NyXmlReader& reader)
{
    if (reader.mode() == NyXmlFileReader::XML_READER_EMPTY_TAG)
        return true;
    NyToken copy;
    m_theNext = 0;
    readLeaves(reader);
    NyXmlFileReader::XML_READER_MODE event = reader.readXml();
    while (isChild(event)) {
        if (!readValueFromToken(lastingName(NyComponentKind::ELEMENT, reader.element(), copy), reader))
            reader.nextMatchingEndTag();
        readLeaves(reader);
        event = reader.readXml();
    }
    return event != NyXmlFileReader::XML_READER_ERROR;
}

// Hot: most components are values of the library's own that stand in the order of the shape. As long as the next one is such a value and
// comes next in the document, it is read past the events and past our operations, where nobody overrides these.
void NyXmlCompoundType::readLeaves(NyXmlReader& reader)
{
    NyComponentShape const* const shape = ownShape();
    if (shape == nullptr || !shape->hasPlainLookup())
        return;
    auto const& elements = shape->components(NyComponentKind::ELEMENT);
    auto const isLeafNext = [this, &elements](NyXmlLeaf::Taker& taker) {
        bool const isPlain = m_theNext < elements.size() && elements[m_theNext].isPlainName;
        taker = isPlain ? NyXmlLeaf::takerOf(*NyComponentShape::at(this, elements[m_theNext].distance)) : nullptr;
        return taker != nullptr;
    };
    NyXmlLeaf::Taker taker;
    if (!isLeafNext(taker))
        return;
    NyXmlLeafRun run(reader);
    do {
        NyComponent const& component = elements[m_theNext];
        if (!taker(*NyComponentShape::at(this, component.distance), run, component.nameInDocuments))
            break;
        ++m_theNext;
    } while (isLeafNext(taker));
    run.end();
}

bool NyXmlCompoundType::readValueFromToken(NyToken const& token, NyXmlReader& reader)
{
    NyXmlObject* const object = find(NyComponentKind::ELEMENT, token);
    if (object == nullptr)
        return readValueFromSpecialToken(token, reader);
    object->read(reader);
    return true;
}

bool NyXmlCompoundType::readValueFromSpecialToken(NyToken const& token, NyXmlReader& reader)
{
    Ny::Print::write(Ny::Print::FAULT, "Bad token: %s on line %d\n", token.c_str(), reader.lineCountOfFile());
    return false;
}

bool NyXmlCompoundType::write(NyXmlWriter& writer) const
{
    if (!writer.writeDefaultDataFlag() && equalsDefault())
        return true;
    return writeAttributes(writer) && writeElements(writer);
}

bool NyXmlCompoundType::writeAttributes(NyXmlWriter& writer) const
{
    bool const result = NyXmlObject::write(writer);
    if (!hasAttributes())
        return result;
    NyXmlTogether together(writer);
    forEach(NyComponentKind::ATTRIBUTE, [&](NyToken const& token, NyXmlObject const& object) {
        if (hasMarks()) {
            NyXmlApart const apart(writer);
            if (isReadOnlyAttribute(token))
                return;
        }
        writer.setAttributeName(token);
        NyXmlApart const apart(writer, !NyXmlOwnValues::has(object));
        object.write(writer);
    });
    together.end();
    return result;
}

bool NyXmlCompoundType::writeElements(NyXmlWriter& writer) const
{
    if (!hasChildren())
        return true;
    NyXmlTogether together(writer);
    forEach(NyComponentKind::ELEMENT, [&](NyToken const& token, NyXmlObject const& object) {
        if (hasMarks()) {
            NyXmlApart const apart(writer);
            if (isReadOnlyComponent(token))
                return;
        }
        bool const isForeign = !NyXmlOwnValues::has(object);
        if (!writer.writeDefaultDataFlag()) {
            NyXmlApart const apart(writer, isForeign);
            if (!object.isBasicType() && object.equalsDefault())
                return;
        }
        writer.writeStartTag(token);
        {
            NyXmlApart const apart(writer, isForeign);
            object.write(writer);
        }
        writer.writeEndTag();
    });
    together.end();
    return true;
}

bool NyXmlCompoundType::writeSchema(NyXmlSchema& schema) const
{
    return writeSchemaAttributes(schema) && writeSchemaElements(schema);
}

bool NyXmlCompoundType::writeSchemaAttributes(NyXmlSchema& schema) const
{
    bool const result = NyXmlObject::writeSchema(schema);
    if (hasAttributes())
        forEach(NyComponentKind::ATTRIBUTE, [&](NyToken const& token, NyXmlObject const& object) {
            schema.setAttributeName(token);
            object.writeSchema(schema);
        });
    return result;
}

bool NyXmlCompoundType::writeSchemaElements(NyXmlSchema& schema) const
{
    if (!hasChildren())
        return true;
    schema.openGroup();
    forEach(NyComponentKind::ELEMENT, [&](NyToken const& token, NyXmlObject const& object) {
        schema.writeStartTag(token, NyXmlSchemaElementType::XML_STARTTAG_SINGLE);
        if (schema.isRegistered(token, typeid(object).name()))
            return; // a class that holds itself: the schema has closed the element
        object.writeSchema(schema);
        schema.writeEndTag();
    });
    schema.closeGroup();
    return true;
}

void NyXmlCompoundType::registerComponent(NyToken const& token, NyXmlObject* object)
{
    enter(NyComponentKind::ELEMENT, false, token, object);
}

void NyXmlCompoundType::registerComponentReadOnly(NyToken const& token, NyXmlObject* object)
{
    enter(NyComponentKind::ELEMENT, true, token, object);
}

void NyXmlCompoundType::registerAttributeComponent(NyToken const& token, NyXmlObject* object)
{
    enter(NyComponentKind::ATTRIBUTE, false, token, object);
}

void NyXmlCompoundType::registerAttributeComponentReadOnly(NyToken const& token, NyXmlObject* object)
{
    enter(NyComponentKind::ATTRIBUTE, true, token, object);
}

NyXmlCompoundType::ComponentMap const& NyXmlCompoundType::componentMap() const
{
    leaveShape();
    createComponentMap();
    return existing(maps().m_ComponentMap);
}

NyXmlCompoundType::ComponentMap const& NyXmlCompoundType::attributeComponentMap()
{
    leaveShape();
    createAttributeComponentMap();
    return existing(maps().m_AttributeComponentMap);
}

NyXmlCompoundType::SpecialDescriptorMap const& NyXmlCompoundType::specialDescriptorMap()
{
    leaveShape();
    createSpecialDescriptorMap();
    return existing(maps().m_SpecialDescriptorMap);
}

bool NyXmlCompoundType::hasChildren() const { return hasComponents(NyComponentKind::ELEMENT); }

bool NyXmlCompoundType::hasAttributes() const { return hasComponents(NyComponentKind::ATTRIBUTE); }

NyXmlCompoundType::ComponentMap* NyXmlCompoundType::newComponentMap() const { return new ComponentMap; }

NyXmlCompoundType::SpecialDescriptorMap* NyXmlCompoundType::newSpecialDescriptorMap() { return new SpecialDescriptorMap; }

void NyXmlCompoundType::createComponentMap() const
{
    if (!maps().m_ComponentMap)
        ownMaps()->m_ComponentMap.reset(newComponentMap());
}

void NyXmlCompoundType::createAttributeComponentMap()
{
    if (!maps().m_AttributeComponentMap)
        ownMaps()->m_AttributeComponentMap.reset(newComponentMap());
}

void NyXmlCompoundType::createSpecialDescriptorMap()
{
    if (!maps().m_SpecialDescriptorMap)
        ownMaps()->m_SpecialDescriptorMap.reset(newSpecialDescriptorMap());
}

bool NyXmlCompoundType::isReadOnlyComponent(NyToken token) const { return isReadOnly(NyComponentKind::ELEMENT, token); }

bool NyXmlCompoundType::isReadOnlyAttribute(NyToken token) const { return isReadOnly(NyComponentKind::ATTRIBUTE, token); }

void NyXmlCompoundType::enter(NyComponentKind kind, bool readOnly, NyToken const& token, NyXmlObject* object)
{
    if (shape() != nullptr && isNextOfShape(kind, readOnly, token, object)) {
        ++m_theFollowed;
        return;
    }
    Maps const& existingMaps = maps();
    if (kind == NyComponentKind::ELEMENT && !existingMaps.m_ComponentMap)
        createComponentMap();
    if (kind == NyComponentKind::ATTRIBUTE && !existingMaps.m_AttributeComponentMap)
        createAttributeComponentMap();
    if (readOnly && !existingMaps.m_SpecialDescriptorMap)
        createSpecialDescriptorMap();
    ownMaps()->insert(kind, readOnly, token, object);
    NyComponentRecorder::note(*this, kind, readOnly, token, object);
}

bool NyXmlCompoundType::isNextOfShape(NyComponentKind kind, bool readOnly, NyToken const& token, NyXmlObject* object) const
{
    auto const& registrations = shape()->registrations();
    if (m_theFollowed == registrations.size())
        return false;
    NyComponentShape::Registration const& next = registrations[m_theFollowed];
    return next.kind == kind && next.readOnly == readOnly && next.distance == NyComponentShape::distance(this, object) &&
           next.token == token;
}

std::unique_ptr<NyXmlCompoundType::ComponentMap>& NyXmlCompoundType::Maps::of(NyComponentKind kind)
{
    return kind == NyComponentKind::ELEMENT ? m_ComponentMap : m_AttributeComponentMap;
}

void NyXmlCompoundType::Maps::insert(NyComponentKind kind, bool readOnly, NyToken const& token, NyXmlObject* object)
{
    ComponentMap& components = existing(of(kind));
    if (!readOnly) {
        components[token] = object;
        return;
    }
    SpecialDescriptorMap& marks = existing(m_SpecialDescriptorMap);
    auto const [mark, isNew] = marks.try_emplace(token);
    try {
        components[token] = object;
    } catch (...) {
        if (isNew)
            marks.erase(mark);
        throw;
    }
    mark->second = static_cast<unsigned int>(kind);
}

// Our base class has initialised us: what it registered stands, but whether a shape may stand for it is our own class's to say.
void NyXmlCompoundType::goByOwnClass() const
{
    auto const& made = shape()->registrations();
    NyComponentShape const* own = NyComponentShape::find(Operations::classOf(*this));
    if (own == nullptr)
        own = &Operations::publish(*this, made);
    if (own->registrations() == made)
        m_theRegistered.reset(own);
    else
        leaveShape();
}

// From here on our maps tell what we registered.
void NyXmlCompoundType::leaveShape() const
{
    NyComponentShape const* const left = shape();
    if (left == nullptr)
        return;
    auto maps = std::make_unique<Maps>();
    for (std::size_t i = 0; i < m_theFollowed; ++i) {
        NyComponentShape::Registration const& made = left->registrations()[i];
        maps->insert(made.kind, made.readOnly, made.token, NyComponentShape::at(this, made.distance));
    }
    m_theRegistered.reset(maps.release());
    m_isRegistering = false;
}

void NyXmlCompoundType::Release::operator()(NyRegistered const* registered) const noexcept
{
    if (!registered->isShape)
        delete static_cast<Maps const*>(registered);
}

NyComponentShape const* NyXmlCompoundType::shape() const noexcept
{
    NyRegistered const* const registered = m_theRegistered.get();
    return registered != nullptr && registered->isShape ? static_cast<NyComponentShape const*>(registered) : nullptr;
}

NyXmlCompoundType::Maps* NyXmlCompoundType::ownMaps() const noexcept
{
    NyRegistered const* const registered = m_theRegistered.get();
    if (registered == nullptr || registered->isShape)
        return nullptr;
    return const_cast<Maps*>(static_cast<Maps const*>(registered)); // made by us, and not const
}

// Our maps, instead of a shape; each may be null.
NyXmlCompoundType::Maps& NyXmlCompoundType::maps() const
{
    leaveShape();
    if (!m_theRegistered)
        m_theRegistered.reset(new Maps);
    return *ownMaps();
}

// The map of this kind, or null.
NyXmlCompoundType::ComponentMap const* NyXmlCompoundType::mapOf(NyComponentKind kind) const
{
    Maps* const own = ownMaps();
    return own != nullptr ? own->of(kind).get() : nullptr;
}

bool NyXmlCompoundType::hasComponents(NyComponentKind kind) const
{
    if (m_isRegistering)
        leaveShape();
    if (NyComponentShape const* const ours = shape())
        return !ours->components(kind).empty();
    ComponentMap const* const map = mapOf(kind);
    return map != nullptr && !map->empty();
}

bool NyXmlCompoundType::hasMarks() const
{
    if (NyComponentShape const* const ours = shape())
        return !ours->marks().empty();
    return ownMaps() != nullptr && ownMaps()->m_SpecialDescriptorMap;
}

bool NyXmlCompoundType::isReadOnly(NyComponentKind kind, NyToken const& token) const
{
    if (m_isRegistering)
        leaveShape();
    if (NyComponentShape const* const ours = shape()) {
        NyComponentShape::Mark const* const mark = NyComponentShape::find(ours->marks(), token);
        return mark != nullptr && mark->kind == kind;
    }
    if (!hasMarks())
        return false;
    SpecialDescriptorMap const& marks = *ownMaps()->m_SpecialDescriptorMap;
    auto const mark = marks.find(token);
    return mark != marks.end() && mark->second == static_cast<unsigned int>(kind);
}

template <class Action>
void NyXmlCompoundType::forEach(NyComponentKind kind, Action action) const
{
    if (m_isRegistering)
        leaveShape();
    if (NyComponentShape const* const ours = shape()) {
        for (NyComponent const& component : ours->components(kind))
            action(component.token, *NyComponentShape::at(this, component.distance));
        return;
    }
    if (ComponentMap const* const map = mapOf(kind))
        for (auto const& [token, object] : *map)
            action(token, *object);
}

// The component that answers to a name, or null.
NyXmlObject* NyXmlCompoundType::find(NyComponentKind kind, NyToken const& token)
{
    if (NyComponent const* const component = nextOfShape(kind, token))
        return NyComponentShape::at(this, component->distance);
    ComponentMap const& map = kind == NyComponentKind::ELEMENT ? componentMap() : attributeComponentMap();
    auto const place = map.find(token);
    return place == map.end() ? nullptr : place->second;
}

// Hot: once or twice for each element and attribute. Documents of ours hold components in the order of the maps, so that the one
// behind the last hit is tried first: 7 ns against 33 for a search. Null if there is no such component or no shape.
NyComponent const* NyXmlCompoundType::nextOfShape(NyComponentKind kind, NyToken const& token)
{
    NyComponentShape const* const ours = ownShape();
    if (ours == nullptr)
        return nullptr;
    auto const& components = ours->components(kind);
    std::size_t const next = m_theNext; // of the other kind perhaps: a guess and nothing more
    if (next > 0 && next <= components.size() && &components[next - 1].nameInDocuments == &token)
        return &components[next - 1]; // a lastingName()
    bool const isNext = next < components.size() && NyShortText::same(components[next].token.localName(), token.localName());
    NyComponent const* const component = isNext ? &components[next] : NyComponentShape::find(components, token);
    if (component != nullptr)
        m_theNext = static_cast<std::uint16_t>(component - components.data() + 1);
    return component;
}

// The shape that stands for our maps and is our own class's, or null.
NyComponentShape const* NyXmlCompoundType::ownShape()
{
    if (m_isRegistering)
        leaveShape();
    NyComponentShape const* const ours = shape();
    if (ours == nullptr || ours->isOf(typeid(*this)))
        return ours;
    goByOwnClass();
    return shape();
}

// A name that outlives the reader's next call, as a hook may expect of its argument: the shape's own where there is one, or a
// copy.
NyToken const& NyXmlCompoundType::lastingName(NyComponentKind kind, NyToken const& name, NyToken& copy)
{
    NyComponent const* const component = nextOfShape(kind, name);
    if (component != nullptr && name.namespaceName().empty())
        return component->nameInDocuments;
    return copy = name;
}
