// The rows of docs/evolution.md, one test each: what the class is now, and documents of all its versions.

#include "ModelSupport.h"

#include <nyXmlKit/model/NyXmlModel.h>
#include <nyXmlKit/model/NyXmlRepeated.h>
#include <nyXmlKit/model/NyXmlVersioned.h>

namespace {

using Text = NyXmlBasicType<std::string>;
using Whole = NyXmlBasicType<int>;
using Real = NyXmlBasicType<double>;

// What the document becomes when it is written again, and what is said on reading.
template <class Class>
std::string lifted(std::string const& document)
{
    Messages messages;
    Class object;
    EXPECT_TRUE(readValue(object, document));
    std::string const line = lineOf(object), said = messages.take();
    Class back;
    EXPECT_TRUE(readValue(back, line));
    EXPECT_TRUE(back == object) << line;
    EXPECT_EQ(messages.text(), "");
    return line + said;
}

class Added : public NyXmlModel<Added, NyXmlVersioned> {
public:
    static constexpr auto xmlName = "urn:t#added";
    static constexpr unsigned int xmlVersion = 2;
    void registerComponents() override { element("speed", speed, since(2)); }
    Whole speed = 5; // what a document without it means
};

TEST(Versions, Added)
{
    EXPECT_EQ(lifted<Added>("<v/>"), R"(<v formatVersion="2"><speed>5</speed></v>)");
    EXPECT_EQ(lifted<Added>("<v formatVersion='2'><speed>7</speed></v>"), R"(<v formatVersion="2"><speed>7</speed></v>)");
    EXPECT_EQ(lifted<Added>("<v formatVersion='1'><speed>7</speed></v>"),
              "<v formatVersion=\"2\"><speed>5</speed></v>Bad token: speed on line 1\n");
}

class Removed : public NyXmlModel<Removed, NyXmlVersioned> {
public:
    static constexpr auto xmlName = "urn:t#removed";
    static constexpr unsigned int xmlVersion = 3;
    void registerComponents() override
    {
        oldElement("colour", until(2));
        oldAttribute("id", between(2, 2));
        element("name", name);
    }
    Text name;
};

TEST(Versions, Removed)
{
    EXPECT_EQ(lifted<Removed>("<v formatVersion='2' id='1'><colour><a/></colour><name>n</name></v>"),
              R"(<v formatVersion="3"><name>n</name></v>)");
    EXPECT_EQ(lifted<Removed>("<v id='1'><colour>red</colour></v>"),
              "<v formatVersion=\"3\"><name></name></v>Bad attribute token: id on line 1\n");
    EXPECT_EQ(lifted<Removed>("<v formatVersion='3'><colour/></v>"),
              "<v formatVersion=\"3\"><name></name></v>Bad token: colour on line 1\n");
}

class Renamed : public NyXmlModel<Renamed, NyXmlVersioned> {
public:
    static constexpr auto xmlName = "urn:t#renamed";
    static constexpr unsigned int xmlVersion = 3; // what is written: <renamed formatVersion="3" ...>
    void registerComponents() override
    {
        element("velo", speed, until(1));
        element("v", speed, between(2, 2));
        element("speed", speed, since(3));
        attribute("no", number, until(2));
        attribute("id", number, since(3));
    }
    Whole speed, number;
};

TEST(Versions, Renamed)
{
    char const* const now = R"(<v formatVersion="3" id="4"><speed>7</speed></v>)";
    EXPECT_EQ(lifted<Renamed>("<v no='4'><velo>7</velo></v>"), now);
    EXPECT_EQ(lifted<Renamed>("<v formatVersion='2' no='4'><v>7</v></v>"), now);
    EXPECT_EQ(lifted<Renamed>(now), now);
    EXPECT_EQ(lifted<Renamed>("<v formatVersion='3' no='1' id='4'><v>1</v><speed>7</speed></v>"),
              std::string(now) + "Bad attribute token: no on line 1\nBad token: v on line 1\n");
}

class Moved : public NyXmlModel<Moved, NyXmlVersioned> {
public:
    static constexpr auto xmlName = "urn:t#moved";
    static constexpr unsigned int xmlVersion = 2;
    void registerComponents() override
    {
        attribute("a", a, until(1)); // an element now
        element("a", a, since(2));
        element("b", b, until(1)); // an attribute now
        attribute("b", b, since(2));
    }
    Whole a, b;
};

TEST(Versions, MovedBetweenAttributeAndElement)
{
    char const* const now = R"(<v formatVersion="2" b="2"><a>1</a></v>)";
    EXPECT_EQ(lifted<Moved>("<v a='1'><b>2</b></v>"), now);
    EXPECT_EQ(lifted<Moved>(now), now);
}

class Split : public NyXmlModel<Split, NyXmlVersioned> {
public:
    static constexpr auto xmlName = "urn:t#split";
    static constexpr unsigned int xmlVersion = 2;
    void registerComponents() override
    {
        oldElement<Text>("name", until(1), [](Split& self, Text const& name) {
            std::size_t const blank = name.value().find(' ');
            self.first = name.value().substr(0, blank);
            self.last = blank == std::string::npos ? std::string() : name.value().substr(blank + 1);
        });
        element("first", first, since(2));
        element("last", last, since(2));
    }
    Text first, last;
};

TEST(Versions, Split)
{
    char const* const now = R"(<v formatVersion="2"><first>Ada</first><last>King Noel</last></v>)";
    EXPECT_EQ(lifted<Split>("<v><name>Ada King Noel</name></v>"), now);
    EXPECT_EQ(lifted<Split>(now), now);
}

class Retyped : public NyXmlModel<Retyped, NyXmlVersioned> {
public:
    static constexpr auto xmlName = "urn:t#retyped";
    static constexpr unsigned int xmlVersion = 2;
    void registerComponents() override
    {
        oldAttribute<Whole>("angle", until(1), [](Retyped& self, Whole const& degrees) { self.angle = degrees / 360.0; });
        attribute("angle", angle, since(2)); // in turns
        element("sum", sum);
    }
    void lift(unsigned int fromVersion) override { sum = 10 * sum + static_cast<int>(fromVersion); }
    Real angle;
    Whole sum;
};

TEST(Versions, ChangedInType)
{
    EXPECT_EQ(lifted<Retyped>("<v angle='90'><sum>4</sum></v>"), R"(<v formatVersion="2" angle="0.25"><sum>41</sum></v>)");
    EXPECT_EQ(lifted<Retyped>("<v formatVersion='2' angle='0.5'/>"), R"(<v formatVersion="2" angle="0.5"><sum>0</sum></v>)");
}

class Merged : public NyXmlModel<Merged, NyXmlVersioned> {
public:
    static constexpr auto xmlName = "urn:t#merged";
    static constexpr unsigned int xmlVersion = 2;
    void registerComponents() override
    {
        element("first", first, until(1));
        element("last", last, until(1));
        element("name", name, since(2));
    }
    void lift(unsigned int fromVersion) override
    {
        if (fromVersion < 2)
            name = first.value() + ' ' + last.value(); // in whatever order they stood
    }
    Text name;

private:
    Text first, last;
};

TEST(Versions, Merged)
{
    char const* const now = R"(<v formatVersion="2"><name>Ada King</name></v>)";
    EXPECT_EQ(lifted<Merged>("<v><last>King</last><first>Ada</first></v>"), now);
    EXPECT_EQ(lifted<Merged>(now), now);
}

// What a document must have depends on its version.
class Asked : public NyXmlModel<Asked, NyXmlVersioned> {
public:
    static constexpr auto xmlName = "urn:t#asked";
    static constexpr unsigned int xmlVersion = 3;
    void registerComponents() override
    {
        requiredElement("velo", speed, until(1));
        requiredElement("speed", speed, since(2));
        requiredAttribute("unit", unit, since(3));
        requiredElement("name", name);
    }
    Text name, unit;
    Whole speed;
};

TEST(Versions, RequiredMembersOfAVersion)
{
    auto const missed = [](std::string const& document) {
        Messages messages;
        Asked asked;
        EXPECT_TRUE(readValue(asked, document));
        std::string names;
        for (char const* const name : { "name", "speed", "unit", "velo" })
            names += messages.text().find('"' + std::string(name) + "\" of \"asked\"") == std::string::npos
                         ? ""
                         : name + std::string(" ");
        return names;
    };
    EXPECT_EQ(missed("<v><velo>1</velo><name/></v>"), "");
    EXPECT_EQ(missed("<v/>"), "name velo ");
    EXPECT_EQ(missed("<v formatVersion='2'><name/></v>"), "speed ");
    EXPECT_EQ(missed("<v formatVersion='3'><speed>1</speed></v>"), "name unit ");
    EXPECT_EQ(missed("<v formatVersion='3' unit=''><speed>1</speed><name/></v>"), "");
    EXPECT_EQ(lineOf(Asked(), false), R"(<v formatVersion="3" unit=""><name></name><speed>0</speed></v>)");
}

// A class without a version goes by the one around it, also below a class that knows nothing of versions.
class Part : public NyXmlModel<Part, NyXmlVersioned> {
public:
    static constexpr auto xmlName = "urn:t#part";
    void registerComponents() override
    {
        element("old", value, until(1));
        element("value", value, since(2));
    }
    Whole value;
};
class Middle : public NyXmlModel<Middle> {
public:
    static constexpr auto xmlName = "urn:t#middle";
    void registerComponents() override { element("part", parts); }
    NyXmlRepeated<Part> parts;
};
class Whole3 : public NyXmlModel<Whole3, Retyped> {
public:
    static constexpr auto xmlName = "urn:t#whole";
    static constexpr unsigned int xmlVersion = 3;
    void registerComponents() override { element("middle", middle); }
    Middle middle;
};

TEST(Versions, HoldForAllThatIsInside)
{
    EXPECT_EQ(
        lifted<Whole3>("<v><middle><part><old>1</old></part><part><old>2</old></part></middle></v>"),
        R"(<v formatVersion="3" angle="0"><middle><part><value>1</value></part><part><value>2</value></part></middle><sum>1</sum></v>)");
    EXPECT_EQ(lifted<Whole3>("<v formatVersion='3'><middle><part><old>1</old></part></middle></v>").find("Bad token: old") ==
                  std::string::npos,
              false);
    EXPECT_EQ(lifted<Part>("<v><value>3</value></v>"), "<v><value>3</value></v>");
    EXPECT_EQ(lifted<Middle>("<v><part><old>3</old></part></v>"),
              "<v><part><value>0</value></part></v>Bad token: old on line 1\n");
}

TEST(Versions, LaterDocumentsAreReported)
{
    EXPECT_EQ(
        lifted<Added>("<v formatVersion='9'><speed>7</speed></v>"),
        "<v formatVersion=\"2\"><speed>7</speed></v>NyXmlVersioned Warning: the document is of version 9, the program knows 2."
        "\n\tFile: in.xml\n\tLine: 1\n");
    EXPECT_EQ(lifted<Added>("<v formatVersion='x'/>"),
              "<v formatVersion=\"2\"><speed>5</speed></v>NyXmlVersioned Error: file not "
              "valid.\n\tNo version found.\n\tFile: in.xml\n\tLine: 1\n");
}

// --- a class that got a base later ---------------------------------------------------------------------------------------------

class Before : public NyXmlModel<Before> {
public:
    static constexpr auto xmlName = "urn:t#thing";
    void registerComponents() override
    {
        attribute("id", id);
        element("mass", mass);
    }
    Whole id, mass;
};
class Identified : public NyXmlModel<Identified> {
public:
    static constexpr auto xmlName = "urn:t#identified";
    void registerComponents() override { attribute("id", id); }
    Whole id;
};
class After : public NyXmlModel<After, Identified> {
public:
    static constexpr auto xmlName = "urn:t#thing";
    void registerComponents() override { element("mass", mass); }
    Whole mass;
};

TEST(Versions, ABaseThatCameLater)
{
    EXPECT_EQ(lifted<After>(lifted<Before>("<v id='1'><mass>2</mass></v>")), R"(<v id="1"><mass>2</mass></v>)");
}

} // namespace
