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

// --- what the core allows, and slips -----------------------------------------------------------------------------------------------

// Its objects register what they please, and members that lie elsewhere.
class Varying : public NyXmlModel<Varying> {
public:
    static constexpr auto xmlName = "urn:t#varying";
    explicit Varying(int which = 0) : kind(which) {}
    void registerComponents() override
    {
        element("a", a);
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
    Varying late, fresh;
    readValue(late, "<v/>");
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
