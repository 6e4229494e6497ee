#include "SchemaSupport.h"

#include <gtest/gtest.h>

namespace {

// A model in two namespaces, with whatever a file can hold.
TEST(SchemaDocument, EveryByteOfTwoFiles)
{
    auto constexpr choice = SchemaWalk::choice;
    SchemaWalk schema;
    schema.open("a/b/demo#robot").attribute("u#version", typeid(std::string));
    schema.open("name").attribute("lang", typeid(int)).text(typeid(std::string)).close();
    schema.open("points").attribute("size", typeid(unsigned int)).leaf("element", SchemaWalk::unbounded);
    schema.open("group").text().text().close().close();
    schema.open("plain#tool").attribute("id", typeid(short));
    schema.leaf("a/b/demo#mass").open("masses").text().text().close();
    schema.open("words").text(typeid(bool)).text(typeid(bool)).close().close();
    schema.open("shape").leaf("addLibraries", choice).open("ball", choice).close().leaf("plain#box", choice).close().close();
    ScratchDirectory directory;
    ASSERT_TRUE(schema.write(directory.path("robot.xml")));
    auto const files = filesUnder(directory.path());
    ASSERT_EQ(files.size(), 2u);

    EXPECT_EQ(files.at("robot.demo.xsd"), R"(<schema xmlns="http://www.w3.org/2001/XMLSchema"
  xmlns:demo="a/b/demo"
  xmlns:plain="plain"
  targetNamespace="a/b/demo"
  elementFormDefault = "qualified">

  <import namespace="plain" schemaLocation="robot.plain.xsd"/>

  <element name="mass" type="double" nillable="true"/>
  <element name="robot" type="demo:robot.Type" nillable="true"/>

  <complexType name="empty.Type">
  </complexType>

  <complexType name="name.Type">
    <simpleContent>
      <extension base="string">
        <attribute name="lang" type="string"/>
      </extension>
    </simpleContent>
  </complexType>

  <complexType name="points.Type">
    <sequence>
      <element name="element" type="double" minOccurs="0" maxOccurs="unbounded" nillable="true"/>
      <element name="group" type="demo:double.ListType" minOccurs="0" nillable="true"/>
    </sequence>

    <attribute name="size" type="string"/>
  </complexType>

  <complexType name="robot.Type">
    <sequence>
      <element name="name" type="demo:name.Type" minOccurs="0" nillable="true"/>
      <element name="points" type="demo:points.Type" minOccurs="0" nillable="true"/>
      <element ref="plain:tool" minOccurs="0"/>
      <element name="shape" type="demo:shape.Type" minOccurs="0" nillable="true"/>
    </sequence>

    <attribute name="version" type="string"/>
  </complexType>

  <complexType name="shape.Type">
    <sequence minOccurs="0" maxOccurs="unbounded">
      <group ref="demo:shape.Group"/>
    </sequence>

  </complexType>

  <group name="shape.Group">
    <choice>
      <element name="addLibraries" type="double" minOccurs="0" nillable="true"/>
      <element name="ball" type="demo:empty.Type" minOccurs="0" nillable="true"/>
      <element ref="plain:box" minOccurs="0"/>
    </choice>
  </group>

  <simpleType name="double.ListType">
    <list itemType="double"/>
  </simpleType>

</schema>)");

    EXPECT_EQ(files.at("robot.plain.xsd"), R"(<schema xmlns="http://www.w3.org/2001/XMLSchema"
  xmlns:demo="a/b/demo"
  xmlns:plain="plain"
  targetNamespace="plain"
  elementFormDefault = "qualified">

  <element name="tool" type="plain:tool.Type" nillable="true"/>
  <element name="box" type="double" nillable="true"/>

  <complexType name="tool.Type">
    <sequence>
      <element ref="demo:mass" minOccurs="0"/>
      <element name="masses" type="demo:double.ListType" minOccurs="0" nillable="true"/>
      <element name="words" type="plain:boolean.ListType" minOccurs="0" nillable="true"/>
    </sequence>

    <attribute name="id" type="short"/>
  </complexType>

  <simpleType name="boolean.ListType">
    <list itemType="boolean"/>
  </simpleType>

</schema>)");
}

TEST(SchemaDocument, NamespaceWithoutNameOrContents)
{
    std::string const document = R"(<schema xmlns="http://www.w3.org/2001/XMLSchema"
  xmlns:="")";
    SchemaWalk nameless;
    nameless.open("#r").attribute("a").close();
    ScratchDirectory directory;
    ASSERT_TRUE(nameless.write(directory.path("m")));
    EXPECT_EQ(filesUnder(directory.path()).at("m..xsd"), document + R"(
  targetNamespace=""
  elementFormDefault = "qualified">


  <complexType name="r.Type">
    <attribute name="a" type="double"/>
  </complexType>

</schema>)");

