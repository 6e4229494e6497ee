// What a program without a library does: fprintf for every number.

#include "Runs.h"

#include <cstdio>
#include <cstdlib>

namespace bench {

namespace {

void writeNumbers(std::string& document)
{
    char* text = nullptr;
    std::size_t size = 0;
    std::FILE* const file = open_memstream(&text, &size);
    std::fprintf(file, "<numbers size=\"%zu\">\n <group>\n", numbers().size());
    for (double const number : numbers())
        std::fprintf(file, "%.20g\n", number);
    std::fprintf(file, " </group>\n</numbers>\n");
    std::fclose(file);
    document.assign(text, size);
    std::free(text);
}

} // namespace

void addStdio(Runs& runs) { runs.write("writeNumbers/fprintf", writeNumbers, numbers); }

} // namespace bench
