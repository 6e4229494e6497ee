#include "Support.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <iomanip>
#include <ostream>
#include <thread>

namespace {

TEST(PlatformPrint, WriteKeepsEveryByteOfAnyLength)
{
    Messages messages;
    for (std::size_t length : { 0, 507, 508, 509, 100000 }) {
        std::string const text(length, 'x');
        Ny::Print::write(Ny::Print::FAULT, "%s|%d%%\n", text.c_str(), 7);
        EXPECT_EQ(messages.types(), std::vector{ 4 });
        EXPECT_EQ(messages.take(), text + "|7%\n") << length;
    }
}

TEST(PlatformPrint, MessagesDependOnNoLocale)
{
    std::string const before = std::setlocale(LC_ALL, nullptr);
    Messages messages;
    {
        GroupedNumbers const grouped;
        std::setlocale(LC_ALL, "de_DE.UTF-8"); // where that is not installed, the stream's half of the test remains
        Ny::Print::write(4, "%.2f ", 1234.5);
        std::thread([] { Ny::Print::ostream(3, "where") << 1234567; }).join(); // its stream is made under that locale
    }
    std::setlocale(LC_ALL, before.c_str());
    EXPECT_EQ(messages.types(), (std::vector{ 4, 3 }));
    EXPECT_EQ(messages.locations(), (std::vector<std::string>{ "", "where" }));
    EXPECT_EQ(messages.text(), "1234.50 1234567");
}

TEST(PlatformPrint, InsertionsArriveAtOnceAndManipulatorsStayInTheirMessage)
{
    Messages messages;
    std::ostream& stream = Ny::Print::ostream(4, "a");
    stream << "n = " << std::hex << std::showbase << 255;
    EXPECT_EQ(messages.take(), "n = 0xff"); // no flush, no end of line
    stream << std::setprecision(2) << std::boolalpha << std::setfill('*') << std::endl << std::setw(9);
    stream.setstate(std::ios::badbit);
    Ny::Print::ostream(4, "b") << 255 << ' ' << 0.125 << true << std::setw(3) << 1;
    EXPECT_EQ(messages.text(), "\n255 0.1251  1");
}

// Objects with static life complain when they are destroyed, after the main thread's own stream is gone.
TEST(PlatformPrintDeathTest, StandardErrorHearsReportsToTheEndOfTheProcess)
{
    struct Reporter {
        ~Reporter() { Ny::Print::ostream(4, "late") << "still heard\n"; }
    };
    EXPECT_EXIT(
        {
            static Reporter reporter;
            Messages(); // an empty handler restores the default
            Ny::Print::write(4, "%s\n\t", "one");
            Ny::Print::ostream(4, "not shown") << "two " << 2;
            std::exit(0);
        },
        testing::ExitedWithCode(0), "^one\n\ttwo 2still heard\n$");
}

} // namespace
