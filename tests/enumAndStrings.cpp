#include "ValueSupport.h"

#include <nyXml/values/NyXmlBinaryString.h>
#include <nyXml/values/NyXmlEmbeddedString.h>
#include <nyXml/values/NyXmlEnumType.h>

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

class Mode : public NyXmlEnumType<int> {
public:
    Mode() = default;
    Mode(int value) : NyXmlEnumType<int>(value) {}
    bool xmlInit() override
    {
        setEnumString(1, "slow");
        setEnumString(2, "fast");
        setEnumString(2, "quick");
        setEnumString(9, "slow"); // a word that is known keeps its value
        return NyXmlEnumType<int>::xmlInit();
    }
};

std::string noDataMessage(std::string const& beginning, std::string const& end)
{
    return beginning + "file not valid.\n\tNo data found.\n\tFile: in.xml\n\tLine: 1" + end;
}

/// The first attribute of the document's root.
bool readAttribute(NyXmlObject& value, std::string const& document)
{
    std::istringstream stream(document);
    NyXmlReader reader("in.xml", stream);
    reader.readXml();
    return value.readAttribute(reader);
}

} // namespace

// Unlike a basic value's, a bad word fails the read, and in silence.
TEST(Enumerations, WordsAreFoundOrLeaveTheValueAlone)
{
    std::string const noData = noDataMessage("NyXmlEnumType Error: ", "\n\n");
    struct {
        std::string document;
        bool result;
        int value;
        std::string message;
    } const rows[] = {
        { "<m>fast</m>", true, 2, "" },      { "<m> quick\n</m>", true, 2, "" }, { "<m>Fast</m>", false, 7, "" },
        { "<m>2</m>", false, 7, "" },        { "<m/>", false, 7, "" },           { "<m></m>", false, 7, "" },
        { "<m><b/></m>", false, 7, noData },
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.document);
        Messages messages;
        Mode mode(7);
        EXPECT_EQ(readValue(mode, row.document), row.result);
        EXPECT_EQ(mode.value(), row.value);
        EXPECT_EQ(messages.text().substr(0, row.message.size() + 1), row.message);
        EXPECT_TRUE(mode.specified());
        EXPECT_TRUE(row.message.empty() || messages.types().front() == 4);
    }
    NyXmlEnumType<bool> emptyWord(true);
    emptyWord.setEnumString(false, "");
    EXPECT_TRUE(readValue(emptyWord, "<m/>") && !emptyWord.value());
}

TEST(Enumerations, AttributesAreReadAsElementsAre)
{
    Messages messages;
    Mode mode(7);
    EXPECT_TRUE(readAttribute(mode, "<m a='fast'/>"));
    EXPECT_EQ(mode.value(), 2);
    EXPECT_FALSE(readAttribute(mode, "<m a='x'/>"));
    EXPECT_EQ(messages.take(), "");
    EXPECT_FALSE(readAttribute(mode, "<m/>"));
    EXPECT_EQ(messages.text(), noDataMessage("NyXmlEnumType Error: ", "\n\n"));
    EXPECT_NE(messages.locations().front().find("readAttribute"), std::string::npos);
    EXPECT_EQ(mode.value(), 2);
}

TEST(Enumerations, WhatTheTableDoesNotKnowIsWrittenAsItsFirstWord)
{
    EXPECT_EQ(writtenValue(Mode(2)), "<v>fast</v>\n"); // the first of its words
    EXPECT_EQ(writtenValue(Mode(9)), "<v>slow</v>\n");
    EXPECT_EQ(writtenValue(NyXmlEnumType<short>(3)), "<v></v>\n"); // no table, no word
    EXPECT_EQ(SchemaCalls::of(Mode()), std::string(typeid(std::string).name()) + " ");
}

TEST(Enumerations, CopiesTakeTheValueAndLeaveTheTable)
{
    NyXmlEnumType<NyNonNegReal> low(NyNonNegReal(1.5));
    low.setEnumString(1.5, "low");
    NyXmlEnumType<NyNonNegReal> copy(low);
    EXPECT_EQ(copy.enumString(), "");
    EXPECT_TRUE(copy == low); // the tables are compared once both are initialised
    copy.xmlInit();
    EXPECT_TRUE(copy == low);
    low.xmlInit();
    EXPECT_FALSE(copy == low || copy.equality(&low));
    copy.setEnumString(1.5, "low");
    EXPECT_TRUE(copy == low && copy.equality(&low));

    copy.setValue(0.0);
    low = copy;
    EXPECT_TRUE(low.value() == 0.0 && low.specified());
    EXPECT_EQ(low.enumString(1.5), "low");
    EXPECT_TRUE(copy.equalsDefault() && !copy.equality(nullptr) && copy.isBasicType());
}

