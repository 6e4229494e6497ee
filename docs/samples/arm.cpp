#include <nyXml/nyXml.h>

#include <fstream>
#include <iostream>

class Joint : public NyXmlCompoundType {
public:
    NyXmlBasicType<std::string> name;
    NyXmlBasicType<double> limit;
    NyXmlVectorBasicType<NyXmlBasicType<double>> samples;

    void registerComponents() override // the one declaration: which member answers to which name
    {
        registerAttributeComponent(NyToken("name"), &name);
        registerComponent(NyToken("urn:demo/arm#limit"), &limit);
        registerComponent(NyToken("urn:demo/arm#samples"), &samples);
    }

    // Sequences and other classes compare with ==. The compound's own compares names of members and not their values: without
    // this one all joints are equal, and a writer that leaves defaults out leaves them all out.
    bool operator==(Joint const& other) const { return name == other.name && limit == other.limit && samples == other.samples; }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* joint = dynamic_cast<Joint const*>(other);
        return joint != nullptr && *this == *joint;
    }
    NyXmlObject* clone() const override { return new Joint(*this); }
    NyXmlObject* newObject() const override { return new Joint; }
    NyToken const& token() const override
    {
        static NyToken const joint("urn:demo/arm#joint");
        return joint;
    }
};

class Arm : public NyXmlCompoundType {
public:
    Joint base;
    NyXmlVectorType<Joint> joints;

    void registerComponents() override
    {
        registerComponent(NyToken("urn:demo/arm#base"), &base);
        registerComponent(NyToken("urn:demo/arm#joints"), &joints);
    }
    bool operator==(Arm const& other) const { return base == other.base && joints == other.joints; }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* arm = dynamic_cast<Arm const*>(other);
        return arm != nullptr && *this == *arm;
    }
    NyXmlObject* clone() const override { return new Arm(*this); }
    NyXmlObject* newObject() const override { return new Arm; }
    NyToken const& token() const override
    {
        static NyToken const arm("urn:demo/arm#arm");
        return arm;
    }
};

int main()
{
    Joint elbow;
    elbow.name.setValue("elbow");
    elbow.limit.setValue(2.5);
    for (double angle : { 0.0, 0.5, 1.0 })
        elbow.samples.pushBack(angle);

    Arm arm;
    arm.base.name.setValue("shoulder");
    arm.joints.pushBack(elbow);

    { // write: the caller frames the root, the object fills the frame
        std::ofstream file("arm.xml");
        NyXmlWriter writer("arm.xml", file);
        writer.writeStartTag(arm.token());
        arm.write(writer);
        writer.writeEndTag();
    }

    std::ifstream file("arm.xml");
    NyXmlReader reader("arm.xml", file);
    Arm again;
    auto const mode = reader.readXml(); // to the root, then the root reads itself
    bool whole =
        (mode == NyXmlFileReader::XML_READER_START_TAG || mode == NyXmlFileReader::XML_READER_EMPTY_TAG) && again.read(reader);
    // A document that breaks off behind a text looks as one that is over, until somebody asks for what comes next: the end of the
    // whole one, an error for the other.
    whole = whole && reader.readXml() == NyXmlFileReader::XML_READER_EOF && reader.errorCode() == 0;
    std::cout << (whole && again == arm ? "equal" : "different") << '\n';
}
