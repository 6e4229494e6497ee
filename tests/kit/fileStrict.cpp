#include "fileSupport.h"

#include <nyXmlKit/model/NyXmlModel.h>
#include <nyXmlKit/model/NyXmlVersioned.h>

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

using Strictness = NyXmlReadOptions::Strictness;
template <class T>
using Basic = NyXmlBasicType<T>;
template <class T>
using Numbers = NyXmlVectorBasicType<Basic<T>>;

NyXmlReadOptions strictly(Strictness strictness = Strictness::ALL)
{
    NyXmlReadOptions options;
    options.strictness = strictness;
    options.anyRoot = true;
    return options;
}

/// A member of every family, some of them in each other.
class Zoo : public FileClass<Zoo> {
public:
    static constexpr char const* name = "zoo";
    void registerComponents() override
    {
        registerAttributeComponent("kind", &kind);
        registerAttributeComponent("weight", &weight);
        registerComponent("angle", &angle);
        registerComponent("binary", &binary);
        registerComponent("byte", &byte);
        registerComponent("embedded", &embedded);
        registerComponent("flags", &flags);
        registerComponent("gears", &gears);
        registerComponent("grid", &grid);
        registerComponent("joint", &joint);
        registerComponent("joints", &joints);
        registerComponent("letter", &letter);
        registerComponent("links", &links);
        registerComponent("list", &list);
        registerComponent("mode", &mode);
        registerComponent("names", &names);
        registerComponent("numbers", &numbers);
        registerComponent("ownMap", &ownMap);
        registerComponent("pair", &pair);
        registerComponent("path", &path);
        registerComponent("place", &place);
        registerComponentReadOnly("old", &old);
        registerComponent("set", &set);
        registerComponent("speeds", &speeds);
        registerComponent("table", &table);
        registerComponent("tree", &tree);
        registerComponent("turn", &turn);
        registerComponent("vectors", &vectors);
        pair.setXmlTagNames("from", "to");
    }
    bool operator==(Zoo const&) const { return true; }

    FileMode kind;
    Basic<double> weight;
    Basic<NyAngle> angle;
    NyXmlBinaryString binary;
    Basic<unsigned char> byte;
    NyXmlEmbeddedString embedded;
    NyXmlVectorType<Basic<bool>> flags;
    NyXmlVectorBasicType<FileMode> gears;
    NyXmlVectorType<NyXmlVectorType<NyXmlVectorBasicType<Basic<unsigned int>>>> grid;
    FileJoint joint;
    NyXmlVectorType<FileJoint> joints;
    Basic<char> letter{ 'x' };
    NyXmlListType<FileJoint> links;
    NyXmlListType<NyXmlVector> list;
    FileMode mode;
    NyXmlVectorType<Basic<std::string>> names;
    Numbers<double> numbers;
    Basic<int> old;
    NyXmlMapType<Basic<int>, FileJoint> ownMap;
    NyXmlPairType<Basic<std::string>, Basic<unsigned int>> pair;
    NyXmlVectorVector path;
    NyXmlVector place;
    NyXmlSetType<Basic<unsigned int>> set;
    NyXmlSetType<FileMode> speeds;
    NyXmlMapType<Basic<std::string>, Numbers<double>> table;
    FileNode tree;
    NyXmlOrientation turn;
    NyXmlVectorType<NyXmlVector> vectors;
};

using Random = std::mt19937;

int upTo(Random& random, int most) { return static_cast<int>(random() % static_cast<unsigned int>(most + 1)); }

FileJoint randomJoint(Random& random)
{
    static char const* const names[] = { "", "elbow", "a b", "0" };
    FileJoint joint;
    joint.id = random();
    joint.mode.xmlInit();
    joint.mode = upTo(random, 1);
    joint.angle = std::ldexp(random() - 2e9, upTo(random, 60) - 60);
    joint.label = std::string(names[upTo(random, 3)]);
    return joint;
}

void fill(FileNode& node, Random& random, int depth)
{
    node.value = static_cast<int>(random());
    for (int i = depth > 0 ? upTo(random, 3) : 0; i > 0; --i) {
        node.nodes.pushBack(FileNode());
        fill(node.nodes.vectorContainer().back(), random, depth - 1);
    }
}

