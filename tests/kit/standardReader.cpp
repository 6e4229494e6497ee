#include <nyXmlKit/standard/NyXmlStandardReader.h>

#include "../ReaderSupport.h"

#include <nyXml/compound/NyXmlCompoundType.h>
#include <nyXml/values/NyXmlBinaryString.h>
#include <nyXml/values/NyXmlEmbeddedString.h>
#include <nyXml/values/NyXmlMapType.h>
#include <nyXml/values/NyXmlVector.h>
#include <nyXml/values/NyXmlVectorBasicType.h>
#include <nyXml/values/NyXmlVectorType.h>
#include <nyXml/values/NyXmlVectorVector.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

using namespace std::string_literals;

namespace {

using Reader = Open<NyXmlStandardReader>;

std::string seen(std::string const& document) { return eventsOf<NyXmlStandardReader>(document); }

std::string fault(std::string const& what, int line, int column)
{
    return "NyXmlStandardReader Error: file not well formed.\n\t" + what + ".\n\tFile: doc.xml\n\tLine: " + std::to_string(line) +
           "\n\tColumn: " + std::to_string(column) + "\n";
}

std::string doubt(std::string const& what, int line)
{
    return "NyXmlStandardReader Error: file possibly not valid.\n\t" + what +
           ".\n\tFile: doc.xml\n\tLine: " + std::to_string(line) + "\n";
}

struct Row {
    std::string document;
    std::string events;
};

TEST(StandardReader, Events)
{
    Row const rows[] = {
        { "<a b='1'>text</a>", "start a b=1 | content text | eof" },
        { "<a/>", "empty a | eof" },
        { "<a></a>", "start a | end | eof" },
        { "<a> \n </a>", "start a | end | eof" },
        { "<r><a size='0'> \n </a><a size='0'> <b/></a><a size='0'> x</a><a size='1'></a></r>",
          "start r | empty a size=0 | start a size=0 | empty b | end | start a size=0 | content x | start a size=1 | end | end | "
          "eof" },
        { "<a>\n<b/>\n<c>x</c>\n</a>", "start a | empty b | start c | content x | end | eof" },
        { "<?xml version='1.0'?>\n<!-- c --><!DOCTYPE a [<!ELEMENT a ANY>]>\n<?p q?><a/><!-- d -->\n", "empty a | eof" },
        // text comes whole
        { "<a>x<!-- c -->y<?p?>z<![CDATA[<&]]>&lt;&#65;&#x20AC;</a>", "start a | content xyz<&<A\xE2\x82\xAC | eof" },
        { "<a>]]&gt; # > \"</a>", "start a | content ]]> # > \" | eof" },
        { "<a>1\r\n2\r3</a>", "start a | content 1\n2\n3 | eof" },
        { "<a><![CDATA[]]></a>", "start a | end | eof" },
        // attributes: by local name, as XML normalises them, the first of a name
        { "<a z='1' b='2' m='3'/>", "empty a b=2 m=3 z=1 | eof" },
        { "<a b='u#v' c='x>y' d=\" \t1\r\n2&#10;&#32;&quot;&apos; \"/>", "empty a b=u#v c=x>y d=  1 2\n \"'  | eof" },
        { "<p:a xmlns:p='u' p:b='1' xmlns='v'><p:c/></p:a>", "start a b=1 | empty c | end | eof" },
        { "<a x:b='1' y:b='2'/>", "empty a b=1 | eof" },
        { "<a xmlns:i='http://www.w3.org/2001/XMLSchema-instance' i:type='t' xsi:nil='true' xml:lang='de'/>",
          "empty a lang=de | eof" },
        // entities
        { "<!DOCTYPE a [<!ENTITY e 'x&#38;lt;<b>y</b>'><!ENTITY f '<c/><d></d>'>]><a><e>&e;</e>&f;</a>",
          "start a | start e | start b | content y | end | empty c | start d | end | end | eof" },
        { "<!DOCTYPE a [<!ENTITY e 'one'><!ATTLIST a b CDATA '&e;' c NMTOKENS ' 1  2 '>]><a>&e; &e;</a>",
          "start a b=one c=1 2 | content one one | eof" },
        // white space at the ends
        { "<a> \n x y\t</a>", "start a | content x y | eof" },
        { "<a> &#32; x&#x9; </a>", "start a | content   x\t | eof" },
        { "<a>&#10;</a>", "start a | content \n | eof" },
        { "<a>&#10;<b/>&#10;</a>", "start a | empty b | end | eof" },
        { "<a> <![CDATA[ x ]]> </a>", "start a | content x | eof" },
        { "<!DOCTYPE a [<!ENTITY e ' x&#38;#32; '>]><a>&e;</a>", "start a | content x  | eof" },
        { "<a xml:space='preserve'> x <b> y<c xml:space='default'> z </c></b><d> </d></a>",
          "start a | start b | start c | content z | end | start d | content   | end | eof" },
    };
    Messages messages;
    for (Row const& row : rows) {
        SCOPED_TRACE(row.document);
        EXPECT_EQ(seen(row.document), row.events);
    }
}

// A block of the stream, or of what the parser wants to see at once, may end anywhere.
TEST(StandardReader, BlockEdgeIsInvisible)
{
    std::string const document =
        "<a b='1'><!-- c --><d/>\r\n<e>te&#32;xt &amp;&#x20;</e><f xml:space='preserve'>\xC3\xA4 </f></a>";
    std::string const events = "start a b=1 | empty d | start e | content te xt &  | start f | content \xC3\xA4  | end | eof";
    ASSERT_EQ(seen(document), events);
    for (std::size_t inFirstRead = 0; inFirstRead <= document.size(); ++inFirstRead) {
        for (std::size_t const edge : { 1024, 1024 + 16384 }) {
            SCOPED_TRACE(inFirstRead);
            EXPECT_EQ(seen("<!--" + std::string(edge - 7 - inFirstRead, '-' + 1) + "-->" + document), events);
        }
    }
}

TEST(StandardReader, Encodings)
{
    std::string const latin = "<?xml version='1.0' encoding='iso-8859-15'?><a b='\xA4'>\xE4</a>";
    std::string const events = "start a b=\xE2\x82\xAC | content \xC3\xA4 | eof";
    EXPECT_EQ(seen(latin), events);
    EXPECT_EQ(seen("\xEF\xBB\xBF<a b='\xE2\x82\xAC'>\xC3\xA4</a>"), events);
    EXPECT_EQ(seen("<?xml version=\"1.0\" encoding = \"Windows-1252\"?><a b='\x80'>\xE4</a>"), events);
    EXPECT_EQ(seen("<?xml version='1.0' encoding='ISO-8859-1'?><a b='&#8364;'>\xE4</a>"), events);

    std::u16string const wide = u"<a b='€'> \r\n&#32;ä&#10;</a>";
    std::string little, big, wider;
    for (char16_t const c : wide) {
        little += { static_cast<char>(c & 255), static_cast<char>(c >> 8) };
        big += { static_cast<char>(c >> 8), static_cast<char>(c & 255) };
        wider += { static_cast<char>(c & 255), static_cast<char>(c >> 8), '\0', '\0' };
    }
    std::string const kept = "start a b=\xE2\x82\xAC | content  \xC3\xA4\n | eof";
    EXPECT_EQ(seen("\xFF\xFE" + little), kept);
    EXPECT_EQ(seen(little), kept);
    EXPECT_EQ(seen("\xFE\xFF" + big), kept);
    EXPECT_EQ(seen("\xFF\xFE\0\0"s + wider), kept);
    EXPECT_EQ(seen(wider), kept);

    // with states, and with two bytes a character that look like markup
    EXPECT_EQ(seen("<?xml version='1.0' encoding='ISO-2022-JP'?><a>\x1B$B$\"\x1B(B</a>"), "start a | content \xE3\x81\x82 | eof");
    EXPECT_EQ(seen("<?xml version='1.0' encoding='Shift_JIS'?><a>\x83\x5C</a>"), "start a | content \xE3\x82\xBD | eof");
    std::string const ebcdic =
        "\x4C\x6F\xA7\x94\x93\x40\xA5\x85\x99\xA2\x89\x96\x95\x7E\x7D\xF1\x4B\xF0\x7D\x40\x85\x95\x83\x96\x84\x89"
        "\x95\x87\x7E\x7D\xC9\xC2\xD4\xF0\xF3\xF7\x7D\x6F\x6E\x4C\x81\x61\x6E"; // ... encoding='IBM037'?><a/>
    EXPECT_EQ(seen(ebcdic), "empty a | eof");

    Messages messages;
    EXPECT_EQ(seen("<?xml version='1.0' encoding='KLINGON'?><a/>"), "error");
    EXPECT_EQ(messages.take(), fault("unknown encoding", 1, 31));
    EXPECT_EQ(seen("<?xml version='1.0' encoding='wchar_t'?><a/>"), "error");
    messages.take();
    // bytes that are no text: in the middle, and cut at the end
    EXPECT_EQ(seen("<?xml version='1.0' encoding='Shift_JIS'?>\n<a>\x83"), "start a | error");
    EXPECT_EQ(messages.take(), fault("not well-formed (invalid token)", 2, 4));
    EXPECT_EQ(seen("<?xml version='1.0' encoding='EUC-JP'?>\n<a>\xFF\xFFx</a>"), "start a | error");
    EXPECT_EQ(messages.take(), fault("not well-formed (invalid token)", 2, 4));
}

TEST(StandardReader, FaultsAreToldOnce)
{
    struct Fault {
        std::string document, events, message;
    };
    Fault const rows[] = {
        { "", "error", fault("no element found", 1, 1) },
        { "<a>\n<b></a>", "start a | start b | error", fault("mismatched tag", 2, 6) },
        { "<a>x<b/>", "start a | empty b | error",
          doubt("Text beside the child elements of a was passed over", 1) + fault("no element found", 1, 9) },
        { "<a/>\n x", "empty a | error", fault("junk after document element", 2, 2) },
        { "<a/><b/>", "empty a | error", fault("junk after document element", 1, 5) },
        { "<a b='1' b='2'/>", "error", fault("duplicate attribute", 1, 10) },
        { "<a>&e;</a>", "start a | error", fault("undefined entity", 1, 4) },
        { "<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f '&e;'>]><a>&e;</a>", "start a | error",
          fault("recursive entity reference", 1, 53) },
        { "<a>\1</a>", "start a | error", fault("not well-formed (invalid token)", 1, 4) },
        { "<a>\xC0\x80</a>", "start a | error", fault("not well-formed (invalid token)", 1, 4) },
    };
    for (Fault const& row : rows) {
        SCOPED_TRACE(row.document);
        Messages messages;
        Reader open(row.document);
        EXPECT_EQ(eventsLeft(open.reader), row.events);
        EXPECT_EQ(open.reader.readXml(), NyXmlFileReader::XML_READER_ERROR);
        EXPECT_FALSE(open.reader.nextMatchingEndTag());
        EXPECT_EQ(open.reader.getAttributeValueFast(), "");
        EXPECT_EQ(messages.take(), row.message);
        EXPECT_EQ(open.reader.errorCode(), 1u);
    }
    Messages messages;
    Reader open("<a/>", 2);
    EXPECT_EQ(open.reader.mode(), NyXmlFileReader::XML_READER_EOF);
    EXPECT_EQ(open.reader.readXml(), NyXmlFileReader::XML_READER_ERROR); // so that no loop reads on for ever
    EXPECT_EQ(open.reader.readXml(), NyXmlFileReader::XML_READER_ERROR);
    EXPECT_EQ(
        messages.take(),
        "NyXmlStandardReader Error: file not well formed.\n\tFile must begin with start tag.\n\tFile: doc.xml\n\tLine: 1\n");
}

TEST(StandardReader, WhatIsLostIsReported)
{
    struct Loss {
        std::string document, events, message;
    };
    Loss const rows[] = {
        { "<a>x\n<b/>y\n<c>z</c> z\n</a>", "start a | empty b | start c | content z | end | eof",
          doubt("Text beside the child elements of a was passed over", 2) },
        { "<a><b>1<c/></b><b><c/>2</b></a>", "start a | start b | empty c | end | start b | empty c | end | end | eof",
          doubt("Text beside the child elements of b was passed over", 1) +
              doubt("Text beside the child elements of b was passed over", 1) },
        { "<!DOCTYPE a [<!ENTITY e SYSTEM 'no.such'>]><a>\nx&e;y</a>", "start a | content xy | eof",
          doubt("External entity no.such is not fetched, and left out", 2) },
        { "<!DOCTYPE a SYSTEM 'no.such'><a>\nx&e;y</a>", "start a | content xy | eof",
          doubt("Entity e is not declared here, and left out", 2) },
    };
    for (Loss const& row : rows) {
        SCOPED_TRACE(row.document);
        Messages messages;
        Reader open(row.document);
        EXPECT_EQ(eventsLeft(open.reader), row.events);
        EXPECT_EQ(messages.take(), row.message);
        EXPECT_EQ(open.reader.errorCode(), 2u);
    }
    Messages messages;
    {
        Reader open("<a b='1'>\n<c/><d x='1' y='2'/></a>", 3);
        EXPECT_EQ(messages.take(), doubt("Previous attribute names were not used", 1));
        open.reader.attributeValue("y");
    }
    EXPECT_EQ(messages.take(), "NyXmlStandardReader Error: file not well formed.\n\tSome start tags not closed with end "
                               "tag.\n\tFile: doc.xml\n\tLine: 2\nNyXmlStandardReader Error: file not well formed.\n\tSome "
                               "attribute were not used.\n\tFile: doc.xml\n\tLine: 2\n");
}

// Entities of entities end the reading, in little time and memory; what is harmless comes whole.
TEST(StandardReader, Amplification)
{
    auto const document = [](int levels) {
        std::string text = "<!DOCTYPE a [<!ENTITY e0 '0123456789<b/>'>";
        for (int i = 1; i != levels; ++i) {
            text += "<!ENTITY e" + std::to_string(i) + " '";
            for (int k = 0; k != 10; ++k)
                text += "&e" + std::to_string(i - 1) + ";";
            text += "'>";
        }
        return text + "]><a>&e" + std::to_string(levels - 1) + ";</a>";
    };
    Messages messages;
    Reader harmless(document(5));
    std::size_t elements = 0;
    std::size_t mostHeld = 0;
    while (harmless.reader.readXml() != NyXmlFileReader::XML_READER_EOF) {
        ASSERT_NE(harmless.reader.mode(), NyXmlFileReader::XML_READER_ERROR);
        elements += harmless.reader.mode() == NyXmlFileReader::XML_READER_EMPTY_TAG ? 1 : 0;
        mostHeld = std::max(mostHeld, harmless.reader.bytesHeld());
    }
    EXPECT_EQ(elements, 10000u);
    EXPECT_LT(mostHeld, 100000u); // of 100000 bytes of text: the parser is held up
    messages.take();

    Reader lethal(document(12));
    while (lethal.reader.mode() != NyXmlFileReader::XML_READER_ERROR)
        lethal.reader.readXml();
    EXPECT_NE(messages.take().find("limit on input amplification factor"), std::string::npos);
}

TEST(StandardReader, AttributesAreConsumed)
{
    Messages messages;
    std::string document = "<a";
    for (int i = 0; i != 3000; ++i) // enough for the queue to be filled anew behind them
        document += " n" + std::to_string(10000 + 7919 * i % 3000) + "='" + std::to_string(i) + "'";
    Reader open(document + "><b/>" + std::string(40000, ' ') + "x</a>", 1);
    NyXmlStandardReader& reader = open.reader;
    EXPECT_EQ(reader.numOfAttributes(), 3000u);
    EXPECT_EQ(reader.attributeName(NyToken("u#n10003")).token(), "n10003");
    EXPECT_EQ(reader.attributeValue("n10000"), "0");
    EXPECT_EQ(reader.attributeValue("n10000"), "");
    EXPECT_EQ(reader.attributeName("n10000"), NyXmlFileReader::m_theNullToken);
    for (int i = 1; i != 3000; ++i) {
        ASSERT_EQ(reader.attributeName().token(), "n" + std::to_string(10000 + i));
        ASSERT_NE(reader.attributeValue(), "");
    }
    EXPECT_EQ(reader.remainingNumOfAttributes(), 0u);
    EXPECT_EQ(reader.numOfAttributes(), 3000u);
    EXPECT_EQ(reader.attributeValue(), "");

    // Those of an element wait behind its content, too: maps take them there.
    Reader late("<a b='1' c='2'>" + std::string(40000, 'x') + "</a>", 2);
    EXPECT_EQ(late.reader.attributeValue("c"), "2");
    EXPECT_EQ(late.reader.attributeValue(), "1");
    EXPECT_EQ(messages.take(), "");
}

TEST(StandardReader, Namespaces)
{
    Messages messages;
    Reader open("<p:a xmlns:p='u' xmlns='v' p:x='1' y='2' xml:lang='de' q:z='3'><b xmlns=''/><c/><p:d xmlns:p='w'/><e/></p:a>",
                1);
    NyXmlStandardReader& reader = open.reader;
    EXPECT_EQ(reader.elementNamespace(), "u");
    EXPECT_EQ(reader.attributeNamespace("x"), "u");
    EXPECT_EQ(reader.attributeNamespace("y"), "");
    EXPECT_EQ(reader.attributeNamespace("lang"), "http://www.w3.org/XML/1998/namespace");
    EXPECT_EQ(reader.attributeNamespace("z"), "");
    EXPECT_EQ(reader.attributeNamespace("none"), "");
    while (reader.remainingNumOfAttributes() != 0)
        reader.attributeValue();
    for (char const* const expected : { "", "v", "w", "v" }) {
        reader.readXml();
        EXPECT_EQ(reader.elementNamespace(), expected) << reader.element().token();
    }
}

TEST(StandardReader, ContentWordByWord)
{
    Reader open("<a xml:space='preserve'> 1 2&#32;\n3 </a>", 2);
    NyXmlStandardReader& reader = open.reader;
    EXPECT_EQ(reader.contentCount(), 3u);
    EXPECT_EQ(reader.contentByWord(), "1");
    EXPECT_EQ(reader.content(), "2 \n3 ");
    reader.setContentVectorFlag(true);
    EXPECT_EQ(reader.content(), "2");
    EXPECT_EQ(reader.content(), "3");
    EXPECT_FALSE(reader.isContentAvailable());
    EXPECT_EQ(reader.contentCount(), 1u);
    EXPECT_EQ(reader.content(), "");
}

TEST(StandardReader, SkipsToTheElementsOwnEnd)
{
    Messages messages;
    Reader open("<r><a k='1'>x<a>y<b z='1'/></a>&amp;</a><c/></r>", 2);
    EXPECT_TRUE(open.reader.nextMatchingEndTag());
    EXPECT_EQ(open.reader.mode(), NyXmlFileReader::XML_READER_END_TAG);
    EXPECT_EQ(open.reader.element().token(), "r");
    EXPECT_EQ(eventsLeft(open.reader), "empty c | end | eof");
    EXPECT_EQ(messages.take(), "");
}

TEST(StandardReader, ChildrenAsString)
{
    Row const rows[] = {
        { " <b>x</b> ", "<b>x</b>" },
        { "x &amp; &lt;y&gt; <![CDATA[<&]]>&#65;", "x &amp; &lt;y&gt; &lt;&amp;A" },
        { " &#32;x&#10; ", "&#32;x&#10;" },
        { "<a><a/></a>&e;<c d='&quot;&lt;&#10; &#38;'></c>", "<a><a/></a>E<i/><c d=\"&quot;&lt;&#10; &amp;\"></c>" },
        { "one <p:b xmlns:p='u' p:z='1' y='2'>two</p:b>\r\n three<!-- > --><?p q?>",
          "one <p:b xmlns:p=\"u\" p:z=\"1\" y=\"2\">two</p:b>\n three<!-- > --><?p q?>" },
        { "<q:b w:k='1'><q:c/><c q:d='1' xml:space='preserve'/></q:b><q:b/><q:b xmlns:q='x'><q:c/></q:b><s:t/>", // prefixes from around it
          "<q:b xmlns:q=\"v\" xmlns:w=\"&lt;w&amp;\" w:k=\"1\"><q:c/><c q:d=\"1\" xml:space=\"preserve\"/></q:b><q:b "
          "xmlns:q=\"v\"/>"
          "<q:b xmlns:q=\"x\"><q:c/></q:b><s:t/>" },
        { std::string(100000, 'x') + "<b/>", std::string(100000, 'x') + "<b/>" },
        { "", "" },
    };
    Messages messages;
    for (Row const& row : rows) {
        SCOPED_TRACE(row.document.substr(0, 100));
        Reader open("<!DOCTYPE r [<!ENTITY e 'E<i/>'>]><r xmlns:q='v'><a xmlns:w='&lt;w&amp;'>" + row.document + "</a><z/></r>",
                    2);
        EXPECT_EQ(open.reader.getChildrenAsString(), row.events);
        EXPECT_EQ(open.reader.mode(), NyXmlFileReader::XML_READER_END_TAG);
        EXPECT_EQ(eventsLeft(open.reader), "empty z | end | eof");
        // As it came back it says the same.
        Reader again("<r><a>" + row.events + "</a></r>", 2);
        EXPECT_EQ(again.reader.getChildrenAsString(), row.events);
    }
    EXPECT_EQ(messages.take(), "");
}

TEST(StandardReader, FastPaths)
{
    Messages messages;
    Reader open("<r><list n='9'><!-- c --><p x='1' a='2'/><q>7 8<!-- -->9</q><abc/><abc></abc></list><s/></r>", 2);
    NyXmlStandardReader& reader = open.reader;
    reader.attributeValue();
    EXPECT_EQ(reader.getComplexStartTagFast(), "p");
    EXPECT_EQ(reader.getAttributeValueFast(), "1"); // in the order of the document
    EXPECT_EQ(reader.getLastAttributeValueFast(), "2");
    EXPECT_EQ(reader.getSimpleStartTagFast(), "");
    EXPECT_EQ(reader.getContentByWordFast(), "7");
    EXPECT_EQ(reader.getContentByWordFast(), "89");
    reader.getEndTagFast();
    EXPECT_EQ(reader.getSimpleStartTagFast(), "abc");
    EXPECT_EQ(reader.mode(), NyXmlFileReader::XML_READER_START_TAG);
    EXPECT_EQ(reader.element().token(), "list");
    EXPECT_EQ(reader.getSimpleStartTagFast(), "ab");
    reader.getEndTagFast();
    EXPECT_EQ(reader.mode(), NyXmlFileReader::XML_READER_START_TAG);
    EXPECT_EQ(reader.getAttributeValueFast(), ""); // there is no more before the end of the list
    EXPECT_EQ(reader.mode(), NyXmlFileReader::XML_READER_END_TAG);
    EXPECT_EQ(reader.getAttributeValueFast(), "");
    EXPECT_EQ(eventsLeft(reader), "end | empty s | end | eof");
    EXPECT_EQ(messages.take(), "");
}

// A fast path may stand at the end of the element when somebody skips it.
TEST(StandardReader, SkippingBehindFastPaths)
{
    for (int words = 0; words != 3; ++words) {
        Messages messages;
        Reader open("<r><a><b x='1'>2</b></a><c/></r>", 2);
        for (int i = 0; i != words; ++i)
            open.reader.getContentByWordFast();
        EXPECT_TRUE(open.reader.nextMatchingEndTag());
        EXPECT_EQ(eventsLeft(open.reader), "empty c | end | eof");
        Reader other("<r><a><b x='1'>2</b></a><c/></r>", 2);
        other.reader.getAttributeValueFast();
        EXPECT_EQ(other.reader.getChildrenAsString(), "");
        EXPECT_EQ(eventsLeft(other.reader), "empty c | end | eof");
    }
}

class Everything : public NyXmlCompoundType {
public:
    NyXmlObject* clone() const override { return new Everything(*this); }
    NyXmlObject* newObject() const override { return new Everything; }
    NyToken const& token() const override
    {
        static NyToken const token("everything");
        return token;
    }
    bool equality(NyXmlObject const*) const override { return false; }
    void registerComponents() override
    {
        registerAttributeComponent("id", &id);
        registerComponent("title", &title);
        registerComponent("numbers", &numbers);
        registerComponent("names", &names);
        registerComponent("weights", &weights);
        registerComponent("at", &at);
        registerComponent("path", &path);
        registerComponent("blob", &blob);
        registerComponent("note", &note);
        registerComponent("more", &more);
    }
    NyXmlBasicType<int> id;
    NyXmlBasicType<std::string> title;
    NyXmlVectorBasicType<NyXmlBasicType<double>> numbers;
    NyXmlVectorType<NyXmlBasicType<std::string>> names;
    NyXmlMapType<NyXmlBasicType<std::string>, NyXmlBasicType<double>> weights;
    NyXmlVector at;
    NyXmlVectorVector path;
    NyXmlBinaryString blob;
    NyXmlEmbeddedString note;
    NyXmlBasicType<std::string> more;
};

TEST(StandardReader, EveryFamilyReadsFromIt)
{
    Messages messages;
    std::string const document = R"(<?xml version="1.0"?>
<!DOCTYPE everything [<!ENTITY two "2">]>
<everything id="&two;1">
  <title>Bolts &amp; <![CDATA[<nuts>]]></title>
  <numbers size="4"><group>1 &two;<!-- -->.5
    3</group><element>4</element></numbers>
  <names size="2"><element>a b</element><element/></names>
  <weights><element><key>x y</key><value>1</value></element><element><key>&lt;</key><value/></element></weights>
  <at z="3" y="2" x="1"></at>
  <path size="2"><!-- c --><element x="1" y="&two;" z="3"/><element x='4' y='5' z='6'></element></path>
  <blob>aGVs<![CDATA[bG8]]>&#61;</blob>
  <note>one <b>two &amp; three</b></note>
  <unknown><more>no</more></unknown>
  <more>yes</more>
</everything>)";
    Everything all;
    Reader open(document, 1);
    EXPECT_TRUE(all.read(open.reader));
    EXPECT_EQ(open.reader.readXml(), NyXmlFileReader::XML_READER_EOF);
    EXPECT_EQ(messages.take(), "Bad token: unknown on line 13\n");
    EXPECT_EQ(all.id, 21);
    EXPECT_EQ(all.title.value(), "Bolts & <nuts>");
    EXPECT_EQ(all.numbers.vectorContainer(), (std::vector<double>{ 1, 2.5, 3, 4 }));
    ASSERT_EQ(all.names.size(), 2u);
    EXPECT_EQ(all.names[0].value(), "a b");
    EXPECT_EQ(all.weights.size(), 2u);
    EXPECT_EQ(all.at[0] + 10 * all.at[1] + 100 * all.at[2], 321);
    ASSERT_EQ(all.path.size(), 2u);
    EXPECT_EQ(all.path[0][1], 2);
    EXPECT_EQ(all.path[1][2], 6);
    EXPECT_EQ(all.blob.value(), "hello");
    EXPECT_EQ(all.note.value(), "one <b>two &amp; three</b>");
    EXPECT_EQ(all.more.value(), "yes");
}

