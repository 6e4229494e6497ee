#include "Support.h"

#include <nyXml/platform/NyApplication.h>
#include <nyXml/traversal/NyXmlSignals.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

std::string const instance = R"(xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance")";

/// Makes the calls that a line of words names: `<ns#a` start tag, `+a` start tag in the parent's namespace, `@a` attribute name, `=text` data,
/// `:3` columns, `/` end tag.
void play(NyXmlWriter& writer, std::string const& calls)
{
    std::istringstream words(calls);
    for (std::string word; words >> word;) {
        std::string const rest = word.substr(1);
        switch (word[0]) {
        case '<': writer.writeStartTag(rest); break;
        case '+': writer.writeStartTagUsingParentNamespace(rest); break;
        case '@': writer.setAttributeName(rest); break;
        case '=': writer.data(rest); break;
        case ':': writer.setNumOfContentColumns(static_cast<unsigned int>(std::stoul(rest))); break;
        case '/': writer.writeEndTag(); break;
        default: ADD_FAILURE() << word;
        }
    }
}

/// The bytes that the calls give, without XML declaration and location of the schema; the document is called d.xml.
std::string written(std::string const& calls, std::string const& indent = " ")
{
    std::ostringstream stream;
    NyXmlWriter writer("d.xml", stream);
    writer.setHeader("");
    writer.setIndent(indent);
    play(writer, calls);
    std::string const bytes = stream.str(), location = " " + instance + "\n  xsi:schemaLocation=\"u\n  d.u.xsd\"";
    std::size_t const at = bytes.find(location);
    return at == std::string::npos ? bytes : std::string(bytes).erase(at, location.size());
}

TEST(Writer, SmallDocument)
{
    std::ostringstream stream;
    NyXmlWriter writer("model.xml", stream);
    writer.writeStartTag("urn:demo/shapes#root");
    writer.setAttributeName("id");
    writer << 7;
    writer.writeStartTagUsingParentNamespace("size");
    writer << 1.5;
    play(writer, "/ +note / /");
    EXPECT_EQ(stream.str(),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<root " + instance +
                  "\n  xsi:schemaLocation=\"urn:demo/shapes\n  model.shapes.xsd\" xmlns=\"urn:demo/shapes\" id=\"7\">\n"
                  " <size>1.5</size>\n <note xsi:nil=\"true\"/>\n</root>\n");
}

TEST(Writer, FormOfAnElement)
{
    std::string const fifty(50, 'x'), open = "<r xmlns=\"u\">\n";
    std::string const five = " =12345 =12345 =12345 =12345 =12345",
                      ten = "12345 12345 12345 12345 12345 12345 12345 12345 12345 12345";
    EXPECT_EQ(written("<u#r +a /"), open + " <a xsi:nil=\"true\"/>\n");
    EXPECT_EQ(written("<u#r +a @b =1 /"), open + " <a b=\"1\"/>\n");
    EXPECT_EQ(written("<u#r +a @b = = / +c = = /"), open + " <a b=\"\"></a>\n <c> </c>\n"); // an empty text is a text
    EXPECT_EQ(written("<u#r +a @b =<> =&'\" /"), open + " <a b=\"<>\">&'\"</a>\n");         // nothing is escaped
    EXPECT_EQ(written("<u#r +a =" + fifty + " /"), open + " <a>" + fifty + "</a>\n");
    EXPECT_EQ(written("<u#r +a =" + fifty + "y /"), open + " <a>\n  " + fifty + "y\n </a>\n");
    EXPECT_EQ(written("<u#r +a" + five + five + five + five + " =1 /"),
              open + " <a>\n  " + ten + "\n    " + ten + "\n    1\n </a>\n");
    EXPECT_EQ(written("<u#r +a :1 =1 =2 / +b =1 =2 /"),
              open + " <a>1\n    2</a>\n <b>1 2</b>\n"); // columns end with their element
    EXPECT_EQ(written("<u#r +a :0" + five + five + " =1 /"), open + " <a>\n  " + ten + " 1\n </a>\n");
    // Continuation lines stay two blanks a level, the indent is the tags' and the first line's.
    EXPECT_EQ(written("<u#r +a :2 =1 =2 =3 =" + fifty + " / /", "\t"),
              open + "\t<a>\n\t\t1 2\n    3 " + fifty + "\n\t</a>\n</r>\n");
}

