// A class that the tests' program does not have.

#include <nyXml/compound/NyBaseXmlFactory.h>
#include <nyXmlKit/model/NyXmlModel.h>

namespace {

class Lamp : public NyXmlModel<Lamp> {
public:
    static constexpr auto xmlName = "urn:t#lamp";
    void registerComponents() override { attribute("watt", watt); }
    NyXmlBasicType<int> watt;
};

} // namespace

extern "C" NYXML_EXPORT NyToken const* getClassToken(int index)
{
    static NyToken const end;
    return index == 0 ? &Lamp::classToken() : &end;
}

extern "C" NYXML_EXPORT NyXmlCreator getCreator(int index)
{
    return index == 0 ? [] { return static_cast<NyXmlObject*>(new Lamp); } : static_cast<NyXmlCreator>(nullptr);
}
