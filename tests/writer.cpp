#include "Support.h"

#include <nyXml/writer/NyXmlWriter.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace {

std::string const instance = R"(xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance")";

/// Makes the calls that a line of words names: `<ns#a` start tag, `+a` start tag in the parent's namespace, `@a` attribute name,
/// `=text` data, `#1.5` an inserted number, `:3` columns, `/` end tag.
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
        case '#': writer << std::stod(rest); break;
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
    EXPECT_EQ(written("<u#r +a @c #0 :2 #1 =2 #-3 / +b #1 #2 #3 /"),
              open + " <a c=\"0\">1 2\n    -3</a>\n <b>1 2 3</b>\n"); // columns end with their element
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
    // A declaration ends with its own element, here q and not s, which stands where a declared before.
    EXPECT_EQ(written("<u#r +p <x/v#a / / <x/v#q +s / <u#t <x/v#b /"),
              "<r xmlns=\"u\">\n <p>\n  <v:a xmlns:v=\"x/v\" xsi:nil=\"true\"/>\n </p>\n <v:q xmlns:v=\"x/v\">\n"
              "  <v:s xsi:nil=\"true\"/>\n  <t>\n   <v:b xsi:nil=\"true\"/>\n");
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
    std::string const content = "NyXmlWriter Error: element ",
                      misplaced = " is placing content at incorrect location.\n\tFile: d.xml\n",
                      endTag = "NyXmlWriter Error: end tag following incorrect mode ", file = "\n\tFile: d.xml\n",
                      preferred = "NyXmlWriter Error: no namespace on attributes preferred: ",
                      missing = "NyXmlWriter Error: attribute namespace doesn't exist: ";
    struct {
        char const *calls, *bytes;
        std::string messages;
    } const rows[] = {
        { "<u#r +a =1 / =lost /", "<r xmlns=\"u\">\n <a>1</a>\n</r>\n", content + "r" + misplaced },
        { "<u#r +a @b / /", "<r xmlns=\"u\">\n <a b=</r>\n", endTag + "2.  File d.xml\n" },
        { "<u#r @b +a =1 /", "<r xmlns=\"u\" b= <a>1</a>\n", "" },
        { "<u#r =lost +a =1 / /", "<r xmlns=\"u\" <a>1</a>\n</r>\n", "" },
        { "<u#r +a / @b =1", "<r xmlns=\"u\">\n <a xsi:nil=\"true\"/>\n b=\"1\"", "" },
        { "<u#r <x/v#a @y/v#b =1 @u#c =2", "<r xmlns=\"u\">\n <v:a xmlns:v=\"x/v\" v:b=\"1\" c=\"2\"",
          preferred + "y/v#b" + file + preferred + "u#c" + file + missing + "u#c" + file },
        // no element open
        { "<u#r / / =lost", "<r xmlns=\"u\" xsi:nil=\"true\"/>\n", endTag + "5.  File d.xml\n" + content + misplaced },
        { "=lost / @a =1 =2 /", " a=\"1\"", content + misplaced + endTag + "0.  File d.xml\n" + endTag + "4.  File d.xml\n" },
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.calls);
        Messages messages;
        EXPECT_EQ(written(row.calls), row.bytes);
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

std::string const declaration = R"(<?xml version="1.0" encoding="UTF-8"?>)",
                  qcmlSheet = R"(<?xml-stylesheet type="text/xsl" href="http://nyxml.org/stylesheets/QCML.xsl"?>)";

std::string settingsOf(NyXmlWriter const& w)
{
    return w.indent() + '|' + w.header() + '|' + w.styleSheet() + '|' + w.schemaInstance() + '|' + w.schemaLocation() + '|' +
           (w.writeDefaultDataFlag() ? "all" : "changed");
}

std::string defaults()
{
    return NyXmlWriter::defaultIndent() + '|' + NyXmlWriter::defaultHeader() + '|' + NyXmlWriter::defaultStyleSheet() + '|' +
           NyXmlWriter::defaultSchemaInstance() + '|' + NyXmlWriter::defaultSchemaLocation() + '|' +
           (NyXmlWriter().writeDefaultDataFlag() ? "all" : "changed");
}

