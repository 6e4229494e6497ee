// What a long life asks of a library: that work takes no more memory, calls and handles than it has to, the ten thousandth time as well.

#include "CompoundSupport.h"
#include "FailingMemory.h"

#include <nyXml/values/NyXmlEnumType.h>
#include <nyXml/values/NyXmlMapType.h>
#include <nyXml/values/NyXmlVectorType.h>
#include <nyXml/values/NyXmlVectorVector.h>

#include <filesystem>
#include <fstream>
#include <thread>
#include <tuple>

#include <malloc.h>

namespace {

class Part : public Model<Part> {
public:
    void registerComponents() override
    {
        registerAttributeComponent("id", &id);
        registerComponent(NyToken(ns, "name"), &name);
        registerComponent(NyToken(ns, "path"), &path);
        registerComponent(NyToken(ns, "weights"), &weights);
        registerComponent(NyToken(ns, "notes"), &notes);
    }
    auto values() const { return std::tie(id, name, path, weights, notes); }
    bool operator==(Part const& other) const { return values() == other.values(); }

    NyXmlBasicType<unsigned int> id;
    NyXmlBasicType<std::string> name;
    NyXmlVectorVector path;
    NyXmlVectorBasicType<NyXmlBasicType<double>> weights;
    NyXmlMapType<NyXmlBasicType<std::string>, NyXmlBasicType<double>> notes;
};

class Parts : public Model<Parts> {
public:
    void registerComponents() override { registerComponent(NyToken(ns, "parts"), &parts); }
    auto values() const { return std::tie(parts); }

    NyXmlVectorType<Part> parts;
};

Parts sample()
{
    Parts parts;
    Part part;
    part.name.setValue("a name too long to lie in its string");
    part.path.pushBack(NyVector(1, 2, 3));
    for (int i = 0; i < 12; ++i)
        part.weights.pushBack(i / 4.0);
    part.notes.mapContainer()[NyXmlBasicType<std::string>("k")] = NyXmlBasicType<double>(0.5);
    for (unsigned int id = 0; id < 3; ++id) {
        part.id.setValue(id);
        parts.parts.pushBack(part);
    }
    return parts;
}

void writeTo(std::ostream& stream, NyXmlObject const& object)
{
    NyXmlWriter writer("out.xml", stream);
    writer.writeStartTag(NyToken(ns, "root"));
    object.write(writer);
    writer.writeEndTag();
}

std::string written(NyXmlObject const& object)
{
    std::ostringstream stream;
    writeTo(stream, object);
    return stream.str();
}

/// How many allocations an operation takes for one of a hundred things of a kind, once as many have been there before.
template <class Operation>
double allocationsForEach(Operation operation)
{
    auto const allocationsFor = [&operation](int count) {
        operation(count);
        long const before = FailingMemory::allocations();
        operation(count);
        return FailingMemory::allocations() - before;
    };
    return static_cast<double>(allocationsFor(120) - allocationsFor(20)) / 100;
}

// Speed rests on it: what is kept takes the memory that it is kept in, and what goes by takes none. Nothing here fits a string's own room,
// so that each detour shows.
void countAllocations()
{
    std::string const text = "a text too long to lie in its string";
    auto const repeat = [](std::string const& item, int count) {
        std::string all;
        for (; count != 0; --count)
            all += item;
        return all;
    };
    auto const read = [&](auto object, std::string const& head, std::string const& item, std::string const& tail) {
        return allocationsForEach([&](int count) {
            auto target = object;
            EXPECT_TRUE(
                readValue(target, "<v size='" + std::to_string(count) + "'>" + head + repeat(item, count) + tail + "</v>"));
        });
    };
    EXPECT_LT(read(NyXmlVectorBasicType<NyXmlBasicType<double>>(), "<group>", "0.12345678901234567 ", "</group>"), 0.1);
    EXPECT_LT(read(NyXmlVectorVector(), "", "<e x=\"1.25\" y=\"2\" z=\"3\"/>", ""), 0.1);
    EXPECT_LT(read(NyXmlVectorType<Part>(), "", "<element id='7'><name>" + text + "</name></element>", ""), 1.1) << "its name";
    auto const events = allocationsForEach([&](int count) {
        std::string const name = "a-name-too-long-for-it", element = '<' + name + " n" + name + "='" + text + "'>" + text + "</";
        std::istringstream stream("<v>" + repeat(element + name + '>', count) + "</v>");
        NyXmlFileReader reader("in.xml", stream);
        while (reader.readXml() != NyXmlFileReader::XML_READER_EOF)
            for (; reader.remainingNumOfAttributes() != 0; reader.attributeValue())
                reader.attributeName();
    });
    EXPECT_LT(events, 0.1) << events;
    auto const write = [](auto item) {
        return allocationsForEach([&](int count) {
            std::ostringstream stream;
            NyXmlWriter writer("doc.xml", stream);
            NyToken const token("urn:a-namespace-with-a-long-name", "an-element");
            writer.writeStartTag(token);
            for (; count != 0; --count) {
                writer.writeStartTag(token);
                item(writer);
                writer.writeEndTag();
            }
            writer.writeEndTag();
        });
    };
    EXPECT_LT(write([&](NyXmlWriter& writer) { writer << text << 0.1; }), 0.1);
    EXPECT_LT(write([](NyXmlWriter& writer) { writer << 1; }), 0.1);

    NyXmlBasicType<int> small;
    long const before = FailingMemory::allocations();
    readValue(small, "<v>1</v>");
    EXPECT_LE(FailingMemory::allocations() - before, 5) << "most of what a reader needs waits for the next one";
}

TEST(Endurance, OnlyWhatIsKeptTakesMemory)
{
    std::thread(countAllocations).join(); // one where nobody has read anything
}

// The library's own values leave for the stream together. Where code of an application runs, all that was written is there before.
TEST(Endurance, StreamsAreAskedSeldom)
{
    struct : std::stringbuf {
        std::streamsize xsputn(char const* bytes, std::streamsize size) override
        {
            return ++calls, std::stringbuf::xsputn(bytes, size);
        }
        int calls = 0;
    } buffer;
    std::ostream stream(&buffer);
    writeTo(stream, sample());
    EXPECT_EQ(buffer.calls, 18);
}

std::size_t openHandles()
{
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator()));
}

