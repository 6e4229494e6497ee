#include <nyXml/core/NyXmlObject.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/schema/NyXmlSchema.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <gtest/gtest.h>

#include <sstream>

namespace {

/// An object that counts how often it is initialised and how many of its kind are alive.
class Probe : public NyXmlObject {
public:
    explicit Probe(int value = 0) : m_value(value) { ++alive; }
    Probe(Probe const& other) : NyXmlObject(other), m_value(other.m_value) { ++alive; }
    Probe& operator=(Probe const&) = default;
    ~Probe() override { --alive; }

    NyXmlObject* clone() const override { return new Probe(*this); }
    bool xmlInit() override
    {
        ++initialised;
        return NyXmlObject::xmlInit() && false; // nobody looks at the result
    }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* probe = dynamic_cast<Probe const*>(other);
        return probe != nullptr && probe->m_value == m_value;
    }
    NyXmlObject* newObject() const override { return new Probe; }
    NyToken const& token() const override
    {
        static NyToken const token("probe");
        return token;
    }

    static inline int alive = 0;
    int initialised = 0;

private:
    int m_value;
};

class ObjectProtocol : public testing::Test {
protected:
    std::istringstream input;
    std::ostringstream output;
    NyXmlReader reader{ "", input };
    NyXmlWriter writer{ "", output };
    NyXmlSchema schema;
};

TEST_F(ObjectProtocol, FirstUseInitialisesAndReadingSpecifies)
{
    Probe object;
    EXPECT_FALSE(object.xmlInitialized() || object.specified() || object.isBasicType());

    EXPECT_TRUE(object.write(writer));
    EXPECT_TRUE(object.xmlInitialized());
    EXPECT_FALSE(object.specified());

    EXPECT_TRUE(object.writeSchema(schema));
    EXPECT_TRUE(object.readAttribute(reader));
    EXPECT_TRUE(object.specified());
    EXPECT_EQ(object.initialised, 1);

    object.setXmlInitialized(false);
    EXPECT_TRUE(object.specified());
    EXPECT_TRUE(object.writeSchema(schema));
    EXPECT_EQ(object.initialised, 2);
    object.setSpecified(false);
    EXPECT_TRUE(object.xmlInitialized());
    EXPECT_EQ(output.str(), "");
}

TEST_F(ObjectProtocol, CopyCountsAsGivenAndIsNotInitialised)
{
    Probe source;
    source.write(writer);
    Probe const copy(source);
    EXPECT_TRUE(copy.specified());
    EXPECT_FALSE(copy.xmlInitialized());

    Probe target;
    target.write(writer);
    target = Probe();
    EXPECT_TRUE(target.specified());
    EXPECT_TRUE(target.xmlInitialized()) << "its components are still where they were";
    EXPECT_TRUE(target.NyXmlObject::operator==(source));
}

TEST_F(ObjectProtocol, DefaultStateIsThatOfAFreshObject)
{
    int const before = Probe::alive;
    EXPECT_TRUE(Probe().equalsDefault());
    EXPECT_FALSE(Probe(1).equalsDefault());
    EXPECT_EQ(Probe::alive, before);
}

} // namespace