// What the size says of a path may be wrong: what follows it is read as it should.
TEST(StandardReader, PathOfAnotherSize)
{
    for (char const* const path :
         { "<path size='0'></path>", "<path size='0'>\n</path>",
           "<path size='1'><element x='1' y='2' z='3'/><element x='4' y='5' z='6'/></path>",
           "<path size='2'><element x='1' y='2' z='3'/></path>", "<path size='7'/>", "<path size='2147483647'></path>" }) {
        SCOPED_TRACE(path);
        Messages messages;
        Everything all;
        Reader open("<everything>"s + path + "<more>yes</more></everything>", 1);
        EXPECT_TRUE(all.read(open.reader));
        EXPECT_EQ(all.more.value(), "yes");
        EXPECT_LE(all.path.size(), 2u);
        EXPECT_EQ(open.reader.readXml(), NyXmlFileReader::XML_READER_EOF);
    }
}

// Others declare namespaces where they like, and write attributes in any order.
TEST(StandardReader, PathAsOthersWriteIt)
{
    Messages messages;
    Everything all;
    Reader open(
        "<everything><path size='3'><element xmlns:q='u' z='3' x='1' y='2'/><element x='4' y='5' z='6' xml:space='default'/>"
        "<element xsi:type='v' y='8' z='9' x='7'></element></path><more>yes</more></everything>",
        1);
    EXPECT_TRUE(all.read(open.reader));
    std::string path;
    for (std::size_t i = 0; i != all.path.size(); ++i)
        for (unsigned int k = 0; k != 3; ++k)
            path += std::to_string(static_cast<int>(all.path[i][k]));
    EXPECT_EQ(path, "123456789");
    EXPECT_EQ(all.more.value(), "yes");
    EXPECT_EQ(messages.take(), "");
}