void fill(Zoo& zoo, Random& random)
{
    zoo.kind.xmlInit();
    zoo.mode.xmlInit();
    zoo.kind = upTo(random, 1);
    zoo.weight = upTo(random, 5) == 0 ? HUGE_VAL : 1.5 * upTo(random, 100);
    zoo.angle = NyAngle(-0.1 * upTo(random, 9));
    zoo.binary.setValue(std::string(static_cast<std::size_t>(upTo(random, 7)), '\0'));
    zoo.byte = static_cast<unsigned char>(random());
    zoo.embedded.setValue(upTo(random, 1) == 0 ? "" : "<b c=\"d\">x</b>");
    zoo.joint = randomJoint(random);
    for (int i = upTo(random, 4); i > 0; --i) {
        zoo.flags.pushBack(Basic<bool>(i % 2 == 0));
        zoo.joints.pushBack(randomJoint(random));
        zoo.links.pushBack(randomJoint(random));
        zoo.gears.pushBack(i % 2);
        zoo.speeds.add(randomJoint(random).mode);
        zoo.list.pushBack(NyXmlVector(NyVector(i, 0.1, -i)));
        zoo.names.pushBack(Basic<std::string>(i % 2 == 0 ? "a b" : ""));
        zoo.numbers.pushBack(i / 3.0);
        zoo.ownMap.add(Basic<int>(-i), randomJoint(random));
        zoo.path.pushBack(NyVector(1e300, i, 0));
        zoo.set.add(Basic<unsigned int>(random()));
        zoo.table.add(Basic<std::string>("k" + std::to_string(i)), Numbers<double>(static_cast<unsigned int>(i - 1)));
        zoo.vectors.pushBack(NyXmlVector(NyVector(i, i, i)));
        zoo.grid.pushBack(
            NyXmlVectorType<Numbers<unsigned int>>(static_cast<unsigned int>(upTo(random, 2)), Numbers<unsigned int>(2, 7u)));
    }
    zoo.pair.set(Basic<std::string>("a"), Basic<unsigned int>(random()));
    fill(zoo.tree, random, 4);
}

std::string written(NyXmlObject const& object, bool withDefaults, NyXmlDialect dialect = NyXmlDialect::CORE)
{
    NyXmlWriteOptions options;
    options.dialect = dialect;
    options.prepare = [&](NyXmlWriter& writer) { writer.setWriteDefaultDataFlag(withDefaults); };
    std::ostringstream stream;
    EXPECT_TRUE(NyXmlFile::write(stream, "zoo.xml", object, options).isWritten());
    return stream.str();
}

TEST(FileStrict, WhatTheLibraryWritesIsFaultless)
{
    Random random(1);
    for (int i = 0; i < 200; ++i) {
        SCOPED_TRACE(i);
        Zoo zoo;
        fill(zoo, random);
        Zoo again;
        NyXmlReadResult const all = readText(written(zoo, true), again, strictly());
        ASSERT_TRUE(all) << all.str();
        EXPECT_EQ(written(again, true), written(zoo, true));
        Zoo fromLess;
        Zoo fromStandard;
        NyXmlReadOptions standard = strictly();
        standard.dialect = NyXmlDialect::STANDARD;
        NyXmlReadResult const other = readText(written(zoo, true, NyXmlDialect::STANDARD), fromStandard, standard);
        ASSERT_TRUE(other) << other.str();
        EXPECT_EQ(written(fromStandard, true), written(zoo, true));
        NyXmlReadResult const less = readText(written(zoo, false), fromLess, strictly(Strictness::LEFT_OUT_FITS));
        ASSERT_TRUE(less) << less.str();
    }
    EXPECT_TRUE(readText("<zoo/>", *std::make_unique<Zoo>(), strictly(Strictness::LEFT_OUT_FITS)));
}

/// A document with everything in it once, and a place for each fault.
std::string sample()
{
    Zoo zoo;
    Random random(7);
    fill(zoo, random);
    zoo.weight = 2;
    for (int i = 0; zoo.joints.size() < 2 && i < 2; ++i)
        zoo.joints.pushBack(randomJoint(random));
    zoo.numbers.vectorContainer() = { 1, 2, 3 };
    zoo.names.vectorContainer() = { Basic<std::string>("one") };
    zoo.flags.vectorContainer() = { Basic<bool>(true) };
    zoo.path.assign(2, *std::make_unique<NyVector>(1, 2, 3));
    zoo.table.clear();
    zoo.table.add(Basic<std::string>("k"), Numbers<double>(1, 5.0));
    zoo.grid.vectorContainer().assign(1, NyXmlVectorType<Numbers<unsigned int>>(1, Numbers<unsigned int>(2, 7u)));
    zoo.ownMap.clear();
    zoo.ownMap.add(Basic<int>(4), randomJoint(random));
    zoo.links.clear();
    zoo.links.pushBack(zoo.joint);
    zoo.gears.vectorContainer() = { 0, 1 };
    zoo.speeds.clear();
    zoo.speeds.add(zoo.kind);
    zoo.set.clear();
    zoo.set.add(Basic<unsigned int>(9u));
    zoo.list.clear();
    zoo.list.pushBack(NyXmlVector(NyVector(4, 5, 6)));
    zoo.binary.setValue("abc");
    zoo.byte = static_cast<unsigned char>(200);
    zoo.joint.angle = 0.5;
    return written(zoo, true);
}