TEST(BinaryStrings, EncodeAsTheStandardHasIt)
{
    std::pair<char const*, char const*> const rows[] = { { "", "" },
                                                         { "f", "Zg==" },
                                                         { "fo", "Zm8=" },
                                                         { "foo", "Zm9v" },
                                                         { "foob", "Zm9vYg==" },
                                                         { "fooba", "Zm9vYmE=" },
                                                         { "hello", "aGVsbG8=" },
                                                         { "\xfb\xff\xbf", "+/+/" } };
    for (auto const& [bytes, text] : rows) {
        NyXmlBinaryString string{ std::string(bytes) };
        EXPECT_EQ(string.toString(), text);
        NyXmlBinaryString back(std::string("old"));
        back.setFromString(text);
        EXPECT_EQ(back.value(), bytes);
    }
    std::mt19937 random(3);
    for (std::size_t length = 0; length < 300; ++length) {
        NyXmlBinaryString string, back;
        for (std::size_t i = 0; i < length; ++i)
            string.value() += static_cast<char>(random());
        EXPECT_TRUE(readValue(back, writtenValue(string)) || length == 0); // no bytes are an empty element
        EXPECT_TRUE(back == string) << length;
    }
}

// Nothing is skipped and nothing is reported.
TEST(BinaryStrings, DecodeWhatIsNoBase64)
{
    std::pair<std::string, std::string> const rows[] = {
        { "Zm9", "fo" },            // no padding
        { "Zm", "f" },              //
        { "Zm8=Zm8=", "fo" },       // stops at the first
        { "Zg==Zg==", "f" },        //
        { "Z", "g" },               // the missing one counts as no character of the alphabet
        { "Zm\n9v", "fo\xfd\xbf" }, // a line end spoils its group and shifts the next
    };
    for (auto const& [text, bytes] : rows) {
        NyXmlBinaryString string;
        string.setFromString(text);
        EXPECT_EQ(string.value(), bytes) << text;
    }
}

// The empty form has no text to read, unlike for a plain string.
TEST(BinaryStrings, BothStringsReadTheInnerTextAndNeedAnEndTag)
{
    std::string const binary = "NyXmlBinaryString: File not valid.\n\tNo data found.\n\tFile: in.xml\n\tLine: 1\n\n";
    std::string const embedded = noDataMessage("NyXmlEmbeddedString: ", "\n");
    struct {
        std::string document;
        bool result;
        std::string bytes;
        std::string markup;
    } const rows[] = {
        { "<a>Zm9v</a>", true, "foo", "Zm9v" }, { "<a>\n Zm9v </a>", true, "foo", "Zm9v" }, { "<a></a>", true, "", "" },
        { "<a/>", false, "old", "old" },        { "<a>Zm9v", false, "foo", "Zm9v" },
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.document);
        Messages messages;
        NyXmlBinaryString bytes(std::string("old"));
        EXPECT_EQ(readValue(bytes, row.document), row.result);
        if (row.result || row.bytes == "old") {
            EXPECT_EQ(bytes.value(), row.bytes);
            EXPECT_EQ(messages.text(), row.result ? "" : binary);
        }
        messages.take();
        NyXmlEmbeddedString markup(std::string("old"));
        EXPECT_EQ(readValue(markup, row.document), row.result);
        if (row.result || row.bytes == "old") {
            EXPECT_EQ(markup.value(), row.markup);
            EXPECT_EQ(messages.text(), row.result ? "" : embedded);
        }
    }
    NyXmlEmbeddedString markup;
    std::string const inner = "<b q=\"1\">x &amp; y</b><a>z<a/></a>";
    EXPECT_TRUE(readValue(markup, "<a>" + inner + "</a>"));
    EXPECT_EQ(markup.value(), inner);
    EXPECT_EQ(writtenValue(markup), "<v>" + inner + "</v>\n");
}

TEST(BinaryStrings, AssignedTextsDoNotCountAsGiven)
{
    NyXmlBinaryString bytes;
    bytes = std::string("x");
    EXPECT_FALSE(bytes.specified());
    bytes = NyXmlBinaryString(std::string("y"));
    EXPECT_TRUE(bytes.specified() && bytes == std::string("y"));
    NyXmlBasicType<std::string> const plain(std::string("y"));
    EXPECT_TRUE(bytes.equality(&plain) && !bytes.isBasicType() && bytes.token() == NyXml::NyBasicTypeToken);
}
