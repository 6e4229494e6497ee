// The front of the reader: one document out of several files, its version and its factory.

#include "ReaderSupport.h"

#include <nyXml/compound/NyXmlFactory.h>
#include <nyXml/core/NyXmlObject.h>
#include <nyXml/reader/NyXmlReader.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

std::string eventsOf(std::string const& document, std::string const& name) { return ::eventsOf<NyXmlReader>(document, name); }

std::string include(std::string const& href) { return "<NyInclude type='simple' href='" + href + "'/>"; }

TEST(DocumentReader, LinkStartsAtTheDocumentThatHoldsIt)
{
    struct OpenReader : NyXmlReader {
        using NyXmlReader::NyXmlReader;
        using NyXmlReader::parseHref;
        using NyXmlReader::pathOfLink;
    };
    std::string host = "h", directory = "d", file = "f";
    OpenReader().parseHref("c.xml", host, directory, file);
    EXPECT_EQ(host + directory + file, "c.xml");
    struct {
        char const *document, *href, *path;
    } const rows[] = {
        { "b.xml", "d/c.xml", "d/c.xml" },
        { "a/b.xml", "c.xml", "a/c.xml" },
        { "a/b.xml", "d/c.xml", "a\\d/c.xml" },
        { "a\\d/c.xml", "e.xml", "a\\d/e.xml" },
        { "a/b.xml", "/c.xml", "/c.xml" },
        { "a/b.xml", "C:\\d\\c.xml", "C:\\d/c.xml" },
        { "a/b.xml", "/d\\c.xml", "/d/c.xml" },
        { "a/b.xml", "c:c.xml", "c:c.xml" },
        { "a/b.xml", "\\c.xml", "a/c.xml" },
        { "a/b.xml", "D:/d/c.xml", "a\\D:/d/c.xml" },
        { "http://h/a/b.xml", "d/c.xml", "http://h/a\\d/c.xml" },
        { "http://h/a/b.xml", "/d/c.xml", "http://h//d/c.xml" },
        { "http://h/a/b.xml", "/c.xml", "http://h/a/c.xml" },
        { "http://h/a/b.xml", "c:c.xml", "http://h/a/c:c.xml" },
        { "http://h/a/b.xml", "http://g:80\\d\\e/c.xml", "http://g:80/d\\e/c.xml" },
        { "a/b.xml", "http://g", "http://g/" },
    };
    for (auto const& row : rows) {
        bool remote = false;
        EXPECT_EQ(Open<OpenReader>("", 0, row.document).reader.pathOfLink(row.href, remote), row.path) << row.document;
        EXPECT_EQ(remote, std::string(row.path).find("http://") == 0) << row.path;
    }
}

// A subclass knows documents by names of its own, and calls its link elements as it likes.
TEST(DocumentReader, LinksGoThroughOverrides)
{
    class Catalogue : public NyXmlReader {
    public:
        explicit Catalogue(std::string const& directory) : m_directory(directory) {}
        NyToken const& element() const override
        {
            return NyXmlReader::element() == NyToken("link") ? m_include : NyXmlReader::element();
        }
        void parseHref(std::string const& href, std::string& host, std::string& directory, std::string& file) override
        {
            NyXmlReader::parseHref(href == "/part" ? m_directory + "/p.xml" : href, host, directory, file);
        }

    private:
        std::string const m_directory;
        NyToken const m_include = "NyInclude";
    };
    Messages messages;
    ScratchDirectory const directory;
    directory.write("p.xml", "<p>text</p>");
    std::istringstream stream("<a><link type='simple' href='/part'/><b/></a>");
    Catalogue reader(directory.path());
    reader.open("a.xml", stream);
    EXPECT_EQ(eventsLeft(reader), "start a | start p | content text | empty b | end | eof");
    EXPECT_EQ(messages.text(), "");
}

// Who overrides a hook is asked for every event, and what it gives is taken.
TEST(DocumentReader, HooksAreCalledThroughTheirSlots)
{
    class Hooked : public NyXmlReader {
    public:
        using NyXmlReader::NyXmlReader;
        std::string m_calls;

    protected:
        bool openFileTest() override { return call(" open ", NyXmlReader::openFileTest()); }
        bool closeFileTest() override { return call(" close ", NyXmlReader::closeFileTest()); }
        bool checkVersion() override { return call(" version ", false); }
        NyBaseXmlFactory* newFactory() const override
        {
            auto own = std::make_unique<NyXmlFactory>();
            own->registerComponentCreator(NyToken("own"), nullptr);
            return own.release();
        }

    private:
        bool call(char const* name, bool result)
        {
            m_calls += name + std::to_string(result);
            return result;
        }
    };
    ScratchDirectory const directory;
    Open<Hooked> open("<a>" + include(directory.write("p.xml", "<p/>")) + "</a>");
    std::string const everyday = " open 0 close 0", calls[] = { everyday + " version 0", " open 1" + everyday + " version 0",
                                                                " open 0 close 1" + everyday, everyday };
    for (std::string const& expected : calls) {
        open.reader.readXml();
        EXPECT_EQ(std::exchange(open.reader.m_calls, std::string()), expected);
        EXPECT_FALSE(open.reader.versionFlag());
    }
    EXPECT_TRUE(open.reader.registerComponentCreator(NyToken("a"), nullptr));
    EXPECT_EQ(dynamic_cast<NyXmlFactory const&>(*open.reader.factoryPointer()).creatorMap().size(), 2u);
}