// One fault planted into a good document: it is found, where it is, and nothing else.
TEST(FileStrict, APlantedFaultIsFound)
{
    std::string const document = sample();
    struct Row {
        char const* from;
        char const* to;
        char const* fault; ///< "KIND path"
    };
    Row const rows[] = {
        { "weight=\"2\"", "weight=\"2kW\"", "BAD_TEXT zoo" },
        { "weight=\"2\"", "weight=\"1e999\"", "BAD_TEXT zoo" },
        { "weight=\"2\"", "", "MISSING zoo" },
        { "weight=\"2\"", "weight=\"2\" a:weight=\"3\"", "REPEATED zoo" },
        { "weight=\"2\"", "wait=\"2\" weight=\"2\"", "UNKNOWN zoo" },
        { " mode=\"", " mode=\"x", "BAD_TEXT zoo/joint" },
        { "<byte>200<", "<byte>256<", "BAD_TEXT zoo/byte" },
        { "<byte>200<", "<byte>-1<", "BAD_TEXT zoo/byte" },
        { "<byte>200<", "<byte>ninety<", "BAD_TEXT zoo/byte" },
        { "<byte>200<", "<byte><", "BAD_TEXT zoo/byte" },
        { "<byte>200</byte>", "<byte/>", "BAD_TEXT zoo/byte" },
        { "<byte>200</byte>", "", "MISSING zoo" },
        { "<byte>200</byte>", "<byte>200</byte><byte>1</byte>", "REPEATED zoo/byte" },
        { "<byte>200</byte>", "<byte unit=\"b\">200</byte>", "UNKNOWN zoo/byte" },
        { "<byte>200</byte>", "<byte>200</byte><bite>1</bite>", "UNKNOWN zoo/bite" },
        { "<byte>200</byte>", "<byte>200</byte><bite><byte>x</byte></bite>", "UNKNOWN zoo/bite" },
        { "<gears size=\"2\">\n  <group>slow fast", "<gears size=\"2\">\n  <group>slow quick", "BAD_TEXT zoo/gears/group" },
        { "<speeds size=\"1\">\n  <group>", "<speeds size=\"1\">\n  <group>very", "BAD_TEXT zoo/speeds/group" },
        { "<links size=\"1\">\n  <element id=\"", "<links size=\"1\">\n  <element id=\"x", "BAD_TEXT zoo/links/element" },
        { "<letter>x<", "<letter>xy<", "BAD_TEXT zoo/letter" },
        { "<mode>", "<mode>x", "BAD_TEXT zoo/mode" },
        { "<angle>0.5<", "<angle>0,5<", "BAD_TEXT zoo/joint/angle" },
        { "<angle>0.5</angle>", "", "MISSING zoo/joint" },
        { "<group>1</group>\n </flags>", "<group>true</group>\n </flags>", "BAD_TEXT zoo/flags/group" },
        { "<group>1 2 3<", "<group>1 b 3<", "BAD_TEXT zoo/numbers/group" },
        { "<group>1 2 3<", "<group>1 2 3 4<", "SIZE zoo/numbers" },
        { "<group>1 2 3<", "<group>1 2<", "SIZE zoo/numbers" },
        { "<numbers size=\"3\">", "<numbers>", "SIZE zoo/numbers" },
        { "<numbers size=\"3\">", "<numbers size=\"3x\">", "BAD_TEXT zoo/numbers" },
        { "<numbers size=\"3\">", "<numbers size=\"3\" unit=\"m\">", "UNKNOWN zoo/numbers" },
        { "<names size=\"1\">", "<names size=\"2\">", "SIZE zoo/names" },
        { "<element>one</element>", "<elment>one</elment>", "UNKNOWN zoo/names/elment" },
        { "<group>7 7<", "<group>7 -7<", "BAD_TEXT zoo/grid/element/element/group" },
        { "<group>9<", "<group>9.5<", "BAD_TEXT zoo/set/group" },
        { "<element x=\"4\" y=\"5\" z=\"6\"/>", "<element x=\"4\" y=\"five\" z=\"6\"/>", "BAD_TEXT zoo/list/element" },
        { "<element x=\"4\" y=\"5\" z=\"6\"/>", "<element x=\"4\" z=\"6\"/>", "MISSING zoo/list/element" },
        { "<element x=\"4\" y=\"5\" z=\"6\"/>", "<element x=\"4\" y=\"5\" x=\"7\" z=\"6\"/>", "REPEATED zoo/list/element" },
        { "<element x=\"4\" y=\"5\" z=\"6\"/>", "<element x=\"4\" y=\"5\" z=\"6\" w=\"7\"/>", "UNKNOWN zoo/list/element" },
        { "<key>4<", "<key>four<", "BAD_TEXT zoo/ownMap/element/key" },
        { "<key>4</key>", "<kay>4</kay>", "UNKNOWN zoo/ownMap/element/kay" },
        { "<from>a</from>", "", "MISSING zoo/pair" },
        { "<from>a</from>", "<from>a</from><from>b</from>", "REPEATED zoo/pair/from" },
        { "<path size=\"2\">", "<path size=\"3\">", "SIZE zoo/path" },
        { "<path size=\"2\">", "<path size=\"1\">", "SIZE zoo/path" },
        { "<element x=\"1\" y=\"2\" z=\"3\"/>", "<element x=\"1\" y=\"2\" z=\"III\"/>", "BAD_TEXT zoo/path/element" },
        { "<element x=\"1\" y=\"2\" z=\"3\"/>", "<element x=\"1\" y=\"2\"/>", "MISSING zoo/path/element" },
        { "<element x=\"1\" y=\"2\" z=\"3\"/>", "<element x=\"1\" y=\"2\" z=\"3\">m</element>", "UNREAD zoo/path/element" },
        { "<element x=\"1\" y=\"2\" z=\"3\"/>", "<element x=\"1\" y=\"2\" z=\"3\"><w/></element>", "UNKNOWN zoo/path/element/w" },
        { "<list size=\"1\">", "<list size=\"-1\">", "BAD_TEXT zoo/list" },
        { "YWJj", "YWJ", "BAD_TEXT zoo/binary" },
        { "YWJj", "YW*j", "BAD_TEXT zoo/binary" },
        { "<group>5<", "<group>5 five<", "BAD_TEXT zoo/table/element/value/group; SIZE zoo/table/element/value" },
        { "<tree>\n", "<tree>text</tree><tree>\n", "UNREAD zoo/tree; REPEATED zoo/tree" },
        { "</zoo>", "<joint/></zoo>",
          "REPEATED zoo/joint; MISSING zoo/joint; MISSING zoo/joint; MISSING zoo/joint; MISSING zoo/joint" },
        { "</zoo>", "</zoo><zoo/>", "BEHIND_ROOT zoo" },
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(std::string(row.from) + " -> " + row.to);
        std::string wrong = document;
        std::size_t const place = wrong.find(row.from);
        ASSERT_NE(place, std::string::npos) << document;
        wrong.replace(place, std::string(row.from).size(), row.to);
        Zoo zoo;
        NyXmlReadResult const result = readText(wrong, zoo, strictly());
        std::string told = faultsIn(result);
        for (std::size_t line = told.find(' '); line != std::string::npos;
             line = told.find("; ", line)) { // lines are the next test's
            line = told.find(' ', line == told.find(' ') ? 0 : line + 2);
            told.erase(line, told.find(' ', line + 1) - line);
        }
        EXPECT_EQ(told, row.fault) << result.str();
    }
}

