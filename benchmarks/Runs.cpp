#include "Runs.h"

#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>

namespace bench {

namespace {

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

namespace {

/// What a workload is made of, so that its cost can be told for one of them.
std::size_t itemsOf(std::string const& workload)
{
    using namespace bench;
    if (workload == "readNumbers" || workload == "writeNumbers")
        return numbers().size();
    if (workload == "readPath" || workload == "writePath")
        return path().size();
    if (workload == "readMap" || workload == "writeMap")
        return weights().size();
    if (workload == "readTexts")
        return texts().size();
    return workload == "readFiles" ? smallFiles().size() : catalog().size();
}

/// A name of its own in the profile: callgrind counts what happens in here.
[[gnu::noinline]] void measured(bench::Run const& run) { run.run(); }

/// Prints the items of one run, and the least milliseconds of processor time that it took. The first time warms up. Each run pays for the
/// memory that it touches, as a program does that reads a document once.
int once(bench::Runs const& runs, std::string const& name, int times)
{
    for (bench::Run const& run : runs.all()) {
        if (run.name != name)
            continue;
        run.prepare();
        run.run();
        run.drop();
        double least = 0.0;
        for (int i = 0; i < times; ++i) {
            malloc_trim(0);
            run.prepare();
            std::clock_t const before = std::clock();
            measured(run);
            double const took = static_cast<double>(std::clock() - before) * 1000.0 / CLOCKS_PER_SEC;
            least = i == 0 ? took : std::min(least, took);
            run.drop();
        }
        std::printf("%zu %.3f\n", itemsOf(name.substr(0, name.find('/'))), least);
        return 0;
    }
    std::fprintf(stderr, "there is no run %s\n", name.c_str());
    return 2;
}

} // namespace

/// `list` names the runs, after each has shown that it gets the data right. `once <run> <divisor> <times>` makes one, on a part of the data:
/// every contender is measured in a process of its own, since one finds the heap as another left it, large pages included.
int main(int argc, char** argv)
{
    bench::Runs runs;
    bench::addLibrary(runs);
    bench::addPugixml(runs);
    bench::addRapidXml(runs);
    bench::addExpat(runs);
    bench::addLibxml2(runs);
    bench::addStdio(runs);
#ifdef NYXML_WITH_KIT
    bench::addStandard(runs);
#endif

    if (argc == 5 && std::strcmp(argv[1], "once") == 0) {
        bench::divideSizesBy(static_cast<unsigned int>(std::atoi(argv[3])));
        return once(runs, argv[2], std::atoi(argv[4]));
    }
    if (argc != 2 || std::strcmp(argv[1], "list") != 0) {
        std::fprintf(stderr, "usage: %s list\n       %s once <run> <divisor> <times>\n", argv[0], argv[0]);
        return 2;
    }
    if (!bench::allRight(runs))
        return 1;
    for (bench::Run const& run : runs.all())
        std::puts(run.name.c_str());
    return 0;
}
