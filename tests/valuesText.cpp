#include "ValueSupport.h"

#include <nyXml/values/NyXmlTextOf.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <sstream>

namespace {

/// Texts on both sides of every rule of numbers, then seeded combinations of the characters that take part in them.
std::vector<std::string> const& texts()
{
    static std::vector<std::string> const all = [] {
        std::vector<std::string> list = splitAtBars(
            "| |\v\f\t\r\n|0|-0|+0|+|-|+-5|-+5|--5|- 5| +7|\v\f-7x|12abc|abc|true|false|007|255|256|300|127|128|1,5|1'000|"
            "0x1F|0X1p4|0x|-0x.8p1|1e|1e+|1e5|1e-5|.|-.|.5|-.5e1|5.|1.5.5|1.000.000|inf|-INF|+infinity|infinit|nan|-nan|nan(12)|"
            "NaN|1e308|1e309|-1e309|1e400|1e-308|4.9e-324|2e-324|1e-400|-1e-400|0.1|0.10000000000000000555|1e0000000000001|"
            "1.7976931348623157e308|1.7976931348623159e308|2.2250738585072011e-308|9007199254740993|00000000000000000000000001.5|"
            "123456789012345678901234567890");
        list.emplace_back("1\0002", 3);
        list.emplace_back(1, '\0');
        for (std::string const& edge : splitAtBars(
                 "32767|32768|32769|65535|65536|2147483647|2147483648|2147483649|4294967295|4294967296|9223372036854775807|"
                 "9223372036854775808|9223372036854775809|18446744073709551615|18446744073709551616|1845000000000000000|"
                 "99999999999999999999999"))
            for (char const* sign : { "", "-", "+" })
                list.push_back(sign + edge);
        std::mt19937 random(20);
        std::string const alphabet = "0123456789 +-.eExXp\tinfa0123456789";
        for (int i = 0; i < 30000; ++i) {
            std::string text;
            for (std::size_t length = random() % 24; length != 0; --length)
                text += alphabet[random() % alphabet.size()];
            list.push_back(text);
            char digits[40]; // of any number, as many as the writer writes
            double number;
            std::uint64_t const bits = random() | static_cast<std::uint64_t>(random()) << 32;
            std::memcpy(&number, &bits, sizeof number);
            std::snprintf(digits, sizeof digits, "%.20g", number);
            list.emplace_back(digits);
        }
        return list;
    }();
    return all;
}

/// What a fresh stream leaves in a value that was `before`.
template <class T>
T streamed(std::string const& text, T before)
{
    std::stringstream stream;
    stream.imbue(std::locale::classic());
    stream << text;
    stream >> before;
    return before;
}

template <class T>
void expectLikeStream(std::vector<T> const& befores)
{
    for (std::string const& text : texts())
        for (T before : befores) {
            T taken = before;
            NyXmlTextOf<T>::take(taken, text);
            ASSERT_EQ(taken, streamed(text, before)) << '"' << text << '"';
        }
}

/// Equal bits, except that one NaN is as good as another.
bool same(double a, double b) { return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0; }

} // namespace

TEST(ValueTexts, ScalarsAreLeftAsStreamsLeaveThem)
{
    expectLikeStream<short>({ 0, 77 });
    expectLikeStream<unsigned short>({ 0, 77 });
    expectLikeStream<unsigned int>({ 0, 77 });
    expectLikeStream<bool>({ false, true });
    expectLikeStream<char>({ 'q' });
}

TEST(ValueTexts, OthersAreReadAsByTheCLibraryOrKeepTheLowBits)
{
    for (std::string const& text : texts()) {
        SCOPED_TRACE('"' + text + '"');
        ASSERT_EQ(NyXmlText::toInt(text), std::atoi(text.c_str()));
        ASSERT_TRUE(same(NyXmlText::toDouble(text), std::atof(text.c_str())));
        ASSERT_EQ(NyXmlText::toUnsignedChar(text), static_cast<unsigned char>(streamed<unsigned short>(text, 0)));
    }
}

TEST(ValueTexts, ViewsEndWhereTheyEnd)
{
    std::string_view const view = "12 34e5 0x1F";
    EXPECT_EQ(NyXmlText::toInt(view.substr(0, 1)), 1);
    EXPECT_EQ(NyXmlText::toDouble(view.substr(3, 2)), 34.0); // in front of an exponent
    EXPECT_EQ(NyXmlText::toDouble(view.substr(4, 2)), 4.0);
    EXPECT_EQ(NyXmlText::toDouble(view.substr(8, 1)), 0.0); // of a prefix
}

TEST(ValueTexts, RunsOfRealsAreTheNearestDoubles)
{
    std::mt19937_64 engine(1);
    auto const below = [&engine](unsigned int n) { return static_cast<int>(engine() % n); };
    for (int round = 0; round != 1000; ++round) {
        std::string run;
        std::vector<double> expected;
        for (int i = 0; i != 100; ++i) {
            // All lengths in front of the point and behind it; and what is rounded up to a power of two.
            std::array<char, 100> word{};
            if (below(20) == 0)
                std::snprintf(word.data(), word.size(), "%d.9999999999999999", (1 << below(20)) - 1);
            else
                std::snprintf(word.data(), word.size(), "%.*f", below(19),
                              std::ldexp(static_cast<double>(engine()) - 0x1p63, below(40) - 72));
            if (below(20) == 0)
                word[static_cast<std::size_t>(below(12))] = "-+. e"[below(5)];
            run.append(word.data()).append(static_cast<std::size_t>(below(3)) + 1, " \n\t"[below(3)]);
        }
        std::istringstream words(run);
        for (std::string word; words >> word;)
            expected.push_back(std::strtod(word.c_str(), nullptr));
        std::vector<double> taken;
        NyXmlText::appendDoubles(run, taken);
        ASSERT_EQ(taken.size(), expected.size());
        for (std::size_t i = 0; i != taken.size(); ++i)
            ASSERT_TRUE(same(taken[i], expected[i])) << run;
    }
}
