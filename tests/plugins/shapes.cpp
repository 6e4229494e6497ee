// Two classes under namespaced names: one derived from the library's, one that is the library's and tells its origin.

#include <nyXml/compound/NyBaseXmlFactory.h>
#include <nyXml/values/NyXmlBasicType.h>

namespace {

class Length : public NyXmlBasicType<double> {
public:
    NyXmlObject* clone() const override { return new Length(*this); }
    NyXmlObject* newObject() const override { return new Length; }
};

struct {
    NyToken token;
    NyXmlCreator creator;
} const rows[] = {
    { NyToken("http://example.com/shapes#length"), [] { return static_cast<NyXmlObject*>(new Length); } },
    { NyToken("http://example.com/shapes#box"),
      [] { return static_cast<NyXmlObject*>(new NyXmlBasicType<std::string>("shapes")); } },
    { NyToken(), nullptr },
};

} // namespace

extern "C" NYXML_EXPORT NyToken const* getClassToken(int index) { return &rows[index].token; }

extern "C" NYXML_EXPORT NyXmlCreator getCreator(int index) { return rows[index].creator; }
