#include <nyXml/core/NyToken.h>
#include <nyXml/core/NyXml.h>

#include <gtest/gtest.h>

#include <map>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace {

static_assert(std::is_nothrow_move_constructible_v<NyToken> && std::is_nothrow_move_assignable_v<NyToken>);

using Fields = std::pair<std::string, std::string>;

Fields fieldsOf(NyToken const& token) { return { token.xmlNamespace(), token.token() }; }

TEST(Token, TextIsSplitAtItsFirstSharp)
{
    struct Row {
        char const* text;
        Fields fields;
    };
    for (Row const& row : { Row{ "", { "", "" } }, Row{ "a", { "", "a" } }, Row{ "#", { "", "" } }, Row{ "#a", { "", "a" } },
                            Row{ "a#", { "a", "" } }, Row{ "a#b", { "a", "b" } }, Row{ "a#b#c", { "a", "b#c" } } }) {
        SCOPED_TRACE(row.text);
        NyToken assigned("old#name");
        assigned = std::string(row.text);
        EXPECT_EQ(fieldsOf(assigned), row.fields);
        EXPECT_EQ(fieldsOf(NyToken(row.text)), row.fields);
        EXPECT_EQ(fieldsOf(NyToken(assigned.namespaceAndToken())), row.fields);
    }
    EXPECT_EQ(fieldsOf(NyToken("u#v", "n#m")), Fields("u#v", "n#m")) << "two texts are taken as they are";
    EXPECT_EQ(NyToken("a").namespaceAndToken(), "#a");

    NyToken literal("u#n");
    literal = "v#m";
    EXPECT_EQ(fieldsOf(literal), Fields("v", "m"));
    literal = {};
    EXPECT_EQ(fieldsOf(literal), Fields());
}

TEST(Token, AssignsFromItsOwnFields)
{
    NyToken token("u", "a#b");
    token = token.localName();
    EXPECT_EQ(fieldsOf(token), Fields("a", "b"));
    token = NyToken("a#b", "n");
    token = token.namespaceName();
    EXPECT_EQ(fieldsOf(token), Fields("a", "b"));
    NyToken const& same = token;
    token = same;
    EXPECT_EQ(fieldsOf(token), Fields("a", "b"));
}

TEST(Token, EqualityLooksAtBothFieldsAndOrderAtOne)
{
    NyToken const x("u", "n");
    NyToken const y("v", "n");
    EXPECT_FALSE(x == y);
    EXPECT_TRUE(x != y);
    EXPECT_FALSE(x < y);
    EXPECT_FALSE(y < x);
    EXPECT_TRUE(NyToken("z", "a") < NyToken("a", "b"));

    std::map<NyToken, int> map{ { x, 1 } };
    map.insert({ y, 2 });
    EXPECT_EQ(map.size(), 1u);
    EXPECT_EQ(map.count(NyToken("n")), 1u);
}

TEST(Token, TextIsComparedWithTheLocalName)
{
    NyToken const token(std::string("u#n"));
    std::string const joined = "u#n";
    std::string const local = "n";
    EXPECT_FALSE(token == joined);
    EXPECT_FALSE(joined == token);
    EXPECT_FALSE(token == "u#n");
    EXPECT_TRUE(token == local);
    EXPECT_TRUE(local == token);
    EXPECT_TRUE(token == "n");
    EXPECT_TRUE("n" == token);
    // Unequal is asked of tokens only: the text becomes one first.
    EXPECT_TRUE(token != local);
    EXPECT_FALSE(token != joined);

    std::string const initialised(token);
    std::string const converted = token;
    EXPECT_EQ(initialised, "n");
    EXPECT_EQ(converted, "n");
    EXPECT_STREQ(token.c_str(), "n");
}