TEST(FileStrict, FaultsSayWhatIsWrongAndWhere)
{
    FileJoint joint;
    EXPECT_EQ(
        readText("<joint id='-1' mode='quick'>\n<angle>12kW</angle>\n<angle/><angle>1</angle></joint>", joint, strictly()).str(),
        "doc.xml:1: joint: attribute \"id\": \"-1\" is not a whole number from 0 to 4294967295\n"
        "doc.xml:1: joint: attribute \"mode\": \"quick\" is not one of the words\n"
        "doc.xml:2: joint/angle: \"12kW\" is not a number\n"
        "doc.xml:3: joint/angle: element \"angle\" stands there 2 times\n"
        "doc.xml:3: joint/angle: \"\" is not a number\n"
        "doc.xml:3: joint/angle: element \"angle\" stands there 3 times\n"
        "doc.xml:3: joint: element \"name\" is missing\n");
    EXPECT_EQ(joint.angle, 1.0) << "what can be read is read all the same";
}

TEST(FileStrict, WhatStandsTwiceIsTold)
{
    NyXmlSetType<Basic<unsigned int>> set;
    EXPECT_EQ(readText("<s size='5'><group>1 2 +01</group>\n<element>3</element><element>2</element></s>", set, strictly()).str(),
              "doc.xml:1: s/group: item \"+01\" is there already\ndoc.xml:2: s/element: item \"2\" is there already\n");
    NyXmlListType<Basic<unsigned int>> list;
    EXPECT_EQ(readText("<s size='2'><group>1 1</group></s>", list, strictly()).str(), "");
    NyXmlMapType<Basic<std::string>, Basic<int>> map;
    std::string const entry = "<element><key> a </key><value>1</value></element>\n";
    EXPECT_EQ(readText("<m>" + entry + entry + "</m>", map, strictly()).str(),
              "doc.xml:2: m/element/key: key \"a\" is there already\n");
}

