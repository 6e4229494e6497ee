#include "Support.h"

#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/values/NyXmlBasicType.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <gtest/gtest.h>

#include <limits>
#include <locale>
#include <memory>
#include <ostream>
#include <sstream>
#include <string>

namespace {

/// Reads a value from the root element of a document. \return what read() gave
bool readFrom(NyXmlObject& value, std::string const& document)
{
    std::istringstream stream(document);
    NyXmlReader reader("in.xml", stream);
    reader.readXml();
    bool const result = value.read(reader);
    while (reader.mode() != NyXmlFileReader::XML_READER_EOF && reader.mode() != NyXmlFileReader::XML_READER_ERROR)
        reader.readXml();
    return result;
}

bool readFromAttributes(NyXmlObject& value, std::string const& attributes)
{
    std::istringstream stream("<a" + attributes + "/>");
    NyXmlReader reader("in.xml", stream);
    reader.readXml();
    return value.readAttribute(reader);
}

/// The text between the tags of an element that a value was written in.
std::string written(NyXmlObject const& value)
{
    std::ostringstream stream;
    {
        NyXmlWriter writer("out.xml", stream);
        writer.writeStartTag(NyToken("urn:t#root"));
        writer.writeStartTagUsingParentNamespace(NyToken("v"));
        value.write(writer);
        writer.writeEndTag();
        writer.writeEndTag();
    }
    std::string const document = stream.str();
    std::size_t const first = document.find("<v>") + 3;
    return document.substr(first, document.find("</v>") - first);
}

template <class T>
T after(T before, std::string const& document)
{
    NyXmlBasicType<T> value(before);
    EXPECT_TRUE(readFrom(value, document)) << document;
    return value.value();
}

/// A type of an application: all it brings is equality and stream operators.
struct Span {
    double from = 0.0, to = 0.0;
    bool operator==(Span const& other) const { return from == other.from && to == other.to; }
};
std::ostream& operator<<(std::ostream& stream, Span const& span) { return stream << span.from << ':' << span.to; }
std::istream& operator>>(std::istream& stream, Span& span)
{
    char colon;
    return stream >> span.from >> colon >> span.to;
}

/// While it lives, streams of the process write 1.234,5.
class CommaLocale {
public:
    CommaLocale() : m_before(std::locale::global(std::locale(std::locale::classic(), new Comma))) {}
    ~CommaLocale() { std::locale::global(m_before); }

private:
    struct Comma : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    std::locale m_before;
};

} // namespace

TEST(BasicValues, EmptyElementsZeroSomeAndLeaveOthers)
{
    for (std::string const empty : { "<a/>", "<a></a>", "<a>  </a>" }) {
        SCOPED_TRACE(empty);
        EXPECT_EQ(after<int>(5, empty), 0);
        EXPECT_EQ(after<double>(5, empty), 0.0);
        EXPECT_EQ(after<unsigned char>(5, empty), 0);
        EXPECT_EQ(after<std::string>("5", empty), "");
        EXPECT_EQ(after<char>('5', empty), '5');
        EXPECT_EQ(after<short>(5, empty), 5);
        EXPECT_EQ(after<unsigned short>(5, empty), 5);
        EXPECT_EQ(after<unsigned int>(5, empty), 5u);
        EXPECT_EQ(after<bool>(true, empty), true);
        EXPECT_EQ(after<NyAngle>(5, empty), 5.0);
        EXPECT_EQ(after<NyNonNegReal>(5, empty), 5.0);
    }
}

TEST(BasicValues, ReadingIsSilentAboutBadTexts)
{
    Messages messages;
    EXPECT_EQ(after<int>(5, "<a>12abc</a>"), 12);
    EXPECT_EQ(after<double>(5, "<a>abc</a>"), 0.0);
    EXPECT_EQ(after<bool>(true, "<a>true</a>"), false);
    EXPECT_EQ(after<unsigned char>(5, "<a>300</a>"), 44);
    EXPECT_EQ(after<NyAngle>(5, "<a>abc</a>"), 5.0);
    EXPECT_EQ(after<NyNonNegReal>(5, "<a>-1</a>"), 5.0);
    EXPECT_EQ(after<std::string>("", "<a> two  words &amp; </a>"), "two  words &amp;");
    EXPECT_EQ(messages.text(), "");
}

