#include "Support.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <iomanip>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <thread>

namespace {

TEST(PlatformPrint, WriteKeepsEveryByteOfAnyLength)
{
    Messages messages;
    Ny::Print::write(Ny::Print::FAULT, "%s", "");
    EXPECT_EQ(messages.take(), "");
    for (std::size_t length : { 0, 507, 508, 509, 100000 }) {
        std::string const text(length, 'x');
        Ny::Print::write(Ny::Print::FAULT, "%s|%d%%\n", text.c_str(), 7);
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
    EXPECT_EQ(messages.locations(), (std::vector<std::string>{ "", "where" }));
    EXPECT_EQ(messages.text(), "1234.50 3: 1234567");
}

TEST(PlatformPrint, InsertionsArriveAtOnceAndManipulatorsStayInTheirMessage)
{
    Messages messages;
    std::ostream& stream = Ny::Print::ostream(4, "a");
    stream << "n = " << std::hex << std::showbase << 255;
    EXPECT_EQ(messages.take(), "n = 0xff"); // no flush, no end of line
    stream << std::setprecision(2) << std::boolalpha << std::setfill('*') << std::endl << std::setw(9);
    stream.setstate(std::ios::failbit);
    Ny::Print::ostream(4, "b") << 255 << ' ' << 0.125 << true << std::setw(3) << 1;
    EXPECT_EQ(messages.text(), "\n255 0.1251  1");
}

/// A handler that puts `name(text)` behind what was heard, and a text of `throw` out of the reporting statement.
Ny::Print::Handler teller(std::string& heard, std::string const& name)
{
    return [&heard, name](int, std::string const& location, std::string const& text) {
        heard += location + name + '(' + text + ')';
        if (text == "throw")
            throw std::length_error("thrown");
    };
}

TEST(PlatformPrint, ScopesNestOnTheirThreadAlone)
{
    std::string heard;
    Ny::Print::setHandler(teller(heard, "process"));
    auto const reportBoth = [] {
        Ny::Print::write(4, "w");
        Ny::Print::ostream(3, "at ") << "o";
    };
    {
        Ny::Print::ThreadScope const outer(teller(heard, "outer"));
        auto inner = std::make_unique<Ny::Print::ThreadScope>(teller(heard, "inner"));
        reportBoth();
        std::thread(reportBoth).join();
        inner.reset();
        reportBoth();
        auto first = std::make_unique<Ny::Print::ThreadScope>(teller(heard, "first"));
        auto const second = std::make_unique<Ny::Print::ThreadScope>(teller(heard, "second"));
        first.reset(); // out of turn
        reportBoth();
    }
    reportBoth();
    Ny::Print::setHandler({});
    EXPECT_EQ(heard, "inner(w)at inner(o)process(w)at process(o)outer(w)at outer(o)second(w)at second(o)process(w)at process(o)");
}

TEST(PlatformPrint, WhatAHandlerReportsGoesToTheOneOutsideItAndLeavesTheOpenMessageAlone)
{
    std::string heard;
    auto const reporter = [&heard](std::string const& name) {
        return [&heard, name](int, std::string const& location, std::string const& text) {
            Ny::Print::ostream(4, name) << std::hex << 10;
            heard += location + name + '(' + text + ')';
        };
    };
    testing::internal::CaptureStderr();
    {
        Ny::Print::setHandler(reporter("p"));
        Ny::Print::ThreadScope const outer(reporter("o")), inner(reporter("i"));
        Ny::Print::ostream(0, "-") << 255 << "x";
    }
    Ny::Print::setHandler({});
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "aa"); // from the handler of the process, one for each piece
    EXPECT_EQ(heard, "op(a)io(a)-i(255)op(a)io(a)-i(x)");
}

TEST(PlatformPrint, ThrownByAHandlerLeavesTheStatementAndTheNextMessageIsWhole)
{
    std::string heard;
    Ny::Print::ThreadScope const outer(teller(heard, "outer"));
    {
        Ny::Print::ThreadScope const scope(teller(heard, ""));
        EXPECT_THROW(Ny::Print::write(4, "throw"), std::length_error);
        EXPECT_THROW(Ny::Print::ostream(4, "a") << "throw"
                                                << "lost",
                     std::length_error);
        EXPECT_THROW(Ny::Print::ostream(4, "b") << std::hex << 15 << "throw", std::length_error);
        Ny::Print::ostream(4, "c") << 15 << std::endl;
        Ny::Print::write(4, "end");
    }
    Ny::Print::write(4, "out");
    EXPECT_EQ(heard, "(throw)a(throw)b(f)b(throw)c(15)c(\n)(end)outer(out)");
}

TEST(PlatformPrint, HandlerMayPutAnotherInItsPlace)
{
    std::string heard;
    Ny::Print::setHandler([&heard, kept = std::string(100, 'k')](int, std::string const&, std::string const&) {
        Ny::Print::setHandler(teller(heard, "next"));
        heard += kept; // still ours
    });
    Ny::Print::ostream(4, "") << 1 << 2;
    Ny::Print::setHandler({});
    EXPECT_EQ(heard, std::string(100, 'k') + "next(2)");
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
