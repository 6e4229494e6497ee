#include <nyXmlKit/file/detail/NyXmlShape.h>

#include <nyXml/compound/NyXmlBaseVariableCompoundType.h>
#include <nyXml/compound/NyXmlCompoundType.h>
#include <nyXml/core/NyXml.h>
#include <nyXml/platform/NyPrint.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/schema/NyXmlSchema.h>
#include <nyXml/traversal/NyXmlObjectVisitor.h>
#include <nyXml/values/NyXmlBasicType.h>
#include <nyXml/values/NyXmlBinaryString.h>
#include <nyXml/values/NyXmlEmbeddedString.h>
#include <nyXml/values/NyXmlOrientation.h>
#include <nyXml/values/NyXmlVector.h>
#include <nyXml/values/NyXmlVectorType.h>
#include <nyXml/values/NyXmlVectorVector.h>
#include <nyXml/writer/NyXmlWriter.h>
#include <nyXmlKit/model/NyXmlClass.h>
#include <nyXmlKit/model/NyXmlMemberKind.h>
#include <nyXmlKit/model/detail/NyXmlRegistrar.h>

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <typeinfo>
#include <utility>

namespace {

using Kind = NyXmlShape::Kind;
using Member = NyXmlShapeMember;

/// What an object does for us is nobody's message.
class Silence {
    Ny::Print::ThreadScope const m_scope{ [](int, std::string const&, std::string const&) {} };
};

/// A copy is as its owner has set it up. A class that cannot be copied, or only as its base, may at least be made anew.
std::unique_ptr<NyXmlObject> copyOf(NyXmlObject const& object)
{
    auto const isOfItsClass = [&object](NyXmlObject const& other) { return typeid(other) == typeid(object); };
    std::unique_ptr<NyXmlObject> copy(object.clone());
    if (copy != nullptr && isOfItsClass(*copy))
        return copy;
    std::unique_ptr<NyXmlObject> fresh(object.newObject());
    return copy == nullptr || (fresh != nullptr && isOfItsClass(*fresh)) ? std::move(fresh) : std::move(copy);
}

bool isBinary(NyXmlObject const& object) { return dynamic_cast<NyXmlBinaryString const*>(&object) != nullptr; }

void initialise(NyXmlObject& object)
{
    if (!object.xmlInitialized())
        object.xmlInit();
}

/// An element as an object describes it to a schema.
struct Record {
    std::string name;
    std::unique_ptr<NyXmlObject> object; ///< a copy of who described itself there
    bool isBinary = false;               ///< which its copy does not tell
    std::type_info const* type = nullptr;
    std::vector<std::pair<std::string, std::type_info const*>> attributes;
    std::vector<Record> children;

    bool isLeaf() const { return attributes.empty() && children.empty(); }
    Record* child(std::string const& wanted)
    {
        for (Record& one : children)
            if (one.name == wanted)
                return &one;
        return nullptr;
    }
    bool hasAttribute(std::string const& wanted) const
    {
        return std::any_of(attributes.begin(), attributes.end(), [&](auto const& one) { return one.first == wanted; });
    }
};

/// Listens to a description. Members of compounds are not entered: those we know as objects.
class Recorder : public NyXmlSchema {
public:
    Recorder() { m_open.push_back(&m_root); }

    void describing(NyXmlObject const& object) override
    {
        if (m_isInAttribute || m_open.size() == 1 || m_open.back()->object != nullptr)
            return;
        m_open.back()->object = copyOf(object);
        m_open.back()->isBinary = isBinary(object);
    }
    bool writeStartTag(NyToken const& token, XML_STARTTAG_OPTION) override { return open(token); }
    bool writeStartTagUsingParentNamespace(std::string const& name, XML_STARTTAG_OPTION) override { return open(name); }
    void setAttributeName(NyToken const& token) override
    {
        m_open.back()->attributes.emplace_back(token.token(), nullptr);
        m_isInAttribute = true;
    }
    void setType(std::type_info const& type) override
    {
        (m_isInAttribute ? m_open.back()->attributes.back().second : m_open.back()->type) = &type;
        m_isInAttribute = false;
    }
    void writeEndTag() override
    {
        if (m_open.size() > 1)
            m_open.pop_back();
        m_isInAttribute = false;
    }
    void writeEndTagRecursive() override { writeEndTag(); }
    bool isRegistered(NyToken const&, std::string const&) override
    {
        writeEndTag();
        return true;
    }
    Record& root() { return m_root; }

private:
    bool open(std::string const& name)
    {
        constexpr std::size_t deepest = 100; // a class that describes itself without end
        if (m_open.size() > deepest)
            throw std::length_error("description without end");
        m_isInAttribute = false;
        m_open.back()->children.emplace_back();
        m_open.back()->children.back().name = name;
        m_open.push_back(&m_open.back()->children.back()); // siblings come later, when it is closed
        return false;
    }

