// What the exact schema says of classes one by one. The random models stand in schemaExact.cpp.

#include "SchemaSupport.h"

#include <nyXml/nyXml.h>
#include <nyXmlKit/model/NyXmlDateTime.h>
#include <nyXmlKit/model/NyXmlEnum.h>
#include <nyXmlKit/model/NyXmlModel.h>
#include <nyXmlKit/model/NyXmlOptional.h>
#include <nyXmlKit/model/NyXmlPolymorphic.h>
#include <nyXmlKit/model/NyXmlRepeated.h>
#include <nyXmlKit/model/NyXmlShared.h>
#include <nyXmlKit/model/NyXmlVersioned.h>
#include <nyXmlKit/schema/NyXmlAnyOrder.h>

#include <gtest/gtest.h>

#include <functional>

namespace {

// A compound of whatever a test puts into it.
class Bag : public NyXmlCompoundType {
public:
    explicit Bag(std::function<void(Bag&)> members) : m_members(std::move(members)) {}
    NyXmlObject* clone() const override { return new Bag(*this); }
    NyXmlObject* newObject() const override { return new Bag(m_members); }
    NyToken const& token() const override { return NyXml::NyNullToken; }
    bool equality(NyXmlObject const*) const override { return false; }
    void registerComponents() override { m_members(*this); }

private:
    std::function<void(Bag&)> m_members;
};

class Mode : public NyXmlEnumType<int> {
public:
    explicit Mode(std::vector<std::string> words) : m_words(std::move(words)) {}
    NyXmlObject* clone() const override { return new Mode(*this); }
    NyXmlObject* newObject() const override { return new Mode(m_words); }
    bool xmlInit() override
    {
        for (std::string const& word : m_words)
            setEnumString(static_cast<int>(enumStrings().size()), word);
        return NyXmlEnumType<int>::xmlInit();
    }

private:
    std::vector<std::string> m_words;
};

NyToken const theRoot("a/b/demo", "robot");

std::string head(std::string const& name)
{
    return "<" + name + " xmlns=\"a/b/demo\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"";
}

} // namespace

// Names, order and layout are what people and tools compare from version to version.
TEST(SchemaExact, TextOfAFile)
{
    NyXmlBasicType<double> mass;
    NyXmlBasicType<std::string> name;
    NyXmlVectorType<NyXmlVector> points;
    NyXmlSetType<NyXmlBasicType<unsigned int>> ids;
    NyXmlEmbeddedString note;
    Mode mode({ "slow", "very fast" });
    Bag const empty([](Bag&) {});
    Bag robot([&](Bag& bag) {
        bag.registerAttributeComponent("mass", &mass);
        bag.registerAttributeComponent("mode", &mode);
        bag.registerComponent("a/b/demo#name", &name);
        bag.registerComponent("a/b/demo#points", &points);
        bag.registerComponent("a/b/demo#ids", &ids);
        bag.registerComponent("a/b/demo#note", &note);
        bag.registerComponent("a/b/demo#spare", const_cast<Bag*>(&empty));
    });
    EXPECT_EQ(ExactSchema(robot, theRoot).text(), R"xsd(<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema"
  xmlns:demo="a/b/demo"
  targetNamespace="a/b/demo"
  elementFormDefault="qualified">

  <xs:element name="robot" type="demo:robot.Type" nillable="true"/>

  <xs:complexType name="element.Type">
    <xs:attribute name="x" type="demo:double.ValueType" use="required"/>
    <xs:attribute name="y" type="demo:double.ValueType" use="required"/>
    <xs:attribute name="z" type="demo:double.ValueType" use="required"/>
  </xs:complexType>

  <xs:complexType name="empty.Type"/>

  <xs:complexType name="ids.Type">
    <xs:sequence>
      <xs:element name="element" type="xs:unsignedInt" minOccurs="0" maxOccurs="unbounded" nillable="true"/>
      <xs:element name="group" type="demo:unsignedInt.ListType" minOccurs="0" nillable="true"/>
    </xs:sequence>
    <xs:attribute name="size" type="xs:unsignedInt"/>
  </xs:complexType>

  <xs:complexType name="note.Type" mixed="true">
    <xs:sequence>
      <xs:any namespace="##any" processContents="skip" minOccurs="0" maxOccurs="unbounded"/>
    </xs:sequence>
  </xs:complexType>

  <xs:complexType name="points.Type">
    <xs:sequence>
      <xs:element name="element" type="demo:element.Type" minOccurs="0" maxOccurs="unbounded" nillable="true"/>
    </xs:sequence>
    <xs:attribute name="size" type="xs:unsignedInt"/>
  </xs:complexType>

  <xs:complexType name="robot.Type">
    <xs:sequence>
      <xs:element name="ids" type="demo:ids.Type" minOccurs="0" nillable="true"/>
      <xs:element name="name" type="xs:string" minOccurs="0" nillable="true"/>
      <xs:element name="note" type="demo:note.Type" minOccurs="0" nillable="true"/>
      <xs:element name="points" type="demo:points.Type" minOccurs="0" nillable="true"/>
      <xs:element name="spare" type="demo:empty.Type" minOccurs="0" nillable="true"/>
    </xs:sequence>
    <xs:attribute name="version" type="xs:string"/>
    <xs:attribute name="mass" type="demo:double.ValueType"/>
    <xs:attribute name="mode" type="demo:mode.EnumType"/>
  </xs:complexType>

  <xs:simpleType name="double.ValueType">
    <xs:union memberTypes="xs:double">
      <xs:simpleType>
        <xs:restriction base="xs:token">
          <xs:pattern value="[+\-]?([iI][nN][fF]([iI][nN][iI][tT][yY])?|[nN][aA][nN])"/>
        </xs:restriction>
      </xs:simpleType>
    </xs:union>
  </xs:simpleType>

  <xs:simpleType name="mode.EnumType">
    <xs:restriction base="xs:token">
      <xs:enumeration value="slow"/>
      <xs:enumeration value="very fast"/>
    </xs:restriction>
  </xs:simpleType>

  <xs:simpleType name="unsignedInt.ListType">
    <xs:list itemType="xs:unsignedInt"/>
  </xs:simpleType>

</xs:schema>
)xsd");
}