TEST(Writer, NamespacesAndTheirPrefixes)
{
    Messages messages;
    // Within v: b inherits, c is of the root's namespace and has no prefix however deep, d has an equal prefix and passes for v.
    // A sibling declares anew. The prefix of x/ is empty, but it is one.
    EXPECT_EQ(
        written("<u#r <x/v#a +b <u#c <y/v#d / / / / <x/v#a / <x/#e / /"),
        "<r xmlns=\"u\">\n <v:a xmlns:v=\"x/v\">\n  <v:b>\n   <c>\n    <v:d xsi:nil=\"true\"/>\n   </c>\n  </v:b>\n </v:a>\n"
        " <v:a xmlns:v=\"x/v\" xsi:nil=\"true\"/>\n <:e xsi:nil=\"true\"/>\n</r>\n");
    EXPECT_EQ(messages.take(), "");
    // The first namespace to come is the default one, also below a root without any, and of all documents that follow.
    EXPECT_EQ(written("<r <u#a / +b / / <w/v#r /"),
              "<r>\n <a xmlns=\"u\" xsi:nil=\"true\"/>\n <b xsi:nil=\"true\"/>\n</r>\n<v:r " + instance +
                  "\n  xsi:schemaLocation=\"w/v\n  d.v.xsd\" xmlns:v=\"w/v\" xsi:nil=\"true\"/>\n");
    EXPECT_EQ(messages.take(), "NyXmlWriter Warning: All elements should have namespace: r\n\tFile: d.xml\n"
                               "NyXmlWriter Warning: All elements should have namespace: b\n\tFile: d.xml\n");
}

TEST(Writer, CallsOutOfPlace)
{
    struct Row {
        char const *calls, *bytes;
        std::string messages;
    };
    auto const misplaced = [](std::string const& element) {
        return "NyXmlWriter Error: element " + element + " is placing content at incorrect location.\n\tFile: d.xml\n";
    };
    auto const endTag = [](char mode) {
        return std::string("NyXmlWriter Error: end tag following incorrect mode ") + mode + ".  File d.xml\n";
    };
    auto const preferred = [](std::string const& name) {
        return "NyXmlWriter Error: no namespace on attributes preferred: " + name + "\n\tFile: d.xml\n";
    };
    auto const missing = [](std::string const& name) {
        return "NyXmlWriter Error: attribute namespace doesn't exist: " + name + "\n\tFile: d.xml\n";
    };
    Row const rows[] = {
        { "<u#r +a =1 / =lost /", "<r xmlns=\"u\">\n <a>1</a>\n</r>\n", misplaced("r") },
        { "<u#r +a @b / /", "<r xmlns=\"u\">\n <a b=</r>\n", endTag('2') },
        { "<u#r @b +a =1 /", "<r xmlns=\"u\" b= <a>1</a>\n", "" },
        { "<u#r =lost +a =1 / /", "<r xmlns=\"u\" <a>1</a>\n</r>\n", "" },
        { "<u#r +a / @b =1", "<r xmlns=\"u\">\n <a xsi:nil=\"true\"/>\n b=\"1\"", "" },
        { "<u#r <x/v#a @y/v#b =1 @u#c =2", "<r xmlns=\"u\">\n <v:a xmlns:v=\"x/v\" v:b=\"1\" c=\"2\"",
          preferred("y/v#b") + preferred("u#c") + missing("u#c") },
        // no element open
        { "<u#r / / =lost", "<r xmlns=\"u\" xsi:nil=\"true\"/>\n", endTag('5') + misplaced("") },
        { "=lost / @v#a =1 =2 /", " a=\"1\"", misplaced("") + endTag('0') + preferred("v#a") + missing("v#a") + endTag('4') },
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.calls);
        Messages messages;
        EXPECT_EQ(written(row.calls), row.bytes);
        for (int const printType : messages.types())
            EXPECT_EQ(printType, 4);
        EXPECT_EQ(messages.take(), row.messages);
    }
}

