#include <nyXml/values/detail/NyXmlOwnValues.h>

#include <nyXml/values/NyXmlBinaryString.h>
#include <nyXml/values/NyXmlEmbeddedString.h>
#include <nyXml/values/NyXmlEnumType.h>
#include <nyXml/values/NyXmlListType.h>
#include <nyXml/values/NyXmlMapType.h>
#include <nyXml/values/NyXmlVectorType.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <typeinfo>

namespace {

template <class T>
using Value = NyXmlBasicType<T>;
template <class T>
using Words = NyXmlVectorBasicType<NyXmlBasicType<T>>;
template <class T>
using Items = NyXmlVectorType<T>;
template <class A, class B>
using Pair = NyXmlPairType<A, B>;
template <class V>
using ByText = NyXmlMapType<NyXmlBasicType<std::string>, V>;
template <class V>
using ByNumber = NyXmlMapType<NyXmlBasicType<unsigned int>, V>;
using Text = Value<std::string>;
using Number = Value<unsigned int>;
using Real = Value<double>;
using Truth = Value<bool>;

/// Where the types lie, by what the low bits of their addresses make of them. A place that is taken leads to the next one.
class Table {
public:
    template <class... T>
    void enter()
    {
        (enter(typeid(T)), ...);
    }

    bool has(std::type_info const& type) const noexcept
    {
        std::size_t place = first(type);
        while (m_Types[place] != nullptr && m_Types[place] != &type)
            place = behind(place);
        return m_Types[place] != nullptr;
    }

private:
    static constexpr std::size_t size = 256; // three times as many as there are types

    static std::size_t first(std::type_info const& type) noexcept
    {
        auto const address = reinterpret_cast<std::uintptr_t>(&type) / alignof(std::type_info);
        return (address ^ address / size) % size;
    }
    static std::size_t behind(std::size_t place) noexcept { return (place + 1) % size; }

    void enter(std::type_info const& type)
    {
        std::size_t place = first(type);
        while (m_Types[place] != nullptr)
            place = behind(place);
        m_Types[place] = &type;
    }

    std::array<std::type_info const*, size> m_Types{};
};

Table makeTable()
{
    Table table;
    table.enter<Value<char>, Value<unsigned char>, Value<short>, Value<unsigned short>, Value<int>, Number, Real, Truth, Text,
                Value<NyAngle>, Value<NyNonNegReal>>();
    table.enter<NyXmlEnumType<unsigned char>, NyXmlEnumType<short>, NyXmlEnumType<unsigned short>, NyXmlEnumType<int>,
                NyXmlEnumType<unsigned int>, NyXmlEnumType<bool>, NyXmlEnumType<NyNonNegReal>>();
    table.enter<NyXmlVector, NyXmlOrientation, NyXmlVectorVector, NyXmlBinaryString, NyXmlEmbeddedString>();
    table.enter<Words<char>, Words<unsigned char>, Words<short>, Words<unsigned short>, Words<int>, Words<unsigned int>,
                Words<double>, Words<std::string>>();
    table.enter<Pair<Text, Text>, Pair<Text, Number>, Pair<Text, Truth>, Pair<Number, Number>, Pair<Real, Real>,
                Pair<NyXmlVector, NyXmlVector>>();
    table.enter<NyXmlSetType<Number>, NyXmlListType<Number>, NyXmlListType<NyXmlVector>>();
    table.enter<Items<Text>, Items<Items<Text>>, Items<Items<Items<Text>>>, Items<Truth>, Items<Items<Truth>>,
                Items<Pair<Number, Number>>, Items<Items<Pair<Number, Number>>>, Items<Pair<Real, Real>>>();
    table.enter<Items<Words<unsigned char>>, Items<Words<int>>, Items<Words<unsigned int>>, Items<Items<Words<unsigned int>>>,
                Items<Words<double>>, Items<Items<Words<double>>>>();
    table.enter<Items<NyXmlVector>, Items<NyXmlOrientation>, Items<NyXmlVectorVector>, Items<Items<NyXmlVectorVector>>>();
    table.enter<ByText<Text>, ByText<Value<int>>, ByText<Number>, ByText<Real>, ByText<Truth>, ByText<ByText<Real>>,
                ByText<ByText<Truth>>, ByText<Pair<Text, Text>>, ByText<Words<unsigned int>>, ByText<Words<double>>>();
    table.enter<ByNumber<Number>, ByNumber<Text>, ByNumber<NyXmlSetType<Number>>>();
    return table;
}

} // namespace

bool NyXmlOwnValues::has(NyXmlObject const& object) noexcept
{
    static Table const table = makeTable();
    return table.has(typeid(object));
}
