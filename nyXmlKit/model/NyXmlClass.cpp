#include <nyXmlKit/model/NyXmlClass.h>

#include <nyXml/compound/NyXmlCompoundType.h>
#include <nyXml/platform/NyPrint.h>
#include <nyXmlKit/model/NyXmlMemberKind.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

namespace {

char* bytesOf(NyXmlCompoundType const& compound) noexcept
{
    // A member is registered as an object to change, by the compound itself.
    return static_cast<char*>(const_cast<void*>(static_cast<void const*>(&compound)));
}

// As assigning to a map's entry does it: the first token stays, the object is the last one.
void assign(std::vector<NyXmlClass::Member>& members, NyXmlClass::Member const& member)
{
    auto const known = std::find_if(members.begin(), members.end(), [&](NyXmlClass::Member const& other) {
        return other.token.localName() == member.token.localName();
    });
    if (known == members.end()) {
        members.push_back(member);
        return;
    }
    NyToken const token = known->token;
    bool const isReadOnly = known->isReadOnly || member.isReadOnly;
    *known = member;
    known->token = token;
    known->isReadOnly = isReadOnly;
}

// One object under two names is all right, and a derived class may replace a member of its base. Two members under one name in one class
// are a slip, and the first one would be lost in silence.
void reportTwins(std::vector<NyXmlClass::Member> const& registered)
{
    for (auto member = registered.begin(); member != registered.end(); ++member)
        for (auto other = registered.begin(); other != member; ++other)
            if (member->scope != nullptr && member->scope == other->scope && member->isAttribute == other->isAttribute &&
                member->distance != other->distance && member->token.localName() == other->token.localName())
                Ny::Print::write(Ny::Print::FAULT, "NyXmlModel Error: class %s registers two members as %s \"%s\".\n",
                                 member->scope, member->isAttribute ? "attribute" : "element", member->token.c_str());
}

bool isByName(NyXmlClass::Member const& one, NyXmlClass::Member const& two) { return one.token < two.token; }

} // namespace

NyXmlModelKind::~NyXmlModelKind() = default;

NyXmlClass::~NyXmlClass()
{
    delete m_theMembers.load();
    delete m_theVersioned.load();
    for (RequiredName const* name = m_theRequired.load(); name != nullptr;)
        delete std::exchange(name, name->next);
}

NyXmlObject& NyXmlClass::object(NyXmlCompoundType const& compound, Member const& member) noexcept
{
    return *static_cast<NyXmlObject*>(static_cast<void*>(bytesOf(compound) + member.distance));
}

NyXmlOccurrence* NyXmlClass::occurrence(NyXmlCompoundType const& compound, Member const& member) noexcept
{
    if (member.occurrence == noOccurrence)
        return nullptr;
    return static_cast<NyXmlOccurrence*>(static_cast<void*>(bytesOf(compound) + member.occurrence));
}

void NyXmlClass::publish(NyXmlCompoundType const& compound, std::vector<Member> registered) const
{
    // Only what lies in the object is surely there in every other object of the class.
    auto const isOurs = [&](Member const& member) { return isInside(compound, member.distance); };
    if (!std::all_of(registered.begin(), registered.end(), isOurs)) {
        setVarying();
        return;
    }

    reportTwins(registered);
    auto members = std::make_unique<Members>();
    for (Member& member : registered) {
        if (auto* const occurrence = dynamic_cast<NyXmlOccurrence*>(&object(compound, member))) {
            member.occurrence = static_cast<char*>(static_cast<void*>(occurrence)) - bytesOf(compound);
            members->hasOccurrences = true;
        }
        members->hasReadOnly = members->hasReadOnly || member.isReadOnly;
        assign(member.isAttribute ? members->attributes : members->elements, member);
    }
    if (m_theOrder == NyXmlOrder::byName)
        for (auto* const list : { &members->attributes, &members->elements })
            std::sort(list->begin(), list->end(), isByName);
    for (auto const* const list : { &members->attributes, &members->elements })
        std::copy_if(list->begin(), list->end(), std::back_inserter(members->required),
                     [](Member const& member) { return member.isRequired; });
    members->isInOrderOfCore = std::is_sorted(members->attributes.begin(), members->attributes.end(), isByName) &&
                               std::is_sorted(members->elements.begin(), members->elements.end(), isByName);
    members->registered = std::move(registered);

    Members const* none = nullptr;
    if (m_theMembers.compare_exchange_strong(none, members.get(), std::memory_order_acq_rel))
        members.release(); // ours from here; else another thread was faster
}

void NyXmlClass::publish(std::vector<Versioned> versioned) const
{
    auto published = std::make_unique<std::vector<Versioned>>(std::move(versioned));
    std::vector<Versioned> const* none = nullptr;
    if (m_theVersioned.compare_exchange_strong(none, published.get(), std::memory_order_acq_rel))
        published.release(); // as above
}

std::vector<NyXmlClass::Versioned> const& NyXmlClass::versioned() const noexcept
{
    static std::vector<Versioned> const none;
    std::vector<Versioned> const* const published = m_theVersioned.load(std::memory_order_acquire);
    return published == nullptr ? none : *published;
}

bool NyXmlClass::isRequired(bool isAttribute, std::string const& localName) const noexcept
{
    auto const isIt = [&](auto const& member, std::string const& name) {
        return member.isAttribute == isAttribute && name == localName;
    };
    if (Members const* const known = members()) {
        return std::any_of(known->required.begin(), known->required.end(),
                           [&](Member const& member) { return isIt(member, member.token.localName()); });
    }
    RequiredName const* name = m_theRequired.load(std::memory_order_acquire);
    while (name != nullptr && !isIt(*name, name->name))
        name = name->next;
    return name != nullptr;
}

void NyXmlClass::addRequired(bool isAttribute, std::string const& localName) const
{
    RequiredName const* first = m_theRequired.load(std::memory_order_acquire);
    for (RequiredName const* name = first; name != nullptr; name = name->next)
        if (name->isAttribute == isAttribute && name->name == localName)
            return;
    auto added = std::make_unique<RequiredName>(RequiredName{ isAttribute, localName, first });
    while (!m_theRequired.compare_exchange_weak(added->next, added.get(), std::memory_order_acq_rel)) {}
    added.release(); // ours from here
}

bool NyXmlClass::isInside(NyXmlCompoundType const& compound, std::ptrdiff_t distance) const noexcept
{
    std::ptrdiff_t const begin = static_cast<char const*>(dynamic_cast<void const*>(&compound)) - bytesOf(compound);
    return distance >= begin && distance < begin + static_cast<std::ptrdiff_t>(m_theSize);
}
