// Peak memory, in a process of its own for each measurement, since a process cannot forget its peak.
//
//   nyXmlMemory make <file>      writes the catalog's document
//   nyXmlMemory empty <file>     what the process takes before it reads anything
//   nyXmlMemory walk <file>      pulls the events of the document
//   nyXmlMemory catalog <file>   reads the document into the library's objects
//   nyXmlMemory objects <file>   makes the same objects without reading anything; the file is not looked at
//
// Prints KiB.

#include "Model.h"

#include <sys/resource.h>

#include <cstdio>
#include <cstring>
#include <fstream>

namespace {

long peakKiB()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

int run(char const* what, char const* file)
{
    auto const asked = [what](char const* name) { return std::strcmp(what, name) == 0; };
    if (asked("make"))
        return std::ofstream(file) << bench::catalogDocument() ? 0 : 1;

    bench::LibraryCatalog catalog;
    std::ifstream stream(file);
    if (asked("walk")) {
        bench::Walked walked;
        bench::walk(stream, walked);
    } else if (asked("catalog")) {
        NyXmlReader reader(file, stream);
        reader.readXml();
        catalog.read(reader);
    } else if (asked("objects")) {
        catalog.reserve(bench::catalogParts());
        bench::forEachPart([&catalog](bench::Part const& part) { catalog.pushBack(bench::LibraryPart(part)); });
    } else if (!asked("empty")) {
        return 2;
    }
    std::printf("%ld\n", peakKiB());
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    int const result = argc == 3 ? run(argv[1], argv[2]) : 2;
    if (result == 2)
        std::fprintf(stderr, "usage: nyXmlMemory make|empty|walk|catalog|objects <file>\n");
    return result;
}
