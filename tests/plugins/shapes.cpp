// Three classes under namespaced names: one of the library's, one derived from the library's, one that the application knows.

#include "PluginObject.h"

#include <nyXml/values/NyXmlBasicType.h>

namespace {

class Length : public NyXmlBasicType<double> {
public:
    NyXmlObject* clone() const override { return new Length(*this); }
    NyXmlObject* newObject() const override { return new Length; }
};

struct Row {
    NyToken token;
    NyXmlCreator creator;
};

Row const rows[] = {
    { NyToken("http://example.com/shapes#number"), [] { return static_cast<NyXmlObject*>(new NyXmlBasicType<double>); } },
    { NyToken("http://example.com/shapes#length"), [] { return static_cast<NyXmlObject*>(new Length); } },
    { NyToken("http://example.com/shapes#box"), [] { return static_cast<NyXmlObject*>(new PluginObject("shapes")); } },
    { NyToken(), nullptr },
};

} // namespace

NyToken const* getClassToken(int index) { return &rows[index].token; }

NyXmlCreator getCreator(int index) { return rows[index].creator; }
