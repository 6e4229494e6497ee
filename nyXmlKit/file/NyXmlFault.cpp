#include <nyXmlKit/file/NyXmlFault.h>

std::string NyXmlFault::str() const
{
    std::string result = file;
    if (line > 0)
        result += ':' + std::to_string(line);
    if (column > 0)
        result += ':' + std::to_string(column);
    if (!result.empty())
        result += ": ";
    if (!path.empty())
        result += path + ": ";
    return result + text;
}