// A path takes its numbers past the events, which does not hide what else stands there.
TEST(StandardReader, TextInAPathIsToldOnce)
{
    std::string const element = "<element x='1' y='2' z='3'/>";
    for (std::string const& inside : { "x" + element + element, element + "\n x " + element, element + element + " x",
                                       "x" + element + "y" + element + "z" }) {
        SCOPED_TRACE(inside);
        Messages messages;
        Everything all;
        Reader open("<everything><path size='2'>" + inside + "</path><more>yes</more></everything>", 1);
        EXPECT_TRUE(all.read(open.reader));
        EXPECT_EQ(all.path.size(), 2u);
        EXPECT_EQ(all.more.value(), "yes");
        EXPECT_EQ(messages.take(), doubt("Text beside the child elements of path was passed over",
                                         inside.find('\n') == std::string::npos ? 1 : 2));
    }
}

TEST(StandardReader, IncludesAndVersions)
{
    ScratchDirectory const folder;
    folder.write("b.xml", "<!DOCTYPE b [<!ENTITY e 'x'>]><b version='9.0' c='1'><d>&e;</d></b>\n");
    folder.write("bad.xml", "<b><d>x");
    auto const eventsWith = [&](std::string const& include) {
        return eventsOf<NyXmlStandardReader>("<a>" + include + "<z/></a>", folder.path("a.xml"));
    };
    Messages messages;
    std::string const newer =
        "NyXmlObject::checkVersion warning: Input file version (v9.0) is greater than code base version (v4.0.0).\n";
    std::string const events = "start a | start b c=1 | start d | content x | end | empty z | end | eof";
    EXPECT_EQ(eventsWith("<NyInclude type='simple' href='b.xml'/>"), events);
    EXPECT_EQ(messages.take(), newer);
    EXPECT_EQ(eventsWith("<l:NyInclude xmlns:l='u' l:type='simple' l:href='b.xml'> <x/> </l:NyInclude>"), events);
    EXPECT_EQ(messages.take(), newer);
    EXPECT_EQ(eventsWith("<NyInclude type='simple' href='none.xml'/>"), "start a | empty z | end | eof");
    EXPECT_EQ(messages.take(), "NyXmlStandardReader Error: not able to open file: " + folder.path("none.xml") + "\n");
    EXPECT_EQ(eventsWith("<NyInclude href='b.xml' why='1'/>"), "start a | empty z | end | eof");
    EXPECT_NE(messages.take().find("XLink syntax not correct."), std::string::npos);
    EXPECT_EQ(eventsWith("<NyInclude type='simple' href='bad.xml'/>"), "start a | start b | start d | error");
    EXPECT_NE(messages.take().find("bad.xml\n\tLine: 1\n\tColumn: 8\n"), std::string::npos);

    std::string const document = "<a><m><NyInclude type='simple' href='b.xml'/></m></a>";
    std::istringstream stream(document);
    NyXmlStandardReader reader(folder.path("a.xml"), stream);
    for (int i = 0; i != 4; ++i)
        reader.readXml();
    std::string path;
    for (NyToken const& name : reader.openElements())
        path += "/" + name.token();
    EXPECT_EQ(path, "/a/m/b/d");
    EXPECT_EQ(reader.openDocuments(), 2u);
    EXPECT_EQ(reader.bytesRead(), document.size() + 68);
    EXPECT_FALSE(reader.versionFlag());
    reader.attributeValue();
}

