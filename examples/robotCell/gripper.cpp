// A plug-in: a class that the example was not linked with. Its two exported functions are how the library finds it.

#include "Model.h"

#include <nyXml/compound/NyBaseXmlFactory.h>

namespace robotCell {
namespace {

/// <gripper fingers="2"><force>40</force><opening>0.08</opening></gripper>
class Gripper : public ModelClass<Gripper> {
public:
    static NyToken const& classToken()
    {
        static NyToken const token = element("gripper");
        return token;
    }
    bool operator==(Gripper const& other) const
    {
        return fingers == other.fingers && force == other.force && opening == other.opening;
    }

    Count fingers;
    Number force;   ///< newtons
    Number opening; ///< metres

protected:
    void registerComponents() override
    {
        registerAttributeComponent(NyToken("fingers"), &fingers);
        registerComponent(element("force"), &force);
        registerComponent(element("opening"), &opening);
    }
};

NyXmlObject* newGripper() { return new Gripper; }

} // namespace
} // namespace robotCell

/// The token of the class at \p index; the empty token ends the list.
extern "C" NYXML_EXPORT NyToken const* getClassToken(int index)
{
    static NyToken const endOfList;
    return index == 0 ? &robotCell::Gripper::classToken() : &endOfList;
}

/// What makes an object of that class.
extern "C" NYXML_EXPORT NyXmlCreator getCreator(int index) { return index == 0 ? &robotCell::newGripper : nullptr; }