TEST(Writer, SchemaFileIsNamedAfterDocumentAndNamespace)
{
    struct Row {
        char const *fileName, *xmlNamespace, *schemaFile;
    };
    for (Row const& row : { Row{ "a.b.xml", "x/seg", "a.b.seg.xsd" }, Row{ "c:\\dir\\model.xml", "seg", "model.seg.xsd" },
                            Row{ "/dir/model.xml", "x/y/seg", "model.seg.xsd" }, Row{ "dir.d/model", "seg", "dir.seg.xsd" },
                            Row{ "", "x/seg", ".seg.xsd" }, Row{ "a/b\\c", "x/", "c..xsd" } }) {
        std::ostringstream stream;
        NyXmlWriter(row.fileName, stream).writeStartTag(NyToken(row.xmlNamespace, "r"));
        EXPECT_NE(stream.str().find(std::string("\n  ") + row.schemaFile + "\" xmlns="), std::string::npos) << stream.str();
    }
}

/// Puts the class-wide defaults back as they were.
struct DefaultsGuard {
    std::string const indent = NyXmlWriter::defaultIndent(), header = NyXmlWriter::defaultHeader();
    ~DefaultsGuard()
    {
        NyXmlWriter::setDefaultLanguageSelection(NyXmlWriter::LANGUAGE_XML);
        NyXmlWriter::setDefaultIndent(indent);
        NyXmlWriter::setDefaultHeader(header);
        NyXmlWriter::setDefaultForWriteDefaultDataFlag(true);
    }
};

TEST(Writer, LanguagesAndDefaultsReachTheirWriters)
{
    DefaultsGuard const guard;
    std::ostringstream stream;
    auto const settings = [](NyXmlWriter const& w) {
        return w.indent() + '|' + w.header() + '|' + w.styleSheet() + '|' + w.schemaInstance() + '|' + w.schemaLocation();
    };
    NyXmlWriter early("", stream);
    std::string const untouched = settings(early);
    EXPECT_EQ(untouched, R"( |<?xml version="1.0" encoding="UTF-8"?>|||)");
    std::string const qcml = R"(  |<?xml version="1.0" encoding="UTF-8"?>|<?xml-stylesheet type="text/xsl" )"
                             R"(href="http://nyxml.org/stylesheets/QCML.xsl"?>|)" +
                             instance + "|http://nyxml.org/partnerlab/XML/QCML.xsd";

    NyXmlWriter::setDefaultLanguageSelection(NyXmlWriter::LANGUAGE_QCML);
    NyXmlWriter::setDefaultLanguageSelection(static_cast<NyXmlWriter::LANGUAGE>(2));
    NyXmlWriter::setDefaultForWriteDefaultDataFlag(false);
    NyXmlWriter late("m.xml", stream);
    EXPECT_EQ(settings(late), qcml);
    EXPECT_FALSE(late.writeDefaultDataFlag());
    EXPECT_EQ(settings(early), untouched);
    EXPECT_TRUE(early.writeDefaultDataFlag());

    early.setLanguageSelection(static_cast<NyXmlWriter::LANGUAGE>(-1));
    EXPECT_EQ(settings(early), untouched);
    early.setLanguageSelection(NyXmlWriter::LANGUAGE_QCML);
    EXPECT_EQ(settings(early), qcml);
    early.setLanguageSelection(NyXmlWriter::LANGUAGE_XML);
    EXPECT_EQ(settings(early), R"(  |<?xml version="1.0" encoding="UTF-8"?>|||)");

    late.writeStartTag("u#r"); // the two schema settings take no part
    EXPECT_EQ(stream.str(), late.header() + '\n' + late.styleSheet() + "\n<r " + instance +
                                "\n  xsi:schemaLocation=\"u\n  m.u.xsd\" xmlns=\"u\"");
}

TEST(Writer, CopyGoesOnWhereTheSourceStands)
{
    std::ostringstream stream, other;
    NyXmlWriter writer("d.xml", stream);
    play(writer, "<x/v#r +a");
    writer << 0.1;
    std::string const head = stream.str();
    NyXmlWriter copy(writer);
    copy << 0.1;
    copy.writeEndTag();
    NyXmlWriter assigned("e.xml", other);
    assigned = copy; // keeps its stream and its digits
    play(assigned, "<x/v#b");
    assigned << 0.1;
    assigned.writeEndTag();
    EXPECT_EQ(stream.str(), head + ">0.10000000000000000555 0.1</a>\n");
    EXPECT_EQ(other.str(), " <b>0.10000000000000000555</b>\n");
}

