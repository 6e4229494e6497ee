// Half a plug-in: a name, but nobody to make it.

#include <nyXml/core/NyToken.h>
#include <nyXml/platform/NyXmlExport.h>

extern "C" NYXML_EXPORT NyToken const* getClassToken(int)
{
    static NyToken const token("never");
    return &token;
}
