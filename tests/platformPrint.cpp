#include <nyXml/platform/NyPrint.h>

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <iomanip>
#include <locale>
#include <map>
#include <mutex>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

namespace {

/// Collects what is reported, by location, while it lives.
class Collector {
public:
    Collector()
    {
        Ny::Print::setHandler([this](int type, std::string const& location, std::string const& text) {
            std::lock_guard<std::mutex> const lock(m_Mutex);
            m_Texts[location] += text;
            m_LastType = type;
        });
    }
    ~Collector() { Ny::Print::setHandler({}); }

    std::string const& text(std::string const& location = std::string()) { return m_Texts[location]; }
    int lastType() const { return m_LastType; }

private:
    std::mutex m_Mutex;
    std::map<std::string, std::string> m_Texts;
    int m_LastType = 0;
};

TEST(PlatformPrint, WriteKeepsEveryByteOfAnyLength)
{
    std::string expected;
    Collector collector;
    for (std::size_t length : { 0, 1, 510, 511, 512, 513, 514, 100000 }) {
        std::string const text(length, 'x');
        Ny::Print::write(Ny::Print::FAULT, "%s|%d%%\n", text.c_str(), 7);
        expected += text + "|7%\n";
        EXPECT_EQ(collector.text(), expected) << length;
    }
    EXPECT_EQ(collector.lastType(), 4);
}

TEST(PlatformPrint, MessagesDependOnNoLocale)
{
    struct Grouped : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    std::string const before = std::setlocale(LC_ALL, nullptr);
    std::locale const cppBefore = std::locale::global(std::locale(std::locale::classic(), new Grouped));
    for (char const* name : { "de_DE.UTF-8", "de_DE.utf8", "de_DE", "fr_FR.UTF-8" })
        if (std::setlocale(LC_ALL, name)) // where none is installed, the stream's half of the test remains
            break;
    Collector collector;
    Ny::Print::write(4, "%.2f", 1234.5);
    std::thread([] { Ny::Print::ostream(3, "where") << 1234567 << ' ' << 0.5; }).join(); // its stream is made under that locale
    std::locale::global(cppBefore);
    std::setlocale(LC_ALL, before.c_str());
    EXPECT_EQ(collector.text(), "1234.50");
    EXPECT_EQ(collector.text("where"), "1234567 0.5");
    EXPECT_EQ(collector.lastType(), 3);
}

TEST(PlatformPrint, InsertionsArriveAtOnceAndManipulatorsStayInTheirMessage)
{
    Collector collector;
    std::ostream& stream = Ny::Print::ostream(4, "a");
    stream << "n = " << std::hex << std::showbase << 255;
    EXPECT_EQ(collector.text("a"), "n = 0xff"); // no flush, no end of line
    stream << std::setprecision(2) << std::boolalpha << std::setfill('*') << std::endl << std::setw(9);
    stream.setstate(std::ios::badbit);
    Ny::Print::ostream(4, "b") << 255 << ' ' << 0.125 << true << std::setw(3) << 1;
    EXPECT_EQ(collector.text("a"), "n = 0xff\n");
    EXPECT_EQ(collector.text("b"), "255 0.1251  1");
}

TEST(Threads, ReportSideBySide)
{
    Collector collector;
    std::vector<std::thread> threads;
    std::map<std::string, std::string> expected;
    for (int id = 0; id != 4; ++id) {
        std::string const location = "thread" + std::to_string(id);
        for (int i = 0; i != 200; ++i)
            expected[location] += "message " + std::to_string(i) + " of " + std::to_string(id) + "\n";
        threads.emplace_back([location, id] {
            for (int i = 0; i != 200; ++i) {
                Ny::Print::ostream(4, location) << "message " << i << " of " << id << std::endl;
                Ny::Print::write(4, "%s", "w");
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    for (auto const& [location, text] : expected)
        EXPECT_EQ(collector.text(location), text);
    EXPECT_EQ(collector.text(), std::string(800, 'w'));
}

TEST(PlatformPrint, WithoutHandlerTextGoesToStandardError)
{
    Collector{}; // an empty handler restores the default
    testing::internal::CaptureStderr();
    Ny::Print::write(4, "%s\n\t", "one");
    Ny::Print::ostream(4, "not shown") << "two " << 2;
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "one\n\ttwo 2");
}

// Objects with static life complain when they are destroyed, after the main thread's own stream is gone.
TEST(PlatformPrintDeathTest, ReportsAreHeardWhileTheProcessEnds)
{
    struct Reporter {
        ~Reporter()
        {
            Ny::Print::ostream(4, "late") << "still "
                                          << "heard\n";
        }
    };
    EXPECT_EXIT(
        {
            static Reporter reporter;
            Ny::Print::ostream(4, "early") << "first\n";
            std::exit(0);
        },
        testing::ExitedWithCode(0), "first\nstill heard\n");
}

} // namespace
