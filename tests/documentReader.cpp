// The front of the reader: one document out of several files, its version, its factory and its signals.

#include "Support.h"

#include <nyXml/compound/NyXmlFactory.h>
#include <nyXml/core/NyXmlObject.h>
#include <nyXml/platform/NyApplication.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/traversal/NyXmlSignals.h>

#include <gtest/gtest.h>

#include <sstream>

namespace {

using Reader = NyXmlFileReader;

std::string eventOf(NyXmlReader& reader, Reader::XML_READER_MODE mode)
{
    switch (mode) {
    case Reader::XML_READER_EOF: return "eof";
    case Reader::XML_READER_START_TAG:
    case Reader::XML_READER_EMPTY_TAG: {
        std::string event = (mode == Reader::XML_READER_START_TAG ? "start " : "empty ") + reader.element().token();
        while (reader.remainingNumOfAttributes() != 0) {
            event += ' ' + reader.attributeName().token();
            event += '=' + reader.attributeValue();
        }
        return event;
    }
    case Reader::XML_READER_END_TAG: return "end";
    case Reader::XML_READER_CONTENT: return "content " + reader.content();
    case Reader::XML_READER_ERROR: return "error";
    }
    return {};
}

/// All that is left of a document, up to its end or the first error.
std::string eventsOf(NyXmlReader& reader)
{
    std::string events;
    for (;;) {
        Reader::XML_READER_MODE const mode = reader.readXml();
        events += events.empty() ? "" : " | ";
        events += eventOf(reader, mode);
        if (mode == Reader::XML_READER_EOF || mode == Reader::XML_READER_ERROR)
            return events;
    }
}

std::string eventsOf(std::string const& document, std::string const& name = "main.xml")
{
    std::istringstream stream(document);
    NyXmlReader reader(name, stream);
    return eventsOf(reader);
}

std::string include(std::string const& href) { return "<NyInclude type='simple' href='" + href + "'/>"; }

/// Shows what subclasses see.
class OpenReader : public NyXmlReader {
public:
    using NyXmlReader::NyXmlReader;
    using NyXmlReader::pathOfLink;
};

// Paths

TEST(DocumentReader, LinkStartsAtTheDocumentThatHoldsIt)
{
    struct Row {
        char const *document, *href, *path;
        bool remote;
    };
    for (Row const& row :
         { Row{ "b.xml", "c.xml", "c.xml", false }, Row{ "b.xml", "d/c.xml", "d/c.xml", false },
           Row{ "a/b.xml", "c.xml", "a/c.xml", false }, Row{ "a/b.xml", "d/c.xml", "a\\d/c.xml", false },
           Row{ "a\\d/c.xml", "e.xml", "a\\d/e.xml", false }, Row{ "/a/b.xml", "../c.xml", "/a\\../c.xml", false },
           Row{ "a/b.xml", "/c.xml", "/c.xml", false }, Row{ "a/b.xml", "/d/c.xml", "/d/c.xml", false },
           Row{ "a/b.xml", "c:c.xml", "c:c.xml", false }, Row{ "a/b.xml", "C:\\d\\c.xml", "C:\\d\\c.xml", false },
           Row{ "a/b.xml", "D:/d/c.xml", "a\\D:/d/c.xml", false }, Row{ "http://h/a/b.xml", "c.xml", "http://h/a/c.xml", true },
           Row{ "http://h/a/b.xml", "d/c.xml", "http://h/a\\d/c.xml", true },
           Row{ "http://h/a/b.xml", "/d/c.xml", "/d/c.xml", false },
           Row{ "http://h/a/b.xml", "http://g/c.xml", "http://g/c.xml", true },
           Row{ "a/b.xml", "http://g:80\\d\\e/c.xml", "http://g:80/d\\e/c.xml", true },
           Row{ "a/b.xml", "http://g", "http://g/", true } }) {
        SCOPED_TRACE(std::string(row.document) + " to " + row.href);
        std::istringstream stream;
        OpenReader reader(row.document, stream);
        bool remote = !row.remote;
        EXPECT_EQ(reader.pathOfLink(row.href, remote), row.path);
        EXPECT_EQ(remote, row.remote);
    }
}

// Includes

TEST(DocumentReader, IncludedRootStandsWhereTheIncludeStood)
{
    Messages messages;
    ScratchDirectory const directory;
    directory.write("b.xml", "<?xml version='1.0'?>\n<b version='4.0.0' x='1'>\n" + include("c.xml") + "</b>\n");
    directory.write("c.xml", "<c>text</c>");
    std::string const document = "<a>\n<first/>" + include("b.xml") + "<last/>\n" + include(directory.path("c.xml")) + "</a>";
    EXPECT_EQ(
        eventsOf(document, directory.path("a.xml")),
        "start a | empty first | start b x=1 | start c | content text | end | empty last | start c | content text | end | eof");
    EXPECT_EQ(eventsOf(include("b.xml"), directory.path("a.xml")), "start b x=1 | start c | content text | end | eof");
    EXPECT_EQ(eventsOf("<a><NyInclude type='simple' href='" + directory.path("c.xml") + "'></NyInclude><d/></a>"),
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
    std::istringstream stream("\n<a>" + include("b.xml") + "\n\n<d/></a>");
    NyXmlReader reader(outer, stream);
    auto const next = [&reader] {
        reader.readXml();
        std::ostringstream place;
        place << reader.element().token() << ' ' << reader.filename() << ':' << reader.lineCountOfFile() << ' '
              << reader.errorCode();
        return place.str();
    };
    EXPECT_EQ(next(), "a " + outer + ":2 0");
    EXPECT_EQ(next(), "b " + inner + ":2 0");
    EXPECT_EQ(next(), "c " + inner + ":3 2") << "nobody took x";
    EXPECT_EQ(next(), " " + inner + ":3 2");
    EXPECT_EQ(next(), "d " + outer + ":4 0");
    EXPECT_NE(messages.text().find("\tFile: " + inner + "\n\tLine: 3\n"), std::string::npos);
}

TEST(DocumentReader, FailedIncludeCostsAMessageOnly)
{
    ScratchDirectory const directory;
    std::string const there = directory.write("b.xml", "<b/>");
    std::string const place = "\n\tFile: main.xml\n\tLine: 2\n";
    std::string const syntax = "NyXmlReader Error: XLink syntax not correct." + place;
    std::string const notOpened = "NyXmlReader Error: not able to open file: \n";
    struct Row {
        std::string attributes;
        std::string complaint;
        bool opened;
    };
    for (Row const& row :
         { Row{ "type='simple' href='" + directory.path("none.xml") + "'", notOpened, false },
           Row{ "type='simple' href='" + directory.path() + "'", notOpened, false },
           Row{ "type='simple' href=''", notOpened, false }, Row{ "type='simple' href='http://'", notOpened, false },
           Row{ "", syntax, false }, Row{ "href='" + there + "'", syntax, false }, Row{ "type='simple'", syntax, false },
           Row{ "x:type='simple' x:href='" + there + "' xmlns:x='u' xsi:y='1'", "", true },
           Row{ "type='locator' href='" + there + "'", "NyXmlReader Error: XLink 'type' needs to be simple." + place, true } }) {
        SCOPED_TRACE(row.attributes);
        Messages messages;
        std::istringstream stream("<a>\n<NyInclude " + row.attributes + "/><c/></a>");
        NyXmlReader reader("main.xml", stream);
        EXPECT_EQ(eventsOf(reader), row.opened ? "start a | empty b | empty c | end | eof" : "start a | empty c | end | eof");
        EXPECT_EQ(messages.types(), std::vector<int>(row.complaint.empty() ? 0 : 1, 4));
        EXPECT_EQ(messages.take(), row.complaint);
        EXPECT_EQ(reader.errorCode(), 0u);
    }
}

TEST(DocumentReader, ForeignAttributeOfAnIncludeIsReportedWithoutEnd)
{
    struct Enough {};
    int reports = 0;
    std::string last;
    Ny::Print::setHandler([&](int, std::string const&, std::string const& text) {
        if (++reports > 1000)
            return;
        last = text;
        if (reports == 1000)
            throw Enough();
    });
    EXPECT_THROW(eventsOf("<a><NyInclude type='simple' href='b.xml' actuate='onLoad'/></a>"), Enough);
    Ny::Print::setHandler({});
    EXPECT_EQ(last, "NyXmlReader Error: attribute name can only be simple and href, not actuate.\n\tFile: main.xml\n\tLine: 1\n");
}

TEST(DocumentReader, ErrorIsReturnedFromWithinAnInclude)
{
    Messages messages;
    ScratchDirectory const directory;
    std::string const cut = directory.write("cut.xml", "<b><c>");
    std::string const empty = directory.write("empty.xml", "");
    EXPECT_EQ(eventsOf("<a>" + include(cut) + "</a>"), "start a | start b | start c | error");
    EXPECT_EQ(eventsOf("<a>" + include(empty) + "</a>"), "start a | error");
    // An include element stays on top of a document that ends within it, and there is no way on from there.
    EXPECT_EQ(eventsOf("<a><NyInclude>"), "start a | error");
    EXPECT_EQ(eventsOf("<a>text" + include(empty) + "</a>"), "start a | error");
}

TEST(DocumentReader, ReaderLeftInsideIncludesReleasesTheirStreams)
{
    Messages messages; // of documents that were left open
    ScratchDirectory const directory;
    std::string const inner = directory.write("b.xml", "<b><c/></b>");
    std::istringstream stream("<a>" + include(inner) + "<d/></a>");
    NyXmlReader reader("main.xml", stream);
    reader.readXml();
    reader.readXml();
    {
        NyXmlReader const copy(reader);
        NyXmlReader assigned;
        assigned = copy;
        assigned = reader;
        EXPECT_EQ(assigned.element(), NyToken("b"));
    }
    EXPECT_EQ(eventsOf(reader), "empty c | end | empty d | end | eof") << "the copies have left the stream alone";

    std::istringstream again(stream.str());
    NyXmlReader left("main.xml", again);
    left.readXml();
    left.readXml();
    left = NyXmlReader();
}

// Versions

TEST(DocumentReader, MajorVersionsAreCompared)
{
    auto const greater = [](std::string const& version) {
        return "NyXmlObject::checkVersion warning: Input file version (v" + version +
               ") is greater than code base version (v4.0.0).\n";
    };
    auto const smaller = [](std::string const& version) {
        return "NyXmlObject::checkVersion warning: Input file version (v" + version +
               ") is two versions smaller than code base version (v4.0.0).\n";
    };
    struct Row {
        std::string version;
        std::string warning;
        bool flag;
    };
    for (Row const& row :
         { Row{ "4.0.0", "", true }, Row{ "4.5.0", "", true }, Row{ "4", "", true }, Row{ "3.9.9", "", true },
           Row{ "5.0.0", greater("5.0.0"), false }, Row{ "2.0.0", smaller("2.0.0"), true }, Row{ "", smaller(""), true },
           Row{ "new", smaller("new"), true }, Row{ "-1.0", greater("-1.0"), false }, Row{ "65540.1", "", true },
           Row{ "65541", greater("65541"), false } }) {
        SCOPED_TRACE(row.version);
        Messages messages;
        std::istringstream stream("<a version='" + row.version + "' x='1'><b version='9'/></a>");
        NyXmlReader reader("main.xml", stream);
        EXPECT_EQ(eventsOf(reader), "start a x=1 | empty b version=9 | end | eof");
        EXPECT_EQ(reader.versionFlag(), row.flag);
        EXPECT_EQ(messages.types(), std::vector<int>(row.warning.empty() ? 0 : 1, 4));
        EXPECT_EQ(messages.take(), row.warning);
    }
}

TEST(DocumentReader, EachDocumentIsExamined)
{
    Messages messages;
    ScratchDirectory const directory;
    std::string const newer = directory.write("newer.xml", "<b version='5.0'/>");
    std::string const unmarked = directory.write("unmarked.xml", "<b/>");
    std::istringstream stream("<a>" + include(newer) + include(unmarked) + "</a>");
    NyXmlReader reader("main.xml", stream);
    std::string flags;
    while (reader.readXml() != Reader::XML_READER_EOF)
        flags += reader.versionFlag() ? 'y' : 'n';
    EXPECT_EQ(flags, "ynyy");
}

// What the reader owns and sends

/// Tells when it goes.
class Factory : public NyXmlFactory {
public:
    explicit Factory(int& deleted) : m_deleted(deleted) {}
    ~Factory() override { ++m_deleted; }

private:
    int& m_deleted;
};

TEST(DocumentReader, OwnsItsFactory)
{
    int deleted = 0;
    NyXmlCreator const creator = [] { return static_cast<NyXmlObject*>(nullptr); };
    {
        NyXmlReader reader;
        EXPECT_EQ(reader.factoryPointer(), nullptr);
        EXPECT_TRUE(reader.registerComponentCreator(NyToken("a"), creator));
        EXPECT_FALSE(reader.registerComponentCreator(NyToken("b"), creator));
        auto const* made = dynamic_cast<NyXmlFactory const*>(reader.factoryPointer());
        ASSERT_NE(made, nullptr);
        EXPECT_EQ(made->creatorMap().size(), 2u);

        reader.setFactoryPointer(new Factory(deleted));
        reader.setFactoryPointer(new Factory(deleted));
        EXPECT_EQ(deleted, 1);
        EXPECT_FALSE(reader.registerComponentCreator(NyToken("a"), creator));
        NyXmlReader const copy(reader);
        EXPECT_EQ(copy.factoryPointer(), reader.factoryPointer());
    }
    EXPECT_EQ(deleted, 2);
}

TEST(DocumentReader, CountsLinksOnBothSignals)
{
    std::ostringstream heard;
    auto& manager = Ny::Application::instance().connectionManager();
    auto const progress = manager.createSlot<Ny::SignalReadWriteProgressTraits>(
        "signalReadWriteProgress", [&heard](double value) { heard << value << ' '; }, 0);
    auto const status = manager.createSlot<Ny::SignalReadWriteStatusTraits>(
        "signalReadWriteMsg", [&heard](std::string const& text) { heard << '"' << text << "\" "; }, 0);

    NyXmlReader reader;
    reader.incrementLinkCount();
    reader.incrementLinkCount();
    reader.setLinkTotal(4);
    reader.incrementLinkCount();
    reader.resetLinkCount();
    reader.incrementLinkCount();
    EXPECT_EQ(heard.str(), "1 \"\" 2 \"\" 0.75 \"\" 0.25 \"\" ");

    NyXmlReader(reader).incrementLinkCount(); // has no signals
    NyXmlReader assigned;
    assigned = reader;
    assigned.incrementLinkCount();
    EXPECT_EQ(heard.str(), "1 \"\" 2 \"\" 0.75 \"\" 0.25 \"\" 1 \"\" ") << "signals and counters are its own";
}

} // namespace
