// accept(), writeSchema() and createSchema() stand with the visitor and with the schema: they need what is built upon this class.

#include <nyXml/core/NyXmlObject.h>

#include <memory>

namespace {

// Initialisation is lazy, and writing a fresh object has to trigger it: the one place where a const object changes.
void initialise(NyXmlObject const& object)
{
    if (object.xmlInitialized())
        return;
    auto& changed = const_cast<NyXmlObject&>(object);
    try {
        changed.xmlInit();
    } catch (...) { // half initialised is not initialised: the next use begins anew
        changed.setXmlInitialized(false);
        throw;
    }
}

} // namespace

bool NyXmlObject::xmlInit()
{
    setXmlInitialized(true);
    return true;
}

bool NyXmlObject::read(NyXmlReader&)
{
    initialise(*this);
    setSpecified(true);
    return true;
}

bool NyXmlObject::readAttribute(NyXmlReader& reader) { return read(reader); }

bool NyXmlObject::write(NyXmlWriter&) const
{
    initialise(*this);
    return true;
}

bool NyXmlObject::xmlInitialized() const { return (m_theFlags & m_theXmlInitializedBit) != 0; }

void NyXmlObject::setXmlInitialized(bool initialized)
{
    m_theFlags =
        static_cast<unsigned char>(initialized ? m_theFlags | m_theXmlInitializedBit : m_theFlags & ~m_theXmlInitializedBit);
}

bool NyXmlObject::specified() const { return (m_theFlags & m_theSpecifiedBit) != 0; }

void NyXmlObject::setSpecified(bool specified)
{
    m_theFlags = static_cast<unsigned char>(specified ? m_theFlags | m_theSpecifiedBit : m_theFlags & ~m_theSpecifiedBit);
}

bool NyXmlObject::isBasicType() const { return false; }

bool NyXmlObject::equalsDefault() const
{
    std::unique_ptr<NyXmlObject const> const fresh(newObject());
    return equality(fresh.get());
}
