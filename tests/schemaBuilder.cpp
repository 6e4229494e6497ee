#include "SchemaSupport.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>

namespace {

// The tables as plain maps, searched record by record: what the index must agree with.
template <class Record>
std::string insertPlainly(std::map<std::string, Record>& table, Record const& type, std::string name)
{
    for (auto& [key, record] : table) {
        if (!record.isTypeConvertible(type))
            continue;
        if constexpr (std::is_same_v<Record, NyXmlSchemaComplexType>)
            record.convertType(type);
        return key;
    }
    while (table.count(name) != 0)
        name += "_1";
    table[name] = type;
    return name;
}

TEST(SchemaBuilder, FirstFitIsTheOneThatAScanFinds)
{
    std::mt19937 random(7);
    auto const pick = [&random](std::vector<std::string> const& words) { return words[random() % words.size()]; };

    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        NyXmlSchema first;
        NyXmlSchema second; // takes over half-way, so that an index is also made of tables that are full
        std::map<std::string, NyXmlSchemaComplexType> plainTypes;
        std::map<std::string, NyXmlSchemaGroupType> plainGroups;
        for (int i = 0; i < 40; ++i) {
            if (i == 20)
                second = first;
            NyXmlSchema& schema = i < 20 ? first : second;
            NyXmlSchemaComplexType type;
            type.setElementName(pick({ "r", "s" }));
            type.setContentType(pick({ "", "", "", "double" }));
            if (random() % 4 == 0) {
                type.attributeVector().emplace_back().setElementName("size");
                type.attributeVector().back().setType(pick({ "string", "double" }));
            }
            for (unsigned int n = random() % 3; n > 0; --n) {
                NyXmlSchemaElementType element;
                element.setElementName(pick({ "a", "u#a", "b" }));
                element.setType(pick({ "double", "string", "p:empty.Type", "p:empty.Type_1" }));
                element.setGroupIndex(random() % 2);
                type.pushBack(element);
            }
            std::string const name = pick({ "r", "s", "a", "r_1" });
            ASSERT_EQ(schema.insertComplexType(type, name), insertPlainly(plainTypes, type, name));

            NyXmlSchemaGroupType group;
            group.setNamespace(pick({ "u", "v" }));
            group.setElementVector(type.elementVector());
            ASSERT_EQ(schema.insertGroupType(group, name), insertPlainly(plainGroups, group, name));
        }
    }
}

// What a closed element "r" with these children comes to.
TEST(SchemaBuilder, Reduction)
{
    auto constexpr choice = SchemaWalk::choice;
    auto constexpr unbounded = SchemaWalk::unbounded;
    struct Case {
        char const* name;
        std::function<void(SchemaWalk&)> fill;
        std::string brief;
    };
    Case const cases[] = {
        { "nothing", [](SchemaWalk&) {}, "global r(p:empty.Type)\nempty.Type:\n" },
        { "text", [](SchemaWalk& r) { r.text(); }, "global r(double)\n" },
        { "textTwice", [](SchemaWalk& r) { r.text().text(); }, "global r(p:double.ListType)\ndouble.ListType: =double\n" },
        { "textThreeTimes", [](SchemaWalk& r) { r.text().text().text(); },
          "global r(p:double.ListType)\ndouble.ListType: =double\n" },
        { "textAndAttribute", [](SchemaWalk& r) { r.attribute("a").text(typeid(int)); },
          "global r(p:r.Type)\nr.Type: =string @a(double)\n" },
        { "theFirstTwinSpeaksForTheRest", [](SchemaWalk& r) { r.leaf("a").leaf("b", unbounded).leaf("b").leaf("c"); },
          "global r(p:r.Type)\nr.Type: a(double) b*(double)\n" },
        { "twinsApart", [](SchemaWalk& r) { r.leaf("a").leaf("b").leaf("a"); },
          "global r(p:r.Type)\nr.Type: a(double) b(double) a(double)\n" },
        { "anEmptyTwinLearns", [](SchemaWalk& r) { r.open("a").close().leaf("a"); },
          "global r(p:r.Type)\nempty.Type:\nr.Type: a(double)\n" },
        { "choices", [](SchemaWalk& r) { r.leaf("a", choice).leaf("b", choice); },
          "global r(p:r.Type)\nr.Type: any: {p:r.Group}\nr.Group: one: a(double) b(double)\n" },
        { "aChoiceBehindAnOrdinaryChildIsNone", [](SchemaWalk& r) { r.leaf("a").leaf("b", choice); },
          "global r(p:r.Type)\nr.Type: a(double) {b}\n" },
        { "whatFollowsAChoiceIsAMemberAndGivesTheMode", [](SchemaWalk& r) { r.leaf("a", choice).leaf("b"); },
          "global r(p:r.Type)\nr.Type: p:r.Group(double)\nr.Group: a(double) b(double)\n" },
        { "aChoiceThatIsNoneClosesAnEmptyGroup",
          [](SchemaWalk& r) {
              r.leaf("a").leaf("b", choice).openGroup();
              r.leaf("c").closeGroup();
          },
          "global r(p:r.Type)\nr.Type: a(double) {b} {p:r.Group} c(double)\nr.Group: one:\n" },
        { "waitingMembersJoinTheNextGroup",
          [](SchemaWalk& r) {
              r.leaf("a", choice).leaf("b").openGroup();
              r.leaf("c", choice).closeGroup();
          },
          "global r(p:r.Type)\nr.Type: any: {p:r.Group}\nr.Group: one: a(double) b(double) c(double)\n" },
        { "waitingMembersAreLostWithoutOne",
          [](SchemaWalk& r) {
              r.leaf("a", choice).leaf("b").openGroup();
              r.leaf("c").closeGroup();
          },
          "global r(p:r.Type)\nr.Type: c(double)\n" },
        { "twoGroups",
          [](SchemaWalk& r) {
              r.leaf("a", choice).openGroup();
              r.leaf("b", choice).closeGroup();
          },
          "global r(p:r.Type)\nr.Type: any: {p:r.Group} {p:r.Group_1}\n"
          "r.Group: one: a(double)\nr.Group_1: one: b(double)\n" },
    };
    for (Case const& row : cases) {
        SCOPED_TRACE(row.name);
        SchemaWalk schema;
        schema.open("n/p#r");
        row.fill(schema);
        EXPECT_EQ(schema.close().brief(), row.brief);
    }
}

