#include "SchemaModels.h"

#include <nyXml/nyXml.h>
#include <nyXmlKit/model/NyXmlModel.h>
#include <nyXmlKit/model/NyXmlOptional.h>
#include <nyXmlKit/model/NyXmlRepeated.h>

#include <algorithm>
#include <limits>
#include <sstream>

namespace {

using Member = SampleClass::Member;

bool theHasInfinities = false; // of the model that is being filled

std::string text(Dice& dice)
{
    constexpr char letters[] = "abcdefgh ijklmnop. qrstuv(w)xyz;:,%-+*~#@";
    std::string text = "s"; // never a number
    for (unsigned int count = dice.below(dice.chance(20) ? 90 : 12); count > 0; --count)
        text += letters[dice.below(sizeof letters - 1)];
    return text + "s";
}

char character(Dice& dice)
{
    constexpr char characters[] = "abcXYZ!#$%()*+,-./:;=?@[]^_`{|}~"; // no markup, no digits
    return characters[dice.below(sizeof characters - 1)];
}

double real(Dice& dice)
{
    constexpr double odd[] = { std::numeric_limits<double>::infinity(),  -std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::denorm_min(),
                               -std::numeric_limits<double>::max(),      -0.0,
                               std::numeric_limits<double>::min(),       1e22 };
    if (dice.chance(25))
        return odd[theHasInfinities ? dice.below(8) : 3 + dice.below(5)];
    return (dice.below(2000001) - 1e6) / (1 << dice.below(20));
}

// A random value of each type.
void set(NyXmlBasicType<char>& value, Dice& dice) { value = character(dice); }
void set(NyXmlBasicType<unsigned char>& value, Dice& dice) { value = static_cast<unsigned char>(dice.bits()); }
void set(NyXmlBasicType<short>& value, Dice& dice) { value = static_cast<short>(dice.bits()); }
void set(NyXmlBasicType<unsigned short>& value, Dice& dice) { value = static_cast<unsigned short>(dice.bits()); }
void set(NyXmlBasicType<int>& value, Dice& dice) { value = static_cast<int>(dice.bits()); }
void set(NyXmlBasicType<unsigned int>& value, Dice& dice) { value = dice.bits(); }
void set(NyXmlBasicType<double>& value, Dice& dice) { value = real(dice); }
void set(NyXmlBasicType<bool>& value, Dice& dice) { value = dice.chance(50); }
void set(NyXmlBasicType<std::string>& value, Dice& dice) { value = text(dice); }
void set(NyXmlBasicType<NyAngle>& value, Dice& dice) { value = NyAngle(real(dice)); }
void set(NyXmlBasicType<NyNonNegReal>& value, Dice& dice) { value = NyNonNegReal(real(dice)); }
void set(NyXmlBinaryString& value, Dice& dice)
{
    std::string bytes = "\xFF\xFF"; // "//8": no number and no word
    for (unsigned int count = dice.below(80); count > 0; --count)
        bytes += static_cast<char>(dice.bits());
    value = bytes;
}
void set(NyXmlEmbeddedString& value, Dice& dice)
{
    value = dice.chance(50) ? "<EMBEDDED size=\"x\"><inner xmlns=\"urn:any\">7</inner>8</EMBEDDED>" : "and <EMBEDDED/> so on";
}
void set(NyXmlVector& value, Dice& dice) { value.set(real(dice), real(dice), real(dice)); }
void set(NyXmlOrientation& value, Dice& dice) { value = NyOrientation(real(dice), real(dice), real(dice), real(dice)); }
void set(NyXmlVectorVector& value, Dice& dice)
{
    for (unsigned int count = dice.below(4); count > 0; --count)
        value.pushBack(NyVector(real(dice), real(dice), real(dice)));
}
template <class A, class B>
void set(NyXmlPairType<A, B>& value, Dice& dice)
{
    set(value.first(), dice);
    set(value.second(), dice);
}
template <class T>
void set(NyXmlVectorBasicType<NyXmlBasicType<T>>& value, Dice& dice)
{
    for (unsigned int count = dice.below(25); count > 0; --count) {
        NyXmlBasicType<T> item;
        set(item, dice);
        value.pushBack(item);
    }
}
template <class E>
void set(NyXmlVectorType<E>& value, Dice& dice)
{
    for (unsigned int count = dice.below(4); count > 0; --count) {
        E item;
        set(item, dice);
        value.pushBack(item);
    }
}
template <class E>
void set(NyXmlListType<E>& value, Dice& dice)
{
    for (unsigned int count = dice.below(14); count > 0; --count) {
        E item;
        set(item, dice);
        value.pushBack(item);
    }
}
void set(NyXmlSetType<NyXmlBasicType<unsigned int>>& value, Dice& dice)
{
    for (unsigned int count = dice.below(14); count > 0; --count)
        value.add(dice.below(30));
}
template <class K, class V>
void set(NyXmlMapType<K, V>& value, Dice& dice)
{
    for (unsigned int count = dice.below(4); count > 0; --count) {
        K key;
        V item;
        set(key, dice);
        set(item, dice);
        value.add(key, item);
    }
}

template <class T, class Fill>
Member member(std::function<std::unique_ptr<NyXmlObject>()> make, Fill fill)
{
    Member result{};
    result.make = std::move(make);
    result.copy = [](NyXmlObject const& other) { return std::make_unique<T>(static_cast<T const&>(other)); };
    result.fill = [fill](NyXmlObject& object, Dice& dice, unsigned int depth) { fill(static_cast<T&>(object), dice, depth); };
    return result;
}

template <class T>
Member value()
{
    return member<T>([] { return std::make_unique<T>(); }, [](T& object, Dice& dice, unsigned int) { set(object, dice); });
}

// A zero byte is no text: a character is set from the beginning.
Member letter()
{
    Member result = value<NyXmlBasicType<char>>();
    result.make = [] { return std::make_unique<NyXmlBasicType<char>>('x'); };
    return result;
}

template <class T>
using B = NyXmlBasicType<T>;
template <class T>
using VB = NyXmlVectorBasicType<B<T>>;
template <class E>
using V = NyXmlVectorType<E>;
using S = B<std::string>;
using U = B<unsigned int>;

class Span : public NyXmlPairType<S, S> {
public:
    Span() { setXmlTagNames("from", "to"); }
};

template <int Number>
Member items()
{
    return member<SampleItems<Number>>([] { return std::make_unique<SampleItems<Number>>(); },
                                       [](SampleItems<Number>& object, Dice& dice, unsigned int depth) {
                                           for (unsigned int count = depth == 0 ? 0 : dice.below(3); count > 0; --count) {
                                               object.pushBack(SampleItem<Number>());
                                               object.vectorContainer().back().fill(dice, depth - 1);
                                           }
                                       });
}

template <class T>
Member word(std::vector<std::string> const* words)
{
    return member<SampleWord<T>>([words] { return std::make_unique<SampleWord<T>>(words); },
                                 [words](SampleWord<T>& object, Dice& dice, unsigned int) {
                                     object.setValue(T(static_cast<int>(dice.below(static_cast<unsigned int>(words->size())))));
                                 });
}

// A class of words that a run can hold.
class Gait : public NyXmlEnumType<int> {
public:
    Gait() = default;
    Gait(int value) : NyXmlEnumType<int>(value) {}
    NyXmlObject* clone() const override { return new Gait(*this); }
    NyXmlObject* newObject() const override { return new Gait; }
    bool xmlInit() override
    {
        setEnumString(0, "WORDwalk");
        setEnumString(1, "WORDtrot");
        return NyXmlEnumType<int>::xmlInit();
    }
};
void set(Gait& value, Dice& dice) { value.setValue(static_cast<int>(dice.below(3))); }

// A class of the kit's model. Each bit says whether one member is required, as its name tells.
template <unsigned int Bits>
class Chosen : public NyXmlModel<Chosen<Bits>> {
public:
    static constexpr auto xmlName = "urn:demo/shapes#chosen";
    Chosen()
    {
        if ((Bits & 16) != 0)
            numbers.append() = 7; // one at least
    }
    void registerComponents() override
    {
        if constexpr ((Bits & 1) != 0)
            this->requiredAttribute("reqA", a);
        else
            this->attribute("optA", a);
        if constexpr ((Bits & 2) != 0)
            this->requiredElement("reqB", b);
        else
            this->element("optB", b);
        if constexpr ((Bits & 4) != 0)
            this->requiredElement("reqC", c);
        else
            this->element("optC", c);
        if constexpr ((Bits & 8) != 0)
            this->requiredElement("urn:demo/parts#reqD", d);
        else
            this->element("urn:demo/parts#optD", d);
        if constexpr ((Bits & 16) != 0)
            this->requiredElement("reqE", numbers);
        else
            this->element("optE", numbers);
        this->element("more", more);
    }
    B<int> a;
    B<double> b;
    S c;
    VB<int> d;
    NyXmlRepeated<int> numbers;
    NyXmlOwned<Chosen> more;
};

template <unsigned int Bits>
void fillChosen(Chosen<Bits>& chosen, Dice& dice, unsigned int depth)
{
    set(chosen.a, dice);
    if (dice.chance(60))
        set(chosen.b, dice);
    if (dice.chance(60))
        set(chosen.c, dice);
    if (dice.chance(60))
        set(chosen.d, dice);
    if (dice.chance(60))
        chosen.numbers.append() = static_cast<int>(dice.bits());
    if (depth > 0 && dice.chance(50))
        fillChosen(chosen.more.make(), dice, depth - 1);
}

template <unsigned int Bits>
Member chosen()
{
    return member<Chosen<Bits>>([] { return std::make_unique<Chosen<Bits>>(); }, fillChosen<Bits>);
}

} // namespace

