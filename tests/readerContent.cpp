// Attributes, content by word, subtrees and fast paths: what a caller takes from the text behind an event.

#include "ReaderSupport.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Mode = NyXmlFileReader::XML_READER_MODE;

// A reader with its stream.
template <class Reader = NyXmlFileReader>
struct Open {
    explicit Open(std::string const& document, int events = 0) : stream(document), reader("doc.xml", stream)
    {
        for (; events != 0; --events)
            reader.readXml();
    }
    std::istringstream stream;
    Reader reader;
};

template <class Reader>
void takeWords()
{
    Open<Reader> open("<a> 1 22\t\n333 </a>", 2);
    NyXmlFileReader& reader = open.reader;
    EXPECT_EQ(reader.contentCount(), 3u);
    EXPECT_EQ(reader.contentByWord(), "1");
    EXPECT_EQ(reader.contentCount(), 2u);
    EXPECT_EQ(reader.content(), "22\t\n333");
    reader.setContentVectorFlag(true);
    EXPECT_EQ(reader.content(), "22");
    EXPECT_TRUE(reader.isContentAvailable());
    EXPECT_EQ(reader.takeContentWord(), "333");
    EXPECT_FALSE(reader.isContentAvailable());
    EXPECT_EQ(reader.contentView(), "");
    EXPECT_EQ(reader.contentByWord(), "");
    EXPECT_EQ(reader.contentCount(), 1u);
}

TEST(ReaderContent, ByWord)
{
    takeWords<NyXmlFileReader>();
    takeWords<PlainReader>();
}

TEST(ReaderContent, VectorFlagFallsBehindAStartTag)
{
    Messages messages;
    Open<> open("<a><b>1 2</b><c>3 4</c></a>", 3);
    open.reader.setContentVectorFlag(true);
    EXPECT_EQ(open.reader.content(), "1");
    open.reader.readXml();
    open.reader.readXml();
    EXPECT_EQ(open.reader.content(), "3 4");
}

template <class Reader>
std::size_t sumOfLongContent(std::size_t count)
{
    std::string document = "<a>\n";
    for (std::size_t i = 0; i < count; ++i)
        document += std::to_string(i) + "\n";
    Open<Reader> open(document + "</a>", 2);
    EXPECT_EQ(open.reader.contentCount(), count);
    EXPECT_EQ(open.reader.lineCountOfFile(), static_cast<int>(count + 2));
    std::size_t sum = 0;
    while (open.reader.isContentAvailable())
        sum += std::stoul(open.reader.contentByWord());
    return sum;
}

// Both ways: a subclass, too, may hold a run of many megabytes.
TEST(ReaderContent, LongRunsTakeLinearTime)
{
    std::size_t const count = 1000000;
    EXPECT_EQ(sumOfLongContent<NyXmlFileReader>(count), count * (count - 1) / 2);
    EXPECT_EQ(sumOfLongContent<PlainReader>(count), count * (count - 1) / 2);
}

TEST(ReaderContent, NextMatchingEndTagStopsAtTheFirstOfItsName)
{
    Messages messages;
    Open<> open("<r><a b='1'><c/><a></a>x</a></r>", 2);
    EXPECT_TRUE(open.reader.nextMatchingEndTag());
    EXPECT_EQ(open.reader.mode(), Mode::XML_READER_END_TAG);
    EXPECT_EQ(open.reader.element().token(), "a");
    EXPECT_EQ(messages.take(), "");

    Open<> empty("<a b='1'/>", 1);
    EXPECT_TRUE(empty.reader.nextMatchingEndTag());
    EXPECT_EQ(empty.reader.attributeValue(), "1");

    Open<> cut("<r><a><b></b>", 2);
    EXPECT_FALSE(cut.reader.nextMatchingEndTag());
    EXPECT_EQ(cut.reader.mode(), Mode::XML_READER_ERROR);
    EXPECT_EQ(messages.take(), "NyXmlFileReader Error: Requested next end tag but found EOF.\n\tFile: doc.xml\n\tLine: 1\n");

    Open<> nothing("<a/>");
    EXPECT_FALSE(nothing.reader.nextMatchingEndTag()); // with no element open
}

