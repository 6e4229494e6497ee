// A plug-in without a class. Nobody asks for a creator, since the list ends before.

#include "PluginObject.h"

#include <cstdlib>

NyToken const* getClassToken(int)
{
    static NyToken const end;
    return &end;
}

NyXmlCreator getCreator(int) { std::abort(); }
