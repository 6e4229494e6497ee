#include "CompoundSupport.h"

#include <nyXml/values/NyXmlBasicType.h>

#include <algorithm>
#include <memory>
#include <random>
#include <tuple>

namespace {

using ComponentMap = NyXmlCompoundType::ComponentMap;

class Joint : public Model<Joint> {
public:
    void registerComponents() override
    {
        registerComponent(NyToken(ns, "angle"), &angle);
        registerComponent(NyToken(ns, "label"), &label);
    }
    auto values() const { return std::tie(angle.value(), label.value()); }
    NyXmlBasicType<double> angle;
    NyXmlBasicType<std::string> label;
};

class Arm : public Model<Arm> {
public:
    void registerComponents() override
    {
        registerComponent(NyToken(ns, "wrist"), &wrist);
        registerComponent(NyToken(ns, "length"), &length);
        registerComponent(NyToken(ns, "name"), &name);
        registerAttributeComponent("id", &id);
        registerAttributeComponent("axis", &axis);
    }
    auto values() const
    {
        return std::tuple_cat(wrist.values(), std::tie(length.value(), name.value(), id.value(), axis.value()));
    }
    Joint wrist;
    NyXmlBasicType<double> length;
    NyXmlBasicType<std::string> name;
    NyXmlBasicType<unsigned int> id;
    NyXmlBasicType<int> axis;
};

std::string const armDocument = "<cell id='7' axis='-2'><wrist><label>w</label><angle>0.5</angle></wrist>"
                                "<name>long arm</name><length>1.5</length></cell>";

// The first object of a class works with maps and the later ones with what it left behind, so that each rule is looked at twice.
template <class Check>
void firstAndLater(Check check)
{
    for (char const* which : { "first", "second", "third" }) {
        SCOPED_TRACE(which);
        check();
    }
}

TEST(Compound, ReadsWhatItKnowsAndReportsTheRest)
{
    Messages messages;
    firstAndLater([&] {
        Arm arm;
        EXPECT_TRUE(readValue(arm, "<cell before='1' id='7' knows='2' axis='-2' z='3'>\n"
                                   "<unknown a='1'><name>not this</name><deep/></unknown>\n<nothing/>\n"
                                   "<o:name xmlns:o='urn:other'>long arm</o:name><length>1.5</length>\n"
                                   "<wrist><angle>0.5</angle><bad/><label>w</label></wrist></cell>"));
        EXPECT_EQ(arm.values(), std::make_tuple(0.5, "w", 1.5, "long arm", 7u, -2));
        EXPECT_EQ(messages.take(), "Bad attribute token: before on line 1\n"
                                   "Bad attribute token: knows on line 1\n"
                                   "Bad attribute token: z on line 1\n"
                                   "Bad token: unknown on line 2\n"
                                   "Bad token: nothing on line 3\n"
                                   "Bad token: bad on line 5\n");
    });
}

TEST(Compound, EmptyAndBrokenElements)
{
    using Row = std::tuple<char const*, bool, double>;
    Messages messages;
    for (auto const& [document, result, length] :
         { Row("<cell/>", true, 3), Row("<cell></cell>", true, 3), Row("<cell>text</cell>", true, 3),
           Row("<cell><length/></cell>", true, 0), Row("<cell><length>1</length>", true, 1),
           Row("<cell><length>1</length></wrong>", false, 1) }) {
        SCOPED_TRACE(document);
        Arm arm;
        arm.length = 3;
        EXPECT_EQ(readValue(arm, document), result);
        EXPECT_EQ(arm.length.value(), length);
        EXPECT_TRUE(arm.specified());
    }
}

TEST(Compound, WritesInOrderOfNamesWithoutDefaults)
{
    firstAndLater([] {
        Arm arm;
        std::string const text = typeid(std::string).name();
        EXPECT_EQ(SchemaCalls::of(arm), "axis=i id=j ( [1 length: d ] [1 name: " + text +
                                            " ] [1 wrist: ( [1 angle: d ] [1 label: " + text + " ] ) ] ) ");
        EXPECT_EQ(writtenValue(arm), "<v xsi:nil=\"true\"/>\n");
        EXPECT_EQ(writtenValue(arm, true), "<v axis=\"0\" id=\"0\">\n  <length>0</length>\n  <name></name>\n  <wrist>\n"
                                           "   <angle>0</angle>\n   <label></label>\n  </wrist>\n </v>\n");
        arm.id = 1;
        EXPECT_EQ(writtenValue(arm), "<v axis=\"0\" id=\"1\">\n  <length>0</length>\n </v>\n");
        readValue(arm, armDocument);
        EXPECT_EQ(writtenValue(arm), "<v axis=\"-2\" id=\"7\">\n  <length>1.5</length>\n  <name>long arm</name>\n  <wrist>\n"
                                     "   <angle>0.5</angle>\n   <label>w</label>\n  </wrist>\n </v>\n");
    });
}

TEST(Compound, CopyRegistersItsOwnMembers)
{
    Arm arm, target;
    readValue(arm, armDocument);
    Arm copy(arm);
    EXPECT_TRUE(copy.specified() && !copy.xmlInitialized() && !copy.hasChildren() && !copy.hasAttributes());
    readValue(copy, "<cell><length>8</length></cell>");
    EXPECT_EQ(copy.length.value(), 8);
    EXPECT_EQ(arm.length.value(), 1.5);
    readValue(target, "<cell/>");
    target = arm;
    EXPECT_EQ(target.componentMap().at("length"), &target.length);
}

enum Operation { ELEMENT, READ_ONLY_ELEMENT, ATTRIBUTE, READ_ONLY_ATTRIBUTE };
struct Call {
    Operation operation;
    NyToken name;
    unsigned int member;
    bool look = false;
};
using Script = std::vector<Call>;

// Registers what its test tells it, in and outside of itself, and may look at itself in between.
class Scripted : public Model<Scripted> {
public:
    explicit Scripted(Script calls = {}) : script(std::move(calls)) {}
    void registerComponents() override
    {
        static constexpr void (NyXmlCompoundType::*operations[])(NyToken const&, NyXmlObject*) = {
            &NyXmlCompoundType::registerComponent, &NyXmlCompoundType::registerComponentReadOnly,
            &NyXmlCompoundType::registerAttributeComponent, &NyXmlCompoundType::registerAttributeComponentReadOnly
        };
        for (Call const& call : script) {
            NyXmlBasicType<int>* const object = call.member < 4 ? &members[call.member] : outside.get();
            (this->*operations[call.operation])(call.name, object);
            (call.operation < ATTRIBUTE ? elements : attributes)[call.name] = object;
            if (call.operation == READ_ONLY_ELEMENT || call.operation == READ_ONLY_ATTRIBUTE)
                marks[call.name] = call.operation == READ_ONLY_ATTRIBUTE;
            if (call.look) {
                EXPECT_EQ(hasChildren(), !elements.empty());
                EXPECT_EQ(componentMap(), elements);
            }
        }
    }
    Script script;
    ComponentMap elements, attributes; ///< as they have to be
    SpecialDescriptorMap marks;
    NyXmlBasicType<int> members[4];
    std::shared_ptr<NyXmlBasicType<int>> outside = std::make_shared<NyXmlBasicType<int>>();
};

TEST(Compound, EveryObjectHasTheMapsThatItRegistered)
{
    Messages unknown;
    std::mt19937 random(7);
    auto const upTo = [&](unsigned int limit) { return static_cast<unsigned int>(random() % limit); };
    auto const randomCall = [&] {
        NyToken const name(upTo(8) == 0 ? "urn:other" : ns, std::string(1, "abcdef"[upTo(6)]));
        return Call{ Operation(upTo(4)), name, upTo(20) == 0 ? 4 : upTo(4), upTo(60) == 0 };
    };
    Script common(12);
    std::generate(common.begin(), common.end(), randomCall);
    common.front() = { ATTRIBUTE, "a", 0 };
    for (int round = 0; round < 400; ++round) {
        SCOPED_TRACE(round);
        Scripted object(common); // as the first object had it, but for one change in half of the objects
        switch (round == 0 ? 7 : upTo(8)) {
        case 0: object.script.erase(object.script.begin() + upTo(12), object.script.end()); break;
        case 1: object.script.push_back(randomCall()); break;
        case 2: object.script[upTo(12)] = randomCall(); break;
        case 3: object.script.clear(); break;
        case 4: object.script[0].look = true; break;
        default: break;
        }
        object.xmlInit();
        if (upTo(3) == 0) { // and later from outside
            object.script.assign(1, randomCall());
            object.registerComponents();
        }
        readValue(object, "<cell a='1' b='1' c='1' d='1' e='1' f='1'>"
                          "<f>2</f><e>2</e><d>2</d><c>2</c><b>2</b><a>2</a></cell>");
        for (auto const& [name, attribute] : object.attributes)
            EXPECT_NE(static_cast<NyXmlBasicType<int>*>(attribute)->value(), 0) << name.token();
        for (auto const& [name, element] : object.elements)
            EXPECT_EQ(static_cast<NyXmlBasicType<int>*>(element)->value(), 2) << name.token();
        EXPECT_EQ(object.hasAttributes(), !object.attributes.empty());
        EXPECT_EQ(object.attributeComponentMap(), object.attributes);
        EXPECT_EQ(object.componentMap(), object.elements);
        EXPECT_EQ(object.specialDescriptorMap(), object.marks);
    }
    EXPECT_EQ(writtenValue(Scripted({ { ATTRIBUTE, "a", 0 } }), true), "<v a=\"0\"/>\n");
}

// Read-only components are read and not written. Of an element and an attribute with one name only the one that was marked last
// counts as read-only.
TEST(Compound, LocalNamesShareOneEntryAndOneMark)
{
    firstAndLater([] {
        Scripted object({ { ELEMENT, NyToken(ns, "hidden"), 0 },
                          { READ_ONLY_ELEMENT, "both", 1 },
                          { READ_ONLY_ATTRIBUTE, "both", 2 },
                          { READ_ONLY_ELEMENT, NyToken("urn:other", "hidden"), 3 } });
        readValue(object, "<cell both='1'><both>2</both><hidden>3</hidden></cell>");
        EXPECT_TRUE(object.members[2].value() == 1 && object.members[3].value() == 3);
        EXPECT_EQ(writtenValue(object, true), "<v>\n  <both>2</both>\n </v>\n");
    });
}

// Objects of one class that differ in nothing but a mark.
class Marked : public Model<Marked> {
public:
    explicit Marked(bool isReadOnly = false) : m_isReadOnly(isReadOnly) {}
    void registerComponents() override
    {
        m_isReadOnly ? registerComponentReadOnly("a", &m_member) : registerComponent("a", &m_member);
    }

private:
    bool const m_isReadOnly;
    NyXmlBasicType<int> m_member;
};

TEST(Compound, MarksAreTheObjectsOwn)
{
    for (bool const isReadOnly : { false, true, false }) {
        Marked object(isReadOnly);
        EXPECT_EQ(writtenValue(object, true).find("<a>") == std::string::npos, isReadOnly);
    }
}

TEST(Compound, EqualityComparesNamesAndMarksAndNoValues)
{
    using Row = std::tuple<Script, Script, bool>;
    NyToken const a(ns, "a"), other("urn:other", "a");
    int number = 0;
    for (auto const& [script, otherScript, result] :
         { Row({ { ELEMENT, a, 0 }, { ATTRIBUTE, "b", 1 } }, { { ELEMENT, a, 2 }, { ATTRIBUTE, "c", 1 } }, true),
           Row({ { ELEMENT, a, 0 } }, { { ATTRIBUTE, "c", 0 } }, true),
           Row({ { ELEMENT, a, 0 } }, { { READ_ONLY_ELEMENT, a, 0 } }, true),
           Row({ { ELEMENT, a, 0 } }, { { ELEMENT, other, 0 } }, false),
           Row({ { ELEMENT, a, 0 } }, { { ELEMENT, a, 0 }, { ELEMENT, "b", 1 } }, false),
           Row({ { READ_ONLY_ELEMENT, a, 0 } }, { { ELEMENT, a, 0 }, { READ_ONLY_ATTRIBUTE, "a", 0 } }, false) }) {
        SCOPED_TRACE(number++);
        Scripted one(script), two(otherScript);
        one.registerComponents();
        two.xmlInit();
        EXPECT_TRUE(one == two) << "not initialised";
        one.xmlInit();
        one.members[0] = 5;
        EXPECT_EQ(one == two, result);
    }
    Arm arm;
    Joint joint;
    EXPECT_TRUE(arm.xmlInit() && joint.xmlInit() && !(arm.NyXmlCompoundType::operator==(joint)));
}

// Overrides of what supplies the maps are called for every object of a class, also if they only pass the call on.
class Supplied : public Joint {
public:
    NyXmlBasicType<int> extra;
    bool adds = false;
    mutable std::string calls;
    mutable ComponentMap* supplied = nullptr;

