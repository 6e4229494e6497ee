#include <nyXmlKit/standard/NyXmlStandardReader.h>
#include <nyXmlKit/standard/NyXmlStandardWriter.h>

#include "../ReaderSupport.h"

#include <nyXml/platform/NyAngle.h>
#include <nyXml/values/NyXmlEmbeddedString.h>
#include <nyXml/values/NyXmlVectorBasicType.h>

#include <expat.h>
#include <gtest/gtest.h>
#include <libxml/xmlreader.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

using namespace std::string_literals;

namespace {

void quiet(NyXmlStandardWriter& writer)
{
    writer.setNoSchemaLocation(true);
    writer.setNoNil(true);
    writer.setNoNamespaceComplaints(true);
    writer.setHeader("");
}

template <class Writer = NyXmlStandardWriter>
std::string written(std::function<void(Writer&)> const& write, std::function<void(Writer&)> const& prepare = {})
{
    std::ostringstream stream;
    Writer writer("model.xml", stream);
    if (prepare)
        prepare(writer);
    write(writer);
    return stream.str();
}

std::string writtenQuietly(std::function<void(NyXmlStandardWriter&)> const& write)
{
    return written<NyXmlStandardWriter>(write, quiet);
}

// Where nothing has to be escaped it writes what the core's writer writes, byte for byte.
TEST(StandardWriter, WritesAsTheCoreDoes)
{
    auto const write = [](NyXmlWriter& writer) {
        writer.writeStartTag("urn:demo/shapes#root");
        writer.setAttributeName("id");
        writer << 7;
        writer.writeStartTag("urn:demo/other#x");
        writer.writeStartTagUsingParentNamespace("y");
        writer << 0.1;
        writer.writeEndTag();
        writer.writeStartTag("urn:demo/shapes#z");
        for (int i = 0; i != 25; ++i)
            writer << i;
        writer.writeEndTag();
        writer.writeEndTag();
        writer.writeStartTagUsingParentNamespace("few");
        writer.setNumOfContentColumns(2);
        writer << true << 'c' << NyAngle(0.5);
        writer.writeEndTag();
        writer.writeStartTagUsingParentNamespace("nil");
        writer.writeEndTag();
        writer.writeStartTagUsingParentNamespace("empty");
        writer << "";
        writer.writeEndTag();
        writer.writeEndTag();
    };
    Messages messages;
    EXPECT_EQ(written<NyXmlStandardWriter>(write), written<NyXmlWriter>(write));
    EXPECT_EQ(messages.take(), "");
}

TEST(StandardWriter, Switches)
{
    auto const write = [](NyXmlWriter& writer) {
        writer.writeStartTag("root");
        writer << 0.1;
        writer.writeEndTag();
    };
    auto const shape = [](NyXmlWriter& writer) {
        writer.writeStartTag("urn:a/b#root");
        writer.writeStartTagUsingParentNamespace("nil");
        writer.writeEndTag();
        writer.writeEndTag();
    };
    Messages messages;
    auto const first = [](NyXmlStandardWriter& writer) { writer.setHeader(""); };
    std::string const instance = " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"";
    EXPECT_EQ(written<NyXmlStandardWriter>(write, first), "<root" + instance + ">0.10000000000000000555</root>\n");
    EXPECT_EQ(messages.take(), "NyXmlStandardWriter Warning: All elements should have namespace: root\n\tFile: model.xml\n");
    EXPECT_EQ(written<NyXmlStandardWriter>(shape,
                                           [&](NyXmlStandardWriter& writer) {
                                               first(writer);
                                               writer.setNoSchemaLocation(true);
                                           }),
              "<root" + instance + " xmlns=\"urn:a/b\">\n <nil xsi:nil=\"true\"/>\n</root>\n");
    EXPECT_EQ(writtenQuietly(shape), "<root xmlns=\"urn:a/b\">\n <nil/>\n</root>\n");

    NyXmlStandardWriter::setDefaultNoSchemaLocation(true);
    NyXmlStandardWriter::setDefaultNoNil(true);
    NyXmlStandardWriter::setDefaultNoNamespaceComplaints(true);
    NyXmlStandardWriter::setDefaultShortestReals(true);
    EXPECT_EQ(written<NyXmlStandardWriter>(write, first), "<root>0.1</root>\n");
    NyXmlStandardWriter::setDefaultNoSchemaLocation(false);
    NyXmlStandardWriter::setDefaultNoNil(false);
    NyXmlStandardWriter::setDefaultNoNamespaceComplaints(false);
    NyXmlStandardWriter::setDefaultShortestReals(false);
    EXPECT_EQ(messages.take(), "");

    EXPECT_EQ(written<NyXmlStandardWriter>(
                  [](NyXmlStandardWriter& writer) {
                      writer.setShortestReals(true);
                      writer.writeStartTag("a");
                      writer << 1e30 << -0.0 << 5e-324 << 1.0 / 3 << NyAngle(0.1) << std::numeric_limits<double>::infinity() << 7
                             << "0.10";
                      writer.writeEndTag();
                  },
                  quiet),
              "<a>1e+30 -0 5e-324 0.3333333333333333 0.1 inf 7 0.10</a>\n");
}

TEST(StandardWriter, Namespaces)
{
    Messages messages;
    std::string const document = writtenQuietly([](NyXmlStandardWriter& writer) {
        writer.writeStartTag("urn:one/a#r");
        writer.writeStartTag("urn:two/a#x"); // the same last part twice
        writer.writeStartTag("urn:three/a#y");
        writer.writeEndTag();
        writer.writeEndTag();
        writer.writeStartTag("z"); // none
        writer.writeStartTag("urn:one/a#w");
        writer.writeEndTag();
        writer.writeEndTag();
        writer.writeStartTag("urn:x/2001#v"); // no name
        writer.setAttributeName("urn:q:k#i");
        writer << "1";
        writer.setAttributeName(NyToken("http://www.w3.org/XML/1998/namespace", "lang"));
        writer << "de";
        writer.setAttributeName("urn:q:k#j");
        writer << "&";
        writer.writeEndTag();
        writer.writeEndTag();
    });
    EXPECT_EQ(document,
              "<r xmlns=\"urn:one/a\">\n <a:x xmlns:a=\"urn:two/a\">\n  <a2:y xmlns:a2=\"urn:three/a\"/>\n </a:x>\n"
              " <z xmlns=\"\">\n  <w xmlns=\"urn:one/a\"/>\n </z>\n"
              " <_2001:v xmlns:_2001=\"urn:x/2001\" xmlns:k=\"urn:q:k\" k:i=\"1\" xml:lang=\"de\" k:j=\"&amp;\"/>\n</r>\n");
    EXPECT_EQ(messages.take(), "");
}

TEST(StandardWriter, WhatWouldNotBeXmlIsReported)
{
    auto const complaint = [](std::string const& what) { return "NyXmlStandardWriter Error: " + what + "\n\tFile: model.xml\n"; };
    struct Row {
        std::function<void(NyXmlStandardWriter&)> write;
        std::string document;
        std::string message;
    };
    Row const rows[] = {
        { [](auto& writer) { writer << "a\1b\0\xC0\x80\xED\xA0\x80\xEF\xBF\xBE\xF4\x90\x80\x80\xC3"s; }, "<r>ab</r>\n",
          complaint("element r has 15 bytes that XML cannot hold, and they are left out") },
        { [](auto& writer) {
             writer.setAttributeName("x");
             writer << "\x7F\xC3\xA4\x1F";
         },
          "<r x=\"\x7F\xC3\xA4\"/>\n", complaint("attribute x has 1 bytes that XML cannot hold, and they are left out") },
        { [](auto& writer) {
             writer.setAttributeName("x");
             writer << 1;
             writer.setAttributeName("x");
             writer << 2;
         },
          "<r x=\"1\"/>\n", complaint("attribute is there already, and left out: x") },
        { [](auto& writer) { writer.setAttributeName("x"); }, "<r/>\n", complaint("attribute has no value, and is left out: x") },
        { [](auto& writer) {
             writer << 1;
             writer.setAttributeName("x");
             writer << 2 << 3;
         },
          "<r>1 3</r>\n", complaint("attribute is not in a start tag, and left out: x") },
        { [](auto& writer) {
             writer.writeStartTag("1 a:b");
             writer.writeEndTag();
         },
          "<r>\n <_1_a_b/>\n</r>\n", complaint("no name in XML: 1 a:b, written as _1_a_b") },
        { [](auto& writer) {
             writer.writeStartTag("a");
             writer.writeEndTag();
             writer << 1;
         },
          "<r>\n <a/>\n</r>\n", complaint("element r is placing content at incorrect location") },
        { [](auto& writer) {
             writer << "x<";
             writer.writeStartTag("a");
             writer.writeEndTag();
         },
          "<r>x&lt; <a/>\n</r>\n", "" },
    };
    for (Row const& row : rows) {
        Messages messages;
        EXPECT_EQ(writtenQuietly([&](NyXmlStandardWriter& writer) {
                      writer.writeStartTag("r");
                      row.write(writer);
                      writer.writeEndTag();
                  }),
                  row.document);
        EXPECT_EQ(messages.take(), row.message);
    }
}

// A tree of elements with attributes and texts, as any reader should see it.
struct Element {
    std::string name;
    std::vector<std::pair<std::string, std::string>> attributes; // ordered by name
    std::vector<Element> children;
    std::string text;
};

std::string listing(Element const& element)
{
    std::string list = "<" + element.name;
    for (auto const& [name, value] : element.attributes)
        list += "|" + name + "=" + value;
    list += "|" + element.text + "|";
    for (Element const& child : element.children)
        list += listing(child);
    return list + ">";
}

void write(NyXmlWriter& writer, Element const& element)
{
    writer.writeStartTag(NyToken(std::string(), element.name));
    for (auto const& [name, value] : element.attributes) {
        writer.setAttributeName(NyToken(std::string(), name));
        writer << value;
    }
    if (element.children.empty() && !element.text.empty())
        writer << element.text;
    for (Element const& child : element.children)
        write(writer, child);
    writer.writeEndTag();
}

std::string readBack(std::string const& document)
{
    std::istringstream stream(document);
    NyXmlStandardReader reader("doc.xml", stream);
    std::vector<Element> open(1);
    for (;;) {
        switch (reader.readXml()) {
        case NyXmlFileReader::XML_READER_START_TAG:
        case NyXmlFileReader::XML_READER_EMPTY_TAG: {
            Element element;
            element.name = reader.element().token();
            while (reader.remainingNumOfAttributes() != 0) {
                std::string const name = reader.attributeName();
                element.attributes.emplace_back(name, reader.attributeValue());
            }
            if (reader.mode() == NyXmlFileReader::XML_READER_EMPTY_TAG)
                open.back().children.push_back(element);
            else
                open.push_back(element);
            break;
        }
        case NyXmlFileReader::XML_READER_CONTENT: open.back().text = reader.content(); [[fallthrough]];
        case NyXmlFileReader::XML_READER_END_TAG: {
            Element const element = open.back();
            open.pop_back();
            open.back().children.push_back(element);
            break;
        }
        case NyXmlFileReader::XML_READER_EOF: return listing(open.front().children.at(0));
        case NyXmlFileReader::XML_READER_ERROR: return "error";
        }
    }
}

/// What the peers share: layout between elements is no text.
struct PeerTree {
    std::vector<Element> open = std::vector<Element>(1);

