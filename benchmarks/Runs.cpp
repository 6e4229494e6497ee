#include "Runs.h"

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <cstdio>

namespace bench {

namespace {

void time(benchmark::State& state, Run const& run)
{
    for (auto _ : state) {
        state.PauseTiming();
        run.prepare();
        state.ResumeTiming();
        run.run();
        state.PauseTiming();
        run.drop();
        // Each run pays for the memory that it touches, as a program does that reads a document once.
        malloc_trim(0);
        state.ResumeTiming();
    }
}

/// Every contender gets the same data out of a document, or into one, before anything is timed.
bool allRight(Runs const& runs)
{
    bool right = true;
    for (Run const& run : runs.all()) {
        run.prepare();
        run.run();
        if (!run.right()) {
            std::fprintf(stderr, "%s gives other data\n", run.name.c_str());
            right = false;
        }
        run.drop();
    }
    return right;
}

template <class Held>
bool reads(std::string& document, void (*read)(std::string&, Held&), Held const& data)
{
    Held held;
    read(document, held);
    return held == data;
}

} // namespace

bool Runs::holds(std::string document, Numbers const& data) { return reads(document, pugixmlReadNumbers, data); }
bool Runs::holds(std::string document, Catalog const& data) { return reads(document, pugixmlReadCatalog, data); }
bool Runs::holds(std::string document, Path const& data) { return reads(document, pugixmlReadPath, data); }
bool Runs::holds(std::string document, Weights const& data) { return reads(document, pugixmlReadWeights, data); }

} // namespace bench

int main(int argc, char** argv)
{
    bench::Runs runs;
    bench::addLibrary(runs);
    bench::addPugixml(runs);
    bench::addRapidXml(runs);
    bench::addExpat(runs);
    bench::addLibxml2(runs);
    bench::addStdio(runs);

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    if (!bench::allRight(runs))
        return 1;
    for (bench::Run const& run : runs.all())
        benchmark::RegisterBenchmark(run.name.c_str(), bench::time, run)->Unit(benchmark::kMillisecond);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