    Record m_root;
    std::vector<Record*> m_open;
    bool m_isInAttribute = false;
};

/// Finds the objects in a container or pair.
class Children : public NyXmlObjectVisitor {
public:
    explicit Children(NyXmlObject const& object)
    {
        setTraversalDepth(2);
        object.accept(this);
    }
    NyXmlObject* find(NyToken const& name) const
    {
        for (auto const& [token, object] : m_found)
            if (token == name)
                return object;
        return nullptr;
    }

private:
    bool visitCurrentObject() override
    {
        if (m_theObjectStack.empty())
            return true;
        m_found.emplace_back(m_theCurrentToken, const_cast<NyXmlObject*>(m_theCurrentObject)); // part of an object of ours
        return false;
    }

    std::vector<std::pair<NyToken, NyXmlObject*>> m_found;
};

/// Gives a container what stands in a document.
void readOne(NyXmlObject& container, char const* document)
{
    std::istringstream stream(document);
    NyXmlReader reader("", stream);
    reader.readXml();
    container.read(reader);
}

/// Whether equal items are one: whether a container that is given two of them writes one.
bool isSet(NyXmlObject& container)
{
    readOne(container, "<v size=\"2\"><element/><element/></v>");
    std::ostringstream stream;
    NyXmlWriter writer("", stream);
    writer.writeStartTag(NyXml::NyElementToken);
    container.write(writer);
    writer.writeEndTag();
    return stream.str().find(" size=\"1\"") != std::string::npos;
}

bool isBefore(Member const& one, Member const& other) { return one.name < other.name; }

Member attribute(std::string const& name, NyXmlShape* shape, unsigned int least = 1)
{
    Member member;
    member.name = name;
    member.least = least;
    member.shape = shape;
    return member;
}

} // namespace

// Documents of the library's own hold members in the order of their names, so the one behind the last is tried first.
Member const* NyXmlShape::find(std::vector<Member> const& members, std::string_view name, std::size_t& next)
{
    std::size_t at = next;
    if (at >= members.size() || members[at].name != name) {
        auto const found = std::lower_bound(members.begin(), members.end(), name,
                                            [](Member const& member, std::string_view wanted) { return member.name < wanted; });
        if (found == members.end() || found->name != name)
            return nullptr;
        at = static_cast<std::size_t>(found - members.begin());
    }
    next = at + 1;
    return &members[at];
}

NyXmlShapes::NyXmlShapes() = default;
NyXmlShapes::~NyXmlShapes() = default;

NyXmlShape& NyXmlShapes::make(Kind kind)
{
    m_theShapes.push_back(std::make_unique<NyXmlShape>());
    m_theShapes.back()->kind = kind;
    return *m_theShapes.back();
}

NyXmlObject* NyXmlShapes::own(NyXmlObject* object)
{
    if (object != nullptr)
        m_theObjects.emplace_back(object);
    return object;
}

NyXmlShape& NyXmlShapes::of(NyXmlObject const& root)
{
    Silence const silence;
    if (isBinary(root))
        return make(Kind::BASE64);
    NyXmlObject* const object = own(copyOf(root).release());
    return object == nullptr ? m_theAnything : build(*object);
}

NyXmlShape& NyXmlShapes::of(Member const& member)
{
    if (member.shape != nullptr)
        return *member.shape;
    Silence const silence;
    NyXmlShape& shape = build(*member.object);
    if (member.isOptionalValue)
        shape.text.letEmptyFit();
    member.shape = &shape;
    return shape;
}

NyXmlShape& NyXmlShapes::build(NyXmlObject& object)
{
    try {
        initialise(object);
        auto const* const kind = dynamic_cast<NyXmlMemberKind const*>(&object);
        if (kind != nullptr && kind->maxAlternatives() != 0) {
            NyXmlShape& shape = make(Kind::CHOICE);
            buildKind(shape, *kind);
            return shape;
        }
        if (std::unique_ptr<NyXmlObject> item = kind != nullptr ? kind->newItem() : nullptr) {
            NyXmlShape& shape = build(*own(item.release()));
            if (&shape != &m_theAnything)
                buildKind(shape, *kind);
            return shape;
        }
        if (dynamic_cast<NyXmlEmbeddedString*>(&object) != nullptr)
            return m_theAnything;
        if (isBinary(object))
            return make(Kind::BASE64);
        if (auto* const value = dynamic_cast<NyBaseXmlBasicType*>(&object)) {
            NyXmlShape& shape = make(Kind::TEXT);
            shape.text = NyXmlTextRule(*value);
            return shape;
        }
        if (auto* const compound = dynamic_cast<NyXmlCompoundType*>(&object)) {
            NyXmlShape& shape = make(Kind::MEMBERS);
            buildMembers(shape, *compound);
            return shape;
        }
        if (auto* const variable = dynamic_cast<NyXmlBaseVariableCompoundType*>(&object)) {
            NyXmlShape& shape = make(Kind::CHOICE);
            shape.variable = variable;
            return shape;
        }
        return buildDescribed(object);
    } catch (std::exception const&) { // an object that cannot be asked: nothing is known of it
        return m_theAnything;
    }
}

