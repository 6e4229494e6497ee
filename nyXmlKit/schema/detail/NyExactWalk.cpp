#include <nyXmlKit/schema/detail/NyExactWalk.h>

#include <nyXml/compound/NyXmlBaseVariableCompoundType.h>
#include <nyXml/compound/NyXmlCompoundType.h>
#include <nyXml/core/NyXml.h>
#include <nyXml/values/NyXmlBasicType.h>
#include <nyXml/values/NyXmlOrientation.h>
#include <nyXml/values/NyXmlVector.h>
#include <nyXml/values/NyXmlVectorVector.h>
#include <nyXmlKit/model/NyXmlClass.h>
#include <nyXmlKit/model/NyXmlMemberKind.h>
#include <nyXmlKit/model/detail/NyXmlSharing.h>
#include <nyXmlKit/schema/NyXmlAnyOrder.h>

#include <algorithm>
#include <sstream>

namespace {

// The prefix that documents have for a namespace: what stands behind its last "/".
std::string prefixOf(std::string const& ns) { return ns.substr(ns.rfind('/') + 1); }

void addAttribute(NyExactElement& element, std::string const& name, char const* type)
{
    bool const isThere =
        std::any_of(element.attributes.begin(), element.attributes.end(),
                    [&](NyExactAttribute const& attribute) { return attribute.ns.empty() && attribute.name == name; });
    if (!isThere)
        element.attributes.push_back({ {}, name, NyExactText::ofName(type), false });
}

template <class Creator>
std::string addressOf(Creator creator)
{
    std::ostringstream text; // to tell creators apart within this process, and never part of a document
    text << std::hash<Creator>()(creator);
    return text.str();
}

// Whether the class of the model that describes itself in an element asks for a member.
template <class Frame>
bool asksFor(Frame const& owner, bool isAttribute, NyToken const& token)
{
    auto const* const kind = dynamic_cast<NyXmlModelKind const*>(owner.compound);
    return kind != nullptr && kind->xmlClass().isRequired(isAttribute, token.localName());
}

// What an object will say of itself, so far as that is not settled by its class: names and classes of the members that lie in it, words,
// creators. Equal signatures describe themselves alike.
void appendSignature(std::string& signature, NyXmlObject const& object)
{
    signature.append(typeid(object).name()).push_back('\0');
    if (!object.xmlInitialized())
        const_cast<NyXmlObject&>(object).xmlInit(); // as describing it does
    if (auto const text = NyExactText::of(object)) {
        for (std::string const& word : text->words)
            signature.append(word).push_back('\0');
    }
    if (auto const* const compound = dynamic_cast<NyXmlCompoundType const*>(&object)) {
        auto const append = [&](char kind, NyXmlCompoundType::ComponentMap const& components) {
            for (auto const& [token, component] : components) {
                signature.append(1, kind).append(token.namespaceName()).append("#").append(token.localName()).push_back('\0');
                appendSignature(signature, *component);
            }
        };
        append('@', const_cast<NyXmlCompoundType*>(compound)->attributeComponentMap()); // which makes the map if there is none
        append('<', compound->componentMap());
    } else if (auto const* const variable = dynamic_cast<NyXmlBaseVariableCompoundType const*>(&object)) {
        for (auto const& [token, creator] : variable->creatorMap())
            signature.append("?" + token.namespaceAndToken() + "=" + addressOf(creator)).push_back('\0');
    }
    signature.push_back('\0');
}

} // namespace

bool NyExactWalk::open(NyToken const& token, Mode mode)
{
    bool const wasOpen = std::any_of(m_frames.begin(), m_frames.end(), [&](Frame const& frame) { return frame.token == token; });
    Frame frame{};
    frame.token = token;
    if (token.namespaceName().empty() && mode == Mode::XML_STARTTAG_CHOICE && !m_frames.empty() && holder().isInNamespaceOfParent)
        frame.token = NyToken(m_frames.back().token.namespaceName(), token.localName());
    frame.mode = mode;
    frame.group = m_group;
    frame.declarations = m_declarations.size();
    frame.element = NyExactElement::none;
    if (!m_frames.empty() && holder().isKnown)
        frame.isKnown = true;
    else if (isKeyOfItem(token))
        frame.isAlias = true;
    else
        frame.element = m_grammar.add(effectiveNamespace(frame.token.namespaceName()), token.localName());
    m_frames.push_back(std::move(frame));
    m_hint.reset();
    m_isAttributeNamed = false;
    return wasOpen;
}

