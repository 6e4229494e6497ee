// A plug-in: a class that the example was not linked with. Its two exported functions are how the library finds it.

#include "Model.h"

#include <nyXml/compound/NyBaseXmlFactory.h>
#include <nyXml/values/NyXmlVector.h>

namespace robotCell {
namespace {

/// <weld robot="1"><seam size="2"><element x="0" y="0" z="1"/>...</seam><speed>0.01</speed></weld>
class Weld : public ModelClass<Weld> {
public:
    static NyToken const& classToken()
    {
        static NyToken const token = element("weld");
        return token;
    }
    bool operator==(Weld const& other) const { return robot == other.robot && speed == other.speed && seam == other.seam; }

    Count robot;
    Number speed; ///< metres per second
    NyXmlVectorType<NyXmlVector> seam;

protected:
    void registerComponents() override
    {
        registerAttributeComponent(NyToken("robot"), &robot);
        registerComponent(element("speed"), &speed);
        registerComponent(element("seam"), &seam);
    }
};

NyXmlObject* newWeld() { return new Weld; }

} // namespace
} // namespace robotCell

/// The token of the class at \p index; the empty token ends the list.
extern "C" NYXML_EXPORT NyToken const* getClassToken(int index)
{
    static NyToken const endOfList;
    return index == 0 ? &robotCell::Weld::classToken() : &endOfList;
}

/// What makes an object of that class.
extern "C" NYXML_EXPORT NyXmlCreator getCreator(int index) { return index == 0 ? &robotCell::newWeld : nullptr; }
