#include <nyXmlKit/file/NyXmlWriteResult.h>

namespace {

char const* textOf(NyXmlWriteResult::Step step)
{
    using Step = NyXmlWriteResult::Step;
    switch (step) {
    case Step::NONE: return "";
    case Step::OBJECT: return "the object could not be written";
    case Step::OPEN: return "the file cannot be made";
    case Step::WRITE: return "the file cannot be written";
    case Step::SYNC: return "the file cannot be brought to the disk";
    case Step::RENAME: return "the file cannot take its place";
    case Step::FOLDER: return "the file's new name cannot be brought to the disk";
    }
    return "";
}

} // namespace

std::string NyXmlWriteResult::str() const
{
    std::string result;
    if (failedStep != Step::NONE)
        result = std::string(textOf(failedStep)) + (reason.empty() ? "" : ": " + reason) + '\n';
    for (NyXmlFault const& fault : faults)
        result += fault.str() + '\n';
    return result;
}