bool NyExactWalk::openInParentNamespace(std::string const& localName, Mode mode)
{
    return open(NyToken(m_frames.empty() ? std::string() : m_frames.back().token.namespaceName(), localName), mode);
}

// Sets and lists describe an `element` that holds a `key`; what they write are elements that hold the item themselves.
bool NyExactWalk::isKeyOfItem(NyToken const& token) const
{
    std::size_t const depth = m_frames.size();
    return depth >= 2 && token.localName() == NyXml::NyKeyToken.localName() &&
           m_frames[depth - 1].token.localName() == NyXml::NyElementToken.localName() && !m_frames[depth - 1].isDescribed &&
           m_frames[depth - 2].isSetOrList;
}

// As a writer has it: the first namespace of a document is its default one, and every other has a prefix, which may hide another
// namespace of the same prefix. An element without a namespace falls to the default one.
std::string NyExactWalk::effectiveNamespace(std::string const& ns)
{
    if (ns.empty()) {
        std::string const* const byDefault = declared("");
        return byDefault != nullptr ? *byDefault : ns;
    }
    if (m_rootNamespace.empty())
        m_rootNamespace = ns;
    std::string const prefix = ns == m_rootNamespace ? std::string() : prefixOf(ns);
    if (!prefix.empty())
        m_namespacesOf[prefix].insert(ns);
    if (std::string const* const inForce = declared(prefix))
        return *inForce;
    m_declarations.emplace_back(prefix, ns);
    return ns;
}

std::string const* NyExactWalk::declared(std::string const& prefix) const
{
    auto const found = std::find_if(m_declarations.rbegin(), m_declarations.rend(),
                                    [&](auto const& declaration) { return declaration.first == prefix; });
    return found != m_declarations.rend() ? &found->second : nullptr;
}

bool NyExactWalk::wantsAnother()
{
    std::set<std::string> ambiguous = m_attributePrefixes;
    for (auto const& [prefix, namespaces] : m_namespacesOf) {
        if (namespaces.size() > 1)
            ambiguous.insert(prefix);
    }
    if (std::includes(m_ambiguous.begin(), m_ambiguous.end(), ambiguous.begin(), ambiguous.end()))
        return false;
    *this = NyExactWalk();
    m_ambiguous = std::move(ambiguous);
    return true;
}

void NyExactWalk::nameAttribute(NyToken const& token)
{
    if (m_frames.empty() || holder().isKnown)
        return;
    std::string ns;
    if (!token.namespaceName().empty()) { // a prefix that nobody has declared is not written
        std::string const prefix = prefixOf(token.namespaceName());
        m_attributePrefixes.insert(prefix);
        if (std::string const* const inForce = prefix.empty() ? nullptr : declared(prefix))
            ns = *inForce;
    }
    auto& attributes = record().attributes;
    auto const same = std::find_if(attributes.begin(), attributes.end(), [&](NyExactAttribute const& attribute) {
        return attribute.ns == ns && attribute.name == token.localName();
    });
    m_attribute = static_cast<std::size_t>(same - attributes.begin());
    if (same == attributes.end())
        attributes.push_back({ ns, token.localName(), {}, asksFor(holder(), true, token) });
    m_isAttributeNamed = true;
    m_hint.reset();
}

void NyExactWalk::give(NyExactText text)
{
    m_hint.reset();
    if (m_frames.empty() || holder().isKnown)
        return;
    if (m_isAttributeNamed) {
        m_isAttributeNamed = false;
        record().attributes[m_attribute].text = text.type == NyExactText::markup ? NyExactText{} : std::move(text);
        return;
    }
    auto& content = record().content;
    if (content)
        content->isList = true; // the second time tells of a run of words
    else
        content = std::move(text);
}

void NyExactWalk::giveType(std::type_info const& info) { give(m_hint ? *m_hint : NyExactText::of(info)); }

void NyExactWalk::describing(NyXmlObject const& object)
{
    if (m_frames.empty() || holder().isKnown)
        return;
    m_hint = NyExactText::of(object);
    if (m_isAttributeNamed)
        return;
    Frame& frame = holder();
    learn(frame, object);
    if (dynamic_cast<NyBaseXmlBasicType const*>(&object) != nullptr)
        return;
    std::size_t const depth = static_cast<std::size_t>(&frame - m_frames.data());
    Frame const* const owner = depth == 0 ? nullptr : &m_frames[depth - 1];
    if (owner != nullptr && memberOf(owner, frame.token) != &object)
        enter(frame, owner, object);
}