NyXmlShape& NyXmlShapes::buildItem(NyXmlObject& object)
{
    auto const found = m_theItems.find(typeid(object));
    if (found != m_theItems.end())
        return *found->second;
    NyXmlShape& shape = build(object);
    m_theItems[typeid(object)] = &shape;
    return shape;
}

void NyXmlShapes::buildKind(NyXmlShape& shape, NyXmlMemberKind const& kind)
{
    for (NyXmlMemberKind::Alternative& alternative : kind.alternatives()) {
        Member member;
        member.name = alternative.name.token();
        member.least = 0;
        member.most = NyXmlMemberKind::unbounded;
        member.object = own(alternative.prototype.release());
        if (member.object != nullptr)
            shape.children.push_back(member);
    }
    for (std::string const& name : kind.ownAttributes())
        shape.attributes.push_back(attribute(name, &m_theAnything, 0));
    std::sort(shape.children.begin(), shape.children.end(), isBefore);
    std::sort(shape.attributes.begin(), shape.attributes.end(), isBefore);
}

void NyXmlShapes::buildMembers(NyXmlShape& shape, NyXmlCompoundType& compound)
{
    auto const& marks = compound.specialDescriptorMap();
    auto const* const model = dynamic_cast<NyXmlModelKind const*>(&compound);
    // A class of the model misses its required members itself, and knows of which version the document is.
    auto const isMissedByObject = [&](bool isAttribute, NyToken const& token, NyXmlObject const& object) {
        if (model == nullptr)
            return false;
        auto const& versioned = model->xmlClass().versioned();
        return (model->xmlClass().isRequired(isAttribute, token.localName()) && NyXmlModelWork::tellsWhetherRead(object)) ||
               std::any_of(versioned.begin(), versioned.end(), [&](NyXmlClass::Versioned const& each) {
                   return each.isAttribute == isAttribute && each.name == token.localName() && each.versions.first > 1;
               });
    };
    auto const add = [&](std::vector<Member>& members, NyToken const& token, NyXmlObject* object, unsigned int readOnlyMark) {
        auto const mark = marks.find(token);
        auto const* const kind = dynamic_cast<NyXmlMemberKind const*>(object);
        Member member;
        member.name = token.token();
        member.object = object;
        member.most = kind != nullptr ? kind->maxOccurs() : 1;
        member.isOptionalValue = kind != nullptr && kind->minOccurs() == 0;
        // What is never written need not be there.
        member.least = (mark != marks.end() && mark->second == readOnlyMark) || member.isOptionalValue ? 0 : 1;
        bool const isAttribute = readOnlyMark == 1;
        if (isMissedByObject(isAttribute, token, *object))
            member.least = 0;
        member.isLeftOutAsDefault = !isAttribute && !object->isBasicType() &&
                                    !(model != nullptr && model->xmlClass().isRequired(false, token.localName()));
        members.push_back(std::move(member)); // the maps are ordered by name
    };
    for (auto const& [token, object] : compound.attributeComponentMap())
        add(shape.attributes, token, object, 1);
    for (auto const& [token, object] : compound.componentMap())
        add(shape.children, token, object, 0);
}

NyXmlShape& NyXmlShapes::textOf(std::type_info const* type)
{
    NyXmlShape& shape = make(Kind::TEXT);
    if (type != nullptr)
        shape.text = NyXmlTextRule(*type);
    return shape;
}

