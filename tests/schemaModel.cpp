#include "SchemaSupport.h"

#include <nyXml/compound/NyXmlBaseVariableCompoundType.h>
#include <nyXml/compound/NyXmlCompoundType.h>
#include <nyXml/values/NyXmlBasicType.h>
#include <nyXml/values/NyXmlEnumType.h>
#include <nyXml/values/NyXmlListType.h>
#include <nyXml/values/NyXmlMapType.h>
#include <nyXml/values/NyXmlOrientation.h>
#include <nyXml/values/NyXmlPairType.h>
#include <nyXml/values/NyXmlSetType.h>
#include <nyXml/values/NyXmlVector.h>
#include <nyXml/values/NyXmlVectorBasicType.h>
#include <nyXml/values/NyXmlVectorType.h>
#include <nyXml/values/NyXmlVectorVector.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

namespace {

std::string const demo = "a/b/demo";

/// What every object of the model needs and this file doesn't look at. Never equal, so that everything is written.
template <class Derived, class Base = NyXmlCompoundType>
class Part : public Base {
public:
    NyXmlObject* clone() const override { return new Derived(static_cast<Derived const&>(*this)); }
    NyXmlObject* newObject() const override { return new Derived; }
    bool equality(NyXmlObject const*) const override { return false; }
    NyToken const& token() const override { return m_token; }

protected:
    NyToken m_token = NyToken(demo, "part");
};

template <class Points>
class Robot : public Part<Robot<Points>> {
public:
    void registerComponents() override
    {
        this->registerAttributeComponent("mass", &m_mass);
        this->registerComponent(NyToken(demo, "name"), &m_name);
        this->registerComponent(NyToken(demo, "points"), &m_points);
    }

private:
    NyXmlBasicType<double> m_mass;
    NyXmlBasicType<std::string> m_name;
    Points m_points{ 3 };
};

TEST(SchemaModel, EveryByteOfACompound)
{
    ScratchDirectory directory;
    EXPECT_TRUE(Robot<NyXmlVectorType<NyXmlVector>>().createSchema(directory.path("robot.xml"), NyToken(demo, "robot")));
    EXPECT_EQ(filesUnder(directory.path()).at("robot.demo.xsd"), R"(<schema xmlns="http://www.w3.org/2001/XMLSchema"
  xmlns:demo="a/b/demo"
  targetNamespace="a/b/demo"
  elementFormDefault = "qualified">

  <element name="robot" type="demo:robot.Type" nillable="true"/>

  <complexType name="element.Type">
    <attribute name="x" type="double"/>
    <attribute name="y" type="double"/>
    <attribute name="z" type="double"/>
  </complexType>

  <complexType name="points.Type">
    <sequence>
      <element name="element" type="demo:element.Type" minOccurs="0" maxOccurs="unbounded" nillable="true"/>
    </sequence>

    <attribute name="size" type="string"/>
  </complexType>

  <complexType name="robot.Type">
    <sequence>
      <element name="name" type="string" minOccurs="0" nillable="true"/>
      <element name="points" type="demo:points.Type" minOccurs="0" nillable="true"/>
    </sequence>

    <attribute name="version" type="string"/>
    <attribute name="mass" type="double"/>
  </complexType>

</schema>)");

    EXPECT_TRUE(
        Robot<NyXmlVectorBasicType<NyXmlBasicType<double>>>().createSchema(directory.path("robot"), NyToken(demo, "robot")));
    std::string const text = filesUnder(directory.path()).at("robot.demo.xsd");
    EXPECT_NE(text.find(R"(
      <element name="element" type="double" minOccurs="0" maxOccurs="unbounded" nillable="true"/>
      <element name="group" type="demo:double.ListType" minOccurs="0" nillable="true"/>
    </sequence>

    <attribute name="size" type="string"/>
)"),
              std::string::npos);
    EXPECT_NE(text.find(R"(
  <simpleType name="double.ListType">
    <list itemType="double"/>
  </simpleType>

</schema>)"),
              std::string::npos);

    EXPECT_TRUE(NyXmlVector().createSchema(directory.path("no/such/directory"), NyToken(demo, "v")));
}

/// Holds parts of its own class, two deep.
class Node : public Part<Node> {
public:
    explicit Node(int depth = 0) : m_children(depth)
    {
        if (depth < 2)
            m_child = std::make_unique<Node>(depth + 1);
    }
    Node(Node const&) : Node(2) {}
    void registerComponents() override
    {
        registerAttributeComponent("children", &m_children);
        if (m_child)
            registerComponent(NyToken(demo, "node"), m_child.get());
    }

private:
    NyXmlBasicType<int> m_children;
    std::unique_ptr<Node> m_child;
};

class Sensor : public Part<Sensor> {
public:
    void registerComponents() override
    {
        registerAttributeComponent("id", &m_id);
        registerComponent("c/sensors#range", &m_range);
    }

private:
    NyXmlBasicType<unsigned short> m_id = 7;
    NyXmlPairType<NyXmlBasicType<double>, NyXmlBasicType<double>> m_range;
};

class Shapes : public Part<Shapes, NyXmlBaseVariableCompoundType> {
public:
    void registerComponents() override
    {
        registerComponentCreator(NyToken(demo, "ball"),
                                 [] { return static_cast<NyXmlObject*>(new NyXmlBasicType<double>(0.5)); });
        registerComponentCreator(NyToken(demo, "box"), [] { return static_cast<NyXmlObject*>(new NyXmlVector); });
    }
    bool readValueFromToken(NyToken const&, NyXmlReader&) override { return false; }
    bool write(NyXmlWriter& writer) const override
    {
        bool const result = NyXmlBaseVariableCompoundType::write(writer);
        for (char const* name : { "box", "ball", "ball", "box" }) {
            std::unique_ptr<NyXmlObject> const shape(newObjectFromToken(NyToken(demo, name)));
            writer.writeStartTag(NyToken(demo, name));
            shape->write(writer);
            writer.writeEndTag();
        }
        return result;
    }
};

class Speed : public NyXmlEnumType<int> {
public:
    bool xmlInit() override
    {
        setEnumString(0, "slow");
        return NyXmlEnumType<int>::xmlInit();
    }
};

/// One member of every kind.
class Cell : public Part<Cell> {
public:
    explicit Cell(bool fillsLists = false)
    {
        if (fillsLists) {
            m_list.pushBack(1.5);
            m_set.add(std::string("a"));
        }
        m_numbers.resize(25);
        m_flags.resize(3);
        m_texts.pushBack(std::string("two words"));
        m_points.resize(2);
        m_path.resize(2);
        m_sensors.resize(2);
        m_map.add(std::string("key"), NyXmlBasicType<double>(2.5));
        m_name.setValue(std::string(60, 'n'));
    }
    void registerComponents() override
    {
        registerAttributeComponent("count", &m_count);
        registerAttributeComponent("on", &m_on);
        NyXmlObject* const members[] = { &m_name,   &m_speed, &m_numbers, &m_none,  &m_texts,  &m_flags,
                                         &m_points, &m_path,  &m_list,    &m_set,   &m_map,    &m_position,
                                         &m_turn,   &m_node,  &m_shapes,  &m_empty, &m_sensors };
        char name[] = "a";
        for (NyXmlObject* member : members) {
            registerComponent(NyToken(demo, name), member);
            ++name[0];
        }
        registerComponent("c/sensors#sensor", &m_sensor);
    }

private:
    class Empty : public Part<Empty> {
    public:
        void registerComponents() override {}
    };