// What is asked for when the element closes.
void NyExactWalk::learn(Frame& frame, NyXmlObject const& object)
{
    NyToken const& family = object.token();
    frame.isDescribed = true;
    frame.isWord = object.isBasicType();
    frame.isSetOrList = family == NyXml::NySetTypeToken || family == NyXml::NyListTypeToken;
    frame.isMap = family == NyXml::NyMapTypeToken;
    frame.isPoint =
        dynamic_cast<NyXmlVector const*>(&object) != nullptr || dynamic_cast<NyXmlOrientation const*>(&object) != nullptr;
    frame.isPath = dynamic_cast<NyXmlVectorVector const*>(&object) != nullptr;
    frame.compound = dynamic_cast<NyXmlCompoundType const*>(&object);
    frame.variable = dynamic_cast<NyXmlBaseVariableCompoundType const*>(&object);
    frame.isChoice = frame.variable != nullptr;
    if (dynamic_cast<NyXmlAnyOrder const*>(&object) != nullptr)
        record().inAnyOrder = true;
    auto const* const kind = dynamic_cast<NyXmlMemberKind const*>(&object);
    frame.isInNamespaceOfParent = kind != nullptr && frame.isChoice;
    if (kind == nullptr)
        return;
    frame.most = kind->maxAlternatives();
    frame.isRequired = dynamic_cast<NyXmlOccurrence const*>(kind) != nullptr && kind->minOccurs() > 0;
    if (!frame.isChoice) { // else they are the children's
        for (std::string& name : kind->ownAttributes()) {
            frame.isReference = frame.isReference || name == NyXmlSharing::referenceName;
            frame.ownAttributes.push_back(std::move(name));
        }
    }
}

// The object that answers to this name in the one that describes itself in the element around.
NyXmlObject const* NyExactWalk::memberOf(Frame const* owner, NyToken const& token) const
{
    if (owner == nullptr || owner->compound == nullptr)
        return nullptr;
    auto const& components = owner->compound->componentMap();
    auto const found = components.find(token);
    return found != components.end() ? found->second : nullptr;
}

// From here on the element is what it is elsewhere, if it is described there.
void NyExactWalk::enter(Frame& frame, Frame const* owner, NyXmlObject const& object)
{
    auto const [place, isNew] = m_described.try_emplace(keyOf(frame, owner, object), frame.element);
    if (isNew || place->second == frame.element)
        return;
    m_grammar[frame.element].sameAs = place->second;
    frame.element = place->second;
    frame.isKnown = true;
}

std::string NyExactWalk::keyOf(Frame const& frame, Frame const* owner, NyXmlObject const& object) const
{
    NyExactElement const& element = m_grammar[frame.element];
    std::string key = element.ns + '\0' + element.name + '\0' + (frame.mode == Mode::XML_STARTTAG_CHOICE ? "choice" : "place");
    if (owner->variable != nullptr) {
        auto const& creators = owner->variable->creatorMap();
        auto const creator = creators.find(frame.token);
        if (creator != creators.end())
            key += addressOf(creator->second);
    }
    for (std::string const& name : frame.ownAttributes)
        key += '\0' + name;
    for (std::string const& prefix : m_ambiguous) {
        std::string const* const ns = declared(prefix);
        key += '\0' + (ns != nullptr ? *ns : std::string());
    }
    key += '\0';
    appendSignature(key, object);
    return key;
}

// A variable compound makes an object with each of its creators before anybody can say that these are known. As a member it can be looked
// at before it describes itself.
bool NyExactWalk::isKnown(NyToken const& token, std::string const& typeId)
{
    if (m_frames.empty())
        return false;
    if (m_frames.size() > 1 && !m_frames.back().isKnown) {
        Frame& frame = m_frames.back();
        Frame const& owner = m_frames[m_frames.size() - 2];
        NyXmlObject const* const member = memberOf(&owner, token);
        if (dynamic_cast<NyXmlBaseVariableCompoundType const*>(member) != nullptr)
            enter(frame, &owner, *member);
        // Of a class that calls no base operation these calls are all there is to know.
        if (!owner.isDescribed) {
            auto const same = std::find_if(m_frames.begin(), m_frames.end() - 1, [&](Frame const& outer) {
                return outer.typeId == typeId && outer.token == token && !outer.isAlias && !outer.isDescribed;
            });
            if (same != m_frames.end() - 1) {
                m_grammar[frame.element].sameAs = same->element;
                frame.element = same->element;
                frame.isKnown = true;
            }
        }
        frame.typeId = typeId;
    }
    bool const isKnown = m_frames.back().isKnown;
    if (isKnown)
        close();
    return isKnown;
}

