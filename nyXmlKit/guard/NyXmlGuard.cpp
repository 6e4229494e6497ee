#include <nyXmlKit/guard/NyXmlGuard.h>

NyXmlGuard NyXmlGuard::forStrangers()
{
    NyXmlGuard guard;
    guard.bytes = std::size_t(16) << 20;
    guard.depth = 256; // a thread of 512 KiB of stack has room for it
    guard.text = std::size_t(4) << 20;
    guard.attributes = 256;
    guard.items = 1'000'000;
    guard.includes = 16;
    guard.includeDepth = 4;
    guard.faults = 100;
    guard.time = std::chrono::seconds(10);
    guard.links = Links::NONE;
    guard.onlyRegularFiles = true;
    guard.noCycles = true;
    guard.http = { std::chrono::seconds(3), std::chrono::seconds(5), std::chrono::seconds(3), 1024 };
    guard.anyPlugIn = false;
    return guard;
}

char const* NyXmlGuard::nameOf(Limit limit)
{
    switch (limit) {
    case Limit::NONE: return "none";
    case Limit::BYTES: return "bytes";
    case Limit::DEPTH: return "depth";
    case Limit::TEXT: return "text";
    case Limit::ATTRIBUTES: return "attributes";
    case Limit::ITEMS: return "items";
    case Limit::INCLUDES: return "includes";
    case Limit::INCLUDE_DEPTH: return "include depth";
    case Limit::TIME: return "time";
    case Limit::FAULTS: return "faults";
    case Limit::LINKS: return "links";
    case Limit::REGULAR_FILES: return "regular files";
    case Limit::CYCLES: return "cycles";
    case Limit::PLUG_INS: return "plug-ins";
    }
    return "";
}