TEST(SchemaBuilder, OccurrencesOfAnElementBecomeOneType)
{
    SchemaWalk schema;
    schema.open("n/p#r");
    schema.open("x").open("i").attribute("a").close().close();
    schema.open("y").open("i").attribute("a").leaf("e").close().close(); // learns what "i" may hold
    schema.open("z").open("i").attribute("a").leaf("f").close().close(); // too much of another kind
    schema.open("zz").open("i").attribute("a").leaf("g").close().close();
    EXPECT_EQ(schema.close().brief(), "global r(p:r.Type)\n"
                                      "i.Type: e(double) @a(double)\ni.Type_1: f(double) @a(double)\n"
                                      "i.Type_1_1: g(double) @a(double)\n"
                                      "r.Type: x(p:x.Type) y(p:y.Type) z(p:z.Type) zz(p:zz.Type)\n"
                                      "x.Type: i(p:i.Type)\ny.Type: i(p:i.Type)\n"
                                      "z.Type: i(p:i.Type_1)\nzz.Type: i(p:i.Type_1_1)\n");
}

TEST(SchemaBuilder, SelfReferenceEndsTheWalk)
{
    SchemaWalk schema;
    std::function<void(int)> node = [&](int depth) {
        ASSERT_LT(depth, 3);
        schema.attribute("id");
        for (std::string name : { "n/p#left", "n/p#right" }) {
            if (schema.component(name, "Node")) {
                node(depth + 1);
                schema.close();
            }
        }
    };
    schema.open("n/p#tree");
    node(0);
    // The class under two names is two types.
    EXPECT_EQ(schema.close().brief(), "global tree(p:tree.Type)\n"
                                      "left.Type: left(p:left.Type) right(p:right.Type) @id(double)\n"
                                      "right.Type: left(p:left.Type) right(p:right.Type) @id(double)\n"
                                      "tree.Type: left(p:left.Type) right(p:right.Type) @id(double)\n");
}

