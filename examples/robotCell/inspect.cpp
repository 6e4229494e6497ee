// Another plug-in. The document names it in `addLibraries`.

#include "Model.h"

#include <nyXml/compound/NyBaseXmlFactory.h>

namespace robotCell {
namespace {

/// <inspect camera="left"><tolerance>0.0005</tolerance></inspect>
class Inspect : public ModelClass<Inspect> {
public:
    static NyToken const& classToken()
    {
        static NyToken const token = element("inspect");
        return token;
    }
    bool operator==(Inspect const& other) const { return camera == other.camera && tolerance == other.tolerance; }

    Text camera;
    Number tolerance; ///< metres

protected:
    void registerComponents() override
    {
        registerAttributeComponent(NyToken("camera"), &camera);
        registerComponent(element("tolerance"), &tolerance);
    }
};

NyXmlObject* newInspect() { return new Inspect; }

} // namespace
} // namespace robotCell

extern "C" NYXML_EXPORT NyToken const* getClassToken(int index)
{
    static NyToken const endOfList;
    return index == 0 ? &robotCell::Inspect::classToken() : &endOfList;
}

extern "C" NYXML_EXPORT NyXmlCreator getCreator(int index) { return index == 0 ? &robotCell::newInspect : nullptr; }
