#include "CompoundSupport.h"
#include "SchemaSupport.h"

#include <nyXml/nyXml.h>

#include <cstdlib>
#include <memory>

namespace {

using Numbers = NyXmlVectorBasicType<NyXmlBasicType<double>>;

NyToken demo(char const* name) { return NyToken("a/b/demo", name); }

class Shapes : public Model<Shapes, NyXmlBaseVariableCompoundType> {
public:
    void registerComponents() override
    {
        registerComponentCreator(demo("ball"), []() -> NyXmlObject* { return new NyXmlBasicType<double>(0.5); });
        registerComponentCreator(demo("box"), []() -> NyXmlObject* { return new NyXmlVector; });
    }
    bool readValueFromToken(NyToken const&, NyXmlReader&) override { return false; }
    bool write(NyXmlWriter& writer) const override
    {
        for (char const* name : { "box", "ball", "ball", "box" }) {
            writer.writeStartTag(demo(name));
            std::unique_ptr<NyXmlObject>(newObjectFromToken(demo(name)))->write(writer);
            writer.writeEndTag();
        }
        return NyXmlBaseVariableCompoundType::write(writer);
    }
};

/// What a validating parser says against an object's document, empty if it accepts it. \param change  a text in it, and another in its place
std::string complaints(NyXmlObject const& object, std::pair<std::string, std::string> const& change = {})
{
    ScratchDirectory directory;
    object.createSchema(directory.path("cell.xml"), demo("cell"));
    std::ostringstream stream;
    NyXmlWriter writer("cell.xml", stream);
    writer.writeStartTag(demo("cell"));
    object.write(writer);
    writer.writeEndTag();
    std::string document = stream.str();
    document.replace(document.find(change.first), change.first.size(), change.second);
    directory.write("cell.xml", document);
    std::string const command =
        "cd '" + directory.path() + "' && xmllint --nonet --noout --schema cell.demo.xsd cell.xml >log 2>&1";
    return std::system(command.c_str()) == 0 ? std::string() : filesUnder(directory.path()).at("log");
}

TEST(SchemaModel, Described)
{
    NyXmlBasicType<double> mass;
    Shapes shape;
    Compound<1> node({ { "mass", &mass }, { demo("node"), &node } }); // without an end, and under two names
    Compound<> const robot({ { "mass", &mass }, { demo("left"), &node }, { demo("node"), &node }, { demo("shape"), &shape } });
    ScratchDirectory directory;
    EXPECT_TRUE(robot.createSchema(directory.path("robot.xml"), demo("robot")));
    EXPECT_EQ(briefOf(directory), "global robot(demo:robot.Type)\n"
                                  "addLibraries.Type: element*(string) @size(string)\n"
                                  "box.Type: @x(double) @y(double) @z(double)\n"
                                  "left.Type: node(demo:node.Type) @mass(double)\n"
                                  "node.Type: node(demo:node.Type) @mass(double)\n"
                                  "robot.Type: left(demo:left.Type) node(demo:node.Type) shape(demo:shape.Type) "
                                  "@version(string) @mass(double)\n"
                                  "shape.Type: any: {demo:shape.Group}\n"
                                  "shape.Group: one: addLibraries(demo:addLibraries.Type) ball(double) box(demo:box.Type)\n");
    EXPECT_TRUE(robot.createSchema(directory.path("no/such/directory"), demo("robot")));
    struct : NyXmlSchema {
        void describing(NyXmlObject const& object) override { described = &object; }
        NyXmlObject const* described = nullptr;
    } schema;
    Compound<2> const empty;
    EXPECT_TRUE(empty.writeSchema(schema));
    EXPECT_EQ(schema.described, &empty);
}

TEST(SchemaModel, OneMemberOfEveryKindIsValid)
{
    if (std::system("xmllint --version >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "xmllint is not installed";
    NyXmlBasicType<int> count;
    NyXmlBasicType<bool> on;
    NyXmlBasicType<std::string> name(std::string(60, 'n'));
    NyXmlEnumType<int> speed;
    Numbers numbers(25, 0.1);
    NyXmlVectorBasicType<NyXmlBasicType<unsigned int>> none;
    NyXmlVectorBasicType<NyXmlBasicType<std::string>> texts(1, std::string("two words"));
    NyXmlVectorType<NyXmlBasicType<bool>> flags(3);
    NyXmlVectorType<NyXmlVector> points(2);
    NyXmlVectorType<Numbers> rows(2, numbers);
    NyXmlVectorType<Shapes> shapes(2);
    NyXmlVectorVector path;
    path.resize(2);
    NyXmlListType<NyXmlBasicType<double>> list;
    NyXmlSetType<NyXmlBasicType<std::string>> set;
    NyXmlMapType<NyXmlBasicType<std::string>, Numbers> map(std::string("key"), numbers);
    NyXmlPairType<NyXmlBasicType<double>, NyXmlVector> pair;
    NyXmlVector position;
    NyXmlOrientation turn;
    Compound<1> leaf({ { "n", &count } });
    Compound<1> branch({ { "n", &count }, { demo("node"), &leaf } });
    Compound<1> node({ { "n", &count }, { demo("node"), &branch } });
    Compound<2> empty;
    Compound<3> sensor({ { "id", &count }, { "c/sensors#span", &pair } });
    Compound<>::Members members{ { "count", &count }, { "on", &on }, { "c/sensors#sensor", &sensor } };
    std::string tag = "a";
    for (NyXmlObject* member :
         std::initializer_list<NyXmlObject*>{ &name, &speed, &numbers, &none, &texts, &flags, &points, &rows, &shapes, &path,
                                              &list, &set, &map, &pair, &position, &turn, &node, &empty }) {
        members.emplace_back(demo(tag.c_str()), member);
        ++tag[0];
    }
    Compound<> const cell(members);
    EXPECT_EQ(complaints(cell), "");
    EXPECT_NE(complaints(cell, { "two words", "<x/>" }), ""); // something is checked at all
    EXPECT_NE(complaints(cell, { "q0=\"1\"", "q0=\"one\"" }), "");
}

} // namespace
