// The scanner under the events: text across blocks, lines, streams that end in their own ways, and what a copy carries.

#include "ReaderSupport.h"

#include <gtest/gtest.h>

#include <ios>
#include <stdexcept>
#include <streambuf>
#include <string>

namespace {

// Opens what subclasses may use.
class OpenReader : public NyXmlFileReader {
public:
    using NyXmlFileReader::getLineWithLineCount;
    using NyXmlFileReader::isWhiteSpace;
    using NyXmlFileReader::nextQuotedToken;
    using NyXmlFileReader::nextWord;
    using NyXmlFileReader::NyXmlFileReader;
    using NyXmlFileReader::stripQuotes;
    using NyXmlFileReader::stripWhiteSpaceFromBounds;
    using NyXmlFileReader::wordCount;
};

TEST(ReaderScanner, LinesAcrossBlocks)
{
    std::string const run(100000, 'x');
    std::istringstream stream("a\nb<" + run + "<\n\nrest\n");
    OpenReader reader("doc.xml", stream);
    std::string line;
    EXPECT_EQ(reader.lineCountOfFile(), 1);
    EXPECT_TRUE(reader.getLineWithLineCount(line, '\n', false));
    EXPECT_EQ(reader.lineCountOfFile(), 1); // not before the cursor has passed it
    EXPECT_TRUE(reader.getLineWithLineCount(line, '<', true));
    EXPECT_EQ(line, "\nb");
    EXPECT_EQ(reader.lineCountOfFile(), 2);
    EXPECT_TRUE(reader.getLineWithLineCount(line, '<', false));
    EXPECT_TRUE(line == run);
    EXPECT_TRUE(reader.getLineWithLineCount(line, '<', true));
    EXPECT_EQ(line, "");
    EXPECT_FALSE(reader.getLineWithLineCount(line, '<', true));
    EXPECT_EQ(line, "\n\nrest\n");
    EXPECT_EQ(reader.lineCountOfFile(), 2); // what has no end does not count
    EXPECT_FALSE(reader.getLineWithLineCount(line, '<', true));
    EXPECT_EQ(line, "");
}

TEST(ReaderScanner, ZeroByteDropsTheRestOfItsRead)
{
    std::string const first = "<a>x" + std::string(1, '\0') + "y";
    EXPECT_EQ(eventsOf(first + std::string(16383 - first.size(), 'z') + "</a>"), "start a | content x | eof");
}

TEST(ReaderScanner, Strings)
{
    std::istringstream stream;
    OpenReader reader("doc.xml", stream);
    EXPECT_TRUE(reader.isWhiteSpace(""));
    EXPECT_FALSE(reader.isWhiteSpace("\f"));
    std::string text = "   ";
    reader.stripWhiteSpaceFromBounds(text);
    EXPECT_EQ(text, "   ");
    EXPECT_EQ(reader.wordCount(""), 1u);
    EXPECT_EQ(reader.wordCount(" a\nb"), 3u); // white space in front counts as a word
    text = "one  two";
    EXPECT_EQ(reader.nextWord(text), "one");
    EXPECT_EQ(text, "two");
    EXPECT_EQ(reader.nextWord(text), "two");
    EXPECT_EQ(text, "");
    text = "'a \"b'\n c";
    EXPECT_EQ(reader.nextQuotedToken(text), "a \"b");
    EXPECT_EQ(text, "c");

    Messages messages;
    text = "\"open";
    EXPECT_EQ(reader.nextQuotedToken(text), "");
    EXPECT_EQ(text, "\"open");
    text = "'a'";
    reader.stripQuotes(text);
    EXPECT_EQ(text, "'a'");
    EXPECT_EQ(reader.errorCode(), 1u);
    EXPECT_EQ(messages.take(), "NyXmlFileReader Error: file not well formed.\n\tSecond quote of attribute value is missing."
                               "\n\tFile: doc.xml\n\tLine: 1\n"
                               "NyXmlFileReader Error: file not well formed.\n\tImproper quotes around attribute value."
                               "\n\tFile: doc.xml\n\tLine: 1\n");
}

// Gives its text, then throws.
class BrokenBuffer : public std::streambuf {
public:
    explicit BrokenBuffer(std::string text) : m_text(std::move(text))
    {
        setg(m_text.data(), m_text.data(), m_text.data() + m_text.size());
    }

protected:
    int_type underflow() override { throw std::runtime_error("broken"); }

private:
    std::string m_text;
};

std::string eventsOfStream(std::istream& stream)
{
    NyXmlFileReader reader("doc.xml", stream);
    std::string seen;
    for (int events = 0; events != 4; ++events) {
        reader.readXml();
        seen += seenAt(reader) + " | ";
    }
    return seen;
}

TEST(ReaderScanner, StreamThatFailsIsAtItsEnd)
{
    Messages messages;
    std::string const cut = "<a>\n<b/>";

    std::istringstream failed("<a/>");
    failed.setstate(std::ios::failbit);
    EXPECT_EQ(eventsOfStream(failed), "error | error | error | error | ");

    std::istringstream throwing(cut);
    throwing.exceptions(std::ios::failbit | std::ios::eofbit | std::ios::badbit);
    EXPECT_EQ(eventsOfStream(throwing), "start a | empty b | eof | error | ");

    std::istringstream whole("<a>x</a>");
    whole.exceptions(std::ios::eofbit);
    EXPECT_EQ(eventsOfStream(whole), "start a | content x | eof | error | ");

    BrokenBuffer buffer(cut);
    std::istream broken(&buffer);
    EXPECT_EQ(eventsOfStream(broken), "error | error | error | error | "); // what that read had got so far is lost

    std::istream nothing(nullptr);
    NyXmlFileReader reader("doc.xml", nothing);
    EXPECT_EQ(reader.getChildrenAsString(), "");
    EXPECT_EQ(reader.mode(), NyXmlFileReader::XML_READER_ERROR);
}

TEST(ReaderScanner, CopyReadsOnAndAssignmentKeepsItsStream)
{
    Messages messages;
    std::istringstream first("<a>" + std::string(20000, ' ') + "<b c='1'/></a>");
    std::istringstream second(" <z/> </a>");
    NyXmlFileReader source("first", first);
    source.readXml();
    NyXmlFileReader target("second", second);
    target = source;
    EXPECT_STREQ(target.filename(), "first");
    EXPECT_EQ(&target.stream(), &second);
    target.readXml();
    EXPECT_EQ(seenAt(target), "empty z");

    NyXmlFileReader copy(source);
    EXPECT_EQ(&copy.stream(), &first);
    copy.readXml();
    EXPECT_EQ(seenAt(copy), "empty b c=1");
    EXPECT_EQ(copy.readXml(), NyXmlFileReader::XML_READER_END_TAG);
    EXPECT_EQ(source.element().token(), "a");
}

TEST(ReaderScanner, OverridesSeeEveryStep)
{
    struct Loud : NyXmlFileReader {
        using NyXmlFileReader::NyXmlFileReader;
        NyToken& swapNamespacePrefixWithUri(NyToken& token, DEFAULT_NAMESPACE_OPTION option) const override
        {
            token = NyToken(option == ELEMENT_NAMESPACE ? "element" : "attribute", token.token());
            return token;
        }
        XML_READER_MODE tagType(std::string& tag) override
        {
            if (tag == "!skip")
                tag = "skipped/";
            return NyXmlFileReader::tagType(tag);
        }
        std::string const& nextWord(std::string& text) const override
        {
            m_rests += text + ";";
            return NyXmlFileReader::nextWord(text);
        }
        mutable std::string m_rests;
    };
    std::istringstream stream("<x:a p:b='1'><!skip><c>1 2</c></x:a>");
    Loud reader("doc.xml", stream);
    reader.readXml();
    EXPECT_EQ(reader.element().namespaceAndToken(), "element#x:a");
    EXPECT_EQ(reader.attributeName().namespaceAndToken(), "attribute#p:b");
    EXPECT_EQ(reader.attributeValue(), "1");
    reader.readXml();
    EXPECT_EQ(reader.element().token(), "skipped");
    reader.readXml();
    reader.readXml();
    reader.m_rests.clear();
    reader.contentByWord();
    reader.contentByWord();
    EXPECT_EQ(reader.m_rests, "1 2;2;");
    EXPECT_EQ(reader.readXml(), NyXmlFileReader::XML_READER_END_TAG);
}

} // namespace