SampleModel::SampleModel(ModelKind const& kind, unsigned int seed) : m_kind(kind), m_dice(seed)
{
    m_rootToken = NyToken("urn:demo/shapes", m_kind.isPooled ? "a" : "root");
    SampleChoice::names.clear();
    for (char const* one : { "number", "ball", "box", "cone" })
        SampleChoice::names.push_back(m_kind.hasTwoNamespaces && m_dice.chance(50) ? NyToken("urn:demo/parts", one)
                                                                                   : NyToken("urn:demo/shapes", one));
    // Items first: a class that has a sequence of them is complete when it is made.
    SampleClass* itemClasses[3];
    for (SampleClass*& item : itemClasses) {
        m_classes.push_back(std::make_unique<SampleClass>());
        item = m_classes.back().get();
    }
    SampleItem<0>::itemClass = itemClasses[0];
    SampleItem<1>::itemClass = itemClasses[1];
    SampleItem<2>::itemClass = itemClasses[2];
    for (SampleClass* const item : itemClasses)
        *item = newClass(1);
    m_root = std::make_unique<Sample>(&newClass(3));
}

SampleClass& SampleModel::newClass(unsigned int nesting)
{
    SampleClass& made = *m_classes.emplace_back(std::make_unique<SampleClass>());
    auto const add = [&](Member one, bool isAttribute) {
        one.isAttribute = isAttribute;
        one.name = name(isAttribute, made.members);
        made.members.push_back(std::move(one));
    };
    for (unsigned int count = m_dice.below(4); count > 0; --count)
        add(scalar(true), true);
    for (unsigned int count = m_dice.below(4); count > 0; --count)
        add(scalar(false), false);
    if (m_kind.hasContainers) {
        for (unsigned int count = m_dice.below(4); count > 0; --count)
            add(container(), false);
    }
    for (unsigned int count = m_dice.below(3); count > 0; --count)
        add(ofClasses(nesting), false);
    return made;
}

