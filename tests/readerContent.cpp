// Attributes, content by word, subtrees and fast paths: what a caller takes from the text behind an event.

#include "ReaderSupport.h"
#include "ValueSupport.h"

#include <nyXml/reader/detail/NyXmlWordSink.h>
#include <nyXml/values/NyXmlVectorBasicType.h>

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>

namespace {

TEST(ReaderContent, ByWord)
{
    Open<> open("<r><a> 1 22\t\n333 </a><b>3 4</b></r>", 3);
    NyXmlFileReader& reader = open.reader;
    EXPECT_EQ(reader.contentCount(), 3u);
    EXPECT_EQ(reader.contentByWord(), "1");
    EXPECT_EQ(reader.contentCount(), 2u);
    EXPECT_EQ(reader.content(), "22\t\n333");
    reader.setContentVectorFlag(true);
    EXPECT_EQ(reader.content(), "22");
    EXPECT_EQ(reader.takeContentWord(), "333");
    EXPECT_FALSE(reader.isContentAvailable());
    EXPECT_EQ(reader.contentByWord(), "");
    EXPECT_EQ(reader.contentCount(), 1u);
    EXPECT_EQ(eventsLeft(reader), "start b | content 3 4 | end | eof"); // the flag falls behind a start tag
}

template <class Reader>
void sumLongContent()
{
    std::size_t const count = 1000000;
    std::string document = "<a>\n";
    for (std::size_t i = 0; i < count; ++i)
        document += std::to_string(i) + "\n";
    Open<Reader> open(document + "</a>", 2);
    EXPECT_EQ(open.reader.contentCount(), count);
    EXPECT_EQ(open.reader.lineCountOfFile(), static_cast<int>(count + 2));
    std::size_t sum = 0;
    while (open.reader.isContentAvailable())
        sum += std::stoul(open.reader.contentByWord());
    EXPECT_EQ(sum, count * (count - 1) / 2);
}

// Both ways: a subclass, too, may hold a run of many megabytes.
TEST(ReaderContent, LongRunsTakeLinearTime)
{
    sumLongContent<NyXmlFileReader>();
    sumLongContent<PlainReader>();
}

// An override gets the rest of the content for every word, however long it is, and may do with it what it likes.
TEST(ReaderContent, OverrideOfTheWordsSeesTheExactRest)
{
    struct Own : NyXmlFileReader {
        using NyXmlFileReader::NyXmlFileReader;
        std::string const& nextWord(std::string& text) const override
        {
            m_rests += std::to_string(text.size()) + " ";
            if (text.size() == 69994)
                text.clear();
            return NyXmlFileReader::nextWord(text);
        }
        mutable std::string m_rests;
    };
    Open<Own> open("<a>1 22 333 " + std::string(69990, 'x') + "</a>", 2);
    open.reader.m_rests.clear();
    EXPECT_EQ(open.reader.contentByWord(), "1");
    EXPECT_EQ(open.reader.content().substr(0, 6), "22 333");
    EXPECT_EQ(open.reader.contentByWord(), "22");
    EXPECT_TRUE(open.reader.isContentAvailable());
    EXPECT_EQ(open.reader.contentByWord(), "");
    EXPECT_EQ(open.reader.m_rests, "69999 69997 69994 ") << "lengths of the rests";
    EXPECT_FALSE(open.reader.isContentAvailable());
    EXPECT_EQ(open.reader.takeContentWord(), "");
    EXPECT_EQ(open.reader.contentCount(), 1u);
}

// What is behind a run decides whether it was content. Where it was not, its text is what the fault leaves, and what a fast path that
// finds no end goes back to.
TEST(ReaderContent, FaultBehindALongRunLeavesItsText)
{
    struct Words final : NyXmlWordSink {
        void takeWords(std::string_view words) override { m_size += words.size(); }
        void forgetWords() override { m_size = 0; }
        std::size_t m_size = 0;
    };
    auto const behind = [](auto& reader, std::string const& document, bool isHandedOut) {
        Words words;
        reader.readXml();
        auto const mode = isHandedOut ? reader.readRun(words) : reader.readXml();
        std::string said = std::to_string(mode);
        if (mode != NyXmlFileReader::XML_READER_CONTENT)
            said += std::to_string(reader.contentCount()) + reader.content();
        std::size_t const runEnd = document.find('<', 1);
        bool const isContent = runEnd < document.size() && document.compare(runEnd, 4, "</a>") == 0;
        EXPECT_EQ(words.m_size != 0, isHandedOut && isContent) << "forgotten if it is none";
        if (document.find('"') != std::string::npos)
            said += reader.getAttributeValueFast() + std::to_string(reader.lineCountOfFile()) + reader.getSimpleStartTagFast();
        reader.readXml();
        return said + reader.element().token() + std::to_string(reader.lineCountOfFile());
    };
    std::string run;
    for (int i = 0; run.size() < 80000; ++i)
        run += " " + std::to_string(i) + (i % 7 == 0 ? "\n" : "");
    Messages messages;
    for (std::string const end : { "<b/></a>", "<b", "", "<!-- c -->", "<!-- c -->7</a>", "</b>", "</a>\n<b/>",
                                   "</a><v>\n<v x=\"1\n </v>", "short</a><v>\n<v x=\"1\n </v>" }) {
        std::string const document = "<a>" + run.substr(0, end[0] == 's' ? 17000 : run.size()) + end;
        std::istringstream stream(document), same(document);
        NyXmlReader reader("in.xml", stream);
        ApplicationReader plain("in.xml", same);
        std::string const seen = behind(reader, document, true);
        EXPECT_TRUE(seen == behind(plain, document, false)) << end << seen.size();
    }
}

// A zero byte drops what is left of one read, so a run must be read in the same portions whether its words are handed out or not. At
// the end of the input the lines of a run count if a comment has ended it.
TEST(ReaderContent, RunHandedOutHasTheWordsAndLinesOfTheContent)
{
    std::string run;
    for (int i = 0; run.size() < 80000; ++i)
        run += std::to_string(i) + "\n";
    NyXmlVectorBasicType<NyXmlBasicType<double>> numbers;
    for (std::size_t const zero : { 100u, 16000u, 16390u, 40000u }) {
        std::string document = "<a><group>" + run + "</group></a>";
        document[zero] = '\0';
        expectBothWaysAgree(numbers, document);
    }
    expectBothWaysAgree(numbers, "<a><group>" + run + "<!-- c -->");
}

TEST(ReaderContent, NextMatchingEndTagStopsAtTheFirstOfItsName)
{
    Messages messages;
    Open<> open("<r><a b='1'><c/><a></a>x</a></r>", 2);
    EXPECT_TRUE(open.reader.nextMatchingEndTag());
    EXPECT_EQ(seenAt(open.reader) + " in " + open.reader.element().token(), "end in a");
    EXPECT_EQ(messages.take(), "");

    Open<> empty("<a b='1'/>", 1);
    EXPECT_TRUE(empty.reader.nextMatchingEndTag());
    EXPECT_EQ(empty.reader.attributeValue(), "1");
    Open<> cut("<r><a><b></b>", 2);
    EXPECT_FALSE(cut.reader.nextMatchingEndTag());
    EXPECT_EQ(seenAt(cut.reader), "error");
    EXPECT_EQ(messages.take(), "NyXmlFileReader Error: Requested next end tag but found EOF.\n\tFile: doc.xml\n\tLine: 1\n");
    EXPECT_FALSE(Open<>("<a/>").reader.nextMatchingEndTag()); // with no element open
}

TEST(ReaderContent, ChildrenAsString)
{
    std::pair<char const*, char const*> const rows[] = {
        { "<b/><a>x</a>", "<b/><a>x</a>" },
        { " text ", "text" },
        { "\n<!-- c --> <a k='v'/>\n", "<!-- c --> <a k='v'/>" },
        { "<ab>x</a></ab>", "<ab>x</a></ab>" }, // a name that begins like ours counts
    };
    Messages messages;
    for (auto const& [inside, result] : rows)
        for (std::size_t const blanks : { 0u, 16370u, 16380u }) {
            Open<> open(std::string(blanks, ' ') + "<r><a>" + inside + "</a> gone <z/></r>", 2);
            EXPECT_EQ(open.reader.getChildrenAsString(), result);
            EXPECT_EQ(seenAt(open.reader), "end") << inside;
            EXPECT_EQ(eventsLeft(open.reader), "empty z | end | eof") << inside;
        }
    messages.take();
    Open<> cut("<a>x", 1);
    EXPECT_EQ(cut.reader.getChildrenAsString(), "x");
    EXPECT_EQ(seenAt(cut.reader), "error");
    EXPECT_EQ(messages.take(), "NyXmlFileReader Error: getChildrenAsString Error: end of file too early -- expecting start tag."
                               "\n\tFile: doc.xml\n\tLine: 1\n");
    Open<> open("<a><b>x", 1); // nobody misses the end tag
    EXPECT_EQ(open.reader.getChildrenAsString(), "<b>x");
    EXPECT_EQ(eventsLeft(open.reader), "eof");
}

template <class Reader>
void walkFast()
{
    Messages messages;
    std::string const document = "<r>\n<v x=\"1\" y=\"2\"/>\n<abc>4 5\n6 </abc>\n<><e f='1'/></r>\n";
    for (std::size_t inFirstRead = 0; inFirstRead <= document.size(); ++inFirstRead) {
        SCOPED_TRACE(inFirstRead);
        Open<Reader> open(std::string(16383 - inFirstRead, ' ') + document + std::string(20000, '\n'), 1);
        Reader& reader = open.reader;
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
        ASSERT_EQ(reader.lineCountOfFile(), 4); // the newline that ended a word does not count
        ASSERT_EQ(eventsLeft(reader), "end f=1 | eof");
    }
}

TEST(ReaderContent, FastPaths)
{
    walkFast<NyXmlFileReader>();
    walkFast<NyXmlReader>();
}

// Between elements, and there alone, a plain entry of a map is taken at once, and what is left behind is what its last event would leave.
TEST(ReaderContent, EntriesAreTakenBetweenElements)
{
    Messages messages;
    std::string const entry = "<element><key> k </key><value>1 2</value></element>", entries = entry + " " + entry + "</m>";
    std::tuple<char const*, int, int> const rows[] = {
        // what stands before, how many events, how many entries are taken
        { "<m>", 1, 2 }, { "<m><x></x>", 3, 2 },     { "<m a='1'>", 1, 0 }, { "<m><x/>", 2, 0 },
        { "", 0, 0 },    { "<m><x>text</x>", 3, 0 }, { "<m/>", 1, 0 },
    };
    for (auto const& [before, events, expected] : rows) {
        SCOPED_TRACE(before);
        Open<NyXmlReader> open(before + entries, events);
        std::string_view key, value;
        int taken = 0;
        while (open.reader.takeEntry(key, value)) {
            ++taken;
            EXPECT_EQ(std::string(key) + "=" + std::string(value), "k=1 2");
            EXPECT_EQ(seenAt(open.reader) + open.reader.element().token() + open.reader.content(), "endm1 2");
            EXPECT_EQ(open.reader.numOfAttributes(), 0u);
        }
        EXPECT_EQ(taken, expected);
        Open<PlainReader> plain(before + entries, events);
        EXPECT_FALSE(plain.reader.takeEntry(key, value));
        EXPECT_EQ(eventsLeft(open.reader), taken != 0 ? "end | eof" : eventsLeft(plain.reader));
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
    EXPECT_TRUE(eventsLeft(open.reader) == "start r | empty v x=" + rest + "y | end | eof");
    EXPECT_FALSE(open.reader.findWordForFastPath());
}

} // namespace