// What a report of a fault needs. Where an included document stands, its include element does not.
TEST(DocumentReader, OpenElementsLeadThroughIncludes)
{
    ScratchDirectory const directory;
    directory.write("b.xml", "<b><x:c>text</x:c><d/></b>");
    Open<NyXmlReader> open("<a>\n" + include("b.xml") + "<last/></a>", 0, directory.path("a.xml"));
    std::string seen;
    do {
        for (NyToken const& name : open.reader.openElements())
            seen += "/" + name.namespaceAndToken();
        seen += " ";
    } while (open.reader.readXml() != NyXmlFileReader::XML_READER_EOF);
    EXPECT_EQ(seen, " /#a /#a/#b /#a/#b/#c /#a/#b /#a/#b/#d /#a /#a/#last  ");
    EXPECT_TRUE(NyXmlReader().openElements().empty());
}

TEST(DocumentReader, IncludedRootStandsWhereTheIncludeStood)
{
    Messages messages;
    ScratchDirectory const directory;
    directory.write("b.xml", "<?xml version='1.0'?>\n<b version='4.0.0' x='1'>\n" + include("c.xml") + "</b>\n");
    std::string const inner = directory.write("c.xml", "<c>text</c>");
    std::string const main = directory.path("a.xml");
    EXPECT_EQ(
        eventsOf("<a>\n<first/>" + include("b.xml") + "<last/>\n" + include(inner) + "</a>", main),
        "start a | empty first | start b x=1 | start c | content text | end | empty last | start c | content text | end | eof");
    EXPECT_EQ(eventsOf(include("b.xml"), main), "start b x=1 | start c | content text | end | eof");
    EXPECT_EQ(eventsOf("<a><NyInclude type='simple' href='c.xml'></NyInclude><d/></a>", main),
              "start a | start c | content text | end | empty d | end | eof")
        << "an include's own end tag is the caller's to see";
    EXPECT_EQ(messages.text(), "");
}

TEST(DocumentReader, NameLineAndErrorCodeAreTheTopDocuments)
{
    Messages messages;
    ScratchDirectory const directory;
    std::string const inner = directory.write("b.xml", "<b\nx='1'>\n<c/></b>");
    std::string const outer = directory.path("a.xml");
    Open<NyXmlReader> open("\n<a>" + include("b.xml") + "\n\n<d/></a>", 0, outer);
    NyXmlReader& reader = open.reader;
    for (std::string const& expected : { "a " + outer + ":2 0 own", "b " + inner + ":2 0", "c " + inner + ":3 2",
                                         " " + inner + ":3 2", "d " + outer + ":4 0 own" }) {
        reader.readXml();
        EXPECT_EQ(reader.element().token() + ' ' + reader.filename() + ':' + std::to_string(reader.lineCountOfFile()) + ' ' +
                      std::to_string(reader.errorCode()) + (&reader.stream() == &open.stream ? " own" : ""),
                  expected);
    }
    EXPECT_NE(messages.text().find("were not used.\n\tFile: " + inner + "\n\tLine: 3\n"), std::string::npos);
}

TEST(DocumentReader, FailedIncludeCostsAMessageOnly)
{
    ScratchDirectory const directory;
    std::string const there = directory.write("b.xml", "<b/>");
    std::string const place = "\n\tFile: main.xml\n\tLine: 2\n";
    std::string const syntax = "NyXmlReader Error: XLink syntax not correct." + place;
    std::string const notOpened = "NyXmlReader Error: not able to open file: \n";
    std::string const notSimple = "NyXmlReader Error: XLink 'type' needs to be simple." + place;
    std::pair<std::string, std::string> const rows[] = {
        { "type='simple' href='" + directory.path("none.xml") + "'", notOpened },
        { "type='simple' href='" + directory.path() + "'", notOpened },
        { "type='simple' href='http://'", notOpened },
        { "type='simple'", syntax },
        { "href='" + there + "'", syntax },
        { "", syntax },
        { "x:type='simple' x:href='" + there + "' xmlns:x='u' xsi:y='1'", "" },
        { "type='locator' href='" + there + "'", notSimple },
    };
    for (auto const& [attributes, complaint] : rows) {
        SCOPED_TRACE(attributes);
        Messages messages;
        bool const isOpened = complaint.empty() || complaint == notSimple;
        Open<NyXmlReader> open("<a>\n<NyInclude " + attributes + "/><c/></a>", 0, "main.xml");
        EXPECT_EQ(eventsLeft(open.reader),
                  isOpened ? "start a | empty b | empty c | end | eof" : "start a | empty c | end | eof");
        EXPECT_EQ(messages.text(), complaint);
        EXPECT_EQ(open.reader.errorCode(), 0u);
    }
}

