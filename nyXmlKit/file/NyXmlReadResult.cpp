#include <nyXmlKit/file/NyXmlReadResult.h>

#include <algorithm>

bool NyXmlReadResult::has(NyXmlFault::Kind kind) const noexcept
{
    return std::any_of(faults.begin(), faults.end(), [kind](NyXmlFault const& fault) { return fault.kind == kind; });
}

std::string NyXmlReadResult::str() const
{
    std::string result;
    for (NyXmlFault const& fault : faults)
        result += fault.str() + '\n';
    return result;
}