    void start(std::string const& name) { open.push_back({ name, {}, {}, {} }); }
    void attribute(std::string const& name, std::string const& value) { open.back().attributes.emplace_back(name, value); }
    void text(std::string const& text) { open.back().text += text; }
    void end()
    {
        Element element = open.back();
        if (!element.children.empty())
            element.text.clear();
        std::sort(element.attributes.begin(), element.attributes.end());
        open.pop_back();
        open.back().children.push_back(element);
    }
    std::string all() const { return open.size() == 1 && open[0].children.size() == 1 ? listing(open[0].children[0]) : "cut"; }
};

std::string byExpat(std::string const& document)
{
    PeerTree tree;
    std::unique_ptr<XML_ParserStruct, void (*)(XML_Parser)> const parser(XML_ParserCreate(nullptr), XML_ParserFree);
    XML_SetUserData(parser.get(), &tree);
    XML_SetElementHandler(
        parser.get(),
        [](void* data, char const* name, char const** attributes) {
            static_cast<PeerTree*>(data)->start(name);
            for (; *attributes != nullptr; attributes += 2)
                static_cast<PeerTree*>(data)->attribute(attributes[0], attributes[1]);
        },
        [](void* data, char const*) { static_cast<PeerTree*>(data)->end(); });
    XML_SetCharacterDataHandler(parser.get(), [](void* data, char const* text, int size) {
        static_cast<PeerTree*>(data)->text({ text, static_cast<std::size_t>(size) });
    });
    if (XML_Parse(parser.get(), document.data(), static_cast<int>(document.size()), 1) != XML_STATUS_OK)
        return XML_ErrorString(XML_GetErrorCode(parser.get()));
    return tree.all();
}

std::string byLibxml2(std::string const& document)
{
    PeerTree tree;
    auto const textOf = [](xmlChar const* text) {
        std::string result;
        for (; text != nullptr && *text != 0; ++text)
            result += static_cast<char>(*text);
        return result;
    };
    std::unique_ptr<xmlTextReader, void (*)(xmlTextReaderPtr)> const reader(
        xmlReaderForMemory(document.data(), static_cast<int>(document.size()), nullptr, nullptr,
                           XML_PARSE_HUGE | XML_PARSE_NOERROR | XML_PARSE_NOWARNING),
        xmlFreeTextReader);
    int result = xmlTextReaderRead(reader.get());
    for (; result == 1; result = xmlTextReaderRead(reader.get())) {
        switch (xmlTextReaderNodeType(reader.get())) {
        case XML_READER_TYPE_ELEMENT: {
            bool const isEmpty = xmlTextReaderIsEmptyElement(reader.get()) == 1;
            tree.start(textOf(xmlTextReaderConstName(reader.get())));
            while (xmlTextReaderMoveToNextAttribute(reader.get()) == 1)
                tree.attribute(textOf(xmlTextReaderConstName(reader.get())), textOf(xmlTextReaderConstValue(reader.get())));
            if (isEmpty)
                tree.end();
            break;
        }
        case XML_READER_TYPE_END_ELEMENT: tree.end(); break;
        case XML_READER_TYPE_TEXT:
        case XML_READER_TYPE_WHITESPACE:
        case XML_READER_TYPE_SIGNIFICANT_WHITESPACE: tree.text(textOf(xmlTextReaderConstValue(reader.get()))); break;
        }
    }
    return result == 0 ? tree.all() : "error";
}

class RandomDocument {
public:
    explicit RandomDocument(std::uint32_t seed) : m_random(seed) {}

