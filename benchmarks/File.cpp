// What the companion library's one call costs over the core's reader: the catalog, numbers and small files, plainly, guarded and strictly.
//
//     nyXmlFile [rounds]
//
// Prints the processor time of each as a ratio to the core's own reading, medians of interleaved rounds.

#include "Data.h"
#include "Model.h"

#include <nyXmlKit/file/NyXmlFile.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <functional>
#include <vector>

namespace {

using namespace bench;
using LibraryNumbers = NyXmlVectorBasicType<NyXmlBasicType<double>>;

double seconds()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

template <class Object>
void readByCore(std::string const& path, Object& object)
{
    std::ifstream stream(path, std::ios::binary);
    NyXmlReader reader(path, stream);
    reader.readXml();
    object.read(reader);
}

/// \tparam Object  read anew in each run from each of the files
template <class Object>
void compare(char const* name, std::vector<std::string> const& paths, int rounds)
{
    NyXmlReadOptions plain;
    plain.anyRoot = true;
    NyXmlReadOptions guarded = plain;
    guarded.guard = NyXmlGuard::forStrangers();
    guarded.guard->bytes = guarded.guard->items = guarded.guard->text = std::size_t(1) << 30;
    NyXmlReadOptions strict = plain;
    strict.strictness = NyXmlReadOptions::Strictness::LEFT_OUT_FITS; // the small files leave out what they can
    auto const byFile = [](NyXmlReadOptions const& options) {
        return [&options](std::string const& path, Object& object) {
            if (auto const result = NyXmlFile::read(path, object, options); !result) {
                std::fputs(result.str().substr(0, 1000).c_str(), stderr);
                std::exit(1);
            }
        };
    };
    std::vector<std::function<void(std::string const&, Object&)>> const ways = { readByCore<Object>, byFile(plain),
                                                                                 byFile(guarded), byFile(strict) };
    std::vector<std::vector<double>> times(ways.size());
    for (int round = 0; round < rounds; ++round)
        for (std::size_t way = 0; way < ways.size(); ++way) {
            double const start = seconds();
            for (std::string const& path : paths) {
                Object object;
                ways[way](path, object);
            }
            times[way].push_back(seconds() - start);
        }
    auto const median = [](std::vector<double> values) {
        std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2), values.end());
        return values[values.size() / 2];
    };
    double const core = median(times[0]);
    std::printf("%-10s core %.1f ms, plain %.2f, guarded %.2f, strict %.2f\n", name, 1e3 * core, median(times[1]) / core,
                median(times[2]) / core, median(times[3]) / core);
}

std::vector<std::string> inFile(char const* name, std::string const& document)
{
    std::ofstream(name, std::ios::binary) << document;
    return { name };
}

} // namespace

int main(int argc, char** argv)
{
    int const rounds = argc > 1 ? std::atoi(argv[1]) : 9;
    compare<LibraryCatalog>("catalog", inFile("/dev/shm/nyXmlFileCatalog.xml", catalogDocument()), rounds);
    compare<LibraryNumbers>("numbers", inFile("/dev/shm/nyXmlFileNumbers.xml", numbersDocument()), rounds);
    compare<LibraryPart>("files", smallFiles(), rounds);
    std::remove("/dev/shm/nyXmlFileCatalog.xml");
    std::remove("/dev/shm/nyXmlFileNumbers.xml");
}