NyToken SampleModel::name(bool isAttribute, std::vector<Member> const& taken)
{
    auto const isTaken = [&](std::string const& one) {
        return std::any_of(taken.begin(), taken.end(),
                           [&](Member const& member) { return member.isAttribute == isAttribute && member.name == one; });
    };
    std::string local;
    do {
        local = m_kind.isPooled ? std::string(1, "abcdefghijkl"[m_dice.below(12)]) : "m" + std::to_string(m_nameCount++);
    } while (isTaken(local));
    if (isAttribute)
        return NyToken(local);
    return NyToken(m_kind.hasTwoNamespaces && m_dice.chance(50) ? "urn:demo/parts" : "urn:demo/shapes", local);
}

std::vector<std::string> const* SampleModel::words()
{
    auto& words = *m_words.emplace_back(std::make_unique<std::vector<std::string>>());
    for (unsigned int count = 1 + m_dice.below(4); count > 0; --count) {
        words.push_back("WORD" + std::to_string(m_dice.below(1000)) + (m_dice.chance(20) ? " and more" : "") +
                        (m_dice.chance(10) ? std::string(60, 'x') : ""));
    }
    return &words;
}

Member SampleModel::scalar(bool isAttribute)
{
    if (m_kind.hasWords && m_dice.chance(60)) {
        auto const* const ofThis = words();
        Member const kinds[] = { word<int>(ofThis), word<unsigned char>(ofThis), word<short>(ofThis), word<unsigned int>(ofThis),
                                 word<NyNonNegReal>(ofThis) };
        return kinds[m_dice.below(5)];
    }
    Member const kinds[] = { value<B<double>>(),
                             letter(),
                             value<B<unsigned char>>(),
                             value<B<short>>(),
                             value<B<int>>(),
                             value<B<unsigned short>>(),
                             value<U>(),
                             value<B<bool>>(),
                             value<S>(),
                             value<B<NyAngle>>(),
                             value<B<NyNonNegReal>>(),
                             value<NyXmlBinaryString>(),
                             value<NyXmlEmbeddedString>() };
    return kinds[m_dice.below(isAttribute ? 12 : 13)];
}

