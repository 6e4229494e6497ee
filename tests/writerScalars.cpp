#include <nyXml/platform/NyAngle.h>
#include <nyXml/platform/NyNonNegReal.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <locale>
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

/// What a process may have set: "1.234.567,5".
struct Grouped : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(WriterScalars, TextsAndTypesUnderAnyLocale)
{
    std::locale const before = std::locale::global(std::locale(std::locale::classic(), new Grouped));
    Catcher catcher;
    std::string const bytes("a\0 <", 4);
    catcher << 'c' << static_cast<unsigned char>(200) << std::numeric_limits<short>::min()
            << std::numeric_limits<unsigned short>::max() << std::numeric_limits<int>::min()
            << std::numeric_limits<unsigned int>::max() << 1234567.5 << true << false << bytes << "literal" << NyAngle(-0.1)
            << NyNonNegReal(1e300);
    std::locale::global(before);
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
    Catcher full, copy = Catcher(full);
    auto const checkWith = [](Catcher& catcher, int precision, double value) {
        std::array<char, 64> plain;
        std::snprintf(plain.data(), plain.size(), "%.*g", precision, value);
        catcher.texts.clear();
        catcher << value;
        ASSERT_EQ(catcher.texts.back(), plain.data());
    };
    auto const check = [&](double value) {
        for (double const real : { value, -value }) {
            if (HasFatalFailure())
                return; // one is enough
            checkWith(full, 20, real);
            checkWith(copy, 6, real);
        }
    };
    auto const checkAround = [&check](double value) {
        check(value);
        check(std::nextafter(value, 0.0));
        check(std::nextafter(value, std::numeric_limits<double>::infinity()));
    };

    using Limits = std::numeric_limits<double>;
    for (double const value : { 0.0, Limits::infinity(), Limits::quiet_NaN(), Limits::max(), Limits::denorm_min() })
        check(value);
    for (int exponent = -1074; exponent < 1024; ++exponent)
        checkAround(std::ldexp(1.0, exponent));
    for (int exponent = -30; exponent <= 30; ++exponent) {
        for (int factor = 1; factor < 100; ++factor)
            checkAround(std::stod(std::to_string(factor) + "e" + std::to_string(exponent)));
    }
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> exponents(-14, 21);
    for (int i = 0; i < 50000; ++i) {
        std::uint64_t const bits = random();
        double anywhere;
        std::memcpy(&anywhere, &bits, sizeof anywhere);
        check(anywhere);
        check(std::pow(10.0, exponents(random))); // where numbers usually are
        check(std::ldexp(static_cast<double>(bits % 4096) + 0.5,
                         -static_cast<int>(bits >> 32) % 64));      // ends exactly, ties included
        check(static_cast<double>(bits >> 20 & 0xffffff) / 1000.0); // as people write them
    }
}

} // namespace