TEST(Writer, LinksAreCountedAndTold)
{
    std::string heard;
    auto& manager = Ny::Application::instance().connectionManager();
    auto const progress = manager.createSlot<Ny::SignalReadWriteProgressTraits>(
        "signalReadWriteProgress", [&heard](double value) { heard += std::to_string(value) + ' '; }, 0);
    auto const status = manager.createSlot<Ny::SignalReadWriteStatusTraits>(
        "signalReadWriteMsg", [&heard](std::string text) { heard += text + ", "; }, 0);
    NyXmlWriter writer;
    writer.incrementLinkCount();
    writer.setLinkTotal(2);
    writer.resetLinkCount();
    for (int link = 0; link < 3; ++link)
        writer.incrementLinkCount();
    NyXmlWriter copy(writer);
    copy.incrementLinkCount(); // nobody hears a copy
    EXPECT_EQ(heard, "1.000000 Writing: 1, 0.500000 Writing: 0.5, 1.000000 Writing: 1, 1.500000 Writing: 1.5, ");
}

/// Looks over the writer's shoulder, and at the stream: what the base has written is there when the next operation is called.
class WatchedWriter : public NyXmlWriter {
public:
    explicit WatchedWriter(std::string const& name, std::ostream& stream) : NyXmlWriter(name, stream), m_stream(stream) {}
    void mirror() { setSchemaWriter(true); }

    void header(NyToken const& token, std::string const&) override { m_stream << "[header]<" << token.token(); }
    void writeStartTag(NyToken const& token) override
    {
        m_stream << '[' << token.namespaceAndToken() << ']';
        NyXmlWriter::writeStartTag(token);
    }
    void data(std::string const& value) override
    {
        if (value == "2")
            *this << 1000001; // an insertion within an insertion leaves the outer text alone
        NyXmlWriter::data(value);
    }
    void attributeValue(std::string const& value) override { NyXmlWriter::attributeValue('(' + value + ')'); }
    void content(std::string const& value) override { NyXmlWriter::content('(' + value + ')'); }
    void tab(unsigned int count) override { m_stream << '[' << count << ']'; }

private:
    std::ostream& m_stream;
};

TEST(Writer, SubclassSeesEveryCall)
{
    std::ostringstream stream;
    WatchedWriter writer("d.xml", stream);
    play(writer, "+u#r @b =1 +x#a");
    writer << 2 << std::string(60, 'x');
    play(writer, "/ /");
    EXPECT_EQ(stream.str(), "[u#r][header]<r xmlns=\"u\" b=\"(1)\"[u#a]>\n[1]<a>\n[2](1000001) (2) (" + std::string(60, 'x') +
                                ")\n[1]</a>\n[0]</r>\n");
}

TEST(Writer, MirroredCallsDescribeTheDocument)
{
    ScratchDirectory directory;
    std::ostringstream stream;
    {
        WatchedWriter writer(directory.path("mirrored.xml"), stream);
        writer.mirror();
        play(writer, "<x/v#r @b");
        writer << true;
        play(writer, "+a");
        writer << 1.5;
        play(writer, "/ /");
        EXPECT_FALSE(std::filesystem::exists(directory.path("mirrored.v.xsd")));
    }
    NyXmlSchema direct;
    direct.writeStartTag("x/v#r", NyXmlSchemaElementType::XML_STARTTAG_SINGLE);
    direct.setAttributeName("b");
    direct.setType(typeid(bool));
    direct.writeStartTag("x/v#a", NyXmlSchemaElementType::XML_STARTTAG_SINGLE);
    direct.setType(typeid(double));
    direct.writeEndTag();
    direct.writeEndTag();
    direct.write(directory.path("direct.xml"));
    auto const bytesOf = [](std::string const& path) {
        std::ostringstream bytes;
        bytes << std::ifstream(path).rdbuf();
        return bytes.str();
    };
    EXPECT_NE(bytesOf(directory.path("mirrored.v.xsd")), "");
    EXPECT_EQ(bytesOf(directory.path("mirrored.v.xsd")), bytesOf(directory.path("direct.v.xsd")));
}

} // namespace
