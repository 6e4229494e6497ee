// The writer against a twin that does literally what its calls say: random calls and random trees of objects, with code of an application in
// the middle, streams that break and calls that throw.

#include "../tests/WriterScenes.h"
#include "Fuzz.h"

using namespace writerScenes;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Choices const choices(data, size);
    std::string const ours = played<NyXmlWriter>(choices);
    std::string const literal = played<LiteralWriter>(choices);
    if (ours != literal)
        fault("the writers differ\n--- library\n" + ours + "\n--- literal\n" + literal);
    return 0;
}
