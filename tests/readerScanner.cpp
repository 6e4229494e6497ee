// The scanner under the events: text across blocks, lines, streams that end in their own ways, and what a copy carries.

#include "ReaderSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <utility>

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
    Open<OpenReader> open("a\nb<" + run + "<\n\nrest\n");
    auto const line = [&reader = open.reader](char delimiter, bool takesDelimiter) {
        std::string text;
        bool const found = reader.getLineWithLineCount(text, delimiter, takesDelimiter);
        return (found ? "" : "cut: ") + text + " in line " + std::to_string(reader.lineCountOfFile());
    };
    EXPECT_EQ(line('\n', false), "a in line 1"); // a newline counts when the cursor has passed it
    EXPECT_EQ(line('<', true), "\nb in line 2");
    EXPECT_TRUE(line('<', false) == run + " in line 2");
    EXPECT_EQ(line('<', true), " in line 2");
    EXPECT_EQ(line('<', true), "cut: \n\nrest\n in line 2"); // what has no end does not count
    EXPECT_EQ(line('<', true), "cut:  in line 2");
}

// Two thousand million empty lines, then the rest.
class EmptyLines : public std::streambuf {
public:
    explicit EmptyLines(std::string rest) : m_rest(std::move(rest)) {}

protected:
    std::streamsize xsgetn(char* target, std::streamsize count) override
    {
        std::streamsize const lines = std::min(count, m_left);
        std::fill_n(target, lines, '\n');
        m_left -= lines;
        std::size_t const more = m_rest.copy(target + lines, static_cast<std::size_t>(count - lines));
        m_rest.erase(0, more);
        return lines + static_cast<std::streamsize>(more);
    }

private:
    std::streamsize m_left = std::streamsize{ 1 } << 31;
    std::string m_rest;
};

TEST(ReaderScanner, LinesStayAtTheLargestNumber)
{
    EmptyLines buffer(">\n<a>\n</a>");
    std::istream stream(&buffer);
    NyXmlFileReader reader("doc.xml", stream);
    reader.getEndTagFast();
    EXPECT_EQ(reader.lineCountOfFile(), 2147483647);
    EXPECT_EQ(eventsLeft(reader), "start a | end | eof");
    EXPECT_EQ(reader.lineCountOfFile(), 2147483647);
}

TEST(ReaderScanner, ZeroByteDropsTheRestOfItsRead)
{
    std::string const first = "<a>x" + std::string(1, '\0') + "y";
    EXPECT_EQ(eventsOf(first + std::string(16383 - first.size(), 'z') + "</a>"), "start a | content x | eof");
}

TEST(ReaderScanner, Strings)
{
    Open<OpenReader> open("");
    OpenReader& reader = open.reader;
    EXPECT_TRUE(reader.isWhiteSpace("") && !reader.isWhiteSpace("\f"));
    EXPECT_EQ(reader.wordCount(""), 1u);
    EXPECT_EQ(reader.wordCount(" a\nb"), 3u); // white space in front counts as a word
    std::string text = "   ";
    reader.stripWhiteSpaceFromBounds(text);
    EXPECT_EQ(text, "   ");
    text = "one  two";
    EXPECT_EQ(reader.nextWord(text), "one");
    EXPECT_EQ(reader.nextWord(text), "two");
    EXPECT_EQ(text, "");

    Messages messages;
    text = "'a \"b'\n \"c";
    EXPECT_EQ(reader.nextQuotedToken(text), "a \"b");
    EXPECT_EQ(reader.nextQuotedToken(text), "");
    EXPECT_EQ(text, "\"c");
    text = "'a'";
    reader.stripQuotes(text);
    EXPECT_EQ(text, "'a'");
    EXPECT_EQ(messages.take(),
              complaint("Second quote of attribute value is missing.") + complaint("Improper quotes around attribute value."));
}

TEST(ReaderScanner, StreamThatFailsIsAtItsEnd)
{
    Messages messages;
    auto const eventsOfStream = [](std::istream& stream) {
        NyXmlFileReader reader("doc.xml", stream);
        std::string const seen = eventsLeft(reader);
        return seen + " | " + eventsLeft(reader);
    };
    std::istringstream failed("<a/>");
    failed.setstate(std::ios::failbit);
    EXPECT_EQ(eventsOfStream(failed), "error | error");

    std::istringstream throwing("<a>\n<b/>");
    throwing.exceptions(std::ios::failbit | std::ios::eofbit | std::ios::badbit);
    EXPECT_EQ(eventsOfStream(throwing), "start a | empty b | eof | error");

    struct : std::streambuf {
        int_type underflow() override { throw std::runtime_error("broken"); }
    } buffer;
    std::istream broken(&buffer);
    EXPECT_EQ(eventsOfStream(broken), "error | error");

    std::istream nothing(nullptr);
    NyXmlFileReader reader("doc.xml", nothing);
    EXPECT_EQ(reader.getChildrenAsString(), "");
    EXPECT_EQ(seenAt(reader), "error");
}

TEST(ReaderScanner, OverridesSeeEveryStep)
{
    struct Loud : NyXmlFileReader {
        using NyXmlFileReader::NyXmlFileReader;
        using NyXmlFileReader::parseElementAndAttributes;
        NyToken& swapNamespacePrefixWithUri(NyToken& token, DEFAULT_NAMESPACE_OPTION option) const override
        {
            token = NyToken((option == ELEMENT_NAMESPACE ? "element:" : "attribute:") + token.token());
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
        std::string const& nextQuotedToken(std::string& text) override
        {
            m_rests += text + ";";
            return NyXmlFileReader::nextQuotedToken(text);
        }
        std::string const& getAttributeValueFast() override
        {
            m_rests += "fast;";
            return NyXmlFileReader::getAttributeValueFast();
        }
        mutable std::string m_rests;
    };
    Messages messages;
    Open<Loud> open("<x:a p:b= '1' k='2'><!skip><c>1 2</c>\n<d e=\"3\"></x:a>", 1);
    EXPECT_EQ(open.reader.m_rests, "x:a p:b= '1' k='2';'1' k='2';'2';");
    EXPECT_EQ(seenAt(open.reader), "start element:x:a attribute:k=2 attribute:p:b=1");
    open.reader.readXml();
    EXPECT_EQ(seenAt(open.reader), "empty element:skipped");
    open.reader.readXml();
    open.reader.readXml();
    open.reader.m_rests.clear();
    open.reader.contentByWord();
    open.reader.contentByWord();
    EXPECT_EQ(open.reader.getLastAttributeValueFast(), "3");
    EXPECT_EQ(open.reader.m_rests, "1 2;2;fast;");
    EXPECT_EQ(open.reader.readXml(), NyXmlFileReader::XML_READER_END_TAG);
    for (auto [tag, isRight] : { std::pair<std::string, bool>("a b='1'", true), { "a b", false }, { "", false } })
        EXPECT_EQ(open.reader.parseElementAndAttributes(tag), isRight) << tag;
}

} // namespace
