#include "ValueSupport.h"

#include <nyXml/values/NyXmlBasicType.h>

#include <limits>
#include <memory>

namespace {

template <class T>
T after(T before, std::string const& document)
{
    NyXmlBasicType<T> value(before);
    EXPECT_TRUE(readValue(value, document)) << document;
    return value.value();
}

template <class T>
void expectForm(T const& value, std::string const& text)
{
    NyXmlBasicType<T> const given(value);
    EXPECT_EQ(writtenValue(given), "<v>" + text + "</v>\n");
    EXPECT_EQ(SchemaCalls::of(given), typeid(T).name() + std::string(" "));
    EXPECT_EQ(given.isBasicType(), (!std::is_same_v<T, std::string>));
    EXPECT_EQ(after(T(), "<v>" + text + "</v>"), value);
    NyXmlBasicType<T> fromAttribute;
    EXPECT_TRUE(readAttributeOf(fromAttribute, "<v a='" + text + "'/>") && fromAttribute == given);
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

} // namespace

TEST(BasicValues, FormsUnderAnotherLocale)
{
    GroupedNumbers const grouped;
    expectForm<char>('x', "x");
    expectForm<unsigned char>(200, "200");
    expectForm<short>(-3000, "-3000");
    expectForm<unsigned short>(65535, "65535");
    expectForm<int>(-2147483647, "-2147483647");
    expectForm<unsigned int>(4294967295u, "4294967295");
    expectForm<double>(1234.1, "1234.0999999999999091");
    expectForm<bool>(true, "1");
    expectForm<std::string>("a  b &amp;", "a  b &amp;");
    expectForm<NyAngle>(-2345.5, "-2345.5");
    expectForm<NyNonNegReal>(2345.5, "2345.5");
    expectForm<Span>({ 0.5, 1e30 }, "0.5:1.0000000000000000199e+30");
}

TEST(BasicValues, NoOrBadTextsZeroSomeAndLeaveOthersInSilence)
{
    Messages messages;
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
    EXPECT_EQ(after<bool>(true, "<a>true</a>"), false);
    EXPECT_EQ(after<NyAngle>(5, "<a>abc</a>"), 5.0);
    EXPECT_EQ(after<NyNonNegReal>(5, "<a>-1</a>"), 5.0);
    EXPECT_EQ(after<std::string>("", "<a> two  words &amp; </a>"), "two  words &amp;");
    EXPECT_EQ(messages.text(), "");
}

TEST(BasicValues, MissingDataFailsAnElementAndNotAnAttribute)
{
    Messages messages;
    NyXmlBasicType<int> element(5), attribute(5);
    EXPECT_FALSE(readValue(element, "<a>\n<b/></a>"));
    EXPECT_TRUE(readAttributeOf(attribute, "<a/>"));
    EXPECT_TRUE(element == 0 && attribute == 0);
    EXPECT_EQ(messages.text(), "NyXmlBasicType Error: file not valid.\n\tNo data found.\n\tFile: in.xml\n\tLine: 2\n"
                               "NyXmlBasicType Error: file not valid.\n\tNo attributes found.\n\tFile: in.xml\n\tLine: 1\n");
}

TEST(BasicValues, EqualityIsOfOneTypeAndExact)
{
    NyXmlBasicType<double> number(1.0);
    NyXmlBasicType<int> const integer(1);
    EXPECT_TRUE(number == 1 && number.equality(&number));
    EXPECT_FALSE(number.equality(&integer) || number.equality(nullptr));
    std::unique_ptr<NyXmlObject> const copy(number.clone());
    EXPECT_TRUE(number.equality(copy.get()) && !number.equalsDefault() && NyXmlBasicType<std::string>().equalsDefault());
    number = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(number.equality(&number));
    NyXmlBasicType<NyAngle> const small(NyAngle(1)), large(NyAngle(2));
    EXPECT_TRUE(small < large && !(large < small || small < small));
}

TEST(BasicValues, AssignedValuesDoNotCountAsGivenAndCopiesDo)
{
    NyXmlBasicType<std::string> value;
    value = std::string("x");
    value.setValue("y");
    EXPECT_FALSE(value.specified());
    NyXmlBasicType<std::string> const copy(value);
    NyXmlBasicType<std::string> const moved(std::move(value));
    EXPECT_TRUE(copy.specified() && moved.specified() && moved == copy);
}
