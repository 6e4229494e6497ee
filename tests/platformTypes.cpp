#include <nyXml/platform/NyAngle.h>
#include <nyXml/platform/NyDllLoader.h>
#include <nyXml/platform/NyNonNegReal.h>
#include <nyXml/platform/NyOrientation.h>
#include <nyXml/platform/NyStringConversion.h>
#include <nyXml/platform/NyVector.h>

#include <gtest/gtest.h>

#include <cmath>
#include <iomanip>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <utility>

namespace {

double const infinity = std::numeric_limits<double>::infinity();
double const notANumber = std::numeric_limits<double>::quiet_NaN();

TEST(PlatformTypes, NumbersHaveTheShortestTextThatReadsBack)
{
    std::pair<double, char const*> const rows[] = { { 0.25, "0.25" },   { 1, "1" },     { 1e30, "1e+30" },
                                                    { 10000, "10000" }, { -0.0, "-0" }, { 0.1 + 0.2, "0.30000000000000004" } };
    for (auto const& [value, text] : rows)
        EXPECT_EQ(NyDOUBLE2STRING(value), text);
    EXPECT_EQ(NyDOUBLE2STRING(std::numeric_limits<double>::lowest()), "-1.7976931348623157e+308"); // none is longer
    EXPECT_EQ(NyINT2STRING(std::numeric_limits<int>::min()), "-2147483648");
}

NyOrientation normalized(NyOrientation orientation)
{
    orientation.normalize();
    return orientation;
}

// A document of rotations has to stay the same however often it is read and written.
TEST(PlatformTypes, NormalizingTwiceIsNormalizingOnce)
{
    std::mt19937 random(3);
    std::normal_distribution<double> component;
    for (int i = 0; i < 2000; ++i) {
        NyOrientation const once =
            normalized(NyOrientation(component(random), component(random), component(random), component(random)));
        EXPECT_EQ(normalized(once), once);
        NyOrientation const off(once.q0() * (1 + 1e-14), once.q1() * (1 + 1e-14), once.q2() * (1 + 1e-14),
                                once.q3() * (1 + 1e-14));
        EXPECT_NE(normalized(off), off) << "more than rounding";
    }
}

TEST(PlatformTypes, NormalizeReachesUnitLengthFromAnySize)
{
    for (double size : { 2.0, 3e-200, 1e200, 4e-320, 1.7e308 })
        EXPECT_EQ(normalized(NyOrientation(size, -size, size, -size)), NyOrientation(0.5, -0.5, 0.5, -0.5)) << size;
    EXPECT_EQ(normalized(NyOrientation(0, 0, 0, 0)), NyOrientation(0, 0, 0, 0));
}

TEST(PlatformTypes, EachComponentCounts)
{
    NyOrientation const plain(1, 2, 3, 4);
    for (std::size_t i = 0; i != 4; ++i) {
        double c[] = { 1, 2, 3, 4 };
        c[i] = infinity;
        NyOrientation const other(c[0], c[1], c[2], c[3]);
        EXPECT_TRUE(other != plain && !(other == plain) && normalized(other) == other) << i;
        EXPECT_EQ(NyVector(c[0], c[1], c[2]) == NyVector(1, 2, 3), i == 3);
        EXPECT_EQ(NyVector(c[0], c[1], c[2]) != NyVector(1, 2, 3), i != 3);
    }
}

/// What is left of the value 7 by an extraction from the text.
template <class Unit>
std::string extracted(char const* text)
{
    Unit value = 7.0;
    std::istringstream stream(text);
    bool const good = static_cast<bool>(stream >> value);
    std::ostringstream shown;
    shown << std::setprecision(3) << value << (good ? "" : " failed");
    return shown.str();
}

TEST(PlatformTypes, UnitsPassThroughStreamsAsNumbers)
{
    struct {
        char const *text, *angle, *nonNegReal;
    } const rows[] = { { " 1.23456 rest", "1.23", "1.23" },
                       { "-2", "-2", "7 failed" },
                       { "x", "7 failed", "7 failed" },
                       { "1e999", "7 failed", "7 failed" } };
    for (auto const& row : rows) {
        EXPECT_EQ(extracted<NyAngle>(row.text), row.angle) << row.text;
        EXPECT_EQ(extracted<NyNonNegReal>(row.text), row.nonNegReal) << row.text;
    }
    for (double value : { -1.0, -0.0, notANumber })
        EXPECT_FALSE(NyNonNegReal(value) != 0.0 || std::signbit(NyNonNegReal(value))) << value;
}

TEST(PlatformTypes, DllLoaderAnswersForItsOwnLibraryOnly)
{
    NyDllLoader loader;
    EXPECT_EQ(loader.loadDll("", "", false), nullptr);
    EXPECT_NE(loader.loadDll("libm.so.6", "6", false), nullptr);
    EXPECT_EQ(loader.loadDll("no such library.nyp", "nyp", false), nullptr);
    EXPECT_EQ(loader.getFunction("cos"), nullptr);     // the failure made it forget libm
    for (std::size_t length : { 4095, 4096, 8 << 20 }) // around the longest path, and more than the stack holds
        EXPECT_EQ(loader.loadDll(std::string(length, 'x'), "", false), nullptr) << length;
}

TEST(PlatformTypes, DllLoaderAsksTheGateForTheNameThatIsLoaded)
{
    std::string const math = "libm.so.6", behindZero = math + std::string(1, '\0') + "x";
    std::string asked;
    auto const load = [](std::string const& name) {
        NyDllLoader loader;
        return loader.loadDll(name, "", false) != nullptr && loader.getFunction("cos") != nullptr;
    };
    EXPECT_FALSE(NyDllLoader::setGate([&asked](std::string const& name) { return asked += name + '|', true; }));
    EXPECT_TRUE(load(math));
    EXPECT_FALSE(load(behindZero)); // the system would load libm.so.6, and the gate hear of another
    EXPECT_EQ(asked, "libm.so.6|");
    auto const before = NyDllLoader::setGate([](std::string const&) { return false; });
    EXPECT_FALSE(load(math));
    EXPECT_TRUE(before(""));
    NyDllLoader::setGate([](std::string const& name) -> bool { throw name; });
    EXPECT_THROW(load(math), std::string);
    NyDllLoader::setGate({});
    EXPECT_TRUE(load(math));
}

} // namespace
