// A box as the shapes have one, in another namespace, then a class without a creator: the list ends there, whatever stands behind.

#include <nyXml/compound/NyBaseXmlFactory.h>
#include <nyXml/values/NyXmlBasicType.h>

namespace {

NyToken const tokens[] = { NyToken("http://example.com/other#box"), NyToken("broken"), NyToken("behind"), NyToken() };

NyXmlObject* newBox() { return new NyXmlBasicType<std::string>("stopsAtNull"); }

NyXmlCreator const creators[] = { newBox, nullptr, newBox, nullptr };

} // namespace

extern "C" NYXML_EXPORT NyToken const* getClassToken(int index) { return &tokens[index]; }

extern "C" NYXML_EXPORT NyXmlCreator getCreator(int index) { return creators[index]; }
