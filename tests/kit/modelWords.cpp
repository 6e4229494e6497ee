#include "../ValueSupport.h"

#include <nyXmlKit/model/NyXmlDateTime.h>
#include <nyXmlKit/model/NyXmlEnum.h>
#include <nyXmlKit/model/NyXmlModel.h>
#include <nyXmlKit/model/NyXmlOptional.h>

#include <limits>

namespace {

enum class Fix { none, flat = 7, space };
constexpr auto nyXmlWords(Fix)
{
    return nyXmlTable<Fix>({
        { Fix::flat, "2d" },
        { Fix::space, "3d" },
        { Fix::flat, "flat" },
    });
}

// What an element with a text becomes when it is written again; "refused" if it is reported and leaves the value alone.
template <class Word>
std::string again(std::string const& text)
{
    Messages messages;
    Word word, before;
    EXPECT_TRUE(readValue(word, "<v>" + text + "</v>"));
    bool const isReported = messages.text().find("found.\n\tFile: in.xml\n\tLine: 1\n") != std::string::npos;
    Word attribute;
    readAttributeOf(attribute, "<v w='" + text + "'/>");
    EXPECT_EQ(writtenValue(word), writtenValue(attribute));
    if (isReported) {
        EXPECT_EQ(writtenValue(word), writtenValue(before));
        return "refused";
    }
    EXPECT_EQ(messages.text(), "");
    std::string const document = writtenValue(word);
    std::string const written = document.substr(3, document.rfind("</v>") - 3);
    Word back;
    readValue(back, document);
    EXPECT_EQ(writtenValue(back), document);
    return written;
}

struct Row {
    char const* text;
    char const* written;
};
template <class Word, std::size_t count>
void expectWords(Row const (&rows)[count])
{
    for (Row const& row : rows)
        EXPECT_EQ(again<Word>(row.text), row.written) << row.text;
}

TEST(Words, AreThoseOfXmlSchema)
{
    expectWords<NyXmlBoolean>({ { "true", "true" },
                                { " 1 ", "true" },
                                { "false", "false" },
                                { "0", "false" },
                                { "True", "refused" },
                                { "", "refused" } });
    expectWords<NyXmlReal>({ { "0.1", "0.1" },
                             { "+5", "5" },
                             { "-0", "-0" },
                             { "1e400", "INF" },
                             { "-INF", "-INF" },
                             { "NaN", "NaN" },
                             { "1e30", "1e+30" },
                             { "5.", "5" },
                             { "5 6", "refused" },
                             { "+-5", "refused" },
                             { "x", "refused" } });
    expectWords<NyXmlDecimal>(
        { { "0.00001", "0.00001" }, { "1e3", "1000" }, { "46.123456789", "46.123456789" }, { "INF", "refused" } });
    expectWords<NyXmlFloat>({ { "0.1", "0.1" }, { "16777217", "16777216" }, { "1e39", "INF" }, { "", "refused" } });
    expectWords<NyXmlLong>({ { "-9223372036854775808", "-9223372036854775808" },
                             { "9223372036854775808", "refused" },
                             { "+7", "7" },
                             { "7.5", "refused" },
                             { "+", "refused" } });
    expectWords<NyXmlUnsignedLong>({ { "18446744073709551615", "18446744073709551615" }, { "-1", "refused" } });
    expectWords<NyXmlEnum<Fix>>({ { "3d", "3d" }, { " flat", "2d" }, { "4d", "refused" }, { "", "refused" } });
}

TEST(Words, DatesKeepZoneAndFraction)
{
    expectWords<NyXmlDateTime>({
        { "2010-09-12T10:20:30Z", "2010-09-12T10:20:30Z" },
        { "2010-09-12T10:20:30", "2010-09-12T10:20:30" },
        { "2010-09-12T10:20:30.250+02:00", "2010-09-12T10:20:30.25+02:00" },
        { "2010-09-12T10:20:30.1234567891-14:00", "2010-09-12T10:20:30.123456789-14:00" },
        { "1969-12-31T23:59:59.5Z", "1969-12-31T23:59:59.5Z" },
        { "2012-02-29T24:00:00+00:00", "2012-03-01T00:00:00Z" },
        { "-0044-03-15T12:00:00", "-0044-03-15T12:00:00" },
        { "12010-01-01T00:00:00Z", "12010-01-01T00:00:00Z" },
        { "2011-02-29T00:00:00", "refused" },
        { "2010-13-01T00:00:00", "refused" },
        { "2010-09-12T24:00:01", "refused" },
        { "2010-09-12T10:20:60", "refused" },
        { "2010-09-12T10:20:30.", "refused" },
        { "2010-09-12T10:20:30+14:01", "refused" },
        { "2010-09-12", "refused" },
        { "2010-09-12T10:20:30Z ", "2010-09-12T10:20:30Z" },
        { "2010-09-12T10:20:30z", "refused" },
    });
    expectWords<NyXmlDate>({ { "2000-02-29", "2000-02-29" },
                             { "1900-02-28+01:00", "1900-02-28+01:00" },
                             { "1900-02-29", "refused" },
                             { "10-01-01", "refused" },
                             { "2000-2-29", "refused" } });
    expectWords<NyXmlTime>({ { "00:00:00.001", "00:00:00.001" }, { "24:00:00Z", "00:00:00Z" }, { "9:00:00", "refused" } });
}

// Days from the calendar and back, against the count of days.
TEST(Words, CalendarCountsDays)
{
    NyXmlDateValue date(1599, 12, 31);
    for (int days = 0; days < 147000; ++days) {
        date.day += NyXmlDateValue::Days(1);
        NyXmlDateValue back;
        std::string const text = NyXmlDateRules::give(date);
        ASSERT_TRUE(NyXmlDateRules::take(back, text) && back == date) << text;
    }
    EXPECT_EQ(NyXmlDateRules::give(date), "2002-06-21");
    using std::chrono::system_clock;
    auto const moment = system_clock::from_time_t(1284286830);
    NyXmlDateTimeValue value;
    ASSERT_TRUE(NyXmlDateTimeRules::take(value, "2010-09-12T12:20:30+02:00"));
    EXPECT_EQ(value.time(), moment);
    EXPECT_EQ(NyXmlDateTimeRules::give(NyXmlDateTimeValue(moment)), "2010-09-12T10:20:30Z");
    EXPECT_FALSE(value < NyXmlDateTimeValue(moment));
    EXPECT_FALSE(value == NyXmlDateTimeValue(moment));
}

TEST(Words, ValuesWithoutAWordAreReported)
{
    Messages messages;
    EXPECT_EQ(writtenValue(NyXmlEnum<Fix>(Fix::none)), "<v>2d</v>\n");
    EXPECT_EQ(messages.text(), "NyXmlEnum Error: no word for the value 0, which is written as \"2d\".\n");
}

TEST(Words, SayWhatTheyAre)
{
    NyXmlOptional<Fix> fix;
    auto const& kind = dynamic_cast<NyXmlMemberKind const&>(static_cast<NyXmlObject const&>(fix));
    EXPECT_EQ(kind.minOccurs(), 0u);
    auto const item = kind.newItem();
    EXPECT_EQ(dynamic_cast<NyXmlMemberKind const&>(*item).words(), (std::vector<std::string>{ "2d", "3d", "flat" }));
    NyXmlOptional<NyXmlDateTime> time;
    EXPECT_EQ(dynamic_cast<NyXmlMemberKind const&>(*time.newItem()).typeWord(), "dateTime");
}

} // namespace
