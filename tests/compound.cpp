#include "Support.h"

#include <nyXml/compound/NyXmlCompoundType.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/values/NyXmlBasicType.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <random>
#include <sstream>
#include <thread>

namespace {

std::string const ns = "urn:demo/cell";
NyToken const cell(ns, "cell");

// Everything but the members: each test says what its class registers.
template <class Derived>
class Compound : public NyXmlCompoundType {
public:
    NyXmlObject* clone() const override { return new Derived(static_cast<Derived const&>(*this)); }
    NyXmlObject* newObject() const override { return new Derived; }
    NyToken const& token() const override { return cell; }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* same = dynamic_cast<Derived const*>(other);
        return same != nullptr && static_cast<Derived const&>(*this).values() == same->values();
    }
};

class Joint : public Compound<Joint> {
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

class Arm : public Compound<Arm> {
public:
    void registerComponents() override
    {
        registerComponent(NyToken(ns, "wrist"), &wrist);
        registerComponent(NyToken(ns, "length"), &length);
        registerComponent(NyToken(ns, "name"), &name);
        registerComponentReadOnly(NyToken(ns, "serial"), &serial);
        registerAttributeComponent("id", &id);
        registerAttributeComponent("axis", &axis);
        registerAttributeComponentReadOnly("made", &made);
    }
    auto values() const
    {
        return std::make_tuple(wrist.values(), length.value(), name.value(), serial.value(), id.value(), axis.value(),
                               made.value());
    }
    Joint wrist;
    NyXmlBasicType<double> length;
    NyXmlBasicType<std::string> name;
    NyXmlBasicType<int> serial;
    NyXmlBasicType<unsigned int> id;
    NyXmlBasicType<int> axis;
    NyXmlBasicType<int> made;
};

bool readFrom(NyXmlObject& object, std::string const& document)
{
    std::istringstream stream(document);
    NyXmlReader reader("cell.xml", stream);
    reader.readXml();
    return object.read(reader);
}

// What stands behind the root's declaration.
std::string written(NyXmlObject const& object, bool withDefaults = false)
{
    std::ostringstream stream;
    NyXmlWriter writer("cell.xml", stream);
    writer.setWriteDefaultDataFlag(withDefaults);
    writer.writeStartTag(cell);
    object.write(writer);
    writer.writeEndTag();
    std::string const mark = "xmlns=\"" + ns + "\"";
    return stream.str().substr(stream.str().find(mark) + mark.size());
}

std::string const armDocument = "<cell made='5' id='7' axis='-2'>\n"
                                "<wrist><label>w</label><angle>0.5</angle></wrist><serial>9</serial>\n"
                                "<name>long arm</name><length>1.5</length></cell>";
Arm const& fullArm()
{
    static Arm const arm = [] {
        Arm read;
        readFrom(read, armDocument);
        return read;
    }();
    return arm;
}

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
        EXPECT_TRUE(readFrom(arm, "<cell before='1' id='7' knows='2' axis='-2' made='5' z='3'>\n"
                                  "<unknown a='1'><name>not this</name><deep/></unknown>\n<serial>9</serial><nothing/>\n"
                                  "<o:name xmlns:o='urn:other'>long arm</o:name><length>1.5</length>\n"
                                  "<wrist><angle>0.5</angle><bad/><label>w</label></wrist></cell>"));
        EXPECT_EQ(arm.values(), fullArm().values());
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
    struct Row {
        char const* document;
        bool result;
        double length;
    };
    Messages messages;
    for (Row const& row : { Row{ "<cell/>", true, 3 }, Row{ "<cell></cell>", true, 3 }, Row{ "<cell>text</cell>", true, 3 },
                            Row{ "<cell><length/></cell>", true, 0 }, Row{ "<cell><length>1</length>", true, 1 },
                            Row{ "<cell><length>1</length></wrong>", false, 1 } }) {
        SCOPED_TRACE(row.document);
        Arm arm;
        arm.length = 3;
        EXPECT_EQ(readFrom(arm, row.document), row.result);
        EXPECT_EQ(arm.length.value(), row.length);
        EXPECT_TRUE(arm.specified());
    }
}