TEST(ReaderContent, ChildrenAsString)
{
    struct Row {
        char const* inside;
        char const* result;
    };
    Row const rows[] = {
        { "<b/><a>x</a>", "<b/><a>x</a>" },
        { " text ", "text" },
        { "", "" },
        { "\n<!-- c --> <a k='v'/>\n", "<!-- c --> <a k='v'/>" },
        { "<ab>x</a></ab>", "<ab>x</a></ab>" }, // a name that begins like ours counts
    };
    Messages messages;
    for (Row const& row : rows) {
        SCOPED_TRACE(row.inside);
        for (std::size_t const blanks : { 0u, 16370u, 16380u }) {
            Open<> open(std::string(blanks, ' ') + "<r><a>" + row.inside + "</a> gone <z/></r>", 2);
            EXPECT_EQ(open.reader.getChildrenAsString(), row.result);
            EXPECT_EQ(open.reader.mode(), Mode::XML_READER_END_TAG);
            EXPECT_EQ(open.reader.element().token(), "r");
            open.reader.readXml();
            EXPECT_EQ(seenAt(open.reader), "empty z");
        }
    }
    messages.take();
    Open<> cut("<a>x", 1);
    EXPECT_EQ(cut.reader.getChildrenAsString(), "x");
    EXPECT_EQ(cut.reader.mode(), Mode::XML_READER_ERROR);
    EXPECT_EQ(messages.take(), "NyXmlFileReader Error: getChildrenAsString Error: end of file too early -- expecting start tag."
                               "\n\tFile: doc.xml\n\tLine: 1\n");
    Open<> open("<a><b>x", 1); // nobody misses the end tag
    EXPECT_EQ(open.reader.getChildrenAsString(), "<b>x");
    EXPECT_EQ(open.reader.readXml(), Mode::XML_READER_EOF);
}

TEST(ReaderContent, FastPaths)
{
    Messages messages;
    std::string const document = "<r>\n<v x=\"1\" y=\"2\"/>\n<abc>4 5\n6 </abc>\n<><e f='1'/></r>\n";
    for (std::size_t inFirstRead = 0; inFirstRead <= document.size(); ++inFirstRead) {
        SCOPED_TRACE(inFirstRead);
        Open<> open(std::string(16383 - inFirstRead, ' ') + document + std::string(20000, '\n'), 1);
        NyXmlFileReader& reader = open.reader;
        ASSERT_EQ(reader.getComplexStartTagFast(), "v");
        ASSERT_EQ(reader.getAttributeValueFast(), "1");
        ASSERT_EQ(reader.getLastAttributeValueFast(), "2");
        ASSERT_EQ(reader.lineCountOfFile(), 2);          // the newline inside the value does not count
        ASSERT_EQ(reader.getSimpleStartTagFast(), "ab"); // less its last byte
        ASSERT_EQ(reader.getContentByWordFast(), "4");
        ASSERT_EQ(reader.getContentByWordFast(), "5"); // with the newline behind it
        ASSERT_EQ(reader.getContentByWordFast(), "6");
        reader.getEndTagFast();
        ASSERT_EQ(reader.getSimpleStartTagFast(), "");
        reader.readXml();
        ASSERT_EQ(seenAt(reader), "empty e f=1");
        ASSERT_EQ(reader.lineCountOfFile(), 4); // the newline that ended a word does not count
    }
}

// A token that is not closed in the text in hand is the rest of that text, and that text, from its start, is read again.
TEST(ReaderContent, FastPathWithoutAnEnd)
{
    Messages messages;
    std::string const start = "<r><v x=\"";
    std::string const rest = "1\n" + std::string(16383 - start.size() - 2, 'x');
    Open<> open(start + rest + "y\"/></r>", 1);
    EXPECT_TRUE(open.reader.getAttributeValueFast() == rest);
    open.reader.readXml();
    EXPECT_EQ(seenAt(open.reader), "start r");
    EXPECT_EQ(open.reader.readXml(), Mode::XML_READER_EMPTY_TAG);
    EXPECT_TRUE(open.reader.attributeValue() == rest + "y");
}

TEST(ReaderContent, LastAttributeValueGoesThroughTheSlot)
{
    struct Loud : NyXmlFileReader {
        using NyXmlFileReader::NyXmlFileReader;
        std::string const& getAttributeValueFast() override
        {
            ++calls;
            return NyXmlFileReader::getAttributeValueFast();
        }
        int calls = 0;
    };
    Open<Loud> open("<r><v x=\"1\"/>\n</r>", 1);
    EXPECT_EQ(open.reader.getLastAttributeValueFast(), "1");
    EXPECT_EQ(open.reader.calls, 1);
}

} // namespace