#ifndef __has_feature
#define __has_feature(feature) 0
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || __has_feature(address_sanitizer) ||                         \
    __has_feature(thread_sanitizer)
constexpr bool underSanitizer = true; // with an allocator of its own, which keeps what was freed
#else
constexpr bool underSanitizer = false;
#endif

TEST(Endurance, MemoryAndHandlesStayFlat)
{
    ScratchDirectory const folder;
    folder.write("part.xml", R"(<part id="7"><name>n</name><weights size="2"><group>1 2</group></weights></part>)");
    std::string const linking = R"(<r><parts size="2"><NyInclude type="simple" href="part.xml"/><element/></parts></r>)";
    std::string const broken = "<r><parts size='1'><element id=7><name>x<</element></r>";
    Parts const parts = sample();
    Messages messages;

    auto const round = [&](int i) {
        Parts again;
        EXPECT_TRUE(readValue(again, written(parts)));
        EXPECT_TRUE(again.equality(&parts));
        std::istringstream stream(i % 2 == 0 ? linking : broken);
        NyXmlReader reader(folder.path("doc.xml"), stream);
        reader.readXml();
        again.read(reader);
        messages.take();
    };
    for (int i = 0; i < 100; ++i)
        round(i);
    std::size_t const memory = mallinfo2().uordblks; // allocated now
    std::size_t const handles = openHandles();
    for (int i = 0; i < (underSanitizer ? 2000 : 10000); ++i)
        round(i);
    if (!underSanitizer) {
        EXPECT_LE(mallinfo2().uordblks, memory + 4096);
    }
    EXPECT_EQ(openHandles(), handles);
}

} // namespace
