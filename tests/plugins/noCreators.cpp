// Half a plug-in: a name, but nobody to make it.

#include "PluginObject.h"

NyToken const* getClassToken(int)
{
    static NyToken const token("never");
    return &token;
}
