// Two threads, each of which reads documents of its own: how many times the documents of one thread they read in the same time.
//
// One and two take turns, and the middle of their ratios is printed. Wall clock: an idle machine of two cores tells what it is meant to.

#include "Model.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

void readDocuments(std::atomic<bool> const& isOver, std::atomic<unsigned int>& count)
{
    while (!isOver) {
        bench::LibraryCatalog catalog;
        bench::MemoryInput input(const_cast<std::string&>(bench::catalogDocument())); // which it only reads
        std::istream stream(&input);
        NyXmlReader reader("document", stream);
        reader.readXml();
        catalog.read(reader);
        ++count;
    }
}

/// Documents in a second.
double throughput(unsigned int threadCount)
{
    std::atomic<bool> isOver{ false };
    std::atomic<unsigned int> count{ 0 };
    auto const start = Clock::now();
    std::vector<std::thread> threads;
    for (unsigned int i = 0; i < threadCount; ++i)
        threads.emplace_back([&] { readDocuments(isOver, count); });
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    isOver = true;
    for (std::thread& thread : threads)
        thread.join();
    return count / std::chrono::duration<double>(Clock::now() - start).count();
}

} // namespace

int main()
{
    bench::divideSizesBy(100); // some milliseconds for a document
    bench::catalogDocument();
    throughput(2);
    std::array<double, 9> ratios;
    for (double& ratio : ratios) {
        double const one = throughput(1);
        ratio = throughput(2) / one;
    }
    std::sort(ratios.begin(), ratios.end());
    std::printf("%.2f\n", ratios[ratios.size() / 2]);
}