void NyExactWalk::close()
{
    if (m_frames.empty())
        return;
    Frame frame = std::move(m_frames.back());
    m_frames.pop_back();
    m_declarations.resize(frame.declarations);
    m_hint.reset();
    m_isAttributeNamed = false;
    if (frame.element == NyExactElement::none) // an alias, or inside of what is known
        return;
    if (!frame.isKnown)
        finish(frame);
    if (m_frames.empty())
        m_grammar.addRoot(frame.element);
    else
        holder().children.push_back(
            { frame.element, frame.mode, frame.group, frame.isRequired || asksFor(holder(), false, frame.token), frame.isWord });
}

void NyExactWalk::finish(Frame const& frame)
{
    Frame const* const owner = m_frames.empty() ? nullptr : &m_frames.back();
    NyExactElement& element = m_grammar[frame.element];
    for (NyExactAttribute& attribute : element.attributes)
        attribute.isRequired = !frame.isReference && // as its class says, or since reading would miss it
                               (attribute.isRequired || frame.isPoint || (owner != nullptr && owner->isPath));
    for (std::string const& name : frame.ownAttributes)
        addAttribute(element, name, "string");
    if (frame.isSetOrList)
        addAttribute(element, NyXml::NyCountToken.localName(), "unsignedInt");
    makeParticles(frame);
    if (owner == nullptr)
        return;
    if (owner->isMap) {
        for (NyExactParticle& particle : element.particles)
            particle.isRequired = true; // no entry without a key and a value
    }
    if (owner->isChoice && frame.mode == Mode::XML_STARTTAG_CHOICE &&
        frame.token.localName() != NyXml::NyAddLibrariesToken.localName())
        addAttribute(element, NyXml::NyLibraryToken.localName(), "string");
}

// Alternatives that follow each other are one place, with all that is in the same brackets as they are. What a variable compound describes
// beside its alternatives stands among them, and so does all of an object that describes a name twice. Libraries stand in front of a single
// alternative.
void NyExactWalk::makeParticles(Frame const& frame)
{
    NyExactElement& element = m_grammar[frame.element];
    auto const isAlternative = [](Child const& child) { return child.mode == Mode::XML_STARTTAG_CHOICE; };
    std::set<std::pair<std::string, std::string>> names;
    for (Child const& child : frame.children)
        names.emplace(m_grammar[child.element].ns, m_grammar[child.element].name);
    bool const isOnePlace =
        names.size() < frame.children.size() ||
        (frame.variable != nullptr && std::any_of(frame.children.begin(), frame.children.end(), isAlternative));
    bool isChoice = false;
    unsigned int group = 0;
    for (Child const& child : frame.children) {
        bool const isAlone = frame.most == 1 && m_grammar[child.element].name == NyXml::NyAddLibrariesToken.localName();
        bool const joins = !isAlone && !element.particles.empty() && isChoice && (isOnePlace || child.group == group);
        isChoice = !isAlone && (joins || isOnePlace || isAlternative(child));
        group = child.group;
        if (!joins) {
            NyExactParticle& particle = element.particles.emplace_back();
            particle.isUnbounded = isChoice ? frame.most != 1 : child.mode == Mode::XML_STARTTAG_UNBOUNDED;
            particle.isRequired = child.isRequired && !isChoice && !frame.isReference;
        }
        element.particles.back().alternatives.push_back(child.element);
    }
    if (frame.isSetOrList && frame.children.size() == 1 && frame.children.front().isWord)
        addRun(element, frame.children.front().element);
}

// A set or a list writes items that are words as a run. It does not say so itself.
void NyExactWalk::addRun(NyExactElement& element, std::size_t item)
{
    std::size_t const run = m_grammar.add(element.ns, NyXml::NyGroupToken.localName());
    m_grammar[run].content = m_grammar[item].content;
    if (m_grammar[run].content)
        m_grammar[run].content->isList = true;
    element.particles.emplace_back().alternatives.push_back(run);
}
