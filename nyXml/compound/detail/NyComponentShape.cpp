#include <nyXml/compound/detail/NyComponentShape.h>

#include <nyXml/compound/NyXmlCompoundType.h>
#include <nyXml/reader/detail/NyXmlLeafRun.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <utility>

namespace {

struct PublishedShape {
    NyComponentShape shape;
    PublishedShape* next;
};

// Lists that grow at their front and lose nothing. The table needs no construction and no destruction, so that objects may be
// read before main() and while the process ends.
std::array<std::atomic<PublishedShape*>, 1024> thePublished;

std::uintptr_t addressOf(void const* pointer) noexcept
{
    std::uintptr_t address;
    static_assert(sizeof(address) == sizeof(pointer));
    std::memcpy(&address, &pointer, sizeof(address));
    return address;
}

std::atomic<PublishedShape*>& listOf(std::type_info const& type) noexcept
{
    std::uintptr_t const address = addressOf(&type);
    return thePublished[(address >> 4 ^ address >> 14) % thePublished.size()]; // type information lies 16 bytes apart or more
}

thread_local NyComponentRecorder* theRecorder = nullptr;

// As assigning to a map's entry does it: the key keeps the first token, the value is the last one.
template <class Entry, class Value>
void assign(std::vector<Entry>& entries, NyToken const& token, Value Entry::*value, Value newValue)
{
    auto place = std::lower_bound(entries.begin(), entries.end(), token, NyComponentShape::isBefore<Entry>);
    if (place == entries.end() || token < place->token) {
        place = entries.emplace(place);
        place->token = token;
    }
    (*place).*value = newValue;
}

} // namespace

NyComponentShape::NyComponentShape(Class const& ofClass, bool hasPlainLookup, std::vector<Registration> registrations)
    : NyRegistered(true),
      m_class(ofClass),
      m_hasPlainLookup(hasPlainLookup),
      m_registrations(std::move(registrations))
{
    for (Registration const& registration : m_registrations) {
        auto& components = registration.kind == NyComponentKind::ELEMENT ? m_elements : m_attributes;
        assign(components, registration.token, &NyComponent::distance, registration.distance);
        if (registration.readOnly)
            assign(m_marks, registration.token, &Mark::kind, registration.kind);
    }
    for (auto* const components : { &m_elements, &m_attributes })
        for (NyComponent& component : *components) {
            component.nameInDocuments.assign(component.token.localName());
            component.isPlainName = NyXmlLeafRun::isPlainName(component.token.localName());
        }
}

NyComponentShape const* NyComponentShape::find(Class const& ofClass) noexcept
{
    PublishedShape const* published = listOf(*ofClass.type).load(std::memory_order_acquire);
    while (published != nullptr && !(published->shape.m_class == ofClass))
        published = published->next;
    return published == nullptr ? nullptr : &published->shape;
}

NyComponentShape const& NyComponentShape::publish(Class const& ofClass, bool hasPlainLookup,
                                                  std::vector<Registration> registrations)
{
    std::atomic<PublishedShape*>& list = listOf(*ofClass.type);
    auto* const published =
        new PublishedShape{ NyComponentShape(ofClass, hasPlainLookup, std::move(registrations)), list.load() };
    while (!list.compare_exchange_weak(published->next, published, std::memory_order_acq_rel)) {}
    return published->shape;
}

std::uintptr_t NyComponentShape::distance(NyXmlCompoundType const* from, NyXmlObject const* to) noexcept
{
    return addressOf(to) - addressOf(from);
}

NyXmlObject* NyComponentShape::at(NyXmlCompoundType const* compound, std::uintptr_t distance) noexcept
{
    // The component was registered as an object to change, by the compound itself.
    auto* const bytes = static_cast<char*>(const_cast<void*>(static_cast<void const*>(compound)));
    return static_cast<NyXmlObject*>(static_cast<void*>(bytes + static_cast<std::ptrdiff_t>(distance)));
}

NyComponentRecorder::NyComponentRecorder(NyXmlCompoundType const& compound) noexcept : m_compound(compound), m_outer(theRecorder)
{
    theRecorder = this;
}

NyComponentRecorder::~NyComponentRecorder() { theRecorder = m_outer; }

void NyComponentRecorder::note(NyXmlCompoundType const& compound, NyComponentKind kind, bool readOnly, NyToken const& token,
                               NyXmlObject const* object)
{
    if (theRecorder != nullptr && &theRecorder->m_compound == &compound)
        theRecorder->m_registrations.push_back({ kind, readOnly, token, NyComponentShape::distance(&compound, object) });
}