    Element element(int depth)
    {
        static char const* const names[] = { "a", "b-1", "c.d", "_", "\xC3\xA4\xCE\xB1" };
        Element made{ names[below(5)], {}, {}, {} };
        for (char const* const name : { "x", "xm", "y" })
            if (below(3) == 0)
                made.attributes.emplace_back(name, text());
        if (depth != 0 && below(3) != 0)
            for (unsigned int count = 1 + below(4); count != 0; --count)
                made.children.push_back(element(depth - 1));
        else
            made.text = text();
        return made;
    }

private:
    unsigned int below(unsigned int bound) { return static_cast<unsigned int>(m_random() % bound); }

    std::string text()
    {
        static char const* const pieces[] = { " ",
                                              "\t",
                                              "\n",
                                              "\r",
                                              "\r\n",
                                              "<",
                                              ">",
                                              "&",
                                              "\"",
                                              "'",
                                              "]]>",
                                              "&amp;",
                                              "<!--",
                                              "#",
                                              "a",
                                              "0",
                                              "\x7F",
                                              "\xC2\x80",
                                              "\xC2\x85",
                                              "\xDF\xBF",
                                              "\xE0\xA0\x80",
                                              "  ",
                                              "&#",
                                              "/>",
                                              "\xE2\x80\xA8",
                                              "\xF0\x90\x80\x80",
                                              "\xEF\xBF\xBD",
                                              "\xF4\x8F\xBF\xBF" };
        std::string made;
        for (unsigned int count = below(4) == 0 ? below(60) : below(6); count != 0; --count)
            made += pieces[below(static_cast<unsigned int>(std::size(pieces)))];
        return made;
    }

