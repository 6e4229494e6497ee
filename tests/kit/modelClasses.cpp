#include "ModelSupport.h"

#include <nyXmlKit/model/NyXmlModel.h>
#include <nyXmlKit/model/NyXmlOptional.h>
#include <nyXmlKit/model/NyXmlRepeated.h>

#include <memory>

namespace {

class Point : public NyXmlModel<Point> {
public:
    static constexpr auto xmlName = "urn:t#point";
    void registerComponents() override
    {
        attribute("lat", lat);
        attribute("name", name);
        element("time", time);
        element("ele", ele);
        element("link", links);
        element("next", next);
        element("other#sub", sub);
    }
    NyXmlBasicType<double> lat;
    NyXmlOptional<std::string> name;
    NyXmlBasicType<int> time = 7;
    NyXmlOptional<double> ele;
    NyXmlRepeated<std::string> links;
    NyXmlOwned<Point> next;
    NyXmlRepeated<Point> sub;
};

// What is there and what is not survives documents, copies and a second reading into the same object.
TEST(Model, AbsentMembersStayAbsent)
{
    struct Row {
        char const* document;
        char const* written;
    };
    Row const rows[] = {
        { "<v lat='1'/>", R"(<v lat="1"><time>7</time></v>)" },
        { "<v lat='1' name=''><ele>0</ele><time>8</time></v>", R"(<v lat="1" name=""><ele>0</ele><time>8</time></v>)" },
        { "<v><ele/><next/></v>", R"(<v lat="0"><next lat="0"><time>7</time></next><time>7</time></v>)" },
        { "<v><link>b</link><ele>1</ele><link>a</link><link/></v>",
          R"(<v lat="0"><ele>1</ele><link>b</link><link>a</link><link></link><time>7</time></v>)" },
        { "<v><sub lat='1'><sub lat='2'/></sub><sub lat='3'/></v>",
          R"(<v lat="0"><other:sub xmlns:other="other" lat="1"><other:sub lat="2"><time>7</time></other:sub><time>7</time></other:sub>)"
          R"(<other:sub xmlns:other="other" lat="3"><time>7</time></other:sub><time>7</time></v>)" },
    };
    Point again;
    for (Row const& row : rows) {
        SCOPED_TRACE(row.document);
        Point point;
        EXPECT_TRUE(readValue(point, row.document));
        EXPECT_EQ(lineOf(point), row.written);
        again.lat = 0; // a member that is neither optional nor repeated keeps its value, as in every compound
        again.time = 7;
        EXPECT_TRUE(readValue(again, row.document));
        EXPECT_EQ(lineOf(again), row.written);
        Point const copy = copyOf(point);
        EXPECT_TRUE(copy == point);
        EXPECT_EQ(lineOf(copy), lineOf(point));
        Point back;
        EXPECT_TRUE(readValue(back, writtenValue(point)));
        EXPECT_TRUE(back == point) << writtenValue(back);
    }
}

TEST(Model, AnyDifferentMemberMakesObjectsDiffer)
{
    Point const fresh;
    EXPECT_TRUE(fresh == Point());
    EXPECT_TRUE(fresh.equalsDefault());
    std::vector<Point> others(6);
    others[0].lat = 1;
    others[1].name = "";
    others[2].ele = 0;
    others[3].links.append();
    others[4].next.make();
    others[5].sub.append().sub.append();
    for (Point const& other : others) {
        EXPECT_FALSE(fresh == other);
        EXPECT_TRUE(other != fresh);
        EXPECT_FALSE(other.equalsDefault());
        EXPECT_TRUE(other == copyOf(other));
    }
    // Defaults left out: a member is a default by its values, also where it was written before.
    EXPECT_EQ(lineOf(others[5], false), R"(<v lat="0"><other:sub xmlns:other="other" lat="0">)"
                                        R"(<other:sub xsi:nil="true"/><time>7</time></other:sub><time>7</time></v>)");
}

// --- inheritance ---------------------------------------------------------------------------------------------------------------

class Robot : public NyXmlModel<Robot> {
public:
    static constexpr auto xmlName = "urn:t#robot";
    static constexpr auto xmlOrder = NyXmlOrder::asRegistered;
    void registerComponents() override
    {
        element("z", z);
        attribute("id", id);
    }
    NyXmlBasicType<int> z, id;
};

class Welder : public NyXmlModel<Welder, Robot> {
public:
    static constexpr auto xmlName = "urn:t/w#welder";
    void registerComponents() override
    {
        attribute("gas", gas);
        element("x", x);
    }
    NyXmlBasicType<int> x, gas;
};

class SpotWelder : public NyXmlModel<SpotWelder, Welder> {
public:
    static constexpr auto xmlName = "urn:t#spot";
    void registerComponents() override
    {
        Welder::registerComponents(); // by habit, as with classes by hand
        element("a", a);
    }
    NyXmlBasicType<int> a;
};

class ByHand : public NyXmlCompoundType {
public:
    NyXmlBasicType<int> y;

protected:
    void registerComponents() override { registerComponent("urn:t#y", &y); }
};

class OverHand : public NyXmlModel<OverHand, ByHand> {
public:
    static constexpr auto xmlName = "urn:t#over";
    void registerComponents() override { element("x", x); }
    NyXmlBasicType<int> x;
};

class Nothing : public NyXmlModel<Nothing, Robot> {
public:
    static constexpr auto xmlName = "urn:t#nothing";
    void registerComponents() override {}
};

TEST(Model, DerivedClassesHaveWhatTheirBasesHave)
{
    SpotWelder spot;
    EXPECT_TRUE(readValue(spot, "<v id='1' gas='2'><a>5</a><x>4</x><z>3</z></v>"));
    EXPECT_EQ(lineOf(spot), R"(<v id="1" gas="2"><z>3</z><w:x xmlns:w="urn:t/w">4</w:x><a>5</a></v>)");
    for (NyXmlBasicType<int>* const member : { &spot.id, &spot.z, &spot.gas, &spot.x, &spot.a }) {
        SpotWelder const before = copyOf(spot);
        *member = 9;
        EXPECT_FALSE(spot == before);
    }
    EXPECT_FALSE(Robot().equality(&spot));
    EXPECT_EQ(spot.token().namespaceAndToken(), "urn:t#spot");

    OverHand over;
    EXPECT_TRUE(readValue(over, "<v><y>1</y><x>2</x></v>"));
    EXPECT_EQ(lineOf(over), "<v><x>2</x><y>1</y></v>");
    EXPECT_FALSE(over == OverHand());

    Nothing nothing, other;
    EXPECT_TRUE(readValue(nothing, "<v id='1'><z>3</z></v>"));
    EXPECT_FALSE(nothing == other);
    EXPECT_EQ(lineOf(nothing), R"(<v id="1"><z>3</z></v>)");
}

// --- required members ------------------------------------------------------------------------------------------------------------

class Bolt : public NyXmlModel<Bolt> {
public:
    static constexpr auto xmlName = "urn:t#bolt";
    void registerComponents() override
    {
        requiredAttributes("id", id, "kind", kind);
        requiredElements("length", length, "note", note);
        requiredElement("hole", holes);
        element("spare", spare);
    }
    NyXmlBasicType<int> id, length, spare;
    NyXmlBasicType<std::string> kind, note;
    NyXmlRepeated<int> holes;
};
class Screw : public NyXmlModel<Screw, Bolt> { // asks for more, and for less
public:
    static constexpr auto xmlName = "urn:t#screw";
    void registerComponents() override
    {
        requiredElement("bolt", bolt);
        element("note", note);
    }
    Bolt bolt;
};
class Bolts : public NyXmlModel<Bolts> {
public:
    static constexpr auto xmlName = "urn:t#bolts";
    void registerComponents() override { elements("item", items, "last", last); }
    NyXmlRepeated<Bolt> items;
    Bolt last;
};

// The names of what a reading missed.
std::string missedBy(NyXmlObject& object, std::string const& document)
{
    Messages messages;
    EXPECT_TRUE(readValue(object, document));
    std::string const said = messages.take(), sentence = "\n\tRequired member is missing: ";
    std::string names;
    for (std::size_t at = 0; (at = said.find(sentence, at)) != std::string::npos;) {
        at += sentence.size();
        names += (names.empty() ? "" : ", ") + said.substr(at, said.find('\n', at) - at - 1);
    }
    return names;
}

TEST(Model, RequiredMembersAreMissed)
{
    std::string const whole = "<v id='1' kind='k'><length>2</length><note/><hole>3</hole></v>";
    Bolt bolt;
    for (int pass = 0; pass < 2; ++pass) { // the second time they have been read before
        EXPECT_EQ(missedBy(bolt, whole), "");
        EXPECT_EQ(missedBy(bolt, "<v kind='k'><note/><spare>1</spare></v>"),
                  "attribute \"id\" of \"bolt\", element \"hole\" of \"bolt\", element \"length\" of \"bolt\"");
        EXPECT_EQ(bolt.id, 1); // as every member that is not there
    }
    Bolt copy(bolt);
    EXPECT_EQ(missedBy(copy, "<v kind='' id='1'><length>2</length><hole/></v>"), "element \"note\" of \"bolt\"");

    Screw screw;
    EXPECT_EQ(missedBy(screw, "<v id='1' kind=''><length>2</length><hole/><bolt/></v>"),
              "attribute \"id\" of \"bolt\", attribute \"kind\" of \"bolt\", element \"hole\" of \"bolt\", "
              "element \"length\" of \"bolt\", element \"note\" of \"bolt\"");
    Bolts bolts;
    EXPECT_EQ(missedBy(bolts, "<v><item id='1' kind=''><length/><note/><hole/></item><item id='1'/></v>"),
              "attribute \"kind\" of \"bolt\", element \"hole\" of \"bolt\", element \"length\" of \"bolt\", "
              "element \"note\" of \"bolt\"");

    Messages messages;
    readValue(bolt, "<v id='1' kind='k'>\n<length>2</length><note/></v>");
    EXPECT_EQ(messages.take(),
              "NyXmlModel Error: file not valid.\n\tRequired member is missing: element \"hole\" of \"bolt\".\n\t"
              "File: in.xml\n\tLine: 2\n");
}

TEST(Model, RequiredMembersAreWrittenWithDefaultsLeftOut)
{
    EXPECT_EQ(lineOf(Bolt(), false), R"(<v id="0" kind=""><length>0</length><note></note><spare>0</spare></v>)");
    Screw screw;
    EXPECT_EQ(lineOf(screw, false),
              R"(<v id="0" kind=""><bolt id="0" kind=""><length>0</length><note></note><spare>0</spare></bolt>)"
              R"(<length>0</length><spare>0</spare></v>)");
    screw.holes.append(7);
    EXPECT_EQ(lineOf(screw, true).find("<hole>7</hole>") == std::string::npos, false);
    // Whoever need not have it leaves it out.
    EXPECT_EQ(lineOf(Bolts(), false), R"(<v xsi:nil="true"/>)");
    Bolts bolts;
    bolts.items.append();
    EXPECT_EQ(lineOf(bolts, false), R"(<v><item id="0" kind=""><length>0</length><note></note><spare>0</spare></item></v>)");
}

// --- what the core allows, and slips -----------------------------------------------------------------------------------------------

// Its objects register what they please, and members that lie elsewhere.
class Varying : public NyXmlModel<Varying> {
public:
    static constexpr auto xmlName = "urn:t#varying";
    explicit Varying(int which = 0) : kind(which) {}
    void registerComponents() override
    {
        requiredElement("a", a);
        if (kind == 1)
            registerComponent("urn:t#b", b.get());
        if (kind == 2)
            registerComponentReadOnly("urn:t#c", &c);
    }
    int kind;
    NyXmlBasicType<int> a;
    std::shared_ptr<NyXmlBasicType<int>> b = std::make_shared<NyXmlBasicType<int>>(5);
    NyXmlRepeated<int> c;
};

TEST(Model, ObjectsOfOneClassMayDiffer)
{
    for (int first : { 0, 1, 2, 0 }) {
        Varying object(first), same(first), other((first + 1) % 3);
        EXPECT_TRUE(object == same) << first;
        lineOf(other); // differences show when objects are initialised
        EXPECT_FALSE(object == other) << first;
        same.a = 1;
        EXPECT_FALSE(object == same) << first;
        EXPECT_EQ(lineOf(object), first == 1 ? "<v><a>0</a><b>5</b></v>" : "<v><a>0</a></v>");
    }
    Varying without;
    EXPECT_EQ(missedBy(without, "<v/>"), "element \"a\" of \"varying\"");
    EXPECT_EQ(lineOf(without, false), "<v><a>0</a></v>");
    Varying late, fresh;
    readValue(late, "<v><a>0</a></v>");
    late.registerComponent("urn:t#late", &late.c);
    late.c.append() = 3;
    EXPECT_EQ(lineOf(late), "<v><a>0</a><late>3</late></v>");
    EXPECT_FALSE(late == fresh);
}

class Slip : public NyXmlModel<Slip> {
public:
    static constexpr auto xmlName = "urn:t#slip";
    void registerComponents() override
    {
        element("a", a);
        element("a", b);
        attribute("a", c);
    }
    NyXmlBasicType<int> a, b, c;
};
class NoModel : public Robot {};

TEST(Model, SlipsAreSaidAtFirstUse)
{
    Messages messages;
    Slip slip;
    slip.xmlInit();
    EXPECT_EQ(messages.take(), "NyXmlModel Error: class urn:t#slip registers two members as element \"a\".\n");
    NoModel none;
    none.xmlInit();
    EXPECT_NE(messages.take().find("::Robot>.\n\tIts copies would be of class"), std::string::npos);
    Robot robot; // the shape of its own class is none the worse for it
    readValue(robot, "<v id='1'/>");
    EXPECT_EQ(lineOf(robot), R"(<v id="1"><z>0</z></v>)");
    EXPECT_EQ(messages.text(), "");
}

} // namespace