TEST(Compound, WritesInOrderOfNamesWithoutDefaultsAndReadOnly)
{
    firstAndLater([] {
        EXPECT_EQ(written(fullArm()), " axis=\"-2\" id=\"7\">\n <length>1.5</length>\n <name>long arm</name>\n <wrist>\n"
                                      "  <angle>0.5</angle>\n  <label>w</label>\n </wrist>\n</cell>\n");
        Arm arm;
        EXPECT_EQ(written(arm), " xsi:nil=\"true\"/>\n");
        arm.id = 1;
        EXPECT_EQ(written(arm), " axis=\"0\" id=\"1\">\n <length>0</length>\n</cell>\n");
        EXPECT_EQ(written(Arm(), true), " axis=\"0\" id=\"0\">\n <length>0</length>\n <name></name>\n <wrist>\n"
                                        "  <angle>0</angle>\n  <label></label>\n </wrist>\n</cell>\n");
    });
}

// Of an element and an attribute with one name only the one that was marked last counts as read-only.
class Marked : public Compound<Marked> {
public:
    void registerComponents() override
    {
        registerComponent(NyToken(ns, "hidden"), &replaced);
        registerComponentReadOnly("both", &element);
        registerAttributeComponentReadOnly("both", &attribute);
        registerComponentReadOnly(NyToken("urn:other", "hidden"), &hidden);
    }
    auto values() const { return element.value(); }
    NyXmlBasicType<int> replaced, element, attribute, hidden;
};

TEST(Compound, LocalNamesShareOneEntryAndOneMark)
{
    Messages messages;
    firstAndLater([] {
        Marked marked;
        readFrom(marked, "<cell both='1'><both>2</both><hidden>3</hidden></cell>");
        EXPECT_EQ(marked.replaced.value(), 0);
        EXPECT_EQ(marked.hidden.value(), 3);
        EXPECT_EQ(written(marked), ">\n <both>2</both>\n</cell>\n");
        EXPECT_EQ(marked.componentMap().find("hidden")->first.xmlNamespace(), ns) << "the key keeps the first token";
        EXPECT_EQ(marked.specialDescriptorMap(),
                  (NyXmlCompoundType::SpecialDescriptorMap{ { "both", 1 }, { "urn:other#hidden", 0 } }));
    });
}

TEST(Compound, CopyRegistersItsOwnMembers)
{
    Arm arm(fullArm());
    readFrom(arm, armDocument);
    std::unique_ptr<NyXmlObject> clone(arm.clone());
    auto& copy = static_cast<Arm&>(*clone);
    EXPECT_TRUE(copy.specified() && !copy.xmlInitialized() && !copy.hasChildren() && !copy.hasAttributes());
    EXPECT_TRUE(copy.componentMap().empty());
    Arm target;
    readFrom(target, "<cell/>");
    target = arm;
    EXPECT_EQ(target.componentMap().at("length"), &target.length);
    clone = std::make_unique<Arm>(arm);
    readFrom(*clone, "<cell><length>8</length></cell>");
    EXPECT_EQ(static_cast<Arm&>(*clone).length.value(), 8);
    EXPECT_EQ(arm.length.value(), 1.5);
}

