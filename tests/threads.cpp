// Each thread has its own readers, writers and objects, but classes, defaults and the print facility are everybody's.

#include "CompoundSupport.h"

#include <nyXml/values/NyXmlVectorBasicType.h>

#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace {

class Sample : public Model<Sample> {
public:
    void registerComponents() override { registerComponent(NyToken(ns, "numbers"), &numbers); }

    NyXmlVectorBasicType<NyXmlBasicType<double>> numbers;
};

TEST(Threads, ReadWriteAndReportSideBySide)
{
    constexpr int threadCount = 4;
    std::mutex mutex;
    std::map<std::string, std::string> reported; // by location
    Ny::Print::setHandler([&](int, std::string const& location, std::string const& text) {
        std::lock_guard<std::mutex> const lock(mutex);
        reported[location] += text;
    });

    std::atomic<int> waiting{ threadCount };
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i)
        threads.emplace_back([&waiting, name = "thread " + std::to_string(i)] {
            --waiting;
            while (waiting != 0) {} // together, so that first uses meet
            Sample sample;
            for (int round = 0; round < 50; ++round) {
                sample.numbers.pushBack(0.1 * round);
                std::string const document = writtenValue(sample);
                Sample again;
                readValue(again, document);
                Ny::Print::ostream(4, name) << round << (writtenValue(again) == document ? " same " : " different ");
                Ny::Print::write(4, "%s", "w");
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    Ny::Print::setHandler({});

    std::string expected;
    for (int round = 0; round < 50; ++round)
        expected += std::to_string(round) + " same ";
    for (int i = 0; i < threadCount; ++i)
        EXPECT_EQ(reported["thread " + std::to_string(i)], expected);
    EXPECT_EQ(reported[""], std::string(50 * threadCount, 'w'));
}

} // namespace