// Texts of each type that the library would not write, or would not read back.
TEST(SchemaExact, RefusesTextsThatAreNoValues)
{
    struct Row {
        std::shared_ptr<NyXmlObject> value;
        std::vector<char const*> good, bad;
    };
    auto const mode = [](std::vector<std::string> words) { return std::make_shared<Mode>(std::move(words)); };
    Row const rows[] = {
        { std::make_shared<NyXmlBasicType<char>>(), { "a", "1", "&lt;" }, { "ab", "" } },
        { std::make_shared<NyXmlBasicType<unsigned char>>(), { "0", "255" }, { "256", "-1", "" } },
        { std::make_shared<NyXmlBasicType<short>>(), { "-32768" }, { "32768", "x" } },
        { std::make_shared<NyXmlBasicType<unsigned short>>(), { "65535" }, { "65536" } },
        { std::make_shared<NyXmlBasicType<int>>(), { "-2147483648" }, { "2147483648", "1.5" } },
        { std::make_shared<NyXmlBasicType<unsigned int>>(), { "4294967295" }, { "4294967296", "-1" } },
        { std::make_shared<NyXmlBasicType<bool>>(), { "0", "1" }, { "true", "2", "" } },
        { std::make_shared<NyXmlBasicType<double>>(),
          { "-0", "1e+30", "inf", "-nan", "4.9406564584124654418e-324" },
          { "one", "1,5" } },
        { std::make_shared<NyXmlBasicType<NyAngle>>(), { "-1.5", "inf" }, { "one" } },
        { std::make_shared<NyXmlBasicType<NyNonNegReal>>(), { "0", "-0", ".5", "1e+300", "inf" }, { "-1", "nan", "-inf" } },
        { std::make_shared<NyXmlBinaryString>(), { "", "aGVsbG8=" }, { "aGVs bG8=", "?" } },
        { mode({ "a", "b c" }), { "a", "b c" }, { "A", "b", "c", "" } },
        { mode({ "a  b", "x.y" }), { "a  b", "x.y" }, { "a b", "xzy" } },  // white space inside of a word counts
        { mode({ "R&amp;D", "Q&A" }), { "R&amp;D", "Q&amp;A" }, { "R" } }, // as documents have it, and as they should
    };
    for (Row const& row : rows) {
        Bag const robot([&](Bag& bag) { bag.registerComponent("a/b/demo#value", row.value.get()); });
        ExactSchema const schema(robot, theRoot);
        auto const document = [](std::string const& text) { return head("robot") + "><value>" + text + "</value></robot>"; };
        for (char const* const good : row.good)
            EXPECT_EQ(schema.complaint(document(good)), "") << good << schema.text();
        for (char const* const bad : row.bad)
            EXPECT_TRUE(schema.refuses(document(bad))) << bad << schema.text();
    }
}