// Each object registers what its test tells it, in and outside of itself, and may look at itself in between.
class Scripted : public Compound<Scripted> {
public:
    struct Call {
        unsigned int operation; // of the four
        NyToken name;
        unsigned int member;
        bool look;
    };
    void registerComponents() override
    {
        static constexpr void (NyXmlCompoundType::*operations[])(NyToken const&, NyXmlObject*) = {
            &NyXmlCompoundType::registerComponent, &NyXmlCompoundType::registerComponentReadOnly,
            &NyXmlCompoundType::registerAttributeComponent, &NyXmlCompoundType::registerAttributeComponentReadOnly
        };
        for (Call const& call : script) {
            (this->*operations[call.operation])(call.name, at(call.member));
            auto& map = call.operation < 2 ? expected : expectedAttributes;
            map[call.name] = at(call.member);
            if (call.operation % 2 != 0)
                expectedMarks[call.name] = call.operation / 2;
            if (call.look) {
                EXPECT_EQ(hasChildren(), !expected.empty());
                EXPECT_EQ(componentMap(), expected);
            }
        }
    }
    NyXmlBasicType<int>* at(unsigned int member) { return member < 4 ? &members[member] : outside.get(); }
    int values() const { return 0; }

    std::vector<Call> script;
    ComponentMap expected, expectedAttributes;
    SpecialDescriptorMap expectedMarks;
    NyXmlBasicType<int> members[4];
    std::shared_ptr<NyXmlBasicType<int>> outside = std::make_shared<NyXmlBasicType<int>>();
};

TEST(Compound, EveryObjectHasTheMapsThatItRegistered)
{
    std::mt19937 random(7);
    auto const upTo = [&](unsigned int limit) { return static_cast<unsigned int>(random() % limit); };
    auto const randomCall = [&] {
        return Scripted::Call{ upTo(4), NyToken(upTo(8) == 0 ? "urn:other" : ns, std::string(1, "abcdef"[upTo(6)])),
                               upTo(20) == 0 ? 4 : upTo(4), upTo(60) == 0 };
    };
    std::vector<Scripted::Call> common(12);
    std::generate(common.begin(), common.end(), randomCall);
    for (int round = 0; round < 400; ++round) {
        SCOPED_TRACE(round);
        Scripted object;
        object.script = common; // as the first object had it, but for one change in half of the objects
        if (round > 0)
            switch (upTo(8)) {
            case 0: object.script.resize(upTo(12)); break;
            case 1: object.script.push_back(randomCall()); break;
            case 2: object.script[upTo(12)] = randomCall(); break;
            case 3: object.script.clear(); break;
            default: break;
            }
        object.xmlInit();
        if (upTo(3) == 0) { // and later from outside
            object.script.assign(1, randomCall());
            object.registerComponents();
        }
        std::string document = "<cell";
        for (auto const& [name, attribute] : object.expectedAttributes)
            document += " " + name.token() + "='1'";
        document += ">";
        for (auto entry = object.expected.rbegin(); entry != object.expected.rend(); ++entry)
            document += "<" + entry->first.token() + ">2</" + entry->first.token() + ">";
        EXPECT_TRUE(readFrom(object, document + "</cell>"));
        for (auto const& [name, attribute] : object.expectedAttributes)
            EXPECT_NE(static_cast<NyXmlBasicType<int>*>(attribute)->value(), 0) << name.token();
        for (auto const& [name, element] : object.expected)
            EXPECT_EQ(static_cast<NyXmlBasicType<int>*>(element)->value(), 2) << name.token();
        EXPECT_EQ(object.hasAttributes(), !object.expectedAttributes.empty());
        EXPECT_EQ(object.attributeComponentMap(), object.expectedAttributes);
        EXPECT_EQ(object.componentMap(), object.expected);
        EXPECT_EQ(object.specialDescriptorMap(), object.expectedMarks);
    }
}