TEST(Writer, EachDefaultReachesLaterWritersAlone)
{
    using W = NyXmlWriter;
    auto const unknown = static_cast<W::LANGUAGE>(2);
    std::string const untouched = " |" + declaration + "||||all", qcml = "  |" + declaration + '|' + qcmlSheet + '|' + instance +
                                                                         "|http://nyxml.org/partnerlab/XML/QCML.xsd|";
    struct {
        void (*set)();
        std::string settings;
    } const rows[] = {
        { [] {}, untouched },
        { [] { W::setDefaultLanguageSelection(W::LANGUAGE_QCML); }, qcml + "all" },
        { [] { W::setDefaultLanguageSelection(static_cast<W::LANGUAGE>(2)); }, qcml + "all" },
        { [] { W::setDefaultForWriteDefaultDataFlag(false); }, qcml + "changed" },
        { [] { W::setDefaultLanguageSelection(W::LANGUAGE_XML); }, "  |" + declaration + "||||changed" },
        { [] { W::setDefaultHeader("H"); }, "  |H||||changed" },
        { [] { W::setDefaultStyleSheet("S"); }, "  |H|S|||changed" },
        { [] { W::setDefaultSchemaInstance("I"); }, "  |H|S|I||changed" },
        { [] { W::setDefaultSchemaLocation("L"); }, "  |H|S|I|L|changed" },
        { [] { W::setDefaultIndent("\t"); }, "\t|H|S|I|L|changed" },
        { [] { // as it was
             W::setDefaultLanguageSelection(W::LANGUAGE_XML);
             W::setDefaultIndent(" ");
             W::setDefaultForWriteDefaultDataFlag(true);
         },
          untouched },
    };
    std::ostringstream stream;
    NyXmlWriter early("", stream);
    for (auto const& row : rows) {
        row.set();
        EXPECT_EQ(settingsOf(NyXmlWriter("", stream)), row.settings);
        EXPECT_EQ(defaults(), row.settings);
        EXPECT_EQ(settingsOf(early), untouched);
    }
    early.setLanguageSelection(W::LANGUAGE(1));
    early.setLanguageSelection(unknown);
    EXPECT_EQ(settingsOf(early), qcml + "all");
    early.writeStartTag("u#r"); // the two schema settings take no part
    EXPECT_EQ(stream.str(),
              declaration + '\n' + qcmlSheet + "\n<r " + instance + "\n  xsi:schemaLocation=\"u\n  .u.xsd\" xmlns=\"u\"");
    early.setLanguageSelection(W::LANGUAGE(0));
    EXPECT_EQ(settingsOf(early), ' ' + untouched);
}

/// Says which setter was called.
class SettingsWatcher : public NyXmlWriter {
public:
    void setIndent(std::string const& text) override { calls += "indent " + text + '\n'; }
    void setHeader(std::string const& text) override { calls += "header " + text + '\n'; }
    void setStyleSheet(std::string const& text) override { calls += "sheet " + text + '\n'; }
    void setSchemaInstance(std::string const& text) override { calls += "instance " + text + '\n'; }
    void setSchemaLocation(std::string const& text) override { calls += "location " + text + '\n'; }

    std::string calls;
};

TEST(Writer, LanguageGoesThroughTheSettersInOrder)
{
    SettingsWatcher watcher;
    watcher.setLanguageSelection(NyXmlWriter::LANGUAGE_QCML);
    EXPECT_EQ(watcher.calls, "indent   \nheader " + declaration + "\nsheet " + qcmlSheet + "\ninstance " + instance +
                                 "\nlocation http://nyxml.org/partnerlab/XML/QCML.xsd\n");
}