TEST(SchemaBuilder, RepeatedVisitGetsTheConventionalName)
{
    SchemaWalk schema;
    schema.open("n/p#r");
    char const* const classes[] = { "One", "Other", "Other" };
    for (int i = 0; i < 3; ++i) {
        schema.open("n/p#part" + std::to_string(i));
        if (schema.component("n/p#i", classes[i]))
            schema.attribute(classes[i]).close();
        schema.close();
    }
    // "Other" is entered as i.Type_1, and yet its second visit refers to i.Type: nobody looks up what the first one came to.
    EXPECT_EQ(schema.close().brief(), "global r(p:r.Type)\ni.Type: @One(double)\ni.Type_1: @Other(double)\n"
                                      "part0.Type: i(p:i.Type)\npart1.Type: i(p:i.Type_1)\npart2.Type: i(p:i.Type)\n"
                                      "r.Type: part0(p:part0.Type) part1(p:part1.Type) part2(p:part2.Type)\n");
}

TEST(SchemaBuilder, RegistryKeepsComplexElementsOnly)
{
    SchemaWalk schema;
    auto const known = [&schema](std::string const& name, std::string const& typeId) {
        std::string type = "none";
        std::string contentType = "none";
        schema.getFromRegistry(name, typeId, type, contentType);
        return type + " " + contentType;
    };
    schema.open("n/p#r");
    ASSERT_TRUE(schema.component("n/p#leaf", "double"));
    schema.text().close();
    EXPECT_EQ(known("n/p#leaf", "double"), "none none");

    ASSERT_TRUE(schema.component("n/p#i", "I"));
    EXPECT_EQ(known("n/p#i", "I"), " ");
    schema.attribute("a").text().close();
    EXPECT_EQ(known("n/p#i", "I"), "p:i.Type double");
    EXPECT_EQ(known("n/q#i", "I"), "none none");
    ASSERT_TRUE(schema.component("n/q#i", "I")); // another namespace is another element
    schema.text().close();

    // A parent goes by the class of the child that was found: its own entry is never completed.
    ASSERT_TRUE(schema.component("n/p#parent", "Parent"));
    EXPECT_FALSE(schema.component("n/p#i", "I"));
    schema.leaf("b").close();
    EXPECT_EQ(known("n/p#parent", "Parent"), " ");

    schema.unRegister("n/p#i", "I");
    EXPECT_TRUE(schema.component("n/p#i", "I"));
}

TEST(SchemaBuilder, StartTagTellsWhetherTheNameIsOpen)
{
    SchemaWalk schema;
    EXPECT_TRUE(schema.writeStartTag("", SchemaWalk::single)); // the root has no name
    schema.close();
    EXPECT_FALSE(schema.writeStartTag("n/p#a", SchemaWalk::single));
    EXPECT_FALSE(schema.writeStartTag("n/q#a", SchemaWalk::single));
    EXPECT_TRUE(schema.writeStartTag("n/p#a", SchemaWalk::single));
    schema.close().close();
    EXPECT_FALSE(schema.writeStartTag("n/q#a", SchemaWalk::single));
    schema.close().close().close().close(); // more than are open
    EXPECT_FALSE(schema.writeStartTag("n/p#a", SchemaWalk::single));
}

TEST(SchemaBuilder, TypeWords)
{
    std::vector<std::pair<std::type_info const*, char const*>> const words = {
        { &typeid(bool), "boolean" },        { &typeid(float), "float" },
        { &typeid(double), "double" },       { &typeid(unsigned long), "unsignedLong" },
        { &typeid(long), "long" },           { &typeid(unsigned short), "unsignedShort" },
        { &typeid(short), "short" },         { &typeid(unsigned char), "unsignedByte" },
        { &typeid(char), "byte" },           { &typeid(int), "string" },
        { &typeid(unsigned int), "string" }, { &typeid(std::string), "string" },
    };
    for (auto const& [type, word] : words)
        EXPECT_EQ(SchemaWalk().open("n/p#r").text(*type).close().brief(), "global r(" + std::string(word) + ")\n");
}

TEST(SchemaBuilder, CopyHasTheTablesAndNoRegistry)
{
    SchemaWalk schema;
    schema.open("n/p#r");
    ASSERT_TRUE(schema.component("n/p#i", "I"));
    schema.attribute("a").close();

    SchemaWalk copy = schema;
    EXPECT_TRUE(copy == schema);
    std::string type = "none";
    std::string contentType;
    copy.getFromRegistry("n/p#i", "I", type, contentType);
    EXPECT_EQ(type, "none");
    EXPECT_EQ(copy.brief(), schema.brief());

    schema.openGroup();
    EXPECT_FALSE(copy == schema);
    copy = schema;
    EXPECT_TRUE(copy == schema);
    SchemaWalk const one;
    SchemaWalk const other;
    EXPECT_FALSE(one == other);
}

} // namespace
