#include <nyXml/platform/NyApplication.h>
#include <nyXml/traversal/NyXmlSignals.h>

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <typeinfo>
#include <vector>

namespace {

using Progress = Ny::SignalReadWriteProgressTraits;
using Status = Ny::SignalReadWriteStatusTraits;
using Handle = boost::shared_ptr<Ny::ConnectionManagerTypes::Connection>;

Ny::ConnectionManager& manager() { return Ny::Application::instance().connectionManager(); }

/// A signal of an application's own, beside the library's.
struct OwnTraits {
    using Signature = void(int, int);
    using SignalType = boost::signals2::signal<Signature>;
    static std::string name() { return "ownSignal"; }
};

TEST(PlatformSignals, SlotsRunByGroupThenInOrderOfConnectionUntilTheirLastHandleGoes)
{
    std::string heard;
    std::vector<Handle> handles;
    for (auto const& [group, mark] : { std::pair(5, 'd'), std::pair(-1, 'a'), std::pair(2, 'b'), std::pair(2, 'c') })
        handles.push_back(manager().createSlot<Status>(
            "signalReadWriteMsg", [&heard, mark = mark](std::string text) { heard += mark + text; }, group));
    auto const signal = Ny::namedSignal<Status>(manager());
    (*signal)("1");
    Handle const last = handles[1];
    handles.clear();
    (*signal)("2");
    EXPECT_EQ(heard, "a1b1c1d1a2");
}

TEST(PlatformSignals, NameMakesTheSignalAndTypesAreNotMixedUp)
{
    int sum = 0;
    auto const handle = manager().createSlot<OwnTraits>(
        "ownSignal", [&sum](int a, int b) { sum += a * b; }, 0);
    (*Ny::namedSignal<OwnTraits>(manager()))(6, 7);
    EXPECT_EQ(sum, 42);
    EXPECT_THROW((void)manager().createSlot<Progress>("signalReadWriteMsg", {}, 0), std::bad_cast);
    EXPECT_THROW((void)manager().createSlot<Status>("ownSignal", {}, 0), std::bad_cast);
}

TEST(Threads, FirstUseOfASignalMayComeFromAnyOfThem)
{
    struct SharedTraits : OwnTraits {
        static std::string name() { return "made by whichever thread comes first"; }
    };
    constexpr int rounds = 100;
    std::atomic<int> heard{ 0 };
    auto const connectAndEmit = [&heard] {
        for (int i = 0; i != rounds; ++i) {
            auto const own = manager().createSlot<SharedTraits>(
                SharedTraits::name(), [&heard](int, int) { ++heard; }, i);
            (*Ny::namedSignal<SharedTraits>(manager()))(i, i);
        }
    };
    std::thread other(connectAndEmit);
    connectAndEmit();
    other.join();
    EXPECT_GE(heard, 2 * rounds); // each hears at least itself
}

} // namespace