    std::mt19937 m_random;
};

TEST(StandardWriter, EveryoneReadsTheSameStrings)
{
    Messages messages;
    for (std::uint32_t seed = 1; seed <= 400; ++seed) {
        SCOPED_TRACE(seed);
        Element const element = RandomDocument(seed).element(4);
        std::string const document = writtenQuietly([&](NyXmlStandardWriter& writer) { write(writer, element); });
        std::string const expected = listing(element);
        ASSERT_EQ(readBack(document), expected) << document;
        ASSERT_EQ(byExpat(document), expected) << document;
        ASSERT_EQ(byLibxml2(document), expected) << document;
    }
    EXPECT_EQ(messages.take(), "");
}

TEST(StandardWriter, EmbeddedStringsStayMarkup)
{
    Messages messages;
    auto const framed = [](NyXmlObject const& object) {
        return writtenQuietly([&](NyXmlStandardWriter& writer) {
            writer.writeStartTag("r");
            object.write(writer);
            writer.writeEndTag();
        });
    };
    std::string const markup = "x &lt; <b y=\"1&#10;\">z</b>&#32;";
    EXPECT_EQ(framed(NyXmlEmbeddedString(markup)), "<r>" + markup + "</r>\n");
    EXPECT_EQ(framed(NyXmlBasicType<std::string>("<b/>")), "<r>&lt;b/&gt;</r>\n");
    NyXmlEmbeddedString again;
    Open<NyXmlStandardReader> open(framed(NyXmlEmbeddedString(markup)), 1);
    EXPECT_TRUE(again.read(open.reader));
    EXPECT_EQ(again.value(), markup);
    EXPECT_EQ(messages.take(), "");
}

} // namespace