namespace {

constexpr char const* modelNamespace = "urn:demo/model";

enum class Fix { none, flat };
constexpr auto nyXmlWords(Fix) { return nyXmlTable<Fix>({ { Fix::none, "none" }, { Fix::flat, "2d" } }); }

class Shape : public NyXmlModel<Shape> {
public:
    static constexpr auto xmlName = "urn:demo/model#shape";
    void registerComponents() override { attribute("id", id); }
    NyXmlBasicType<unsigned int> id;
};
class Ball : public NyXmlModel<Ball, Shape> {
public:
    static constexpr auto xmlName = "urn:demo/model#ball";
    void registerComponents() override { element("radius", radius); }
    NyXmlReal radius;
};
class Box : public NyXmlModel<Box, Shape> {
public:
    static constexpr auto xmlName = "box"; // in the namespace of whatever it stands in
    void registerComponents() override { registerComponent(NyToken(modelNamespace, "size"), &size); }
    NyXmlVector size;
};

class Folder : public NyXmlModel<Folder>, public NyXmlAnyOrder {
public:
    static constexpr auto xmlName = "urn:demo/model#folder";
    static constexpr auto xmlOrder = NyXmlOrder::asRegistered;
    void registerComponents() override
    {
        attribute("fix", fix);
        element("title", title);
        element("changed", changed);
        element("parent", parent);
        element("tool", tool); // which World shares, and so has attributes of its own
    }
    NyXmlOptional<Fix> fix;
    NyXmlBasicType<std::string> title;
    NyXmlOptional<NyXmlDateTime> changed;
    NyXmlOwned<Folder> parent;
    NyXmlOptional<Ball> tool;
};

class World : public NyXmlModel<World> {
public:
    static constexpr auto xmlName = "urn:demo/model#world";
    void registerComponents() override
    {
        attribute("open", open);
        element("folder", folders);
        element("one", one);
        element("many", many);
        element("tool", tool);
        element("otherTool", otherTool);
        element("word", words);
        registerComponent(NyToken("urn:demo/parts", "foreign"), &foreign);
    }
    NyXmlOptional<NyXmlBoolean> open;
    NyXmlRepeated<Folder> folders;
    NyXmlOneOf<Shape, Ball, Box> one;
    NyXmlManyOf<Shape, Ball, Box> many;
    NyXmlShared<Ball> tool, otherTool;
    NyXmlRepeated<Fix> words;
    NyXmlOneOf<Shape, Box> foreign;
};

} // namespace

TEST(SchemaExact, TakesMembersOfTheModel)
{
    NyToken const root(modelNamespace, "world");
    World world;
    ExactSchema const schema(world, root);
    EXPECT_EQ(schema.complaint(documentOf(world, root)), "") << schema.text();
    EXPECT_EQ(schema.complaint(documentOf(world, root, false)), "") << schema.text();

    world.open = true;
    world.folders.append().title = std::string("a");
    world.folders.append().fix = Fix::flat;
    world.folders[1].changed = NyXmlDateTimeValue(std::chrono::system_clock::time_point());
    world.folders[1].parent.make().parent.make().title = std::string("deep");
    world.one.make<Box>().id = 7;
    world.foreign.make<Box>().id = 8;
    world.many.append<Ball>().radius = 1e300;
    world.many.append<Box>();
    world.tool.make();
    world.otherTool = world.tool;
    world.words.append(Fix::flat);
    world.words.append(Fix::none);
    std::string const document = documentOf(world, root);
    EXPECT_EQ(schema.complaint(document), "") << document << schema.all();

    // Each change makes one text of the document another one.
    auto const changed = [&](std::string const& before, std::string const& after) {
        std::string text = document;
        std::size_t const at = text.find(before);
        EXPECT_NE(at, std::string::npos) << before << document;
        return at == std::string::npos ? text : text.replace(at, before.size(), after);
    };
    for (auto const& [before, after] : { std::pair{ "open=\"true\"", "open=\"yes\"" },
                                         { "1970-01-01T", "1970-13-01T" },
                                         { "fix=\"2d\"", "fix=\"3d\"" },
                                         { "<word>none<", "<word>nine<" },
                                         { "sharedRef=\"1\"", "sharedRaf=\"1\"" },
                                         { "<title>deep</title>", "<tittle>deep</tittle>" },
                                         { "</one>", "<ball id=\"1\"/></one>" } })
        EXPECT_TRUE(schema.refuses(changed(before, after))) << before;
    // Any order, and the attribute that tells where a class is from.
    for (auto const& [before, after] :
         { std::pair{ "<title>a</title>", "<changed>1970-01-01T00:00:00Z</changed><title>a</title>" },
           { "</many>", "<ball library=\"x.nyp\" id=\"1\"/></many>" },
           { "<one>", "<one><addLibraries size=\"1\"><element>x</element></addLibraries>" } })
        EXPECT_EQ(schema.complaint(changed(before, after)), "") << after << schema.text();
}