// Whoever limits a document can stop it where it does not come to an end of a text or a tag.
TEST(StandardReader, StopsWhenToldTo)
{
    class Limited : public NyXmlStandardReader {
    public:
        using NyXmlStandardReader::NyXmlStandardReader;

    protected:
        bool mayReadOn() override { return bytesRead() < 100000 && bytesHeld() < 3000000; }
    };
    Messages messages;
    std::string const entity = "<!DOCTYPE a [<!ENTITY e '" + std::string(9000, 'x') + "'>]>";
    std::string references;
    for (int i = 0; i != 900; ++i)
        references += "&e;";
    for (std::string const& document : { "<a>" + std::string(1000000, 'x'), "<a b='" + std::string(1000000, 'x'),
                                         "<!--" + std::string(1000000, 'x'), entity + "<a>" + references + "</a>" }) {
        Open<Limited> open(document);
        while (open.reader.readXml() != NyXmlFileReader::XML_READER_ERROR)
            ASSERT_NE(open.reader.mode(), NyXmlFileReader::XML_READER_EOF);
        EXPECT_EQ(open.reader.errorCode(), 1u);
        EXPECT_LT(open.reader.bytesHeld(), 4500000u);
    }
    EXPECT_EQ(messages.take(), "");
}

} // namespace

TEST(StandardReader, ContentThatWasReadByWordsEndsWithTheNextTag)
{
    std::istringstream stream("<a><b>  5 6</b><c/></a>");
    NyXmlStandardReader reader("a.xml", stream);
    for (int event = 0; event != 3; ++event)
        reader.readXml();
    reader.setContentVectorFlag(true);
    EXPECT_EQ(reader.content(), "5");
    reader.readXml();
    EXPECT_EQ(reader.content(), "");
    EXPECT_FALSE(reader.isContentAvailable());
    EXPECT_EQ(reader.contentCount(), 1U);
}