    void registerComponents() override
    {
        Joint::registerComponents();
        registerAttributeComponentReadOnly("mark", &extra);
    }
    ComponentMap const& componentMap() const override
    {
        calls += "look ";
        return Joint::componentMap();
    }

    void createAttributeComponentMap() override
    {
        calls += "attributes ";
        Joint::createAttributeComponentMap();
    }

protected:
    SpecialDescriptorMap* newSpecialDescriptorMap() override
    {
        calls += "marks ";
        return Joint::newSpecialDescriptorMap();
    }
    ComponentMap* newComponentMap() const override
    {
        calls += "new ";
        ComponentMap* const map = Joint::newComponentMap();
        if (supplied == nullptr) // the one of elements comes first
            supplied = map;
        if (adds)
            map->emplace("extra", const_cast<NyXmlBasicType<int>*>(&extra));
        return map;
    }
};

TEST(Compound, SuppliedMapsAreUsed)
{
    Messages messages;
    for (bool adds : { false, true })
        firstAndLater([adds] {
            Supplied object;
            object.adds = adds;
            readValue(object, "<cell><extra>4</extra><angle>2</angle></cell>");
            EXPECT_EQ(object.calls, "new attributes new marks look look ");
            EXPECT_EQ(object.extra.value(), adds ? 4 : 0);
            EXPECT_EQ(object.angle.value(), 2);
            EXPECT_EQ(&object.componentMap(), object.supplied);
        });
}

// The same overrides in a class whose base registers in its constructor, when the object is still one of the base.
class Early : public Joint {
public:
    Early() { xmlInit(); }
    void registerComponents() override
    {
        Joint::registerComponents();
        registerAttributeComponentReadOnly("mark", &mark);
    }
    NyXmlBasicType<int> mark;
};
class EarlySupplied : public Early {
public:
    mutable std::string calls;
    ComponentMap const& componentMap() const override
    {
        calls += "look ";
        return Early::componentMap();
    }
    void createComponentMap() const override { calls += "create "; }
    void createAttributeComponentMap() override {}
    void createSpecialDescriptorMap() override {}
};
class EarlyPlain : public Early {
public:
    bool readValueFromSpecialToken(NyToken const&, NyXmlReader& reader) override { return label.read(reader); }
};

TEST(Compound, ClassOfTheWholeObjectIsAskedAfterItsBaseHasInitialisedIt)
{
    firstAndLater([] {
        Early early;
        readValue(early, "<cell><angle>2</angle></cell>");
        EXPECT_EQ(early.angle.value(), 2);
        EarlySupplied object;
        readValue(object, "<cell><angle>2</angle><label>x</label></cell>");
        EXPECT_EQ(object.calls, "look create look create ");
        EXPECT_EQ(object.values(), std::make_tuple(2.0, "x"));
        EXPECT_EQ(EarlySupplied().componentMap().count("angle"), 1u);
        EXPECT_EQ(EarlySupplied().attributeComponentMap().count("mark"), 1u);
        EXPECT_EQ(EarlySupplied().specialDescriptorMap().count("mark"), 1u);
        EarlyPlain plain;
        readValue(plain, "<cell><other>y</other><angle>3</angle></cell>");
        EXPECT_EQ(plain.values(), std::make_tuple(3.0, "y"));
        EXPECT_EQ(plain.componentMap().at("label"), &plain.label);
    });
}

// A hook may keep its argument while it reads on, and take names of its own.
class Curious : public Joint {
public:
    std::string seen;

protected:
    bool readValueFromToken(NyToken const& token, NyXmlReader& reader) override
    {
        bool const taken = Joint::readValueFromToken(token, reader);
        seen += token.namespaceAndToken() + " ";
        return taken;
    }
    bool readAttributeFromToken(NyToken const& token, NyXmlReader& reader) override
    {
        bool const taken = Joint::readAttributeFromToken(token, reader);
        seen += taken ? "taken " : "left ";
        return taken;
    }
    bool readValueFromSpecialToken(NyToken const&, NyXmlReader& reader) override { return NyXmlBasicType<int>().read(reader); }
};

TEST(Compound, HooksSeeEveryNameWhole)
{
    Messages messages;
    firstAndLater([&] {
        Curious object;
        readValue(object, "<c:cell xmlns:c='urn:t' k='1'><c:label>x</c:label><any>1</any><angle>2</angle></c:cell>");
        EXPECT_EQ(object.seen, "left #label #any #angle ");
        EXPECT_EQ(messages.take(), "Bad attribute token: k on line 1\n");
    });
}

} // namespace