TEST(BasicValues, MissingDataFailsAnElementAndNotAnAttribute)
{
    Messages messages;
    NyXmlBasicType<int> value(5);
    EXPECT_FALSE(readFrom(value, "<a>\n<b/></a>"));
    EXPECT_EQ(value.value(), 0);
    EXPECT_EQ(messages.types(), std::vector<int>{ 4 });
    EXPECT_EQ(messages.take(), "NyXmlBasicType Error: file not valid.\n\tNo data found.\n\tFile: in.xml\n\tLine: 2\n");

    value = 5;
    EXPECT_TRUE(readFromAttributes(value, ""));
    EXPECT_EQ(value.value(), 0);
    EXPECT_EQ(messages.types(), std::vector<int>{ 4 });
    EXPECT_EQ(messages.take(), "NyXmlBasicType Error: file not valid.\n\tNo attributes found.\n\tFile: in.xml\n\tLine: 1\n");

    EXPECT_TRUE(readFromAttributes(value, " b='7'"));
    EXPECT_EQ(value.value(), 7);
    EXPECT_EQ(messages.text(), "");
}

TEST(BasicValues, WrittenForms)
{
    EXPECT_EQ(written(NyXmlBasicType<char>('x')), "x");
    EXPECT_EQ(written(NyXmlBasicType<unsigned char>(200)), "200");
    EXPECT_EQ(written(NyXmlBasicType<short>(-3)), "-3");
    EXPECT_EQ(written(NyXmlBasicType<unsigned short>(65535)), "65535");
    EXPECT_EQ(written(NyXmlBasicType<int>(-2147483647)), "-2147483647");
    EXPECT_EQ(written(NyXmlBasicType<unsigned int>(4294967295u)), "4294967295");
    EXPECT_EQ(written(NyXmlBasicType<double>(0.1)), "0.10000000000000000555");
    EXPECT_EQ(written(NyXmlBasicType<bool>(true)), "1");
    EXPECT_EQ(written(NyXmlBasicType<std::string>(std::string("a <b> & c"))), "a <b> & c");
    EXPECT_EQ(written(NyXmlBasicType<NyAngle>(NyAngle(2.5))), "2.5");
    EXPECT_EQ(written(NyXmlBasicType<NyNonNegReal>(NyNonNegReal(2.5))), "2.5");
}

TEST(BasicValues, TypesOfAnApplicationNeedNothingButTheInclude)
{
    NyXmlBasicType<Span> value(Span{ 0.5, 1e30 });
    std::string const text = written(value);
    EXPECT_EQ(text, "0.5:1.0000000000000000199e+30");

    NyXmlBasicType<Span> again;
    EXPECT_TRUE(readFrom(again, "<a>" + text + "</a>"));
    EXPECT_TRUE(again == value);
    EXPECT_TRUE(value.isBasicType());
    std::unique_ptr<NyXmlObject> const copy(value.clone());
    EXPECT_TRUE(value.equality(copy.get()));
    EXPECT_FALSE(value.equalsDefault());
}

TEST(BasicValues, EqualityIsOfOneTypeAndExact)
{
    NyXmlBasicType<double> number(1.0);
    NyXmlBasicType<int> integer(1);
    EXPECT_FALSE(number.equality(&integer));
    EXPECT_FALSE(number.equality(nullptr));
    EXPECT_TRUE(number == 1);
    EXPECT_TRUE(number.equality(&number));
    number = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(number.equality(&number));
    EXPECT_TRUE(NyXmlBasicType<std::string>().equalsDefault());
    EXPECT_FALSE(NyXmlBasicType<std::string>().isBasicType());
    EXPECT_TRUE(NyXmlBasicType<NyAngle>(NyAngle(1)) < NyXmlBasicType<NyAngle>(NyAngle(2)));
}

TEST(BasicValues, AssignedValuesDoNotCountAsGivenAndCopiesDo)
{
    NyXmlBasicType<std::string> value;
    value = std::string("x");
    value.setValue("y");
    EXPECT_FALSE(value.specified());
    NyXmlBasicType<std::string> const copy(value);
    EXPECT_TRUE(copy.specified());
    NyXmlBasicType<std::string> const moved(std::move(value));
    EXPECT_TRUE(moved.specified() && moved == copy);
}

TEST(BasicValues, TheLocaleOfTheProcessPlaysNoPart)
{
    CommaLocale const locale;
    EXPECT_EQ(written(NyXmlBasicType<int>(1234567)), "1234567");
    EXPECT_EQ(written(NyXmlBasicType<double>(1234.5)), "1234.5");
    EXPECT_EQ(written(NyXmlBasicType<Span>(Span{ 1234.5, 0.5 })), "1234.5:0.5");
    EXPECT_EQ(after<double>(0, "<a>+1234.5</a>"), 1234.5);
    EXPECT_EQ(after<unsigned int>(0, "<a>1.234</a>"), 1u);
    EXPECT_EQ(after<NyAngle>(0, "<a>1234.5</a>"), 1234.5);
    EXPECT_EQ(after<Span>({}, "<a>1234.5:0.5</a>"), (Span{ 1234.5, 0.5 }));
}
