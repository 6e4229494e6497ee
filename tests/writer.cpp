#include "Support.h"

#include <nyXml/platform/NyApplication.h>
#include <nyXml/traversal/NyXmlSignals.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <string>
#include <vector>

namespace {

std::string const instance = R"(xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance")";
std::string const declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

void open(NyXmlWriter& writer, NyToken const& token) { writer.writeStartTagUsingParentNamespace(token); }

void leaf(NyXmlWriter& writer, NyToken const& token, std::string const& text)
{
    open(writer, token);
    writer << text;
    writer.writeEndTag();
}

/// The bytes that the calls give, without declaration; the document is called d.xml.
std::string written(std::function<void(NyXmlWriter&)> const& calls)
{
    std::ostringstream stream;
    NyXmlWriter writer("d.xml", stream);
    writer.setHeader("");
    calls(writer);
    return stream.str();
}

/// The same inside `<r>` of namespace u, less the root's own bytes.
std::string inRoot(std::function<void(NyXmlWriter&)> const& calls)
{
    std::string const bytes = written([&calls](NyXmlWriter& writer) {
        writer.writeStartTag("u#r");
        calls(writer);
    });
    std::string const root = "<r " + instance + "\n  xsi:schemaLocation=\"u\n  d.u.xsd\" xmlns=\"u\"";
    EXPECT_EQ(bytes.substr(0, root.size()), root);
    return bytes.substr(root.size());
}

TEST(Writer, SmallDocument)
{
    std::ostringstream stream;
    NyXmlWriter writer("model.xml", stream);
    writer.writeStartTag("urn:demo/shapes#root");
    writer.setAttributeName("id");
    writer << 7;
    open(writer, "size");
    writer << 1.5;
    writer.writeEndTag();
    open(writer, "note");
    writer.writeEndTag();
    writer.writeEndTag();
    EXPECT_EQ(stream.str(),
              declaration + "<root " + instance +
                  "\n  xsi:schemaLocation=\"urn:demo/shapes\n  model.shapes.xsd\" xmlns=\"urn:demo/shapes\" id=\"7\">\n"
                  " <size>1.5</size>\n <note xsi:nil=\"true\"/>\n</root>\n");
}

TEST(Writer, FormOfAnElement)
{
    std::string const fifty(50, 'x');
    struct Row {
        char const* name;
        std::function<void(NyXmlWriter&)> calls;
        std::string bytes;
    };
    auto const numbers = [](NyXmlWriter& writer, int count) {
        for (int i = 0; i < count; ++i)
            writer << 12345;
    };
    std::string const ten = "12345 12345 12345 12345 12345 12345 12345 12345 12345 12345";
    Row const rows[] = {
        { "empty text is not nil", [](NyXmlWriter& w) { w << ""; }, "<a></a>\n" },
        { "attributes alone are not nil", [](NyXmlWriter& w) { w.setAttributeName("b"), w << true; }, "<a b=\"1\"/>\n" },
        { "markup is not escaped", [](NyXmlWriter& w) { w << "&<>\"'"; }, "<a>&<>\"'</a>\n" },
        { "fifty bytes", [&](NyXmlWriter& w) { w << fifty; }, "<a>" + fifty + "</a>\n" },
        { "fifty-one bytes", [&](NyXmlWriter& w) { w << fifty + "y"; }, "<a>\n  " + fifty + "y\n </a>\n" },
        { "ten to a line", [&](NyXmlWriter& w) { numbers(w, 21); }, "<a>\n  " + ten + "\n    " + ten + "\n    12345\n </a>\n" },
        { "columns", [&](NyXmlWriter& w) { w.setNumOfContentColumns(1), numbers(w, 3); },
          "<a>12345\n    12345\n    12345</a>\n" },
        { "no columns", [&](NyXmlWriter& w) { w.setNumOfContentColumns(0), numbers(w, 11); },
          "<a>\n  " + ten + " 12345\n </a>\n" },
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(inRoot([&row](NyXmlWriter& writer) {
                      open(writer, "a");
                      row.calls(writer);
                      writer.writeEndTag();
                  }),
                  ">\n " + row.bytes);
    }
    // Continuation lines stay two blanks a level, the indent is the tags' and the first line's. Columns end with their element.
    EXPECT_EQ(inRoot([&](NyXmlWriter& writer) {
                  writer.setIndent("\t");
                  open(writer, "a");
                  writer.setNumOfContentColumns(2);
                  numbers(writer, 3);
                  writer << fifty;
                  writer.writeEndTag();
                  open(writer, "b");
                  numbers(writer, 3);
              }),
              ">\n\t<a>\n\t\t12345 12345\n    12345 " + fifty + "\n\t</a>\n\t<b");
}

