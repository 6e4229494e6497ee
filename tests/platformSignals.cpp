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

TEST(PlatformSignals, SlotsRunByGroupThenInOrderOfConnection)
{
    std::string heard;
    std::vector<Handle> handles;
    for (auto const& [group, mark] : { std::pair(5, 'd'), std::pair(-1, 'a'), std::pair(2, 'b'), std::pair(2, 'c') })
        handles.push_back(manager().createSlot<Progress>(
            "signalReadWriteProgress",
            [&heard, mark = mark](double value) { heard += mark + std::to_string(static_cast<int>(value)); }, group));
    (*Ny::namedSignal<Progress>(manager()))(3.0);
    EXPECT_EQ(heard, "a3b3c3d3");
}

TEST(PlatformSignals, LastOwnerOfTheHandleDisconnects)
{
    std::string heard;
    auto const signal = Ny::namedSignal<Status>(manager());
    Handle handle = manager().createSlot<Status>(
        Status::name(), [&heard](std::string text) { heard += text; }, 0);
    Handle other = handle;
    (*signal)("1");
    handle.reset();
    (*signal)("2");
    other.reset();
    (*signal)("3");
    EXPECT_EQ(heard, "12");
    EXPECT_TRUE(signal->empty());
}

TEST(PlatformSignals, NameMakesTheSignalAndTypesAreNotMixedUp)
{
    int sum = 0;
    auto const handle = manager().createSlot<OwnTraits>(
        "ownSignal", [&sum](int a, int b) { sum += a * b; }, 0);
    (*Ny::namedSignal<OwnTraits>(manager()))(6, 7);
    EXPECT_EQ(sum, 42);
    EXPECT_NE(Ny::namedSignal<Progress>(manager()), nullptr);
    EXPECT_THROW((void)manager().createSlot<Progress>(
                     "signalReadWriteMsg", [](double) {}, 0),
                 std::bad_cast);
    EXPECT_THROW((void)manager().createSlot<Status>(
                     "ownSignal", [](std::string) {}, 0),
                 std::bad_cast);
}

// What readers and writers do when they are constructed and count links, on several threads at once.
TEST(Threads, LookUpConnectAndEmitSideBySide)
{
    struct SharedTraits : OwnTraits {
        static std::string name() { return "made by whichever thread comes first"; }
    };
    constexpr int threadCount = 4;
    constexpr int rounds = 100;
    std::atomic<int> heardByAll{ 0 };
    std::atomic<int> heardByOwn{ 0 };
    auto const handle = manager().createSlot<Progress>(
        Progress::name(), [&heardByAll](double) { ++heardByAll; }, 0);
    std::vector<std::thread> threads;
    for (int id = 0; id != threadCount; ++id)
        threads.emplace_back([&heardByOwn] {
            for (int i = 0; i != rounds; ++i) {
                auto const own = manager().createSlot<SharedTraits>(
                    SharedTraits::name(), [&heardByOwn](int, int) { ++heardByOwn; }, i);
                (*Ny::namedSignal<Status>(manager()))("");
                (*Ny::namedSignal<Progress>(manager()))(i);
                (*Ny::namedSignal<SharedTraits>(manager()))(i, i);
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(heardByAll, threadCount * rounds);
    EXPECT_GE(heardByOwn, threadCount * rounds); // each hears at least itself
}

} // namespace