TEST(Compound, EqualityComparesNamesAndMarksAndNoValues)
{
    auto const made = [](std::vector<Scripted::Call> const& script) {
        auto object = std::make_unique<Scripted>();
        object->script = script;
        object->xmlInit();
        return object;
    };
    NyToken const a(ns, "a"), other("urn:other", "a");
    auto const object = made({ { 0, a, 0, false }, { 2, "b", 1, false } });
    auto const readOnly = made({ { 1, a, 0, false } });
    EXPECT_TRUE(*object == *made({ { 0, a, 2, false }, { 2, "c", 1, false } })) << "attributes take no part";
    EXPECT_TRUE(*object == *made({ { 2, "a", 0, false } })) << "no element map";
    EXPECT_TRUE(*object == *readOnly) << "marks on one side alone";
    EXPECT_FALSE(*object == *made({ { 0, other, 0, false } })) << "namespaces count";
    EXPECT_FALSE(*object == *made({ { 0, a, 0, false }, { 0, "b", 1, false } }));
    EXPECT_FALSE(*readOnly == *made({ { 0, a, 0, false }, { 3, "b", 1, false } }));
    EXPECT_TRUE(*object == Scripted()) << "not initialised";
    Arm one(fullArm()), two;
    readFrom(one, "<cell/>");
    readFrom(two, "<cell/>");
    EXPECT_TRUE(one == two);
    EXPECT_FALSE(one.equality(&two));
}

// Overridden hooks run for every object of a class, not only for the first.
class Supplied : public Joint {
public:
    NyXmlObject* newObject() const override { return new Supplied; }
    NyXmlBasicType<int> extra;
    mutable std::string calls;
    bool ownMap = false;
    ComponentMap elsewhere{ { "extra", &extra } };

protected:
    ComponentMap const& componentMap() const override { return ownMap ? elsewhere : Joint::componentMap(); }
    ComponentMap* newComponentMap() const override
    {
        calls += "new ";
        std::unique_ptr<ComponentMap> map(Joint::newComponentMap());
        if (!ownMap)
            map->emplace("extra", const_cast<NyXmlBasicType<int>*>(&extra));
        return map.release();
    }
    void createComponentMap() const override
    {
        calls += "create ";
        Joint::createComponentMap();
    }
};

TEST(Compound, SuppliedMapsAreUsed)
{
    for (bool ownMap : { true, false })
        firstAndLater([&] {
            Messages messages;
            Supplied object;
            object.ownMap = ownMap;
            readFrom(object, "<cell><extra>4</extra><angle>2</angle></cell>");
            EXPECT_EQ(object.extra.value(), 4);
            EXPECT_EQ(object.angle.value(), ownMap ? 0 : 2);
            EXPECT_EQ(object.calls.find("create new "), 0u);
            EXPECT_EQ(object.calls.find("new", 10), std::string::npos);
        });
}

// A hook may keep its argument while it reads on, and take names of its own.
class Curious : public Joint {
public:
    std::string seen;

protected:
    bool readAttributeFromToken(NyToken const& token, NyXmlReader& reader) override
    {
        reader.attributeValue();
        seen += "@" + token.namespaceAndToken() + " ";
        return false;
    }
    bool readValueFromToken(NyToken const& token, NyXmlReader& reader) override
    {
        bool const taken = Joint::readValueFromToken(token, reader);
        seen += token.namespaceAndToken() + " ";
        return taken;
    }
    bool readValueFromSpecialToken(NyToken const& token, NyXmlReader& reader) override
    {
        return token == "any" ? NyXmlBasicType<int>().read(reader) : Joint::readValueFromSpecialToken(token, reader);
    }
};

TEST(Compound, HooksSeeEveryNameWhole)
{
    Messages messages;
    firstAndLater([&] {
        Curious object;
        readFrom(object, "<c:cell xmlns:c='urn:demo/cell' b='1' a='2'><c:label>x</c:label><any>1</any><angle>2</angle></c:cell>");
        EXPECT_EQ(object.seen, "@#a @#b #label #any #angle ");
        EXPECT_EQ(messages.take(), "");
    });
}

class Shared : public Joint {
    NyXmlObject* newObject() const override { return new Shared; }
};

TEST(Threads, UseObjectsOfOneClassSideBySide)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([] {
            for (int round = 0; round < 200; ++round) {
                Shared object;
                readFrom(object, "<cell><label>x</label><angle>2</angle></cell>");
                EXPECT_EQ(object.angle.value(), 2);
            }
        });
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace
