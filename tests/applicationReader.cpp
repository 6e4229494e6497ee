// A reader of an application's own gives values what it likes: of a reader that is not exactly the library's they ask virtual operations
// alone, in every family and in every place that has a faster way for the library's reader.

#include "CompoundSupport.h"

#include <nyXml/compound/NyXmlBaseVariableCompoundType.h>
#include <nyXml/values/NyXmlBinaryString.h>
#include <nyXml/values/NyXmlEmbeddedString.h>
#include <nyXml/values/NyXmlEnumType.h>
#include <nyXml/values/NyXmlListType.h>
#include <nyXml/values/NyXmlMapType.h>
#include <nyXml/values/NyXmlVectorType.h>

#include <deque>
#include <memory>

namespace {

template <class T>
using B = NyXmlBasicType<T>;

/// Knows its document by means of its own, and hands out texts and names that are gone with the next call that reads.
class OwnReader : public NyXmlReader {
public:
    using Mode = NyXmlFileReader::XML_READER_MODE;

    OwnReader(std::string const& name, std::istream& stream) : m_source(name, stream) {}

    void open(std::string const&, std::istream&) override { ADD_FAILURE(); }
    Mode readXml() override { return forget(), m_source.readXml(); }
    bool versionFlag() const override { return true; }
    Mode mode() const override { return m_source.mode(); }
    NyToken const& element() const override { return hand(m_source.element()); }
    NyToken const& attributeName(NyToken const& name) const override { return hand(m_source.attributeName(name)); }
    NyToken const& attributeName() const override { return hand(m_source.attributeName()); }
    std::string const& attributeValue(NyToken const& name) override { return forget(), hand(m_source.attributeValue(name)); }
    std::string const& attributeValue() override { return forget(), hand(m_source.attributeValue()); }
    unsigned int numOfAttributes() const override { return m_source.numOfAttributes(); }
    unsigned int remainingNumOfAttributes() const override { return m_source.remainingNumOfAttributes(); }
    std::string const& content() const override { return hand(m_source.content()); }
    std::string const& contentByWord() const override { return hand(m_source.contentByWord()); }
    unsigned int contentCount() const override { return m_source.contentCount(); }
    bool isContentAvailable() const override { return m_source.isContentAvailable(); }
    void setContentVectorFlag(bool flag) override { m_source.setContentVectorFlag(flag); }
    char const* filename() const override { return m_source.filename(); }
    int lineCountOfFile() const override { return m_source.lineCountOfFile(); }
    bool nextMatchingEndTag() override { return forget(), m_source.nextMatchingEndTag(); }
    std::string const& getChildrenAsString() override { return forget(), hand(m_source.getChildrenAsString()); }
    std::istream& stream() const override { return m_source.stream(); }
    std::string const& getComplexStartTagFast() override { return forget(), hand(m_source.getComplexStartTagFast()); }
    std::string const& getSimpleStartTagFast() override { return forget(), hand(m_source.getSimpleStartTagFast()); }
    std::string const& getAttributeValueFast() override { return forget(), hand(m_source.getAttributeValueFast()); }
    std::string const& getLastAttributeValueFast() override { return forget(), hand(m_source.getLastAttributeValueFast()); }
    std::string const& getContentByWordFast() override { return forget(), hand(m_source.getContentByWordFast()); }
    void getEndTagFast() override { m_source.getEndTagFast(); }
    unsigned int errorCode() const override { return m_source.errorCode(); }

private:
    std::string const& hand(std::string const& text) const { return *m_texts.emplace_back(std::make_unique<std::string>(text)); }
    NyToken const& hand(NyToken const& name) const { return *m_names.emplace_back(std::make_unique<NyToken>(name)); }
    void forget()
    {
        m_texts.clear();
        m_names.clear();
    }

    NyXmlFileReader m_source;
    mutable std::vector<std::unique_ptr<std::string>> m_texts;
    mutable std::vector<std::unique_ptr<NyToken>> m_names;
};

/// The same, with the library's reader beneath it in the middle of another document, on attributes as well as on a run.
class OwnReaderOpenedElsewhere : public OwnReader {
public:
    OwnReaderOpenedElsewhere(std::string const& name, std::istream& stream) : OwnReader(name, stream)
    {
        NyXmlReader::open("elsewhere.xml", m_elsewhere);
        NyXmlReader::readXml();
        NyXmlReader::readXml();
    }
    ~OwnReaderOpenedElsewhere() override
    {
        std::string const size = NyXmlReader::attributeValue();
        EXPECT_EQ(size + NyXmlReader::attributeValue() + NyXmlReader::content(), "7890 91 92") << "asked behind the back";
    }

private:
    std::istringstream m_elsewhere{ "<e size='7' x='8'>90 91 92</e>" };
};

/// Reads by the library's reader, and lets values take leaves and runs in one step, but for every fifth that is asked for.
class ShortcutReader : public NyXmlReader {
public:
    ShortcutReader(std::string const& name, std::istream& stream) : NyXmlReader(name, stream)
    {
        offerShortcuts<ShortcutReader>();
    }

    bool takeLeaf(NyToken const& name, std::string_view& text)
    {
        return count(takeLeafIf(name, text, [this](std::string_view) { return ++m_asked % 5 != 0; }));
    }
    bool takeLeaf(NyToken const& name, NyToken const* const* attributes, std::string_view* values, std::size_t size)
    {
        return count(takeLeafIf(name, attributes, values, size, [this] { return ++m_asked % 5 != 0; }));
    }
    std::string_view takeContent() { return count(true), NyXmlReader::takeContent(); }

    static int taken;

private:
    static bool count(bool isTaken)
    {
        taken += isTaken ? 1 : 0;
        return isTaken;
    }

    int m_asked = 0;
};
int ShortcutReader::taken = 0;

/// Made from that one by somebody who wants to see every event.
class EventCounter : public ShortcutReader {
public:
    using ShortcutReader::ShortcutReader;
    ~EventCounter() override { EXPECT_EQ(taken, m_before) << "past the events"; }

private:
    int const m_before = taken;
};

class Part : public Model<Part> {
public:
    void registerComponents() override
    {
        registerAttributeComponent("id", &m_id);
        registerAttributeComponent("mode", &m_mode);
        registerComponent(NyToken(ns, "length"), &m_length);
        registerComponent(NyToken(ns, "name"), &m_name);
        registerComponent(NyToken(ns, "path"), &m_path);
        registerComponent(NyToken(ns, "weights"), &m_weights);
    }
    auto values() const { return m_id.value(); }
    bool operator==(Part const& other) const { return equality(&other); }

private:
    B<unsigned int> m_id;
    Mode m_mode;
    B<double> m_length;
    B<std::string> m_name;
    NyXmlVectorVector m_path;
    NyXmlVectorBasicType<B<double>> m_weights;
};

/// One member, of the class that the document names.
class Holder : public Model<Holder, NyXmlBaseVariableCompoundType> {
public:
    void registerComponents() override
    {
        registerComponentCreator("part", [] { return static_cast<NyXmlObject*>(new Part); });
    }
    bool readValueFromToken(NyToken const& element, NyXmlReader& reader) override
    {
        m_member.reset(newObjectFromToken(element));
        return m_member != nullptr && m_member->read(reader);
    }
    bool write(NyXmlWriter& writer) const override { return m_member == nullptr || m_member->write(writer); }

private:
    std::shared_ptr<NyXmlObject> m_member;
};

/// Reads the value with the library's reader and with two of an application's own. Nobody may see a difference.
template <class Value>
void expectSameFromOwnReaders(std::string const& document)
{
    SCOPED_TRACE(document.substr(0, 200));
    auto const readBy = [&document](auto const& reader) {
        Messages messages;
        Value value;
        std::string seen;
        bool const result = readValue<std::decay_t<decltype(*reader)>>(value, document, &seen);
        seen += messages.take();
        return seen + std::to_string(result) + writtenValue(value, true);
    };
    std::string const seen = readBy(static_cast<NyXmlReader*>(nullptr));
    EXPECT_EQ(readBy(static_cast<OwnReader*>(nullptr)), seen);
    EXPECT_EQ(readBy(static_cast<OwnReaderOpenedElsewhere*>(nullptr)), seen);
    EXPECT_EQ(readBy(static_cast<ShortcutReader*>(nullptr)), seen);
    EXPECT_EQ(readBy(static_cast<EventCounter*>(nullptr)), seen);
}

std::string const run = "<v size='4' x='0'><group>1 2.5\n 300</group><element> 4 </element></v>";
std::string const part = "<part id='3' other='4' mode='fast'><length>2.5</length><unknown "
                         "a='1'><length/></unknown><name> a b </name>"
                         "<path size='2'><e x=\"1\" y=\"2\" z=\"3\"/><e x=\"4\" y=\"5\" z=\"6\"/></path>"
                         "<weights size='3'><group>1 2 3</group></weights></part>";

} // namespace

