// The events of a document, the complaints about one that is not well formed, and what both leave behind.

#include "ReaderSupport.h"

#include <nyXml/reader/NyXmlReader.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

TEST(ReaderEvents, Dialect)
{
    std::pair<char const*, char const*> const rows[] = {
        { "<a b=\"1\">text</a>", "start a b=1 | content text | eof" },
        { "<a> \ttext\r\n </a>", "start a | content text | eof" },
        { "<a>   </a>", "start a | end | eof" },
        { "<a><b></b><c/></a>", "start a | start b | end | empty c | end | eof" },
        { "<?xml version='1.0'?><!-- c --><a/>", "empty a | eof" },
        { "<x:a xmlns:x='u' x:b = 'q\"' y:c=\"'\"></x:a >", "start a b=q\" c=' | end | eof" },
        { "<a z='1' b='2' xsi:type='t' z='3'/>", "empty a b=2 z=1 | eof" },
        { "<a b='u#v#w' junk c=''/>", "empty a b=v#w junk= | eof" },
        { "<\ta\n/>", "empty a | eof" },
        { "<a>&amp;&#65;</a>", "start a | content &amp;&#65; | eof" },
        { "<a>x<!-- c --></a>", "start a | content x | eof" },
        { "<a>x<!-- c -->y</a>", "start a | content y | eof" },
        { "<a><!-- <b> - c='1'> --->x</a>", "start a | content x | eof" },
        { "<!--><a/>", "empty a | eof" },
        { "<a/> <", "empty a | eof" },
        { "\xef\xbb\xbf<a/>", "error" },
    };
    Messages messages;
    for (auto const& [document, seen] : rows) {
        EXPECT_EQ(eventsOf(document), seen) << document;
        EXPECT_EQ(eventsOf<PlainReader>(document), seen) << document;
    }
}

// Every complaint with its text, line and order. Most come twice: where the fault is, and where the event does not come to be.
TEST(ReaderEvents, Complaints)
{
    std::string const tag = "Tag contains only white space.";
    std::string const start = "File must begin with start tag.";
    struct {
        char const *document, *seen;
        std::string messages;
    } const rows[] = {
        { "", "error", complaint(start) },
        { " \n ", "error", complaint(start) },
        { "x", "error", complaint("Extra characters found before EOF.") + complaint(start) },
        { "\nx<a/>", "error", complaint("Content can only follow start tag.", 2) + complaint(start, 2) },
        { "<>", "error", complaint(tag) + complaint(start) },
        { "< \n>", "error", complaint(tag, 2) + complaint(start, 2) },
        { "< a>", "error", complaint("White space cannot exist before start tag name.") + complaint(tag) + complaint(start) },
        { "</>", "error", complaint("More end tags than start tags.") + complaint(tag) + complaint(start) },
        { "<//>", "error", complaint("More end tags than start tags.") + complaint(tag) + complaint(start) },
        { "<a></ a>", "start a | error", complaint("White space cannot exist before end tag name.") + complaint(tag) },
        { "<a>\n</b>", "start a | error",
          complaint("End tag closed incorrect start tag.", 2) + "\tStart tag: a\n\tEnd tag: b\n" + complaint(tag, 2) },
        { "<a>x<b/></a>", "start a | error", complaint("Content did not conclude with proper end tag.") },
        { "<a><b/>x</a>", "start a | empty b | error", complaint("Content can only follow start tag.") },
        { "<a>", "start a | error", complaint("Premature end of file.") },
        { "<a></a", "start a | error", complaint("EOF found before end of tag.") },
        // A bad attribute stops nothing, but its element goes by the name around it.
        { "<r><a b=#2#/></r>", "start r | empty r | end | eof", complaint("Missing quotes around attribute value.") },
        { "<r><a =/></r>", "start r | empty r | end | eof", complaint("Missing attribute name.") },
        { "<r><a b/></r>", "start r | empty r | end | eof", complaint("Extra characters found behind element or attributes.") },
        { "<r><u# b='1'/></r>", "start r | empty r | end | eof", complaint("No element name found in start tag.") },
        { "<a b=\"x>y\">", "start  b= | error",
          complaint("Second quote of attribute value is missing.") +
              complaint("Extra characters found behind element or attributes.") +
              complaint("Extra characters found before EOF.") },
        { "<!-- > -- ><a/>", "start  | empty a | eof",
          complaint("Comment contains extra -- in it.") + complaint("Extra characters found behind element or attributes.") },
        { "<!-- >", "start !-- | error", complaint("EOF found within comment.") + complaint("Premature end of file.") },
        { "<?pi><a/>", "start ?pi | empty a | eof", complaint("Declaration not properly defined.") },
        // What waits in front of a comment complains for itself.
        { "<a>x<!---->y<!----></b>", "start a | error",
          complaint("End tag closed incorrect start tag.") + "\tStart tag: a\n\tEnd tag: b\n" + complaint(tag) +
              complaint("Content did not conclude with proper end tag.") +
              complaint("Content did not conclude with proper end tag.") },
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.document);
        Messages messages;
        Open<> open(row.document);
        EXPECT_EQ(eventsLeft(open.reader), row.seen);
        EXPECT_EQ(open.reader.errorCode(), 1u);
        EXPECT_EQ(messages.take(), row.messages);
    }
}