TEST(DocumentReader, ForeignAttributeOfAnIncludeIsReportedWithoutEnd)
{
    struct Enough {};
    std::vector<std::string> reports;
    Ny::Print::setHandler([&reports](int, std::string const&, std::string const& text) {
        reports.push_back(text);
        if (reports.size() == 100)
            throw Enough();
    });
    EXPECT_THROW(eventsOf("<a><NyInclude type='simple' href='b.xml' actuate='onLoad'/></a>", "main.xml"), Enough);
    Ny::Print::setHandler({});
    EXPECT_EQ(reports[99],
              "NyXmlReader Error: attribute name can only be simple and href, not actuate.\n\tFile: main.xml\n\tLine: 1\n");
}

TEST(DocumentReader, ErrorIsReturnedFromWithinAnInclude)
{
    Messages messages;
    ScratchDirectory const directory;
    EXPECT_EQ(eventsOf("<a>" + include(directory.write("b.xml", "<b><c>")) + "</a>", ""), "start a | start b | start c | error");
    EXPECT_EQ(eventsOf("<a>" + include(directory.write("empty.xml", "")) + "</a>", ""), "start a | error");
    // An include element stays on top of a document that ends within it, and there is no way on from there.
    EXPECT_EQ(eventsOf("<a><NyInclude>", ""), "start a | error");
}

TEST(DocumentReader, ReaderLeftInsideIncludesReleasesTheirStreams)
{
    Messages messages; // of documents that were left open
    ScratchDirectory const directory;
    Open<NyXmlReader> open("<a>" + include(directory.write("b.xml", "<b><c/></b>")) + "<d/></a>", 2);
    {
        NyXmlReader const copy(open.reader);
        NyXmlReader assigned;
        assigned = copy;
        assigned = open.reader;
        EXPECT_EQ(assigned.element(), NyToken("b"));
        assigned = NyXmlReader(); // lets go in the middle
    }
    EXPECT_EQ(eventsLeft(open.reader), "empty c | end | empty d | end | eof") << "the copies have left the stream alone";
}

TEST(DocumentReader, MajorVersionsOfEachDocumentAreCompared)
{
    ScratchDirectory const directory;
    std::string const later = include(directory.write("c.xml", "<c version='4.5.0'/>"));
    std::string const greater = "greater than code base version (v4.0.0).\n";
    std::string const smaller = "two versions smaller than code base version (v4.0.0).\n";
    std::pair<std::string, std::string> const rows[] = {
        { "4.0.0", "" }, { "4.5.0", "" },    { "3.9.9", "" },     { "5.0.0", greater }, { "2.0.0", smaller },
        { "", smaller }, { "new", smaller }, { "-1.0", greater }, { "65540.1", "" },    { "65541", greater },
    };
    for (auto const& [version, warning] : rows) {
        SCOPED_TRACE(version);
        Messages messages;
        Open<NyXmlReader> open("<a version='" + version + "' x='1'><b version='9'/>" + later + "</a>", 1);
        EXPECT_EQ(open.reader.versionFlag(), warning != greater);
        EXPECT_EQ(seenAt(open.reader), "start a x=1");
        EXPECT_EQ(eventsLeft(open.reader), "empty b version=9 | empty c | end | eof");
        EXPECT_TRUE(open.reader.versionFlag()) << "that of the document examined last";
        std::string const start = "NyXmlObject::checkVersion warning: Input file version (v" + version + ") is ";
        EXPECT_EQ(messages.take(), warning.empty() ? "" : start + warning);
    }
}

TEST(DocumentReader, NextDocumentIsLookedAtAfterAssignmentAndOpen)
{
    Messages messages;
    Open<NyXmlReader> reading("<a/>", 1), fresh("");
    reading.reader = fresh.reader;
    reading.stream.clear();
    reading.stream.str("<a version='9'><b/></a>");
    reading.reader.readXml();
    EXPECT_FALSE(reading.reader.versionFlag());
    auto above = std::make_unique<std::istringstream>("<b version='9'/>");
    reading.reader.open("b.xml", *above);
    above.release(); // the reader's, as an include's stream
    EXPECT_TRUE(reading.reader.versionFlag());
    reading.reader.readXml();
    EXPECT_FALSE(reading.reader.versionFlag());
}

TEST(DocumentReader, OwnsItsFactory)
{
    NyXmlCreator const creator = [] { return static_cast<NyXmlObject*>(nullptr); };
    NyXmlReader reader;
    EXPECT_TRUE(reader.registerComponentCreator(NyToken("a"), creator));
    EXPECT_FALSE(reader.registerComponentCreator(NyToken("b"), creator));
    EXPECT_EQ(dynamic_cast<NyXmlFactory const&>(*reader.factoryPointer()).creatorMap().size(), 2u);

    auto* const own = new NyXmlFactory;
    reader.setFactoryPointer(own);
    EXPECT_FALSE(reader.registerComponentCreator(NyToken("a"), creator));
    NyXmlReader assigned;
    assigned = NyXmlReader(reader); // which goes first, and leaves it
    EXPECT_EQ(assigned.factoryPointer(), own);
    EXPECT_EQ(own->creatorMap().size(), 1u);
}

} // namespace