// Paths ask for their size whether it is there or not.
TEST(FileStrict, APathWithoutSize)
{
    EXPECT_EQ(faultsOf<NyXmlVectorVector>("<v/>", strictly()), "");
    EXPECT_EQ(faultsOf<NyXmlVectorVector>("<v><element x='1' y='2' z='3'/></v>", strictly()), "UNREAD 1 v");
}

// A comment drops what stands in front of it, however long that is.
TEST(FileStrict, ItemsInFrontOfACommentAreNotCounted)
{
    for (int words : { 3, 20000 }) {
        std::string run;
        for (int i = 0; i != words; ++i)
            run += " 1";
        Numbers<double> numbers;
        EXPECT_EQ(readText("<n size='2'><group>" + run + "<!-- c -->7 8</group></n>", numbers, strictly()).str(), "");
        EXPECT_EQ(numbers.vectorContainer(), (std::vector<double>{ 7, 8 }));
    }
}

/// Of a type of the application's own, two words of which stand for one value.
enum class Hue { RED, BLUE };
class Colour : public NyXmlEnumType<Hue> {
public:
    NyXmlObject* clone() const override { return new Colour(*this); }
    NyXmlObject* newObject() const override { return new Colour; }
    bool xmlInit() override
    {
        setEnumString(Hue::RED, "red");
        setEnumString(Hue::RED, "rot");
        setEnumString(Hue::BLUE, "blue");
        return NyXmlEnumType<Hue>::xmlInit();
    }
};

// Containers know neither words nor what is binary; their items do.
TEST(FileStrict, ItemsAreTakenAtTheirWord)
{
    EXPECT_EQ(faultsOf<Colour>("<c>rot</c>", strictly()), "");
    EXPECT_EQ(faultsOf<Colour>("<c>rosa</c>", strictly()), "BAD_TEXT 1 c");
    std::string const colours = "<c size='3'><element>rot</element><element>blue</element><element>rosa</element></c>";
    EXPECT_EQ(faultsOf<NyXmlListType<Colour>>(colours, strictly()), "BAD_TEXT 1 c/element");
    EXPECT_EQ(faultsOf<NyXmlVectorType<Colour>>(colours, strictly()), "BAD_TEXT 1 c/element");
    std::string const binary = "<b size='2'><element>YWJj</element><element>YW*j</element></b>";
    EXPECT_EQ(faultsOf<NyXmlListType<NyXmlBinaryString>>(binary, strictly()), "BAD_TEXT 1 b/element");
    EXPECT_EQ(faultsOf<NyXmlBinaryString>("<b>YW*j</b>", strictly()), "BAD_TEXT 1 b");
}

// A class of an application that takes other texts than its base knows what is right.
class Yes : public Basic<bool> {
public:
    NyXmlObject* clone() const override { return new Yes(*this); }
    NyXmlObject* newObject() const override { return new Yes; }
    void setValueFromString(std::string const& text) override { setValue(text == "yes"); }
    bool write(NyXmlWriter& writer) const override
    {
        writer.data(value() ? "yes" : "no");
        return true;
    }
};