TEST(Token, StringOperationsLeaveTheNamespaceAlone)
{
    constexpr unsigned int none = ~0u;
    NyToken token("u", "abc");

    EXPECT_EQ(&token.append("de"), &token.localName());
    token.append("_fgh_", 1, 3).append("ijk", 1);
    token.append("_jk", 1, none);
    EXPECT_EQ(&(token += "l"), &token);
    EXPECT_EQ(fieldsOf(token), Fields("u", "abcdefghijkl"));
    EXPECT_EQ(token.find("def", 0), 3u);
    EXPECT_EQ(token.find('c', 3), none);
    EXPECT_EQ(token.find("cXX", 0, 1), 2u);
    EXPECT_EQ(token.find(std::string("a"), none), none);
    EXPECT_EQ(token.substr(9, none), "jkl");
    char target[] = "......";
    EXPECT_EQ(token.copy(target, none, 9), 3u);
    EXPECT_STREQ(target, "jkl...");
    EXPECT_EQ(token.erase(2, none), "ab");

    token.resize(4);
    EXPECT_EQ(token.localName(), std::string("ab\0\0", 4));
    EXPECT_EQ(token.size(), 4u);
    EXPECT_EQ(token.length(), 4u);
    std::string other = "other";
    token.swap(other);
    token.assign("v#n");
    EXPECT_EQ(fieldsOf(token), Fields("u", "v#n"));
    token.clear();
    EXPECT_EQ(fieldsOf(token), Fields("u", ""));
    EXPECT_TRUE(token.empty());

    EXPECT_EQ(fieldsOf(NyToken("u", "a") + "b" + std::string("#c")), Fields("u", "ab#c"));
}

TEST(Token, PositionsBehindTheEndThrow)
{
    NyToken token("u", "abc");
    char target[4];
    EXPECT_EQ(token.erase(3, 1), "abc");
    EXPECT_THROW(token.erase(4, 1), std::out_of_range);
    EXPECT_THROW(token.copy(target, 1, 4), std::out_of_range);
    EXPECT_THROW(token.append("abc", 4, 1), std::out_of_range);
    EXPECT_THROW(token.substr(4, 1), std::out_of_range);
    EXPECT_THROW(token.resize(~0u), std::length_error);
    EXPECT_THROW(token.append("a", ~0u), std::length_error);
    EXPECT_EQ(fieldsOf(token), Fields("u", "abc"));
}

TEST(Token, StripTakesWhiteSpaceOffBothEnds)
{
    struct Row {
        char const* name;
        char const* stripped;
    };
    for (Row const& row : { Row{ "  a b\t", "a b" }, Row{ "\r\na", "a" }, Row{ "a", "a" }, Row{ "", "" }, Row{ " \t ", " \t " },
                            Row{ "\va ", "\va" } }) {
        NyToken token(" u ", row.name);
        token.strip();
        EXPECT_EQ(fieldsOf(token), Fields(" u ", row.stripped));
    }
}

TEST(Token, WellKnownOnesAreWhatDocumentsCallThem)
{
    using namespace NyXml;
    std::string classes, names;
    for (NyToken const* token :
         { &NyBasicTypeToken, &NyDefaultToken, &NyEnumTypeToken, &NyLinearToken, &NyListTypeToken, &NyMapTypeToken,
           &NyVarMapTypeToken, &NyNullToken, &NyOrientationToken, &NySetTypeToken, &NyPairTypeToken, &NyVectorTypeToken,
           &NyVarVectorTypeToken, &NyVarElemTypeToken, &NyVarSharedElemTypeToken }) {
        EXPECT_EQ(token->namespaceName(), ns.namespaceName()) << token->localName();
        classes += token->localName() + ' ';
    }
    for (NyToken const* token :
         { &NyAddLibrariesToken, &NyElementToken, &NyGroupToken, &NyKeyToken, &NyValueToken, &NyFirstToken, &NySecondToken,
           &NyLibraryToken, &NyCountToken, &NyQuaternion0Token, &NyQuaternion1Token, &NyQuaternion2Token, &NyQuaternion3Token,
           &NyVectorXToken, &NyVectorYToken, &NyVectorZToken, &NyVersionToken })
        names += token->namespaceAndToken();
    EXPECT_EQ(classes,
              "basicType default enumType linear listType mapType varMapType null orientation setType pairType vectorType "
              "varVectorType varElemType varSharedElemType ");
    EXPECT_EQ(names, "#addLibraries#element#group#key#value#first#second#library#size#q0#q1#q2#q3#x#y#z#version");
    EXPECT_EQ(ns.namespaceAndToken().substr(ns.namespaceName().find("/namespace")), "/namespace/cr#");
}

} // namespace