// Each field is set, and what the writer does next tells whether it came along.
TEST(Writer, CopiesAndAssignmentsTakeTheDocumentAndLeaveTheSender)
{
    struct {
        char const *before, *after;
        std::string bytes; // of what comes after
    } const rows[] = {
        { "<x/v#r +a #0.1", "#0.1 /", ">0.10000000000000000555 0.1</a>\n" },         // mode, stack, data; a copy has fewer digits
        { "<x/v#r +a :2 =1", "=2 =3 /", ">1 2\n    3</a>\n" },                       // columns and their count
        { "<x/v#r / <u#s", "<x/v#t /", ">\n<t xmlns=\"x/v\" xsi:nil=\"true\"/>\n" }, // the first namespace of all
        { "<u#r", "<x/v#b / /", ">\n<v:b xmlns:v=\"x/v\" xsi:nil=\"true\"/>\n</r>\n" },
        { "<x/v#r @b", "=1 / =2", "\"1\"/>\n" },
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.before);
        Messages messages;
        std::ostringstream stream, other;
        NyXmlWriter writer("d.xml", stream), assigned("e.xml", other);
        writer.setIndent("");
        play(writer, row.before);
        std::string const head = stream.str();
        NyXmlWriter copy(writer);
        play(copy, row.after);
        EXPECT_EQ(stream.str(), head + row.bytes);
        std::string const said = messages.take();
        assigned = writer; // keeps its stream and its digits, and takes the name
        play(assigned, row.after);
        std::string fine = row.bytes;
        if (std::size_t const at = fine.find(" 0.1<"); at != fine.npos)
            fine.replace(at, 5, " 0.10000000000000000555<");
        EXPECT_EQ(other.str(), fine);
        EXPECT_EQ(messages.take(), said);
    }
    std::ostringstream stream, other;
    NyXmlWriter writer("d.xml", stream), assigned("e.xml", other);
    for (auto const set : { &NyXmlWriter::setHeader, &NyXmlWriter::setStyleSheet, &NyXmlWriter::setSchemaInstance,
                            &NyXmlWriter::setSchemaLocation, &NyXmlWriter::setIndent })
        (writer.*set)(settingsOf(writer).substr(0, 7));
    writer.setWriteDefaultDataFlag(false);
    assigned = writer;
    EXPECT_EQ(settingsOf(NyXmlWriter(writer)), settingsOf(writer));
    EXPECT_EQ(settingsOf(assigned), settingsOf(writer));
}

TEST(Writer, LongDataComesWhole)
{
    std::ostringstream stream, other;
    NyXmlWriter writer("d.xml", stream), assigned("e.xml", other);
    play(writer, "<u#r +a :0");
    std::string text = "0";
    writer.data(text);
    for (int i = 1; text.size() < 200000; ++i) {
        writer << i;
        text += ' ' + std::to_string(i);
    }
    NyXmlWriter copy(writer);
    assigned = writer;
    std::string const expected = ">\n  " + text + "\n </a>\n";
    play(assigned, "/ @b =1 =2 /"); // data stay until the next start tag: out of place they come again
    EXPECT_TRUE(other.str() == expected + " b=\"1\">\n " + text + " 2\n</r>\n");
    stream.str("");
    play(copy, "/ +b =1 /");
    EXPECT_TRUE(stream.str() == expected + " <b>1</b>\n");
}

/// Looks over the writer's shoulder, and at the stream: what the base has written is there when the next operation is called.
class WatchedWriter : public NyXmlWriter {
public:
    explicit WatchedWriter(std::string const& name, std::ostream& stream) : NyXmlWriter(name, stream), m_stream(stream) {}
    using NyXmlWriter::setDefaultSchemaWriter;

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
    std::ostringstream stream, schema;
    WatchedWriter::setDefaultSchemaWriter(true);
    {
        NyXmlWriter writer(directory.path("d.xml"), stream);
        WatchedWriter::setDefaultSchemaWriter(false);
        play(writer, "<x/v#r @b #1 +a #1.5 / /");
        EXPECT_FALSE(std::filesystem::exists(directory.path("d.v.xsd")));
    }
    schema << std::ifstream(directory.path("d.v.xsd")).rdbuf();
    for (auto const& part : { R"(<element name="r" type="v:r.Type")", R"(  <element name="a" type="double")",
                              R"(<attribute name="b" type="double"/>)" })
        EXPECT_NE(schema.str().find(part), std::string::npos) << schema.str();
}

} // namespace
