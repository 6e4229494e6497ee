// Half a plug-in: creators, but no names for them.

#include "PluginObject.h"

NyXmlCreator getCreator(int) { return nullptr; }
