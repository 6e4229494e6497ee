// Memory runs out at each allocation in turn, in whatever the library does with a model of every family. What was under way ends with
// std::bad_alloc or is done all the same; nothing is lost, and the same objects do the same work right afterwards.

#include "CompoundSupport.h"
#include "FailingMemory.h"
#include "SchemaSupport.h"

#include <nyXml/nyXml.h>

#include <memory>
#include <new>
#include <streambuf>
#include <utility>

namespace {

/// Each allocation fails in turn. \param attempt  does its work on fresh objects, with failsAt(n), and looks at them afterwards
template <class Attempt>
void forEachAllocation(Attempt attempt)
{
    auto const sweep = [&attempt] {
        unsigned int n = 0;
        while (attempt(n) && !testing::Test::HasFailure())
            ++n;
        return n;
    };
    sweep(); // what is made once and kept has been made now
    long const before = FailingMemory::liveBlocks();
    EXPECT_GT(sweep(), 0u);
    EXPECT_EQ(FailingMemory::liveBlocks(), before) << "blocks that nobody owns";
}

/// A type of an application, with nothing but its operators.
struct Length {
    double meters = 0;
    friend bool operator==(Length const& one, Length const& other) { return one.meters == other.meters; }
    friend std::ostream& operator<<(std::ostream& stream, Length const& length) { return stream << length.meters; }
    friend std::istream& operator>>(std::istream& stream, Length& length) { return stream >> length.meters; }
};

class Speed : public NyXmlEnumType<int> {
public:
    bool xmlInit() override
    {
        NyXmlEnumType<int>::xmlInit();
        for (int i = 0; i < 5; ++i)
            setEnumString(i, "a speed of some length, no. " + std::to_string(i));
        return true;
    }
    NyXmlObject* clone() const override { return new Speed(*this); }
    NyXmlObject* newObject() const override { return new Speed; }
};

class Joint : public Model<Joint> {
public:
    void registerComponents() override
    {
        static NyToken const id("identification"), angle(ns, "angle"), label(ns, "label");
        registerAttributeComponent(id, &m_id);
        registerComponent(angle, &m_angle);
        registerComponentReadOnly(label, &m_label);
    }

private:
    NyXmlBasicType<int> m_id;
    NyXmlBasicType<NyAngle> m_angle;
    NyXmlBasicType<std::string> m_label;
};

class Joints : public Model<Joints, NyXmlBaseVariableCompoundType> {
public:
    void registerComponents() override
    {
        registerComponentCreator(NyToken(ns, "joint"), [] { return static_cast<NyXmlObject*>(new Joint); });
    }
    bool readValueFromToken(NyToken const& element, NyXmlReader& reader) override
    {
        std::shared_ptr<NyXmlObject> const object(newObjectFromToken(element));
        if (!object)
            return false;
        object->read(reader);
        m_joints.push_back(object);
        return true;
    }
    bool write(NyXmlWriter& writer) const override
    {
        bool const result = NyXmlBaseVariableCompoundType::write(writer);
        for (auto const& joint : m_joints) {
            writer.writeStartTag(NyToken(ns, "joint"));
            joint->write(writer);
            writer.writeEndTag();
        }
        return result;
    }
    void clear() { m_joints.clear(); }

private:
    std::vector<std::shared_ptr<NyXmlObject>> m_joints;
};

using Text = NyXmlBasicType<std::string>;
using Number = NyXmlBasicType<double>;

template <class... Members>
class MembersOf : public Model<MembersOf<Members...>> {
public:
    void registerComponents() override
    {
        unsigned int count = 0;
        std::apply([&](auto&... member) { (this->registerComponent(nameOf(count++), &member), ...); }, members);
    }
    static NyToken nameOf(unsigned int index)
    {
        return NyToken(ns, std::string(1, static_cast<char>('a' + index)) + "-member-of-all");
    }
    std::tuple<Members...> members;
};

using Everything = MembersOf<NyXmlBasicType<char>, NyXmlBasicType<unsigned char>, NyXmlBasicType<short>,
                             NyXmlBasicType<unsigned short>, NyXmlBasicType<unsigned int>, Number, NyXmlBasicType<bool>, Text,
                             NyXmlBasicType<NyAngle>, NyXmlBasicType<NyNonNegReal>, NyXmlBasicType<Length>, Speed,
                             NyXmlVectorBasicType<Number>, NyXmlVectorBasicType<Text>, NyXmlVectorType<NyXmlBasicType<NyAngle>>,
                             NyXmlVectorType<Joint>, NyXmlSetType<NyXmlBasicType<unsigned int>>, NyXmlListType<NyXmlVector>,
                             NyXmlMapType<Text, Text>, NyXmlPairType<Text, Text>, NyXmlOrientation, NyXmlVectorVector,
                             NyXmlBinaryString, NyXmlEmbeddedString, Joint, Joints>;

std::string const longText = "a text that is longer than a string's own room";
std::string const joint = " identification=\"7\"><angle>0.123456789012345678</angle><label>" + longText + "</label></";

// The members of Everything in their order, each between its tags; * is the long text, and @ a joint.
std::string documentOfEverything()
{
    std::string const forms =
        ">x</|>200</|>-3</|>3</|>4</|>0.1</|>1</|>*</|>0.123456789012345678</|>1.5</|>2.5</|>a speed of some length, no. 3</|"
        " size='3'><group>1 2.5 0.30000000000000000001</group></| size='2'><element>*</element><element>b</element></|"
        " size='2'><group>0.1 0.2</group></| size='2'><element@element><element@element></| size='3'><group>1 2 3</group></|"
        " size='2'><element x='1' y='2' z='3'/><element x='4' y='5' z='6'/></|"
        "><element><key>*</key><value>1</value></element><element><key>k</key><value>*</value></element></|"
        "><first>*</first><second>2</second></| q0='1' q1='0' q2='0' q3='0'></|"
        " size='2'><p x=\"1\" y=\"2\" z=\"3\"/><p x=\"4\" y=\"5\" z=\"6\"/></|>YWJjZGVmZ2hpamtsbW5vcHFyc3R1dnd4eXo=</|"
        "><a b='*'>c</a></|@|><joint@joint><joint@joint></";
    std::string const contents =
        std::regex_replace(std::regex_replace(forms, std::regex("@"), joint), std::regex("[*]"), longText);
    std::string document = "<everything xmlns=\"" + ns + "\">";
    unsigned int count = 0;
    for (std::string const& content : splitAtBars(contents)) {
        std::string const name = Everything::nameOf(count++).token();
        document += "\n<" + name + content + name + ">";
    }
    return document + "\n</everything>";
}

/// As writtenValue(), by way of a stream that needs no memory: what a stream of the caller's makes of having none is the caller's.
std::string writtenInPlace(NyXmlObject const& object)
{
    static char bytes[1 << 14];
    struct Buffer : std::streambuf {
        Buffer() { setp(std::begin(bytes), std::end(bytes)); }
        std::string_view taken() const { return { pbase(), static_cast<std::size_t>(pptr() - pbase()) }; }
    } buffer;
    std::ostream stream(&buffer);
    {
        NyXmlWriter writer("out.xml", stream);
        writer.writeStartTag(NyToken(ns, "root"));
        object.write(writer);
        writer.writeEndTag();
    }
    return std::string(buffer.taken());
}

void readInto(Everything& object, std::string const& document)
{
    std::get<Joints>(object.members).clear(); // what an application keeps is its own to empty
    readValue(object, document);
}

class OutOfMemory : public testing::Test {
protected:
    OutOfMemory()
    {
        readInto(m_everything, m_document);
        EXPECT_EQ(m_messages.take(), "");
        m_written = writtenValue(m_everything);
    }
    Messages m_messages;
    std::string const m_document = documentOfEverything();
    Everything m_everything;
    std::string m_written;
};

TEST_F(OutOfMemory, Reading)
{
    EXPECT_NE(m_written.find("<l-member-of-all>a speed of some length, no. 3</l-member-of-all>"), std::string::npos);
    forEachAllocation([this](unsigned int n) {
        Everything object;
        bool isThrough = false;
        bool const failed = failsAt(n, [&] {
            readInto(object, m_document);
            isThrough = true;
        });
        if (isThrough) {
            EXPECT_EQ(writtenValue(object), m_written) << n;
        }
        m_messages.take(); // the reader was left in the middle
        readInto(object, m_document);
        EXPECT_EQ(writtenValue(object), m_written) << n;
        EXPECT_EQ(m_messages.take(), "");
        return failed;
    });
}

TEST_F(OutOfMemory, Writing)
{
    std::string const expected = writtenInPlace(m_everything);
    EXPECT_NE(expected.find("<angle>0.12345678901234567737</angle>"), std::string::npos);
    forEachAllocation([&](unsigned int n) {
        Everything object(m_everything);
        std::string written;
        bool const failed = failsAt(n, [&] { written = writtenInPlace(object); });
        EXPECT_TRUE(written.empty() || written == expected) << n << written;
        EXPECT_EQ(writtenInPlace(object), expected) << n;
        return failed;
    });
}

TEST_F(OutOfMemory, CopyingAndAssigning)
{
    forEachAllocation([this](unsigned int n) {
        std::unique_ptr<NyXmlObject> copy;
        Everything target;
        bool const failed = failsAt(n, [&] {
            target = m_everything;
            copy.reset(m_everything.clone());
        });
        if (copy) {
            EXPECT_EQ(writtenValue(*copy), m_written) << n;
        }
        target = m_everything;
        EXPECT_EQ(writtenValue(target), m_written) << n;
        return failed;
    });
}

TEST_F(OutOfMemory, Describing)
{
    forEachAllocation([this](unsigned int n) {
        return failsAt(n, [this] {
            NyXmlSchema schema;
            schema.writeStartTag(NyToken(ns, "everything"), NyXmlSchemaElementType::XML_STARTTAG_SINGLE);
            m_everything.writeSchema(schema);
            schema.writeEndTag();
        });
    });
    ScratchDirectory directory; // what is written needs less memory, and files need time
    auto const describe = [&](NyXmlObject const& object) { object.createSchema(directory.path("model"), NyToken(ns, "joint")); };
    describe(Joint());
    auto const described = filesUnder(directory.path());
    EXPECT_EQ(described.size(), 1u);
    forEachAllocation([&](unsigned int n) {
        Joint const object;
        bool const failed = failsAt(n, [&] { describe(object); });
        describe(object);
        EXPECT_TRUE(filesUnder(directory.path()) == described) << n;
        return failed;
    });
}

class Listing : public NyXmlObjectVisitor {
public:
    std::string text;

private:
    bool visitCurrentObject() override
    {
        for (auto line = std::next(m_theMessages.begin()); line != m_theMessages.end(); ++line)
            text += *line + "\n";
        return true;
    }
};

TEST_F(OutOfMemory, Visiting)
{
    auto const listingOf = [](NyXmlObject const& object) {
        Listing listing;
        object.accept(&listing);
        return listing.text;
    };
    std::string const listed = listingOf(m_everything);
    EXPECT_NE(listed.find(longText), std::string::npos);
    forEachAllocation([&](unsigned int n) {
        Everything object; // one that goes by its class's shape, which visitors ask for maps
        readInto(object, m_document);
        std::string text;
        bool const failed = failsAt(n, [&] { text = listingOf(object); });
        EXPECT_TRUE(text.empty() || text == listed) << n;
        EXPECT_EQ(listingOf(object), listed) << n;
        EXPECT_EQ(writtenValue(object), m_written) << n;
        return failed;
    });
}

// The first object of a class registers in another way than the later ones, so that each attempt takes a class of its own.
template <int number>
class Fresh : public Joint {
public:
    void registerComponents() override
    {
        Joint::registerComponents();
        registerAttributeComponentReadOnly("identification", &m_other);
    }
    NyXmlBasicType<int> m_other;
};

template <int n>
bool firstObjectFailsAt()
{
    Fresh<n> first, second;
    bool const failed = failsAt(n, [&] { first.xmlInit(); });
    EXPECT_EQ(first.xmlInitialized(), !failed) << n;
    EXPECT_EQ(first.hasChildren(), !failed) << n;
    NyXmlCompoundType::SpecialDescriptorMap const marks = { { "identification", 1 }, { NyToken(ns, "label"), 0 } };
    for (Fresh<n>* object : { &first, &second, &first }) {
        object->xmlInit();
        EXPECT_EQ(object->componentMap().size(), 2u) << n;
        EXPECT_EQ(object->attributeComponentMap().at("identification"), &object->m_other) << n;
        EXPECT_TRUE(object->specialDescriptorMap() == marks) << n;
    }
    return failed;
}

template <int... n>
int firstObjectsThatFail(std::integer_sequence<int, n...>)
{
    return (firstObjectFailsAt<n>() + ...);
}

TEST_F(OutOfMemory, RegisteringForTheFirstTime)
{
    int const failures = firstObjectsThatFail(std::make_integer_sequence<int, 40>());
    EXPECT_TRUE(failures > 10 && failures < 40) << failures;
    forEachAllocation([](unsigned int n) {
        Joints joints;
        bool const failed = failsAt(n, [&joints] { joints.xmlInit(); });
        EXPECT_EQ(joints.xmlInitialized(), !failed) << n;
        return failed;
    });
}

// Slots connect and go in groups that are new, with others on both sides, and whatever has failed they run in their order.
TEST_F(OutOfMemory, ConnectingASlot)
{
    using Progress = Ny::SignalReadWriteProgressTraits;
    using Handle = boost::shared_ptr<Ny::ConnectionManagerTypes::Connection>;
    auto& manager = Ny::Application::instance().connectionManager();
    auto const signal = Ny::namedSignal<Progress>(manager);
    std::string heard;
    auto const connect = [&](int group, char mark) {
        return manager.createSlot<Progress>(
            Progress::name(), [&heard, mark](double) { heard += mark; }, group);
    };
    int group = 1000000;
    auto const attempt = [&](unsigned int n) {
        group -= 10;
        Handle before = connect(group, 'a'), inner, behind = connect(group + 2, 'c');
        bool const failed = failsAt(n, [&] { inner = connect(group + 1, 'x'); });
        EXPECT_EQ(inner == nullptr, failed);
        inner.reset();
        before.reset();
        (*signal)(0.5);
        Handle const first = connect(group - 1, '1'), third = connect(group + 1, '3'), second = connect(group, '2');
        behind.reset();
        (*signal)(0.5);
        EXPECT_EQ(std::exchange(heard, std::string()), "c123") << n;
        return failed;
    };
    unsigned int n = 0;
    while (attempt(n))
        ++n;
    EXPECT_GT(n, 5u);
}

} // namespace
