#include "CompoundSupport.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

/// An object that counts how often it is initialised.
class Probe : public Model<Probe, NyXmlObject> {
public:
    explicit Probe(int value = 0) : m_value(value) {}
    int values() const { return m_value; }
    bool xmlInit() override
    {
        ++initialised;
        return NyXmlObject::xmlInit() && false; // nobody looks at the result
    }
    int initialised = 0;

private:
    int m_value;
};

TEST(ObjectProtocol, FirstUseInitialisesReadingAndCopyingSpecify)
{
    std::istringstream input;
    std::ostringstream output;
    NyXmlReader reader("", input);
    NyXmlWriter writer("", output);
    NyXmlSchema schema;

    Probe object;
    auto const flags = [](Probe const& probe) {
        return std::string(probe.xmlInitialized() ? "initialised " : "") + (probe.specified() ? "specified " : "") +
               std::to_string(probe.initialised);
    };
    EXPECT_EQ(flags(object), "0");
    EXPECT_TRUE(object.write(writer));
    EXPECT_EQ(flags(object), "initialised 1");
    EXPECT_TRUE(object.NyXmlObject::xmlInit());
    EXPECT_TRUE(object.readAttribute(reader));
    EXPECT_EQ(flags(object), "initialised specified 1");
    object.setXmlInitialized(false);
    EXPECT_TRUE(object.writeSchema(schema));
    EXPECT_EQ(flags(object), "initialised specified 2");
    object.setSpecified(false);
    EXPECT_EQ(flags(object), "initialised 2");
    EXPECT_EQ(output.str(), "");

    EXPECT_EQ(flags(Probe(object)), "specified 2") << "its components lie elsewhere";
    object.NyXmlObject::operator=(Probe());
    EXPECT_EQ(flags(object), "initialised specified 2") << "its components are where they were";
    EXPECT_TRUE(object.NyXmlObject::operator==(Probe(1)));
    EXPECT_TRUE(Probe().equalsDefault());
    EXPECT_FALSE(Probe(1).equalsDefault());
}

} // namespace