    SchemaWalk unfinished;
    unfinished.open("n/p#r");
    ASSERT_TRUE(unfinished.write(directory.path("u")));
    std::string const text = filesUnder(directory.path()).at("u.p.xsd");
    EXPECT_EQ(text.substr(text.find("  targetNamespace")),
              "  targetNamespace=\"n/p\"\n  elementFormDefault = \"qualified\">\n\n\n</schema>");
}

TEST(SchemaDocument, FileNames)
{
    std::pair<char const*, char const*> const rows[] = {
        { "robot", "robot.p.xsd" },
        { "robot.xml", "robot.p.xsd" },
        { "robot.xsd", "robot.p.xsd" },
        { "robot.xml.xsd", "robot.p.xsd" },
        { "robot.xsd.xml", "robot.p.xsd" },
        { "robot.xml.xml", "robot.xml.p.xsd" },
        { "robot.xmlish/cell.txt", "robot.p.xsd" },
        { "robot.qcml", "robot.qcml.p.xsd" },
        { "", ".p.xsd" },
        { "sub/robot.xml", "sub/robot.p.xsd" },
        { "sub\\robot.xml", "sub\\robot.p.xsd" },
    };
    for (auto const& [given, written] : rows) {
        SCOPED_TRACE(given);
        ScratchDirectory directory;
        std::filesystem::create_directory(directory.path("sub"));
        SchemaWalk schema;
        schema.open("n/p#r").leaf("n/q#e").close();
        ASSERT_TRUE(schema.write(directory.path() + "/" + given));
        auto const files = filesUnder(directory.path());
        ASSERT_EQ(files.count(written), 1u);

        std::string const inSameDirectory = std::string(written).substr(std::string(written).find_last_of("/\\") + 1);
        std::string const location = replaced(inSameDirectory, ".p.xsd", ".q.xsd");
        EXPECT_NE(files.at(written).find("schemaLocation=\"" + location + "\"/>"), std::string::npos);
    }
}

TEST(SchemaDocument, FileThatCannotBeOpenedLeavesTheOthers)
{
    ScratchDirectory directory;
    std::filesystem::create_directory(directory.path("m.p.xsd"));
    SchemaWalk schema;
    schema.open("n/p#r").leaf("n/q#e").close();
    EXPECT_FALSE(schema.write(directory.path("m")));
    std::string const other = filesUnder(directory.path()).at("m.q.xsd");

    std::filesystem::remove(directory.path("m.p.xsd"));
    directory.write("m.q.xsd", std::string(5000, 'x'));
    EXPECT_TRUE(schema.write(directory.path("m")));
    EXPECT_EQ(filesUnder(directory.path()).at("m.q.xsd"), other);
    EXPECT_TRUE(NyXmlSchema().write(directory.path("nothing")));
    EXPECT_EQ(filesUnder(directory.path()).size(), 2u);
}

TEST(SchemaDocument, NamespacesWithOnePrefixShareAFile)
{
    SchemaWalk schema;
    schema.open("n/p#r").leaf("m/p#e").open("m/p#list").text().text().close().close();
    EXPECT_EQ(schema.brief(), "global e(double)\nglobal list(p:double.ListType)\ndouble.ListType: =double\n");
}

} // namespace