TEST(ReaderEvents, ErrorIsFinalAndLeftAttributesAreNot)
{
    Messages messages;
    {
        Open<> open("<a b='1'><c d='2'/></a>", 2);
        EXPECT_EQ(open.reader.errorCode(), 2u);
        EXPECT_EQ(messages.take(), "NyXmlFileReader Error: file possibly not valid.\n\tPrevious attribute names were not used."
                                   "\n\tFile: doc.xml\n\tLine: 1\n");
        EXPECT_EQ(open.reader.attributeName().token(), "d");
    }
    EXPECT_EQ(messages.take(),
              complaint("Some start tags not closed with end tag.") + complaint("Some attribute were not used."));

    Open<> faulty("</a>", 1);
    messages.take();
    EXPECT_EQ(faulty.reader.readXml(), NyXmlFileReader::XML_READER_ERROR);
    EXPECT_EQ(messages.take(), "NyXmlFileReader Error: error mode encountered.\n\tFile: doc.xml\n\tLine: 1\n");
}

// A subclass, too, meets tags of any length: only an override that gets to see the rest of a tag pays for it.
TEST(ReaderEvents, ManyAttributesTakeLinearTimeInASubclass)
{
    std::string tag = "<a";
    for (int i = 0; i < 100000; ++i)
        tag += " name" + std::to_string(i) + "=\"" + std::to_string(i) + "\"";
    Open<PlainReader> open(tag + "/>", 1);
    EXPECT_EQ(open.reader.numOfAttributes(), 100000u);
    EXPECT_EQ(open.reader.attributeValue("name99999"), "99999");
    while (open.reader.remainingNumOfAttributes() != 0)
        open.reader.attributeValue();
}

// Whoever stops at the first message by throwing gets the exception from a reading call, and none that ends the process.
TEST(ReaderEvents, HandlerThatThrowsMeetsAQuietDestructor)
{
    struct Stop {};
    int told = 0;
    Ny::Print::ThreadScope const scope([&told](int, std::string const&, std::string const&) {
        ++told;
        throw Stop();
    });
    {
        Open<> open("<a b='1'><c d='2'/></a>", 1);
        EXPECT_THROW(open.reader.readXml(), Stop);
    }
    {
        Open<NyXmlReader> open("<a><b><c d='2'/></b></a>", 3);
        EXPECT_EQ(told, 2);
    }
    EXPECT_EQ(told, 4) << "the second complaint comes although the first was thrown back";
}

TEST(ReaderEvents, PrefixStaysBoundToItsFirstText)
{
    Messages messages;
    eventsOf(
        "<a xmlns='u' xmlns:p='v'><b xmlns='w'><c xmlns='w'/><c xmlns='u'/></b><d xmlns:q='v'/><d xmlns:q='v' xmlns:p='v'/></a>");
    EXPECT_EQ(messages.take(),
              "NyXmlReader Error: Namespace already declared: u\nNyXmlReader Error: Namespace already declared: v\n");
}

TEST(ReaderEvents, CommentsInARowDoNotUseUpTheStack)
{
    std::string document;
    for (int count = 0; count < 100000; ++count)
        document += "<!-- c -->";
    EXPECT_EQ(eventsOf(document + "<a/>"), "empty a | eof");
    EXPECT_EQ(eventsOf<PlainReader>(document + "<a/>"), "empty a | eof");
}

// Blanks in front move the end of the first read across the document byte by byte, and no place where it falls may change what the
// caller sees.
TEST(ReaderEvents, BlockEdgeIsInvisible)
{
    std::string const document = "<a b='1'><!-- c > --><d/>\n<e f='2' g=\"3\">text &amp; more</e ></a>";
    std::string const seen = "start a b=1 | empty d | start e f=2 g=3 | content text &amp; more | end | eof";
    for (std::size_t inFirstRead = 0; inFirstRead <= document.size(); ++inFirstRead) {
        SCOPED_TRACE(inFirstRead);
        ASSERT_EQ(eventsOf(std::string(16383 - inFirstRead, ' ') + document), seen);
    }
}

TEST(ReaderEvents, AttributesOutliveTheBlockTheyStoodIn)
{
    Open<> open("<a p:b='1' c='2'>" + std::string(40000, 'x') + "</a>", 1);
    NyXmlFileReader& reader = open.reader;
    NyXmlFileReader copy(reader);
    reader.readXml();
    EXPECT_EQ(reader.attributeName(NyToken("any#b")).token(), "b");
    EXPECT_EQ(reader.attributeValue(NyToken("any#b")), "1");
    EXPECT_EQ(&reader.attributeValue(NyToken("b")), &NyXmlFileReader::m_theNullString);
    EXPECT_EQ(reader.attributeValue(), "2");
    EXPECT_EQ(&reader.attributeName(), &NyXmlFileReader::m_theNullToken);
    EXPECT_EQ(reader.numOfAttributes(), 2u);
    EXPECT_EQ(seenAt(copy), "start a b=1 c=2");
}

TEST(ReaderEvents, ManyAttributesAreSortedAndFirstOnesStay)
{
    std::string document = "<a";
    for (int i = 0; i < 50000; ++i)
        document += " n" + std::to_string((i * 7919) % 20000) + "='" + std::to_string(i) + "'";
    Open<> open(document + "/>", 1);
    EXPECT_EQ(open.reader.attributeValue(NyToken("n7919")), "1");
    ASSERT_EQ(open.reader.remainingNumOfAttributes(), 19999u);
    for (std::string last; open.reader.remainingNumOfAttributes() != 0;) {
        std::string const name = open.reader.attributeName().token();
        ASSERT_LT(last, name);
        ASSERT_LT(std::stoi(open.reader.attributeValue()), 20000);
        last = name;
    }
}

} // namespace
