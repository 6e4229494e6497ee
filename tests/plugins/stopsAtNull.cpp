// A box as the shapes have one, in another namespace, then a class without a creator: the list ends there, whatever stands behind.

#include "PluginObject.h"

namespace {

NyToken const tokens[] = { NyToken("http://example.com/other#box"), NyToken("broken"), NyToken("behind"), NyToken() };

NyXmlObject* newBox() { return new PluginObject("stopsAtNull"); }

NyXmlCreator const creators[] = { newBox, nullptr, newBox, nullptr };

} // namespace

NyToken const* getClassToken(int index) { return &tokens[index]; }

NyXmlCreator getCreator(int index) { return creators[index]; }