    NyXmlBasicType<int> m_count;
    NyXmlBasicType<bool> m_on;
    NyXmlBasicType<std::string> m_name;
    Speed m_speed;
    NyXmlVectorBasicType<NyXmlBasicType<double>> m_numbers;
    NyXmlVectorBasicType<NyXmlBasicType<unsigned int>> m_none;
    NyXmlVectorBasicType<NyXmlBasicType<std::string>> m_texts;
    NyXmlVectorType<NyXmlBasicType<bool>> m_flags;
    NyXmlVectorType<NyXmlVector> m_points;
    NyXmlVectorVector m_path;
    NyXmlListType<NyXmlBasicType<double>> m_list;
    NyXmlSetType<NyXmlBasicType<std::string>> m_set;
    NyXmlMapType<NyXmlBasicType<std::string>, NyXmlBasicType<double>> m_map;
    NyXmlVector m_position;
    NyXmlOrientation m_turn;
    Node m_node;
    Shapes m_shapes;
    Empty m_empty;
    NyXmlVectorType<Sensor> m_sensors;
    Sensor m_sensor;
};

class MirroringWriter : public NyXmlWriter {
public:
    MirroringWriter(std::string const& fileName, std::ostream& stream, bool mirror) : NyXmlWriter(fileName, stream)
    {
        setSchemaWriter(mirror);
    }
};

/// Writes the object; with \p mirror its XSD files as well, taken from the calls that write it.
std::string written(NyXmlObject const& object, std::string const& fileName, bool mirror = false)
{
    std::ostringstream stream;
    MirroringWriter writer(fileName, stream, mirror);
    writer.writeStartTag(NyToken(demo, "cell"));
    object.write(writer);
    writer.writeEndTag();
    return stream.str();
}

bool hasValidator() { return std::system("xmllint --version >/dev/null 2>&1") == 0; }

/// What the validator complains about, empty if the document is valid.
std::string complaints(ScratchDirectory const& directory, std::string const& document)
{
    std::string const command = "cd '" + directory.path() + "' && xmllint --nonet --noout --schema cell.demo.xsd '" +
                                directory.write("cell.xml", document) + "' >log 2>&1";
    bool const isValid = std::system(command.c_str()) == 0;
    return isValid ? std::string() : filesUnder(directory.path()).at("log");
}

TEST(SchemaModel, DocumentIsValid)
{
    if (!hasValidator())
        GTEST_SKIP() << "xmllint is not installed";
    ScratchDirectory directory;
    ASSERT_TRUE(Cell().createSchema(directory.path("cell.xml"), NyToken(demo, "cell")));
    std::string const document = written(Cell(), "cell.xml");
    EXPECT_EQ(complaints(directory, document), "");

    // and something is checked at all
    EXPECT_NE(complaints(directory, replaced(document, "two words", "<x/>")), "");
    EXPECT_NE(complaints(directory, replaced(document, "q0=\"1\"", "q0=\"one\"")), "");

    // What the files don't tell of lists and sets: their size, and the run of their items.
    EXPECT_NE(complaints(directory, written(Cell(true), "cell.xml")), "");
}

TEST(SchemaModel, MirroredFilesDescribeTheDocument)
{
    if (!hasValidator())
        GTEST_SKIP() << "xmllint is not installed";
    ScratchDirectory directory;
    Robot<NyXmlVectorBasicType<NyXmlBasicType<double>>> const robot;
    EXPECT_EQ(complaints(directory, written(robot, directory.path("cell.xml"), true)), "");

    // A writer sees each element on its own: that there may be more of a kind is not in the files.
    Robot<NyXmlVectorType<NyXmlVector>> const severalOfAKind;
    EXPECT_NE(complaints(directory, written(severalOfAKind, directory.path("cell.xml"), true)), "");
}

} // namespace
