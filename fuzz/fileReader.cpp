// The companion library's one call, guarded and strict, in both dialects: no document may throw, crash or hang it, and what the library
// wrote itself draws no fault.

#include "Fuzz.h"
#include "Model.h"

#include <nyXmlKit/file/NyXmlFile.h>

#include <sstream>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Input choices(data, size);
    NyXmlReadOptions options;
    options.dialect = choices.below(2) == 0 ? NyXmlDialect::CORE : NyXmlDialect::STANDARD;
    options.strictness = static_cast<NyXmlReadOptions::Strictness>(choices.below(3));
    options.anyRoot = true;
    options.guard = NyXmlGuard::forStrangers();
    options.guard->items = 1000;
    options.guard->depth = choices.below(40);
    std::uint64_t const mostBytes = choices.below(3) == 0 ? choices.below(5000) : ~0ull;
    options.progress = [&](std::uint64_t bytes, std::uint64_t) { return bytes <= mostBytes; };

    Said const said;
    Everything model;
    std::istringstream stream(choices.document());
    NyXmlReadResult const result = NyXmlFile::read(stream, "fuzz.xml", model, options);
    if (!said.text().empty())
        fault("something reached the application's handler: " + said.text());
    if (result.isWhole && (result.isCancelled || result.errorCode != 0))
        fault("whole and not whole");
    if (!result.isWhole && !result.isCancelled && result.faults.empty())
        fault("not whole, and nobody says why");
    for (NyXmlFault const& one : result.faults)
        if (one.text.empty() || one.file.empty())
            fault("a fault without words");
    return 0;
}
