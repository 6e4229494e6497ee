#include "SchemaSupport.h"

namespace {

// A model in two namespaces, with whatever a file can hold.
TEST(SchemaDocument, EveryByteOfTwoFiles)
{
    SchemaWalk schema;
    schema.play("<a/b/demo#robot @u#version:s  <name @lang:s .s /  <points @size:s *element . / <group . . / /"
                "  <plain#tool @id +a/b/demo#mass <masses . . / <words .b .b / /"
                "  <shape ?addLibraries . / ?ball / ?plain#box . / / /");
    ScratchDirectory directory;
    ASSERT_TRUE(schema.write(directory.path("robot.xml")));
    auto const files = filesUnder(directory.path());
    EXPECT_EQ(files.size(), 2u);
    for (auto const& [name, expected] : filesUnder(NYXML_TEST_DATA_DIR "/schema"))
        EXPECT_EQ(files.at(name), expected);
}

TEST(SchemaDocument, NamespaceWithoutNameOrContents)
{
    SchemaWalk schema;
    schema.play("<#r");
    ScratchDirectory directory;
    ASSERT_TRUE(schema.write(directory.path("m")));
    EXPECT_EQ(filesUnder(directory.path()).at("m..xsd"), "<schema xmlns=\"http://www.w3.org/2001/XMLSchema\"\n"
                                                         "  xmlns:=\"\"\n"
                                                         "  targetNamespace=\"\"\n"
                                                         "  elementFormDefault = \"qualified\">\n\n\n"
                                                         "</schema>");
    EXPECT_EQ(schema.play("@a /").brief(), "r.Type: @a(double)\n");
    EXPECT_TRUE(NyXmlSchema().write(directory.path("nothing")));
    EXPECT_EQ(filesUnder(directory.path()).size(), 1u);
}

TEST(SchemaDocument, FileNames)
{
    std::pair<char const*, std::string> const rows[] = {
        { "robot.xml.xsd", "robot" },         { "robot.xsd.xml", "robot" },       { "robot.xml.xml", "robot.xml" },
        { "robot.xmlish/cell.txt", "robot" }, { "robot.qcml", "robot.qcml" },     { "", "" },
        { "sub/robot.xml", "sub/robot" },     { "sub\\robot.xml", "sub\\robot" },
    };
    for (auto const& [given, base] : rows) {
        SCOPED_TRACE(given);
        ScratchDirectory directory;
        directory.write("sub/x", "");
        SchemaWalk schema;
        schema.play("<n/p#r +n/q#e /");
        ASSERT_TRUE(schema.write(directory.path() + "/" + given));
        std::string const first = filesUnder(directory.path()).at(base + ".p.xsd");
        std::string const inSameDirectory = base.substr(base.find_last_of("/\\") + 1) + ".q.xsd";
        EXPECT_NE(first.find("schemaLocation=\"" + inSameDirectory + "\"/>"), std::string::npos) << first;
    }
}

TEST(SchemaDocument, FileThatCannotBeOpenedLeavesTheOthers)
{
    ScratchDirectory directory;
    std::filesystem::create_directory(directory.path("m.p.xsd"));
    SchemaWalk schema;
    schema.play("<n/p#r +n/q#e /");
    EXPECT_FALSE(schema.write(directory.path("m")));
    EXPECT_EQ(briefOf(directory), "global e(double)\n");

    std::filesystem::remove(directory.path("m.p.xsd"));
    directory.write("m.q.xsd", std::string(5000, 'x'));
    EXPECT_TRUE(schema.write(directory.path("m")));
    EXPECT_EQ(briefOf(directory), schema.brief());
}

} // namespace
