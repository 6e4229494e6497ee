// The samples of the pages on values and containers, as a program.

#include "Sample.h"

namespace {

class Mode : public NyXmlEnumType<int> {
public:
    enum : int { SLOW, FAST };

    using NyXmlEnumType<int>::NyXmlEnumType;
    using NyXmlEnumType<int>::operator=;
    NyXmlObject* clone() const override { return new Mode(*this); }
    NyXmlObject* newObject() const override { return new Mode; }
    bool xmlInit() override
    {
        setEnumString(SLOW, "slow");
        setEnumString(FAST, "fast");
        return NyXmlEnumType<int>::xmlInit();
    }
};

struct Celsius {
    double degrees = 0.0;
};
std::ostream& operator<<(std::ostream& stream, Celsius const& value) { return stream << value.degrees; }
std::istream& operator>>(std::istream& stream, Celsius& value) { return stream >> value.degrees; }
bool operator==(Celsius const& one, Celsius const& other) { return one.degrees == other.degrees; }

class Oven : public Sample<Oven> {
public:
    Mode mode;
    NyXmlBasicType<Celsius> target;
    NyXmlVectorBasicType<NyXmlBasicType<double>> readings;
    NyXmlMapType<NyXmlBasicType<std::string>, NyXmlBasicType<double>> offsets;

    void registerComponents() override
    {
        registerAttributeComponent(NyToken("mode"), &mode);
        registerComponent(NyToken("urn:demo/oven#target"), &target);
        registerComponent(NyToken("urn:demo/oven#readings"), &readings);
        registerComponent(NyToken("urn:demo/oven#offsets"), &offsets);
    }
    bool operator==(Oven const& other) const
    {
        return mode == other.mode && target == other.target && readings == other.readings && offsets == other.offsets;
    }
};

} // namespace

int main()
{
    Oven oven;
    oven.mode = Mode::FAST;
    oven.target.setValue({ 180.5 });

    oven.readings.pushBack(20.0);
    oven.readings.vectorContainer().push_back(21.5); // the standard container itself
    for (double reading : oven.readings.vectorContainer())
        oven.target.value().degrees += reading;

    return comesBack(oven) ? 0 : 1;
}
