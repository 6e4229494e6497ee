#include "FailingMemory.h"
#include "Support.h"

#include <nyXml/platform/NyAngle.h>
#include <nyXml/platform/NyNonNegReal.h>
#include <nyXml/values/NyXmlBasicType.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <istream>
#include <limits>
#include <new>
#include <ostream>
#include <random>
#include <string>
#include <typeindex>
#include <vector>

namespace {

/// Catches what insertions hand over.
class Catcher : public NyXmlWriter {
public:
    void type(std::type_info const& info) override { types.emplace_back(info); }
    void data(std::string const& value) override { texts.push_back(value); }

    std::vector<std::type_index> types;
    std::vector<std::string> texts;
};

TEST(WriterScalars, TextsAndTypesUnderAnyLocale)
{
    GroupedNumbers const grouped;
    Catcher catcher;
    std::string const bytes("a\0 <", 4);
    catcher << 'c' << static_cast<unsigned char>(200) << std::numeric_limits<short>::min()
            << std::numeric_limits<unsigned short>::max() << std::numeric_limits<int>::min()
            << std::numeric_limits<unsigned int>::max() << 1234567.5 << true << false << bytes << "literal" << NyAngle(-0.1)
            << NyNonNegReal(1e300);
    EXPECT_EQ(catcher.texts,
              (std::vector<std::string>{ "c", "200", "-32768", "65535", "-2147483648", "4294967295", "1234567.5", "1", "0", bytes,
                                         "literal", "-0.10000000000000000555", "1.0000000000000000525e+300" }));
    EXPECT_EQ(catcher.types,
              (std::vector<std::type_index>{ typeid(char), typeid(unsigned short), typeid(short), typeid(unsigned short),
                                             typeid(int), typeid(unsigned int), typeid(double), typeid(bool), typeid(bool),
                                             typeid(std::string), typeid(std::string), typeid(NyAngle), typeid(NyNonNegReal) }));
}

// A writer prints 20 digits in a way of its own, and a copy 6 in another.
TEST(WriterScalars, RealsAreAsPrintfHasThem)
{
    using Limits = std::numeric_limits<double>;
    std::vector<double> values{
        0.0, Limits::infinity(), Limits::quiet_NaN(), Limits::max(), Limits::denorm_min(), 1.0000058530000000001
    }; // whose last digits are zeros but one
    for (int exponent = -1074; exponent < 1024; ++exponent)
        values.push_back(std::ldexp(1.0, exponent));
    for (int exponent = -30; exponent <= 30; ++exponent) {
        for (int factor = 1; factor < 100; ++factor)
            values.push_back(std::stod(std::to_string(factor) + "e" + std::to_string(exponent)));
    }
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> exponents(-14, 21);
    for (int i = 0; i < 30000; ++i) {
        std::uint64_t const bits = random();
        std::memcpy(&values.emplace_back(), &bits, sizeof bits);
        values.push_back(std::pow(10.0, exponents(random))); // where numbers usually are
        values.push_back(std::ldexp(static_cast<double>(bits % 4096) + 0.5,
                                    -static_cast<int>(bits >> 32) % 64));      // ends exactly, ties included
        values.push_back(static_cast<double>(bits >> 20 & 0xffffff) / 1000.0); // as people write them
    }

    Catcher full, copy = Catcher(full);
    auto const printed = [](Catcher& catcher, double value) {
        catcher.texts.clear();
        catcher << value;
        return catcher.texts.back();
    };
    for (double const value : values) {
        for (double const real : { value, -value, std::nextafter(value, 0.0), std::nextafter(value, Limits::infinity()) }) {
            std::array<char, 64> expected;
            std::snprintf(expected.data(), expected.size(), "%.20g", real);
            ASSERT_EQ(printed(full, real), expected.data());
            std::snprintf(expected.data(), expected.size(), "%.6g", real);
            ASSERT_EQ(printed(copy, real), expected.data());
        }
    }
}

/// A value of an application, with a text that no short string holds. Its stream goes bad over it.
struct Long {
    friend std::ostream& operator<<(std::ostream& stream, Long const&)
    {
        (stream << std::string(100, 'x')).setstate(std::ios::badbit);
        return stream << "lost";
    }
    friend std::istream& operator>>(std::istream& stream, Long&) { return stream; }
    bool operator==(Long const&) const { return true; }
};

// Streams keep an exception to themselves and take nothing more: a document went on without its numbers.
TEST(WriterScalars, MemoryThatRunsOutComesOutAndLeavesTheNextValueRight)
{
    void (*const gives[])(NyXmlWriter&) = {
        [](NyXmlWriter& writer) { writer << NyAngle(0.1); },
        [](NyXmlWriter& writer) { writer << NyNonNegReal(0.1); },
        [](NyXmlWriter& writer) { writer << 0.1; },
        [](NyXmlWriter& writer) { writer << std::string(100, 's'); },
        [](NyXmlWriter& writer) { NyXmlBasicType<Long>().write(writer); },
    };
    for (auto const give : gives) {
        std::string const text = [&] {
            Catcher catcher;
            give(catcher);
            return catcher.texts.back();
        }();
        EXPECT_EQ(text.find("lost"), std::string::npos);
        unsigned int failures = 0;
        for (bool fails = true; fails; ++failures) {
            std::ostringstream stream;
            NyXmlWriter writer("d.xml", stream);
            writer.writeStartTag("u#r");
            bool isThrough = false;
            fails = failsAt(failures, [&] { give(writer), isThrough = true; });
            EXPECT_NE(fails, isThrough);
            give(writer);
            writer.writeEndTag();
            std::string const content = fails ? text : text + ' ' + text, document = stream.str();
            EXPECT_NE(document.find((content.size() > 50 ? ">\n " + content + '\n' : '>' + content) + "</r>"), std::string::npos)
                << document;
        }
        EXPECT_GT(failures, 1u); // it did come to that
    }
}

} // namespace