namespace {

class Bolt : public NyXmlModel<Bolt> {
public:
    static constexpr auto xmlName = "urn:demo/model#bolt";
    static constexpr auto xmlOrder = NyXmlOrder::asRegistered;
    void registerComponents() override
    {
        requiredAttribute("id", id);
        attribute("kind", kind);
        requiredElements("length", length, "place", place, "hole", holes);
        elements("spare", spare, "next", next);
    }
    NyXmlBasicType<int> id = 3, length = 4, spare = 5;
    NyXmlBasicType<std::string> kind;
    NyXmlVector place;
    NyXmlRepeated<int> holes;
    NyXmlShared<Bolt> next;
};
class LooseBolt : public NyXmlModel<LooseBolt, Bolt>, public NyXmlAnyOrder {
public:
    static constexpr auto xmlName = "urn:demo/model#looseBolt";
    void registerComponents() override
    {
        element("length", length);
        element("hole", single);
        requiredElement("bolt", bolt);
    }
    NyXmlBasicType<int> single;
    Bolt bolt;
};

class Older : public NyXmlModel<Older, NyXmlVersioned> {
public:
    static constexpr auto xmlName = "urn:demo/model#older";
    static constexpr unsigned int xmlVersion = 3;
    void registerComponents() override
    {
        element("velo", speed, until(1));
        requiredElement("speed", speed, since(2));
        oldElement("colour", until(2));
        oldAttribute<NyXmlBasicType<std::string>>("angle", until(1), [](Older&, NyXmlBasicType<std::string> const&) {});
        attribute("angle", angle, since(2));
        attribute("unit", unit, until(2));
        element("unit", unit, since(3));
    }
    NyXmlBasicType<int> speed, angle;
    NyXmlBasicType<std::string> unit;
};

// Without the first piece of markup that begins so, to the end of its value or element.
std::string without(std::string document, std::string const& begin, std::string const& end)
{
    std::size_t const at = document.find(begin);
    EXPECT_NE(at, std::string::npos) << begin << document;
    return at == std::string::npos ? document : document.erase(at, document.find(end, at + begin.size()) + end.size() - at);
}

} // namespace

TEST(SchemaExact, RequiredMembersAreAskedFor)
{
    Bolt bolt;
    bolt.holes.append(1);
    bolt.next.make().holes.append(2);
    bolt.next->next = bolt.next; // its second place is a bare reference
    NyToken const name = Bolt::classToken();
    ExactSchema const schema(bolt, name);
    for (bool const hasDefaults : { true, false }) {
        std::string const document = documentOf(bolt, name, hasDefaults);
        EXPECT_EQ(schema.complaint(document), "") << document << schema.text();
        EXPECT_TRUE(schema.refuses(without(document, " id=\"", "\""))) << document;
        EXPECT_TRUE(schema.refuses(without(document, "<length>", "</length>")));
        EXPECT_TRUE(schema.refuses(without(document, "<place ", "/>")));
        EXPECT_TRUE(schema.refuses(without(document, "<hole>", "</hole>")));
        EXPECT_EQ(schema.complaint(without(document, " kind=\"", "\"")), "");
        EXPECT_EQ(schema.complaint(without(document, "<spare>", "</spare>")), "");
        EXPECT_EQ(schema.complaint(without(document, "<next", "</next>")), "");
    }

    LooseBolt loose;
    loose.bolt = bolt;
    NyToken const looseName = LooseBolt::classToken();
    ExactSchema const looseSchema(loose, looseName);
    std::string const document = documentOf(loose, looseName);
    EXPECT_EQ(looseSchema.complaint(document), "") << document << looseSchema.text();
    EXPECT_TRUE(looseSchema.refuses(without(document, "<bolt ", "</bolt>")));
    EXPECT_EQ(looseSchema.complaint(without(document, "<length>", "</length>")), ""); // its own, ahead of the bolt's
    EXPECT_EQ(looseSchema.complaint(without(document, "<hole>", "</hole>")), "");
    bolt.next->next.reset(); // nobody else ends a circle
}

