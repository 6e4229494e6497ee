#include "ValueSupport.h"

#include <nyXml/values/NyXmlBinaryString.h>
#include <nyXml/values/NyXmlEmbeddedString.h>
#include <nyXml/values/NyXmlEnumType.h>

#include <random>

namespace {

// A writer that escapes strings learns that this one is markup, and all writers get the calls of any string.
TEST(EmbeddedString, IsAStringToWritersThatKnowItIsMarkup)
{
    class Listener : public NyXmlWriter {
    public:
        using NyXmlWriter::NyXmlWriter;
        void type(std::type_info const& info) override { seen += info == typeid(std::string) ? "string " : "other "; }
        void data(std::string const& value) override { seen += value + (isMarkup() ? " markup" : " text"); }
        std::string seen;
    };
    std::ostringstream stream;
    Listener writer("d.xml", stream);
    NyXmlEmbeddedString("<b/>").write(writer);
    EXPECT_EQ(writer.seen, "string <b/> markup");
    EXPECT_FALSE(writer.isMarkup());
}

} // namespace

// Unlike a basic value's, a bad word fails the read, and in silence.
TEST(Enumerations, WordsAreFoundOrLeaveTheValueAlone)
{
    std::string const silence = "refused in silence";
    std::string const noData = "NyXmlEnumType Error: file not valid.\n\tNo data found.\n\tFile: in.xml\n\tLine: 1\n\n";
    struct {
        std::string document;
        int value;
        std::string said;
    } const rows[] = {
        { "<m>fast</m>", 2, "" }, { "<m> quick\n</m>", 2, "" }, { "<m>Fast</m>", 7, silence },        { "<m>2</m>", 7, silence },
        { "<m/>", 7, silence },   { "<m></m>", 7, silence },    { "<m><b/></m>", 7, "4: " + noData },
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.document);
        Mode mode(7);
        EXPECT_EQ(saidOnReading(mode, row.document), row.said);
        EXPECT_TRUE(mode == row.value && mode.specified());
    }
    Messages messages;
    Mode mode(7);
    EXPECT_FALSE(readAttributeOf(mode, "<m/>") || readAttributeOf(mode, "<m a='x'/>"));
    EXPECT_EQ(messages.text(), noData);
    EXPECT_TRUE(mode == 7 && mode.specified() && readAttributeOf(mode, "<m a='fast'/>") && mode == 2);
    NyXmlEnumType<bool> emptyWord(true);
    emptyWord.setEnumString(false, "");
    EXPECT_TRUE(readValue(emptyWord, "<m/>") && !emptyWord.value());
}

TEST(Enumerations, WhatTheTableDoesNotKnowIsWrittenAsItsFirstWord)
{
    EXPECT_EQ(writtenValue(Mode(2)), "<v>fast</v>\n"); // the first of its words
    EXPECT_EQ(writtenValue(Mode(9)), "<v>slow</v>\n");
    EXPECT_EQ(writtenValue(NyXmlEnumType<short>(3)), "<v></v>\n"); // no table, no word
    EXPECT_EQ(SchemaCalls::of(Mode()), typeid(std::string).name() + std::string(" "));
}

TEST(Enumerations, CopiesTakeTheValueAndLeaveTheTable)
{
    NyXmlEnumType<NyNonNegReal> low(NyNonNegReal(1.5));
    low.setEnumString(1.5, "low");
    NyXmlEnumType<NyNonNegReal> copy(low);
    EXPECT_EQ(copy.enumString(), "");
    copy.xmlInit();
    EXPECT_TRUE(copy == low); // the tables are compared once both are initialised
    low.xmlInit();
    EXPECT_FALSE(copy == low || copy.equality(&low));
    copy.setEnumString(1.5, "low");
    EXPECT_TRUE(copy == low && copy.equality(&low));

    copy.setValue(0.0);
    EXPECT_FALSE(copy == low);
    low = copy;
    EXPECT_TRUE(low == 0.0 && low.specified() && low.enumString(1.5) == "low" && !(low < copy));
    EXPECT_TRUE(copy.equalsDefault() && !copy.equality(nullptr) && copy.isBasicType());
}

TEST(BinaryStrings, EncodeAsTheStandardHasIt)
{
    std::string const word = "foobar";
    char const* const texts[] = { "", "Zg==", "Zm8=", "Zm9v", "Zm9vYg==", "Zm9vYmE=", "Zm9vYmFy" };
    for (std::size_t length = 0; length <= word.size(); ++length)
        EXPECT_EQ(NyXmlBinaryString(word.substr(0, length)).toString(), texts[length]);
    EXPECT_EQ(NyXmlBinaryString(std::string("\xfb\xff\xbf")).toString(), "+/+/");

    std::mt19937 random(3);
    for (std::size_t length = 0; length < 300; ++length) {
        NyXmlBinaryString string, back;
        back = std::string("old");
        for (std::size_t i = 0; i < length; ++i)
            string.value() += static_cast<char>(random());
        EXPECT_TRUE(readValue(back, writtenValue(string)) && back == string) << length;
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
    auto const outcome = [](auto value, std::string const& document) {
        Messages messages;
        bool const result = readValue(value, document);
        return (result ? value.value() : "failed") + messages.text();
    };
    NyXmlBinaryString const bytes(std::string("old"));
    NyXmlEmbeddedString const markup(std::string("old"));
    EXPECT_EQ(outcome(bytes, "<a>\n Zm9v </a>"), "foo");
    EXPECT_EQ(outcome(markup, "<a>\n Zm9v </a>"), "Zm9v");
    EXPECT_EQ(outcome(bytes, "<a></a>") + outcome(markup, "<a></a>"), "");
    std::string const where = "\n\tFile: in.xml\n\tLine: 1\n";
    std::string const early =
        "NyXmlFileReader Error: getChildrenAsString Error: end of file too early -- expecting start tag." + where;
    std::string const noBytes = "NyXmlBinaryString: File not valid.\n\tNo data found." + where + "\n";
    std::string const noMarkup = "NyXmlEmbeddedString: file not valid.\n\tNo data found." + where;
    EXPECT_EQ(outcome(bytes, "<a/>"), "failed" + noBytes);
    EXPECT_EQ(outcome(bytes, "<a>Zm9v"), "failed" + early + noBytes);
    EXPECT_EQ(outcome(markup, "<a/>"), "failed" + noMarkup);
    EXPECT_EQ(outcome(markup, "<a>Zm9v"), "failed" + early + noMarkup);

    std::string const inner = "<b q=\"1\">x &amp; y</b><a>z<a/></a>";
    EXPECT_EQ(outcome(markup, "<a>" + inner + "</a>"), inner);
    EXPECT_EQ(writtenValue(NyXmlEmbeddedString(inner)), "<v>" + inner + "</v>\n");
}
