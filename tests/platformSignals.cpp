#include <nyXml/platform/NyApplication.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/traversal/NyXmlSignals.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <gtest/gtest.h>

#include <atomic>
#include <sstream>
#include <string>
#include <thread>
#include <typeinfo>
#include <vector>

namespace {

using Progress = Ny::SignalReadWriteProgressTraits;
using Status = Ny::SignalReadWriteStatusTraits;

Ny::ConnectionManager& manager() { return Ny::Application::instance().connectionManager(); }

TEST(PlatformSignals, SlotsRunByGroupThenInOrderOfConnectionUntilTheirLastHandleGoes)
{
    std::string heard;
    std::vector<boost::shared_ptr<Ny::ConnectionManagerTypes::Connection>> handles;
    for (auto const& [group, mark] : { std::pair(5, 'd'), std::pair(-1, 'a'), std::pair(2, 'b'), std::pair(2, 'c') })
        handles.push_back(manager().createSlot<Status>(
            "signalReadWriteMsg", [&heard, mark = mark](std::string text) { heard += mark + text; }, group));
    auto const signal = Ny::namedSignal<Status>(manager());
    (*signal)("1");
    auto const last = handles[1];
    handles.clear();
    (*signal)("2");
    EXPECT_EQ(heard, "a1b1c1d1a2");
    EXPECT_THROW((void)manager().createSlot<Progress>("signalReadWriteMsg", {}, 0), std::bad_cast);
}

TEST(PlatformSignals, ReadersAndWritersTellOfTheirLinks)
{
    std::ostringstream heard;
    auto const progress = manager().createSlot<Progress>(
        "signalReadWriteProgress", [&heard](double value) { heard << value << ' '; }, 0);
    auto const status = manager().createSlot<Status>(
        "signalReadWriteMsg", [&heard](std::string const& text) { heard << '"' << text << "\" "; }, 0);
    auto const countLinks = [](auto& counter) {
        counter.incrementLinkCount();
        counter.incrementLinkCount();
        counter.setLinkTotal(4);
        counter.incrementLinkCount();
        counter.resetLinkCount();
        counter.incrementLinkCount();
        std::decay_t<decltype(counter)>(counter).incrementLinkCount(); // nobody hears a copy
    };
    NyXmlReader reader, assigned;
    NyXmlWriter writer;
    countLinks(reader);
    assigned = reader;
    assigned.incrementLinkCount(); // its signals and counters are its own
    countLinks(writer);
    EXPECT_EQ(heard.str(), "1 \"\" 2 \"\" 0.75 \"\" 0.25 \"\" 1 \"\" "
                           "1 \"Writing: 1\" 2 \"Writing: 2\" 0.75 \"Writing: 0.75\" 0.25 \"Writing: 0.25\" ");
}

TEST(Threads, FirstUseOfASignalMayComeFromAnyOfThem)
{
    struct OwnTraits {
        using Signature = void(int, int);
        using SignalType = boost::signals2::signal<Signature>;
        static std::string name() { return "made by whichever thread comes first"; }
    };
    constexpr int rounds = 100;
    std::atomic<int> heard{ 0 };
    auto const connectAndEmit = [&heard] {
        for (int i = 0; i != rounds; ++i) {
            auto const own = manager().createSlot<OwnTraits>(
                OwnTraits::name(), [&heard](int, int) { ++heard; }, i);
            (*Ny::namedSignal<OwnTraits>(manager()))(i, i);
        }
    };
    std::thread other(connectAndEmit);
    connectAndEmit();
    other.join();
    EXPECT_GE(heard, 2 * rounds); // each hears at least itself
}

} // namespace
