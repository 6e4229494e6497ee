#include "SchemaSupport.h"

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

    for (int round = 0; round < 150; ++round) {
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
            if (random() % 4 == 0)
                type.attributeVector().emplace_back().setType(pick({ "string", "double" }));
            for (unsigned int n = random() % 3; n > 0; --n) {
                NyXmlSchemaElementType& element = type.elementVector().emplace_back();
                element.setElementName(pick({ "a", "u#a", "b" }));
                element.setType(pick({ "double", "string", "p:empty.Type", "p:empty.Type_1" }));
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
    struct Case {
        char const *name, *children, *brief;
    };
    Case const cases[] = {
        { "nothing", "", "global r(p:empty.Type)\nempty.Type:\n" },
        { "text", ".", "global r(double)\n" },
        { "textThreeTimes", ". . .", "global r(p:double.ListType)\ndouble.ListType: =double\n" },
        { "textAndAttribute", "@a .s", "global r(p:r.Type)\nr.Type: =string @a(double)\n" },
        { "typesBehindAttributesWithoutOne", "!a <b . !c / .s",
          "global r(p:r.Type)\nb.Type: =double @c()\nr.Type: b(p:b.Type) =string @a()\n" },
        { "theFirstTwinSpeaksForTheRest", "+a *b . / +b +c", "global r(p:r.Type)\nr.Type: a(double) b*(double)\n" },
        { "twinsApart", "+a +b +a", "global r(p:r.Type)\nr.Type: a(double) b(double) a(double)\n" },
        { "anEmptyTwinLearns", "<a / +a", "global r(p:r.Type)\nempty.Type:\nr.Type: a(double)\n" },
        { "aChoiceBehindAnOrdinaryChildIsNone", "+a ?b . /", "global r(p:r.Type)\nr.Type: a(double) {b}\n" },
        { "whatFollowsAChoiceIsAMemberAndGivesTheMode", "?a . / +b",
          "global r(p:r.Type)\nr.Type: p:r.Group(double)\nr.Group: a(double) b(double)\n" },
        { "aChoiceThatIsNoneClosesAnEmptyGroup", "+a ?b . / ( +c )",
          "global r(p:r.Type)\nr.Type: a(double) {b} {p:r.Group} c(double)\nr.Group: one:\n" },
        { "waitingMembersJoinTheNextGroup", "?a . / +b ( ?c . / )",
          "global r(p:r.Type)\nr.Type: any: {p:r.Group}\nr.Group: one: a(double) b(double) c(double)\n" },
        { "waitingMembersAreLostWithoutOne", "?a . / +b ( +c )", "global r(p:r.Type)\nr.Type: c(double)\n" },
        { "twoGroups", "?a . / ( ?b . / )",
          "global r(p:r.Type)\nr.Type: any: {p:r.Group} {p:r.Group_1}\n"
          "r.Group: one: a(double)\nr.Group_1: one: b(double)\n" },
        { "aNamespaceOfTheSamePrefixWritesOverTheFile", "+m/p#e", "global e(double)\n" },
        { "occurrencesOfAnElement", "<x <i @a / / <y <i @a +e / / <z <i @a +f / /", // the second one tells what i may hold
          "global r(p:r.Type)\ni.Type: e(double) @a(double)\ni.Type_1: f(double) @a(double)\n"
          "r.Type: x(p:x.Type) y(p:y.Type) z(p:z.Type)\n"
          "x.Type: i(p:i.Type)\ny.Type: i(p:i.Type)\nz.Type: i(p:i.Type_1)\n" },
        { "aListTypeIsItsFirstUsersAndImportsGoForward", "<a . . / <n/o#b . . / <n/q#c . . /",
          "import m.q.xsd\nglobal b(p:double.ListType)\n"
          "import m.o.xsd\nimport m.q.xsd\nglobal r(p:r.Type)\nr.Type: a(p:double.ListType) ->o:b ->q:c\n"
          "double.ListType: =double\nglobal c(p:double.ListType)\n" },
    };
    for (Case const& row : cases) {
        SCOPED_TRACE(row.name);
        SchemaWalk schema;
        SchemaWalk copy = schema.play("<n/p#r").play(row.children).play("/");
        EXPECT_TRUE(copy == schema);
        EXPECT_EQ(copy.brief(), row.brief);
    }
}

TEST(SchemaBuilder, RepeatedVisitGetsTheConventionalName)
{
    SchemaWalk schema;
    schema.play("<n/p#r");
    for (std::string typeId : { "One", "Other", "Other" }) {
        schema.play("<part");
        if (schema.component("n/p#i", typeId))
            schema.play("@" + typeId + " /");
        schema.play("/ +between");
    }
    // "Other" is entered as i.Type_1, and yet its second visit refers to i.Type: nobody looks up what the first one came to.
    EXPECT_EQ(schema.play("/").brief(), "global r(p:r.Type)\ni.Type: @One(double)\ni.Type_1: @Other(double)\n"
                                        "part.Type: i(p:i.Type)\npart.Type_1: i(p:i.Type_1)\n"
                                        "r.Type: part(p:part.Type) between(double) part(p:part.Type_1) between(double) "
                                        "part(p:part.Type) between(double)\n");
}

TEST(SchemaBuilder, RegistryKeepsComplexElementsOnly)
{
    SchemaWalk schema;
    auto const known = [](NyXmlSchema const& table, std::string const& name, std::string const& typeId) {
        std::string type = "none", contentType = "none";
        table.getFromRegistry(name, typeId, type, contentType);
        return type + ' ' + contentType;
    };
    schema.play("<n/p#r");
    ASSERT_TRUE(schema.component("n/p#leaf", "double"));
    schema.play(". /");
    EXPECT_EQ(known(schema, "n/p#leaf", "double"), "none none");

    ASSERT_TRUE(schema.component("n/p#i", "I"));
    EXPECT_EQ(known(schema, "n/p#i", "I"), " ");
    schema.play("@a . /");
    EXPECT_EQ(known(schema, "n/p#i", "I"), "p:i.Type double");
    EXPECT_EQ(known(SchemaWalk(schema), "n/p#i", "I"), "none none");
    ASSERT_TRUE(schema.component("n/q#i", "I")); // another namespace is another element
    schema.play(". /");

    // A parent goes by the class of the child that was found: its own entry is never completed.
    ASSERT_TRUE(schema.component("n/p#parent", "Parent"));
    EXPECT_FALSE(schema.component("n/p#i", "I"));
    schema.play("+b /");
    EXPECT_EQ(known(schema, "n/p#parent", "Parent"), " ");
    schema.unRegister("n/p#i", "I");
    EXPECT_TRUE(schema.component("n/p#i", "I"));
}

TEST(SchemaBuilder, StartTagTellsWhetherTheNameIsOpen)
{
    SchemaWalk schema;
    auto const opens = [&schema](char const* name) {
        return schema.writeStartTag(name, NyXmlSchemaElementType::XML_STARTTAG_SINGLE);
    };
    EXPECT_TRUE(opens("")); // the root has no name
    schema.play("/");
    EXPECT_FALSE(opens("n/p#a"));
    EXPECT_FALSE(opens("n/q#a"));
    EXPECT_TRUE(opens("n/p#a"));
    schema.play("/ /");
    EXPECT_FALSE(opens("n/q#a"));
    schema.play("/ / / /"); // more than are open
    EXPECT_FALSE(opens("n/p#a"));
}

TEST(SchemaBuilder, TypeWords)
{
    SchemaWalk schema;
    schema.play("<n/p#r");
    for (std::type_info const* type :
         { &typeid(bool), &typeid(float), &typeid(double), &typeid(unsigned long), &typeid(long), &typeid(unsigned short),
           &typeid(short), &typeid(unsigned char), &typeid(char), &typeid(int), &typeid(unsigned int), &typeid(std::string) }) {
        schema.setAttributeName("");
        schema.setType(*type);
    }
    EXPECT_EQ(schema.play("/").brief(), "global r(p:r.Type)\nr.Type: @(boolean) @(float) @(double) @(unsignedLong) @(long) "
                                        "@(unsignedShort) @(short) @(unsignedByte) @(byte) @(string) @(string) @(string)\n");
}

} // namespace
