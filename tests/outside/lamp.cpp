// A plug-in with one class.

#include <nyXml/compound/NyBaseXmlFactory.h>
#include <nyXml/compound/NyXmlCompoundType.h>
#include <nyXml/values/NyXmlBasicType.h>

namespace {

class Lamp : public NyXmlCompoundType {
public:
    static NyToken const& classToken()
    {
        static NyToken const token("urn:outside", "lamp");
        return token;
    }
    NyXmlObject* clone() const override { return new Lamp(*this); }
    NyXmlObject* newObject() const override { return new Lamp; }
    NyToken const& token() const override { return classToken(); }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* lamp = dynamic_cast<Lamp const*>(other);
        return lamp != nullptr && lamp->m_theWatts == m_theWatts;
    }
    void registerComponents() override { registerComponent(NyToken("urn:outside", "watts"), &m_theWatts); }

private:
    NyXmlBasicType<double> m_theWatts;
};

NyXmlObject* newLamp() { return new Lamp; }

} // namespace

extern "C" NYXML_EXPORT NyToken const* getClassToken(int index)
{
    static NyToken const end;
    return index == 0 ? &Lamp::classToken() : &end;
}

extern "C" NYXML_EXPORT NyXmlCreator getCreator(int index) { return index == 0 ? &newLamp : nullptr; }