// The schema is that of the present version.
TEST(SchemaExact, VersionedMembersAreThoseOfTheVersion)
{
    NyToken const name = Older::classToken();
    Older const older;
    ExactSchema const schema(older, name);
    std::string const document = documentOf(older, name);
    EXPECT_EQ(schema.complaint(document), "") << document << schema.text();
    EXPECT_EQ(schema.complaint(documentOf(older, name, false)), "");
    auto const root = [](std::string const& rest) { return "<older xmlns=\"urn:demo/model\" " + rest + "</older>"; };
    std::string const speed = "<speed>1</speed>";
    EXPECT_EQ(schema.complaint(root("formatVersion=\"3\" angle=\"1\">" + speed + "<unit>m</unit>")), "");
    EXPECT_EQ(schema.complaint(root(">" + speed)), "");
    for (std::string const& bad :
         { root(">"), root("><velo>1</velo>"), root("angle=\"ninety\">" + speed), root("unit=\"m\">" + speed),
           root("><colour/>" + speed), root("formatVersion=\"three\">" + speed) })
        EXPECT_TRUE(schema.refuses(bad)) << bad << schema.text();
}

// Namespaces that make trouble: no segment that is a prefix, one prefix for two, one of no name, attributes with one.
TEST(SchemaExact, PrefixesAreValidAndUnique)
{
    struct Row {
        char const *root, *child, *grandchild, *attribute;
        std::vector<std::string> files;
    };
    Row const rows[] = {
        { "urn:demo#a", "urn:demo#b", "urn:demo#c", "d", { "model.urn:demo.xsd" } },
        { "x/core#a", "y/core#b", "x/core#c", "d", { "model.core.xsd", "model.core_1.xsd" } },
        { "x/root#a",
          "x/core#b",
          "y/core#c",
          "d",
          { "model.core.xsd", "model.root.xsd" } }, // hides it: the writer declares x/core alone
        { "x/xs#a", "x/xml#b", "x/1st#c", "d", { "model.1st.xsd", "model.xml.xsd", "model.xs.xsd" } },
        { "x/root#a", "x/core#b", "c", "x/core#d", { "model.core.xsd", "model.root.xsd" } },
        { "a", "b", "c", "d", { "model..xsd" } },
    };
    for (Row const& row : rows) {
        Messages const messages; // the writer misses namespaces
        NyXmlBasicType<int> number, id;
        Bag child([&](Bag& bag) {
            bag.registerComponent(row.grandchild, &number);
            bag.registerAttributeComponent(row.attribute, &id);
        });
        Bag root([&](Bag& bag) { bag.registerComponent(row.child, &child); });
        ExactSchema const schema(root, row.root);
        std::vector<std::string> names;
        for (auto const& [path, text] : schema.files)
            names.push_back(path.substr(path.rfind('/') + 1));
        EXPECT_EQ(names, row.files);
        std::string const document = documentOf(root, row.root);
        if (std::string(row.child) != "x/xml#b") { // no document has these prefixes; the schema has to be one all the same
            EXPECT_EQ(schema.complaint(document), "") << document << schema.all();
        }
        for (auto const& validator : schema.validators)
            EXPECT_EQ(validator->fault(), "") << schema.all();
    }
}