TEST(Writer, NamespacesAndTheirPrefixes)
{
    Messages messages;
    std::string const bytes = inRoot([](NyXmlWriter& writer) {
        writer.writeStartTag("http://x/v#a");
        open(writer, "b");                        // inherits the declaration
        writer.writeStartTag("u#c");              // root namespace: no prefix, however deep
        writer.writeStartTag("http://other/v#d"); // equal prefix: passes for the one in force
        writer.writeEndTag();
        writer.writeEndTag();
        writer.writeEndTag();
        writer.writeEndTag();
        writer.writeStartTag("http://x/v#a"); // declared anew, since the first one is closed
        writer.writeEndTag();
        writer.writeStartTag("http://x/#e"); // the prefix is empty, but it is one
        writer.writeEndTag();
        writer.writeEndTag();
    });
    EXPECT_EQ(bytes,
              ">\n <v:a xmlns:v=\"http://x/v\">\n  <v:b>\n   <c>\n    <v:d xsi:nil=\"true\"/>\n   </c>\n  </v:b>\n </v:a>\n"
              " <v:a xmlns:v=\"http://x/v\" xsi:nil=\"true\"/>\n <:e xsi:nil=\"true\"/>\n</r>\n");
    EXPECT_EQ(messages.take(), "");

    // The first namespace to come is the default one, also below a root without any, and of all documents that follow.
    EXPECT_EQ(written([](NyXmlWriter& writer) {
                  writer.writeStartTag("r");
                  writer.writeStartTag("u#a");
                  writer.writeEndTag();
                  open(writer, "b");
                  writer.writeEndTag();
                  writer.writeEndTag();
                  writer.writeStartTag("w/v#r");
                  writer.writeEndTag();
              }),
              "<r>\n <a xmlns=\"u\" xsi:nil=\"true\"/>\n <b xsi:nil=\"true\"/>\n</r>\n<v:r " + instance +
                  "\n  xsi:schemaLocation=\"w/v\n  d.v.xsd\" xmlns:v=\"w/v\" xsi:nil=\"true\"/>\n");
    EXPECT_EQ(messages.take(), "NyXmlWriter Warning: All elements should have namespace: r\n\tFile: d.xml\n"
                               "NyXmlWriter Warning: All elements should have namespace: b\n\tFile: d.xml\n");
}

TEST(Writer, CallsOutOfPlace)
{
    struct Row {
        char const* name;
        std::function<void(NyXmlWriter&)> calls;
        std::string bytes, messages;
    };
    auto const misplaced = [](std::string const& element) {
        return "NyXmlWriter Error: element " + element + " is placing content at incorrect location.\n\tFile: d.xml\n";
    };
    auto const endTag = [](char mode) {
        return std::string("NyXmlWriter Error: end tag following incorrect mode ") + mode + ".  File d.xml\n";
    };
    Row const rows[] = {
        { "data behind a child", [](NyXmlWriter& w) { leaf(w, "a", "t"), w << "lost", w.writeEndTag(); }, ">\n <a>t</a>\n</r>\n",
          misplaced("r") },
        { "end tag behind an attribute name",
          [](NyXmlWriter& w) { open(w, "a"), w.setAttributeName("b"), w.writeEndTag(), w.writeEndTag(); }, ">\n <a b=</r>\n",
          endTag('2') },
        { "child behind an attribute name", [](NyXmlWriter& w) { w.setAttributeName("b"), leaf(w, "a", "t"); }, " b= <a>t</a>\n",
          "" },
        { "child behind data", [](NyXmlWriter& w) { w << "lost", leaf(w, "a", "t"), w.writeEndTag(); }, " <a>t</a>\n</r>\n", "" },
        { "attribute behind a child", [](NyXmlWriter& w) { leaf(w, "a", "t"), w.setAttributeName("b"), w << 1; },
          ">\n <a>t</a>\n b=\"1\"", "" },
        { "end tag and data too many", [](NyXmlWriter& w) { w.writeEndTag(), w.writeEndTag(), w << "lost"; },
          " xsi:nil=\"true\"/>\n", endTag('5') + misplaced("") },
        { "attribute of a namespace",
          [](NyXmlWriter& w) {
              w.writeStartTag("x/v#a"), w.setAttributeName("y/v#b"), w << 1, w.setAttributeName("u#c"), w << 2;
          },
          ">\n <v:a xmlns:v=\"x/v\" v:b=\"1\" c=\"2\"",
          "NyXmlWriter Error: no namespace on attributes preferred: y/v#b\n\tFile: d.xml\n"
          "NyXmlWriter Error: no namespace on attributes preferred: u#c\n\tFile: d.xml\n"
          "NyXmlWriter Error: attribute namespace doesn't exist: u#c\n\tFile: d.xml\n" },
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.name);
        Messages messages;
        EXPECT_EQ(inRoot(row.calls), row.bytes);
        for (int const printType : messages.types())
            EXPECT_EQ(printType, 4);
        EXPECT_EQ(messages.take(), row.messages);
    }
    Messages messages;
    EXPECT_EQ(
        written([](NyXmlWriter& w) { w << "lost", w.writeEndTag(), w.setAttributeName("v#a"), w << 1 << 2, w.writeEndTag(); }),
        " a=\"1\"");
    EXPECT_EQ(messages.take(), misplaced("") + endTag('0') +
                                   "NyXmlWriter Error: no namespace on attributes preferred: v#a\n\tFile: d.xml\n"
                                   "NyXmlWriter Error: attribute namespace doesn't exist: v#a\n\tFile: d.xml\n" +
                                   endTag('4'));
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
    writer.setHeader("");
    writer.writeStartTag("x/v#r");
    open(writer, "a");
    writer << 0.1;
    std::string const head = stream.str();
    NyXmlWriter copy(writer);
    copy << 0.1;
    copy.writeEndTag();
    NyXmlWriter assigned("e.xml", other);
    assigned = copy; // keeps its stream and its digits
    assigned.writeStartTag("x/v#b");
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
    writer.writeStartTagUsingParentNamespace("u#r");
    writer.setAttributeName("b");
    writer << 1;
    open(writer, "x#a");
    writer << 2 << std::string(60, 'x');
    writer.writeEndTag();
    writer.writeEndTag();
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
        writer.writeStartTag("x/v#r");
        writer.setAttributeName("b");
        writer << true;
        open(writer, "a");
        writer << 1.5;
        writer.writeEndTag();
        writer.writeEndTag();
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
