#include <nyXml/platform/NyAngle.h>
#include <nyXml/platform/NyNonNegReal.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <locale>
#include <random>
#include <sstream>
#include <string>

namespace {

/// Catches what an insertion hands over.
class Catcher : public NyXmlWriter {
public:
    void type(std::type_info const& info) override { m_type = &info; }
    void data(std::string const& value) override { m_text = value; }

    template <class T>
    std::string textOf(T const& value)
    {
        *this << value;
        return m_text;
    }
    std::type_info const& lastType() const { return *m_type; }

private:
    std::string m_text;
    std::type_info const* m_type = nullptr;
};

/// The plain way: a stream of its own in the classic locale.
class PlainText {
public:
    explicit PlainText(int precision)
    {
        m_stream.imbue(std::locale::classic());
        m_stream.precision(precision);
    }
    std::string const& of(double value)
    {
        m_stream.str("");
        m_stream << value;
        return m_text = m_stream.str();
    }

private:
    std::ostringstream m_stream;
    std::string m_text;
};

/// What a process may have set: "1.234.567,5".
struct Grouped : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
    std::string do_truename() const override { return "ja"; }
};

TEST(WriterScalars, TextsAndTypesUnderAnyLocale)
{
    std::locale const before = std::locale::global(std::locale(std::locale::classic(), new Grouped));
    Catcher catcher;
    std::string const bytes("a\0 <", 4);
    EXPECT_EQ(catcher.textOf('c'), "c");
    EXPECT_EQ(catcher.textOf(static_cast<unsigned char>(200)), "200");
    EXPECT_EQ(catcher.lastType(), typeid(unsigned short));
    EXPECT_EQ(catcher.textOf(std::numeric_limits<short>::min()), "-32768");
    EXPECT_EQ(catcher.textOf(std::numeric_limits<unsigned short>::max()), "65535");
    EXPECT_EQ(catcher.textOf(std::numeric_limits<int>::min()), "-2147483648");
    EXPECT_EQ(catcher.textOf(std::numeric_limits<unsigned int>::max()), "4294967295");
    EXPECT_EQ(catcher.lastType(), typeid(unsigned int));
    EXPECT_EQ(catcher.textOf(true), "1");
    EXPECT_EQ(catcher.lastType(), typeid(bool));
    EXPECT_EQ(catcher.textOf(bytes), bytes);
    EXPECT_EQ(catcher.textOf("literal"), "literal");
    EXPECT_EQ(catcher.lastType(), typeid(std::string));
    EXPECT_EQ(catcher.textOf(1234567.5), "1234567.5");
    EXPECT_EQ(catcher.textOf(NyAngle(0.1)), "0.10000000000000000555");
    EXPECT_EQ(catcher.lastType(), typeid(NyAngle));
    EXPECT_EQ(catcher.textOf(NyNonNegReal(1e300)), PlainText(20).of(1e300));
    EXPECT_EQ(catcher.lastType(), typeid(NyNonNegReal));
    std::locale::global(before);
}

/// Forces the way through data(), which a plain writer cuts short for the values of an element.
class Detour : public NyXmlWriter {
public:
    using NyXmlWriter::NyXmlWriter;
    void data(std::string const& value) override { NyXmlWriter::data(value); }
};

template <class Writer>
std::string mixedDocument()
{
    std::ostringstream stream;
    Writer writer("d.xml", stream);
    writer.writeStartTag("u#r");
    writer.setAttributeName("a");
    writer << 0.1 << 'c' << true;
    for (int i = 0; i < 20; ++i)
        writer << i << i / 8.0 << static_cast<unsigned char>(i);
    writer.writeEndTag();
    return stream.str();
}

TEST(WriterScalars, ShortCutAndDetourGiveTheSameBytes) { EXPECT_EQ(mixedDocument<NyXmlWriter>(), mixedDocument<Detour>()); }

/// Compares the writer's two ways to print a real, 20 digits and a copy's 6, with the plain one.
class RealTexts : public testing::Test {
protected:
    void check(double value)
    {
        for (double const signedValue : { value, -value }) {
            ASSERT_EQ(m_full.textOf(signedValue), m_plainFull.of(signedValue));
            ASSERT_EQ(m_short.textOf(signedValue), m_plainShort.of(signedValue));
        }
    }
    void checkAround(double value)
    {
        check(value);
        check(std::nextafter(value, 0.0));
        check(std::nextafter(value, std::numeric_limits<double>::infinity()));
    }

private:
    Catcher m_full, m_short = Catcher(m_full);
    PlainText m_plainFull{ 20 }, m_plainShort{ 6 };
};

TEST_F(RealTexts, AtTheEdges)
{
    using Limits = std::numeric_limits<double>;
    for (double const value :
         { 0.0, Limits::infinity(), Limits::quiet_NaN(), Limits::max(), Limits::min(), Limits::denorm_min() })
        check(value);
    for (int exponent = -1074; exponent < 1024; ++exponent)
        checkAround(std::ldexp(1.0, exponent));
    for (int exponent = -30; exponent <= 30; ++exponent) {
        for (int factor = 1; factor < 100; ++factor)
            checkAround(std::stod(std::to_string(factor) + "e" + std::to_string(exponent)));
    }
}

TEST_F(RealTexts, OfSeededNumbers)
{
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> exponents(-14, 21);
    for (int i = 0; i < 50000; ++i) {
        std::uint64_t const bits = random();
        double value;
        std::memcpy(&value, &bits, sizeof value);
        check(value);                             // anywhere
        check(std::pow(10.0, exponents(random))); // where numbers usually are
        check(std::ldexp(static_cast<double>(bits % 4096) + 0.5,
                         -static_cast<int>(bits >> 32) % 64));      // ends exactly, ties included
        check(static_cast<double>(bits >> 20 & 0xffffff) / 1000.0); // as people write them
    }
}

} // namespace