TEST(ApplicationReader, GivesEveryValueItsOwnEvents)
{
    expectSameFromOwnReaders<B<double>>("<v>2.5</v>");
    expectSameFromOwnReaders<B<std::string>>("<v a='1'> b c </v>");
    expectSameFromOwnReaders<B<std::string>>("<v><w/></v>");
    expectSameFromOwnReaders<Mode>("<v>fast</v>");
    expectSameFromOwnReaders<NyXmlBinaryString>("<v>aGVsbG8=</v>");
    expectSameFromOwnReaders<NyXmlEmbeddedString>("<v><b>x</b> y</v>");
    expectSameFromOwnReaders<NyXmlVector>("<v x='1' y='2' z='3'/>");
    expectSameFromOwnReaders<NyXmlOrientation>("<v q0='1' q1='0' q2='0' q3='0'></v>");
    expectSameFromOwnReaders<NyXmlVectorVector>("<v size='2'><e x=\"1\" y=\"2\" z=\"3\"/><e x=\"4\" y=\"5\" z=\"6\"/></v>");
    ShortcutReader::taken = 0;
    expectSameFromOwnReaders<Part>(part);
    EXPECT_EQ(ShortcutReader::taken, 1);
    expectSameFromOwnReaders<Holder>("<v><none/>" + part + "</v>");
}

TEST(ApplicationReader, GivesEveryContainerItsOwnEvents)
{
    expectSameFromOwnReaders<NyXmlVectorBasicType<B<double>>>(run);
    expectSameFromOwnReaders<NyXmlVectorBasicType<B<std::string>>>(run);
    expectSameFromOwnReaders<NyXmlVectorType<B<bool>>>(run);
    expectSameFromOwnReaders<NyXmlVectorType<Mode>>("<v size='4'><group>fast slow fast none</group></v>");
    ShortcutReader::taken = 0;
    expectSameFromOwnReaders<NyXmlVectorType<NyXmlVector>>(
        "<v size='7'> <element x=\"1\" y=\"2\" z=\"3\"/><element x=\"4\" y=\"5\" z=\"6\"/>\n<element x=\"7\" y=\"8\" z=\"9\"/>"
        "<element x=\"10\" y=\"11\" z=\"12\"/><element x='13' y='14' z='15'/><element x=\"16\" y=\"17\" z=\"18\"/>"
        "<element x=\"19\" y=\"20\" z=\"21\"/></v>");
    EXPECT_EQ(ShortcutReader::taken, 4);
    expectSameFromOwnReaders<NyXmlVectorType<Part>>("<v size='2'><element>" + part + "</element>" + part + "</v>");
    expectSameFromOwnReaders<NyXmlSetType<B<unsigned int>>>(run);
    expectSameFromOwnReaders<NyXmlListType<B<unsigned int>>>(run);
    expectSameFromOwnReaders<NyXmlPairType<B<double>, B<double>>>("<v><second>2</second><first>1</first></v>");
    std::string const entries = "<element><key>a</key><value>1</value></element><element><key>b</key><value/></element>";
    expectSameFromOwnReaders<NyXmlMapType<B<std::string>, B<double>>>("<v>" + entries + "</v>");
    expectSameFromOwnReaders<NyXmlMapType<B<std::string>, B<double>>>("<v>" + entries + "<x/></v>");
}

// A run is over when an item takes none of its words, whoever hands them out.
TEST(ApplicationReader, WordsThatNoItemTakesEndTheRun)
{
    for (std::string const words : { "1", "1 2", "1 2 3" }) {
        expectSameFromOwnReaders<NyXmlVectorType<NyXmlVector>>("<v size='1'><group>" + words + "</group></v>");
        expectSameFromOwnReaders<NyXmlVectorType<NyXmlEmbeddedString>>("<v size='1'><group>" + words + "</group></v>");
        expectSameFromOwnReaders<NyXmlListType<NyXmlVector>>("<v size='1'><group>" + words + "</group></v>");
    }
}
