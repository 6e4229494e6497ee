#include <nyXml/core/NyToken.h>
#include <nyXml/core/NyXml.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>

namespace {

using Fields = std::pair<std::string, std::string>;

Fields fieldsOf(NyToken const& token) { return { token.xmlNamespace(), token.token() }; }

TEST(Token, TextIsSplitAtItsFirstSharp)
{
    std::pair<char const*, Fields> const rows[] = { { "", { "", "" } },    { "a", { "", "a" } },    { "#a", { "", "a" } },
                                                    { "a#", { "a", "" } }, { "a#b", { "a", "b" } }, { "a#b#c", { "a", "b#c" } } };
    for (auto const& [text, fields] : rows) {
        SCOPED_TRACE(text);
        NyToken assigned("old#name");
        assigned = std::string(text);
        EXPECT_EQ(fieldsOf(assigned), fields);
        EXPECT_EQ(fieldsOf(NyToken(text)), fields);
        EXPECT_EQ(fieldsOf(NyToken(assigned.namespaceAndToken())), fields);
    }
    EXPECT_EQ(fieldsOf(NyToken("u#v", "n#m")), Fields("u#v", "n#m")) << "two texts are taken as they are";
    EXPECT_EQ(NyToken("a").namespaceAndToken(), "#a");

    NyToken token("u", "a#b");
    token = token.localName(); // its own field
    EXPECT_EQ(fieldsOf(token), Fields("a", "b"));
    token = NyToken("a#b", "n");
    token = token.namespaceName();
    EXPECT_EQ(fieldsOf(token), Fields("a", "b"));
    token = {};
    EXPECT_EQ(fieldsOf(token), Fields());
}

TEST(Token, EqualityLooksAtBothFieldsAndOrderAtOne)
{
    NyToken const x("u", "n");
    NyToken const y("v", "n");
    EXPECT_TRUE(x != y && !(x == y) && !(x < y) && !(y < x));
    EXPECT_TRUE(NyToken("z", "a") < NyToken("a", "b"));
}

TEST(Token, TextIsComparedWithTheLocalName)
{
    NyToken const token(std::string("u#n"));
    std::string const joined = "u#n", local = token;
    EXPECT_TRUE(token == local && local == token && token == "n" && "n" == token);
    EXPECT_FALSE(token == joined || joined == token || token == "u#n" || local == NyToken("m"));
    EXPECT_TRUE(token != local && !(token != joined)) << "unequal is asked of tokens only: the text becomes one first";
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
    EXPECT_TRUE(token.find("a") == 0 && token.find('a') == 0 && token.find(std::string("a")) == 0 && token.substr() == token);
    EXPECT_EQ(token.find('c', 3), none);
    EXPECT_EQ(token.find("cXX", 0, 1), 2u);
    EXPECT_EQ(token.find(std::string("a"), none), none);
    EXPECT_EQ(token.substr(9, none), "jkl");
    char target[] = "......";
    EXPECT_EQ(token.copy(target, none, 9), 3u);
    EXPECT_STREQ(target, "jkl...");
    EXPECT_EQ(token.erase(2, none), "ab");
    token.resize(4);
    EXPECT_EQ(fieldsOf(token), Fields("u", std::string("ab\0\0", 4)));
    token.assign("v#n");
    EXPECT_EQ(fieldsOf(token), Fields("u", "v#n"));
    EXPECT_EQ(token.copy(target, 2), 2u);
    EXPECT_STREQ(target, "v#l...");
    EXPECT_EQ(token.erase(), "");
    token += "n";
    token.clear();
    EXPECT_TRUE(token.empty());
    EXPECT_EQ(fieldsOf(token + "b" + std::string("#c")), Fields("u", "b#c"));
}

TEST(Token, PositionsBehindTheEndAndEndlessTextsThrow)
{
    NyToken token("u", "abc");
    char target[4];
    auto const failure = [](auto const& operation) -> std::string {
        try {
            operation();
        } catch (std::logic_error const& thrown) {
            return thrown.what();
        }
        return "none";
    };
    std::string const range = "invalid string position";
    EXPECT_EQ(failure([&] { token.erase(4, 1); }), range);
    EXPECT_EQ(failure([&] { token.copy(target, 1, 4); }), range);
    EXPECT_EQ(failure([&] { token.append("abc", 4, 1); }), range);
    EXPECT_EQ(failure([&] { token.substr(4, 1); }), range);
    EXPECT_EQ(failure([&] { token.resize(~0u); }), "string too long");
    EXPECT_EQ(failure([&] { token.append("a", ~0u); }), "string too long");
    EXPECT_THROW(token.erase(4, 1), std::out_of_range);
    EXPECT_THROW(token.resize(~0u), std::length_error);
    EXPECT_EQ(token.erase(3, 1), "abc");
}

TEST(Token, StripTakesWhiteSpaceOffBothEnds)
{
    std::pair<char const*, char const*> const rows[] = { { "  a b\t", "a b" }, { "\r\na", "a" },   { "a", "a" },
                                                         { "", "" },           { " \t ", " \t " }, { "\va ", "\va" } };
    for (auto const& [name, stripped] : rows) {
        NyToken token(" u ", name);
        token.strip();
        EXPECT_EQ(fieldsOf(token), Fields(" u ", stripped));
    }
}

TEST(Token, WellKnownOnesAreWhatDocumentsCallThem)
{
    using namespace NyXml;
    std::string names;
    for (NyToken const* token :
         { &ns, &NyBasicTypeToken, &NyDefaultToken, &NyEnumTypeToken, &NyLinearToken, &NyListTypeToken, &NyMapTypeToken,
           &NyVarMapTypeToken, &NyNullToken, &NyOrientationToken, &NySetTypeToken, &NyPairTypeToken, &NyVectorTypeToken,
           &NyVarVectorTypeToken, &NyVarElemTypeToken, &NyVarSharedElemTypeToken }) {
        EXPECT_EQ(token->namespaceName(), "http://nyxml.org/namespace/cr");
        names += token->token() + " ";
    }
    for (NyToken const* token :
         { &NyAddLibrariesToken, &NyElementToken, &NyGroupToken, &NyKeyToken, &NyValueToken, &NyFirstToken, &NySecondToken,
           &NyLibraryToken, &NyCountToken, &NyQuaternion0Token, &NyQuaternion1Token, &NyQuaternion2Token, &NyQuaternion3Token,
           &NyVectorXToken, &NyVectorYToken, &NyVectorZToken, &NyVersionToken })
        names += token->namespaceAndToken() + " ";
    EXPECT_EQ(names,
              " basicType default enumType linear listType mapType varMapType null orientation setType pairType vectorType "
              "varVectorType varElemType varSharedElemType #addLibraries #element #group #key #value #first #second "
              "#library #size #q0 #q1 #q2 #q3 #x #y #z #version ");
}

// Names are compared by words, the last of which may overlap the one before.
TEST(Token, EveryByteOfANameCounts)
{
    for (std::size_t size = 0; size < 40; ++size)
        for (std::size_t place = 0; place <= size; ++place) {
            std::string const name(size, 'n');
            std::string other = name;
            if (place < size)
                other[place] = 'm';
            EXPECT_EQ(NyToken("", name) == NyToken("", other), name == other) << size << " " << place;
            EXPECT_FALSE(NyToken("", name) == NyToken("", name + "n"));
        }
}

} // namespace