namespace {

// Describes itself by hand, and calls no base operation.
class Stranger : public NyXmlBasicType<std::string> {
public:
    bool writeSchema(NyXmlSchema& schema) const override
    {
        NyToken const name("a/b/demo", "again");
        schema.writeStartTag(name, NyXmlSchemaElementType::XML_STARTTAG_UNBOUNDED);
        if (!schema.isRegistered(name, "Stranger")) {
            Stranger().writeSchema(schema);
            schema.writeEndTag();
        }
        schema.setAttributeName("when");
        schema.setAttributeType("dateTime");
        schema.writeStartTagUsingParentNamespace("again", NyXmlSchemaElementType::XML_STARTTAG_SINGLE);
        schema.setContentType("demo:of no schema");
        schema.writeEndTag();
        return true;
    }
};

// Holds an object that it registers nowhere.
class Holder : public NyXmlBasicType<std::string> {
public:
    explicit Holder(NyXmlObject& held) : m_held(held) {}
    bool isBasicType() const override { return true; } // to be written always
    bool write(NyXmlWriter& writer) const override
    {
        writer.writeStartTagUsingParentNamespace("held");
        m_held.write(writer);
        writer.writeEndTag();
        return true;
    }
    bool writeSchema(NyXmlSchema& schema) const override
    {
        NyXmlObject::writeSchema(schema);
        schema.writeStartTagUsingParentNamespace("held", NyXmlSchemaElementType::XML_STARTTAG_SINGLE);
        m_held.writeSchema(schema);
        schema.writeEndTag();
        return true;
    }

private:
    NyXmlObject& m_held;
};

class Item : public NyXmlModel<Item> {
public:
    static constexpr auto xmlName = "x/root#item";
    void registerComponents() override { registerComponent("y/core#number", &number); }
    NyXmlBasicType<int> number;
};

} // namespace

// Two of one class under one name: what their objects hold is not the same. And what holds the same is not when it stands where the prefix
// of its namespace is another's.
TEST(SchemaExact, OneNameAndClassWithTwoContents)
{
    NyXmlBasicType<int> number;
    Mode slow({ "slow" }), fast({ "fast" });
    Bag slowBag([&](Bag& bag) { bag.registerComponent("x/root#mode", &slow); });
    Bag fastBag([&](Bag& bag) { bag.registerComponent("x/root#mode", &fast); });
    Holder slowHolder(slowBag), fastHolder(fastBag);
    NyXmlVectorType<Item> items;
    items.pushBack(Item());
    Bag inCore([&](Bag& bag) { bag.registerComponent("x/root#items", &items); });
    Bag root([&](Bag& bag) {
        bag.registerComponent("x/root#slow", &slowHolder);
        bag.registerComponent("x/root#fast", &fastHolder);
        bag.registerComponent("x/core#inCore", &inCore);
        bag.registerComponent("x/root#items", &items);
    });
    ExactSchema const schema(root, "x/root#a");
    std::string const document = documentOf(root, "x/root#a");
    EXPECT_EQ(schema.complaint(document), "") << document << schema.all();
    std::string mixedUp = document;
    mixedUp.replace(mixedUp.find(">slow<"), 6, ">fast<");
    EXPECT_TRUE(schema.refuses(mixedUp)) << mixedUp;
}

// What applications do with a builder by hand is theirs, but it ends, and the schema is one.
TEST(SchemaExact, ObjectsThatDescribeThemselvesByHand)
{
    ExactSchema const schema(Stranger(), theRoot);
    EXPECT_EQ(schema.complaint(head("robot") + " when=\"2010-09-12T10:20:30Z\"><again/></robot>"), "") << schema.text();
    EXPECT_TRUE(schema.refuses(head("robot") + " when=\"now\"/>"));

    NyXmlExactSchema bare;
    bare.writeEndTag();
    bare.setAttributeName("a");
    bare.setType(typeid(int));
    bare.describing(NyXmlBasicType<int>());
    EXPECT_FALSE(bare.isRegistered("a", "b"));
    EXPECT_TRUE(bare.files("model.xml").empty());
    EXPECT_TRUE(bare.write("model.xml"));
}

// Files, and what becomes of a file that can't be written.
TEST(SchemaExact, WritesFilesBesideTheDocument)
{
    ScratchDirectory const directory;
    NyXmlBasicType<int> number;
    EXPECT_TRUE(NyXmlExactSchema::create(number, directory.path("model.xml"), theRoot));
    std::ifstream const stream(directory.path("model.demo.xsd"));
    std::ostringstream text;
    text << stream.rdbuf();
    EXPECT_EQ(text.str(), ExactSchema(number, theRoot).text());
    EXPECT_FALSE(NyXmlExactSchema::create(number, directory.path("nowhere/model.xml"), theRoot));
}