Member SampleModel::container()
{
    if (m_kind.hasWords && m_dice.chance(40))
        return value<V<Gait>>();
    Member const kinds[] = {
        value<VB<char>>(),
        value<VB<unsigned char>>(),
        value<VB<short>>(),
        value<VB<unsigned short>>(),
        value<VB<int>>(),
        value<VB<unsigned int>>(),
        value<VB<double>>(),
        value<VB<std::string>>(),
        value<V<B<bool>>>(),
        value<V<S>>(),
        value<V<V<S>>>(),
        value<V<V<B<bool>>>>(),
        value<V<NyXmlPairType<B<double>, B<double>>>>(),
        value<V<VB<int>>>(),
        value<V<V<VB<double>>>>(),
        value<V<NyXmlVector>>(),
        value<V<NyXmlOrientation>>(),
        value<V<V<NyXmlVectorVector>>>(),
        value<NyXmlSetType<U>>(),
        value<NyXmlListType<U>>(),
        value<NyXmlListType<NyXmlVector>>(),
        value<NyXmlMapType<S, S>>(),
        value<NyXmlMapType<S, NyXmlMapType<S, B<bool>>>>(),
        value<NyXmlMapType<S, NyXmlPairType<S, S>>>(),
        value<NyXmlMapType<S, VB<double>>>(),
        value<NyXmlMapType<U, NyXmlSetType<U>>>(),
        value<NyXmlPairType<S, B<bool>>>(),
        value<NyXmlPairType<NyXmlVector, NyXmlVector>>(),
        value<Span>(),
        value<NyXmlVector>(),
        value<NyXmlOrientation>(),
        value<NyXmlVectorVector>(),
        value<NyXmlListType<Span>>(),
        value<V<NyXmlBinaryString>>(),
    };
    return kinds[m_dice.below(std::size(kinds))];
}

Member SampleModel::ofClasses(unsigned int nesting)
{
    if (m_dice.chance(25)) {
        Member const kinds[] = { chosen<0>(), chosen<3>(), chosen<12>(), chosen<21>(), chosen<26>(), chosen<31>() };
        return kinds[m_dice.below(std::size(kinds))];
    }
    if (m_kind.hasChoices && m_dice.chance(40)) {
        return member<SampleChoice>([] { return std::make_unique<SampleChoice>(); },
                                    [](SampleChoice& object, Dice& dice, unsigned int depth) { object.fill(dice, depth); });
    }
    if ((m_kind.hasTrees && m_dice.chance(70)) || (m_kind.hasItems && nesting > 1)) {
        Member const kinds[] = { items<0>(), items<1>(), items<2>() };
        return kinds[m_dice.below(3)];
    }
    if (nesting == 0)
        return scalar(false);
    SampleClass const* const inner = &newClass(nesting - 1);
    return member<Sample>([inner] { return std::make_unique<Sample>(inner); },
                          [](Sample& object, Dice& dice, unsigned int depth) { object.fill(dice, depth); });
}

std::string SampleModel::document()
{
    theHasInfinities = m_kind.hasInfinities;
    Sample filled(*m_root);
    filled.fill(m_dice, 3);
    std::ostringstream stream;
    NyXmlWriter writer("model.xml", stream);
    writer.setWriteDefaultDataFlag(!m_kind.leavesDefaultsOut);
    writer.setIndent(m_dice.chance(50) ? " " : "");
    writer.writeStartTag(m_rootToken);
    filled.write(writer);
    writer.writeEndTag();
    return stream.str();
}
