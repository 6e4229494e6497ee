#include <nyXml/values/detail/NyXmlLeaf.h>

#include <nyXml/reader/detail/NyXmlLeafRun.h>
#include <nyXml/values/NyXmlBasicType.h>
#include <nyXml/values/NyXmlVector.h>
#include <nyXml/values/detail/NyXmlGeometry.h>

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>

namespace {

using NyXmlLeaf::Taker;

// By their full names, since the class is known: no call goes through a slot.
template <class Value>
void mark(Value& value)
{
    value.NyXmlObject::setXmlInitialized(true);
    value.NyXmlObject::setSpecified(true);
}

template <class T>
bool takeText(NyXmlObject& object, NyXmlLeafRun& run, NyToken const& name)
{
    auto& value = static_cast<NyXmlBasicType<T>&>(object);
    if constexpr (std::is_same_v<T, double>)
        if (run.takeReal(name, value.value())) {
            mark(value);
            return true;
        }
    std::string_view text;
    if (!run.takeText(name, text))
        return false;
    mark(value);
    NyXmlTextOf<T>::take(value.value(), text);
    return true;
}

bool takeVector(NyXmlObject& object, NyXmlLeafRun& run, NyToken const& name)
{
    double reals[3];
    if (!run.takeReals(name, NyXmlGeometry::coordinateNames, reals)) {
        std::string_view texts[3];
        if (!run.takeAttributes(name, NyXmlGeometry::coordinateNames, texts))
            return false;
        for (std::size_t i = 0; i != 3; ++i)
            reals[i] = NyXmlText::toDouble(texts[i]);
    }
    static_cast<NyXmlVector&>(object).set(reals[0], reals[1], reals[2]);
    return true;
}

/// Hot: looked into once for each leaf. Places by address, with the next free one for those that meet.
class Takers {
public:
    Takers()
    {
        addTexts<char, unsigned char, short, unsigned short, int, unsigned int, double, bool, std::string, NyAngle,
                 NyNonNegReal>();
        add(typeid(NyXmlVector), takeVector);
    }

    Taker of(std::type_info const& type) const noexcept
    {
        std::size_t place = placeOf(type);
        while (m_entries[place].type != nullptr && m_entries[place].type != &type)
            place = (place + 1) % m_entries.size();
        return m_entries[place].taker;
    }

private:
    struct Entry {
        std::type_info const* type = nullptr;
        Taker taker = nullptr;
    };

    static std::size_t placeOf(std::type_info const& type) noexcept
    {
        std::size_t const address = std::hash<std::type_info const*>()(&type);
        return (address >> 4) % 64; // type information lies 16 bytes apart or more
    }

    template <class... T>
    void addTexts()
    {
        (add(typeid(NyXmlBasicType<T>), takeText<T>), ...);
    }
    void add(std::type_info const& type, Taker taker)
    {
        std::size_t place = placeOf(type);
        while (m_entries[place].type != nullptr)
            place = (place + 1) % m_entries.size();
        m_entries[place] = { &type, taker };
    }

    std::array<Entry, 64> m_entries;
};

} // namespace

NyXmlLeaf::Taker NyXmlLeaf::takerOf(NyXmlObject const& object) noexcept
{
    static Takers const takers;
    return takers.of(typeid(object));
}