// Containers, pairs and geometry: known by what they describe, since their items may be of any class.
NyXmlShape& NyXmlShapes::buildDescribed(NyXmlObject& object)
{
    Recorder recorder;
    object.writeSchema(recorder);
    Record& record = recorder.root();
    Record* const element = record.child(NyXml::NyElementToken);
    bool const isSized = record.hasAttribute(NyXml::NyCountToken);

    if (dynamic_cast<NyXmlVector*>(&object) != nullptr || dynamic_cast<NyXmlOrientation*>(&object) != nullptr ||
        dynamic_cast<NyXmlVectorVector*>(&object) != nullptr) {
        bool const isPath = element != nullptr;
        NyXmlShape& tuple = make(Kind::TUPLE);
        for (auto const& [name, type] : isPath ? element->attributes : record.attributes)
            tuple.attributes.push_back(attribute(name, &textOf(type)));
        if (!isPath)
            return tuple;
        NyXmlShape& path = make(Kind::PATH);
        path.item = &tuple;
        return path;
    }
    if (element == nullptr && record.children.size() == 2 && record.attributes.empty()) {
        Children const members(object);
        NyXmlObject* const first = members.find(NyXml::NyFirstToken);
        NyXmlObject* const second = members.find(NyXml::NySecondToken);
        if (first == nullptr || second == nullptr)
            return m_theAnything;
        NyXmlShape& pair = make(Kind::MEMBERS);
        for (std::size_t i = 0; i != 2; ++i) {
            Member member;
            member.name = record.children[i].name;
            member.object = i == 0 ? first : second;
            pair.children.push_back(member);
        }
        pair.aliases = { { NyXml::NyFirstToken.token(), record.children[0].name },
                         { NyXml::NySecondToken.token(), record.children[1].name } };
        std::sort(pair.children.begin(), pair.children.end(), isBefore);
        return pair;
    }
    if (element == nullptr || record.children.size() > 2)
        return m_theAnything;

    Record* const key = element->child(NyXml::NyKeyToken);
    Record const* const value = element->child(NyXml::NyValueToken);
    if (!isSized && key != nullptr && value != nullptr) {
        readOne(object, "<m><element><key>0</key><value/></element></m>");
        Children const parts(object);
        NyXmlObject* const keyObject = parts.find(NyXml::NyKeyToken);
        NyXmlObject* const valueObject = parts.find(NyXml::NyValueToken);
        if (keyObject == nullptr || valueObject == nullptr)
            return m_theAnything;
        NyXmlShape& entry = make(Kind::ENTRY);
        entry.children = { attribute(NyXml::NyKeyToken, &buildItem(*keyObject)),
                           attribute(NyXml::NyValueToken, &buildItem(*valueObject)) };
        NyXmlShape& map = make(Kind::MAP);
        map.item = &entry;
        return map;
    }

    NyXmlShape& sequence = make(Kind::SEQUENCE);
    sequence.isOfDifferent = key != nullptr && isSet(object);
    readOne(object, "<v size=\"1\"><element/></v>");
    Record& item = key != nullptr ? *key : *element; // sets and lists describe a key where their items stand
    if (NyXmlObject* const itemObject = Children(object).find(NyXml::NyElementToken)) {
        sequence.item = &buildItem(*itemObject);
    } else if (item.isBinary) {
        sequence.item = &make(Kind::BASE64);
    } else if (item.object != nullptr) {
        sequence.item = &buildItem(*own(item.object.release()));
    } else if (item.isLeaf() && item.type != nullptr) {
        sequence.item = &textOf(item.type);
    } else if (item.children.empty() && !item.attributes.empty()) {
        sequence.item = &make(Kind::TUPLE);
        for (auto const& [name, type] : item.attributes)
            sequence.item->attributes.push_back(attribute(name, &textOf(type)));
    } else {
        sequence.item = &m_theAnything;
    }
    return sequence;
}

NyXmlShape& NyXmlShapes::chosen(NyXmlShape& parent, std::string const& name)
{
    if (parent.variable == nullptr) {
        std::size_t next = 0;
        Member const* const member = NyXmlShape::find(parent.children, name, next);
        return member != nullptr ? of(*member) : m_theAnything;
    }
    auto const known = m_theChosen.find({ &parent, name });
    if (known != m_theChosen.end())
        return *known->second;
    Silence const silence;
    NyXmlObject* object = nullptr;
    NyXmlShape* shape = &m_theAnything;
    if (name == static_cast<std::string const&>(NyXml::NyAddLibrariesToken))
        object = own(new NyXmlVectorType<NyXmlBasicType<std::string>>);
    if (object == nullptr)
        object = own(m_thePlugIns.newObjectFromToken(name));
    if (object == nullptr)
        object = own(parent.variable->newObjectFromToken(name));
    if (object != nullptr)
        shape = &build(*object);
    m_theChosen[{ &parent, name }] = shape;
    return *shape;
}

void NyXmlShapes::learn(std::string const& library)
{
    Silence const silence;
    m_thePlugIns.loadLibrary(library);
    m_theChosen.clear();
}