class Garden : public NyXmlBaseVariableCompoundType {
public:
    NyXmlObject* clone() const override { return new Garden(*this); }
    NyXmlObject* newObject() const override { return new Garden; }
    NyToken const& token() const override { return NyXml::NyVarVectorTypeToken; }
    bool equality(NyXmlObject const*) const override { return true; }
    void registerComponents() override
    {
        registerComponentCreator("joint", [] { return static_cast<NyXmlObject*>(new FileJoint); });
        registerComponentCreator("yes", [] { return static_cast<NyXmlObject*>(new Yes); });
    }
    bool readValueFromToken(NyToken const& element, NyXmlReader& reader) override
    {
        std::unique_ptr<NyXmlObject> const member(newObjectFromToken(element));
        return member != nullptr && (member->read(reader), true);
    }
};

TEST(FileStrict, ClassesThatTheDocumentChooses)
{
    std::string const plugIn = NYXML_TEST_PLUGIN_DIR "/shapes.nyp";
    std::string const start = "<g><joint id='1' mode='fast'><angle>x</angle><name/></joint><yes>yes</yes><yes>true</yes>";
    EXPECT_EQ(faultsOf<Garden>(start + "<rose/></g>", strictly()),
              "BAD_TEXT 1 g/joint/angle; BAD_TEXT 1 g/yes; UNKNOWN 1 g/rose");
    EXPECT_EQ(faultsOf<Garden>("<g><length library='" + plugIn + "'>1</length><length>2m</length><box>any</box></g>", strictly()),
              "BAD_TEXT 1 g/length");
}

TEST(FileStrict, IncludesStandForTheirElement)
{
    ScratchDirectory const folder;
    folder.write("one.xml", "<joint id='1' mode='fast'><angle>1</angle><name/></joint>");
    folder.write("two.xml", "<joint id='1' mode='fast'>\n<angle>one</angle><name/></joint>");
    std::string const path = folder.write(
        "all.xml",
        "<joints size='2'><NyInclude type='simple' href='one.xml'/><NyInclude type='simple' href='two.xml'/></joints>");
    NyXmlVectorType<FileJoint> joints;
    NyXmlReadResult const result = NyXmlFile::read(path, joints, strictly());
    EXPECT_EQ(faultsIn(result), "BAD_TEXT 2 joints/joint/angle");
    EXPECT_EQ(result.faults.at(0).file, folder.path("two.xml"));
    EXPECT_EQ(joints.size(), 2u);
}

} // namespace

namespace {

class FilePin : public NyXmlModel<FilePin, NyXmlVersioned> {
public:
    static constexpr auto xmlName = "pin";
    static constexpr unsigned int xmlVersion = 2;
    void registerComponents() override
    {
        requiredElement("name", name);
        requiredElement("place", place);
        requiredElement("size", size, since(2));
        elements("colour", colour);
        element("weight", weight, since(2));
    }
    NyXmlBasicType<std::string> name, colour;
    NyXmlVector place;
    NyXmlBasicType<int> size, weight;
};

} // namespace

// However strict the reading, one fault for each; vectors don't know, and what came later is not missed in older documents.
TEST(FileStrict, RequiredMembersAreMissedOnce)
{
    auto const missed = [](std::string const& document, Strictness strictness) {
        NyXmlReadOptions options;
        options.strictness = strictness;
        FilePin pin;
        std::string names;
        for (NyXmlFault const& fault : readText(document, pin, options).faults) {
            EXPECT_EQ(fault.kind, NyXmlFault::Kind::MISSING_MEMBER) << fault.text;
            std::size_t const quote = fault.text.find('"') + 1;
            names += fault.text.substr(quote, fault.text.find('"', quote) - quote) + ' ';
        }
        return names;
    };
    std::string const whole = "<name/><place x='1' y='2' z='3'/>";
    std::string const bare = "<pin formatVersion='2'><colour/></pin>";
    EXPECT_EQ(missed(bare, Strictness::NONE), "name size ");
    EXPECT_EQ(missed(bare, Strictness::LEFT_OUT_FITS), "place name size ");
    EXPECT_EQ(missed(bare, Strictness::ALL), "place name size ");
    for (Strictness const strictness : { Strictness::NONE, Strictness::LEFT_OUT_FITS, Strictness::ALL }) {
        EXPECT_EQ(missed("<pin><colour/>" + whole + "</pin>", strictness), "");
        EXPECT_EQ(missed("<pin formatVersion='2'><colour/>" + whole + "<size>1</size></pin>", strictness), "");
    }
    EXPECT_EQ(missed("<pin>" + whole + "</pin>", Strictness::ALL), "colour ");
}
