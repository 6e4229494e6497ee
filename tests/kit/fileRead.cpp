#include "fileSupport.h"

#include <gtest/gtest.h>

#include <atomic>
#include <fstream>
#include <thread>
#include <vector>

namespace {

using Kind = NyXmlFault::Kind;

std::string const goodJoint = "<joint id=\"1\" mode=\"fast\"><angle>0.5</angle><name>elbow</name></joint>";

TEST(FileRead, AWholeDocument)
{
    ScratchDirectory const folder;
    FileJoint joint;
    NyXmlReadResult const result =
        NyXmlFile::read(folder.write("a.xml", "<?xml version='1.0'?>\n" + goodJoint + "\n<!-- end -->\n"), joint);
    EXPECT_TRUE(result) << result.str();
    EXPECT_TRUE(result.isWhole);
    EXPECT_EQ(result.errorCode, 0u);
    EXPECT_EQ(joint.label, "elbow");
    EXPECT_EQ(joint.mode.value(), 1);
}

/// Of a format that has a version of its own.
class Track : public FileClass<Track> {
public:
    static constexpr char const* name = "gpx";
    void registerComponents() override { registerAttributeComponent("version", &version); }
    bool operator==(Track const& other) const { return version == other.version; }

    NyXmlBasicType<std::string> version;
};

// Each reader leaves the root's version to who knows it, and what an included document says to the library.
TEST(FileRead, TheRootsVersion)
{
    using Version = NyXmlReadOptions::Version;
    std::string const foreign = "<gpx version='1.1'/>";
    for (NyXmlDialect const dialect : { NyXmlDialect::CORE, NyXmlDialect::STANDARD })
        for (int way = 0; way != 3; ++way) {
            SCOPED_TRACE(way);
            NyXmlReadOptions options;
            options.dialect = dialect;
            if (way == 1)
                options.guard = NyXmlGuard::forStrangers();
            if (way == 2)
                options.strictness = NyXmlReadOptions::Strictness::ALL;
            auto const read = [&](std::string const& document, auto object, Version version) {
                options.version = version;
                NyXmlReadResult const result = readText(document, object, options);
                std::string text = result.has(NyXmlFault::Kind::VERSION) ? "version" : "";
                text += result.has(NyXmlFault::Kind::UNKNOWN_MEMBER) ? "unknown" : "";
                if constexpr (std::is_same_v<decltype(object), Track>)
                    text += object.version.value();
                return text;
            };
            EXPECT_EQ(read(foreign, Track(), Version::OF_WHO_KNOWS_IT), "1.1");
            EXPECT_EQ(read(foreign, Track(), Version::OF_OBJECT), "1.1");
            EXPECT_EQ(read(foreign, Track(), Version::OF_LIBRARY), "version");
            std::string const joint = "<joint version='9.0' id='1' mode='fast'><angle>1</angle><name>a</name></joint>";
            EXPECT_EQ(read(joint, FileJoint(), Version::OF_WHO_KNOWS_IT), "version");
            EXPECT_EQ(read(joint, FileJoint(), Version::OF_OBJECT), "unknown");
        }
}

// What makes a document less than whole, or is wrong with a whole one, and where it is. One fault each.
TEST(FileRead, FaultsHaveTheirPlace)
{
    struct Row {
        char const* document;
        char const* faults;
        bool isWhole;
    };
    Row const rows[] = {
        { "", "NOT_WELL_FORMED 1 ", false },
        { "  \n ", "NOT_WELL_FORMED 1 ", false },
        { "<arm/>", "ROOT 1 arm", false },
        { "<joint><angle>1</angle>", "BROKEN_OFF 1 joint", false },
        { "<joint><angle>1", "NOT_WELL_FORMED 1 joint/angle", false },
        { "<joint/><joint/>", "BEHIND_ROOT 1 joint", false },
        { "<joint/>\n\n x", "NOT_WELL_FORMED 1 ", false },
        { "<joint/> <joint", "BEHIND_ROOT 1 ", false },
        { "<joint/> <", "BEHIND_ROOT 1 ", false },
        { "<joint/> </joint>", "NOT_WELL_FORMED 1 ", false },
        { "<joint>\n<angle>1</angel></joint>", "NOT_WELL_FORMED 2 joint/angle", false },
        { "<joint><angle>1<name/></angle></joint>", "NOT_WELL_FORMED 1 joint/angle/name", false },
        { "<joint>\n<reech>1</reech>\n</joint>", "UNKNOWN 2 joint/reech", true },
        { "<joint reech='1'/>", "UNKNOWN 1 joint", true },
        { "<joint>\n<angle unit='rad'>1</angle>\n<name/></joint>", "UNKNOWN 3 joint", false },
        { "<joint id=1/>", "NOT_WELL_FORMED 1 ", false },
        { "<joint version='9.0'/>", "VERSION 1 joint", true },
        { "<joint><NyInclude type='simple' href='nowhere.xml'/></joint>", "LINK 1 joint/NyInclude", true },
        { "<joint><NyInclude type='simple' href='b.xml' title='x'/></joint>", "LINK 1 joint/NyInclude", false },
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.document);
        FileJoint joint;
        NyXmlReadResult const result = readText(row.document, joint);
        EXPECT_EQ(faultsIn(result), row.faults) << result.str();
        EXPECT_EQ(result.isWhole, row.isWhole);
        EXPECT_FALSE(result);
        NyXmlReadOptions strict;
        strict.strictness = NyXmlReadOptions::Strictness::ALL;
        if (!result.has(Kind::LINK)) { // which a guarded reading tells once and goes on
            EXPECT_EQ(readText(row.document, joint, strict).isWhole, row.isWhole) << "read strictly";
        }
    }
}

// The same kinds for the same faults, though it is another parser that tells them.
TEST(FileRead, FaultsOfStandardDocuments)
{
    NyXmlReadOptions options;
    options.dialect = NyXmlDialect::STANDARD;
    EXPECT_EQ(faultsOf<FileJoint>("", options), "NOT_WELL_FORMED 1 ");
    EXPECT_EQ(faultsOf<FileJoint>("<arm/>", options), "ROOT 1 arm");
    for (char const* rest : { "", "1", "<", "<b c='", "<![CDATA[" })
        EXPECT_EQ(faultsOf<FileJoint>(std::string("<joint>\n<angle>") + rest, options), "BROKEN_OFF 2 joint/angle");
    EXPECT_EQ(faultsOf<FileJoint>("<joint/>\n<joint/>", options), "BEHIND_ROOT 2 ");
    EXPECT_EQ(faultsOf<FileJoint>("<joint/> x", options), "BEHIND_ROOT 1 ");
    EXPECT_EQ(faultsOf<FileJoint>("<joint><angle/>\n\nx</joint>", options), "VALUE 3 joint");
    EXPECT_EQ(faultsOf<FileJoint>("<joint>\n<angle>1</angel></joint>", options), "NOT_WELL_FORMED 2 joint/angle");
    EXPECT_EQ(faultsOf<FileJoint>("<joint>\n<angle>&x;</angle></joint>", options), "NOT_WELL_FORMED 2 joint/angle");
    EXPECT_EQ(faultsOf<FileJoint>("<joint>\n<reech/></joint>", options), "UNKNOWN 2 joint/reech");
    FileJoint joint;
    EXPECT_EQ(readText("<joint>\n <angle>\n</angel></joint>", joint, options).str(),
              "doc.xml:3:3: joint/angle: NyXmlStandardReader Error: file not well formed. mismatched tag.\n");
}

TEST(FileRead, AFaultInPiecesIsOne)
{
    FileJoint joint;
    NyXmlReadResult const result = readText("<joint>\n<angle></name></joint>", joint);
    ASSERT_EQ(result.faults.size(), 1u) << result.str();
    EXPECT_EQ(result.faults[0].str(),
              "doc.xml:2: joint/angle: NyXmlFileReader Error: file not well formed. End tag closed incorrect "
              "start tag. Start tag: angle End tag: name");
    EXPECT_EQ(result.errorCode, 1u);

    NyXmlVectorType<NyXmlBasicType<std::string>> names;
    NyXmlReadOptions options;
    options.anyRoot = true;
    NyXmlReadResult const sizes = readText("<v size='2'>\n<element>a</element></v>", names, options);
    ASSERT_EQ(sizes.faults.size(), 1u) << sizes.str();
    EXPECT_EQ(sizes.faults[0].str(),
              "doc.xml:2: NyXmlVectorType Error: array size not equal to attribute value -- 2, actual -- 1");
    EXPECT_EQ(sizes.faults[0].kind, Kind::WRONG_SIZE);

    NyXmlVectorType<NyXmlVectorType<NyXmlBasicType<std::string>>> lists;
    EXPECT_EQ(faultsIn(readText("<v size='2'><element size='1'/><element size='7'><element/></element><element size='3'>"
                                "<element/></element></v>",
                                lists, options)),
              "SIZE 1 v; SIZE 1 v; SIZE 1 ");
    NyXmlMapType<NyXmlBasicType<std::string>, NyXmlBasicType<int>> map;
    EXPECT_EQ(readText("<m><entry/></m>", map, options).faults.size(), 0u);
    EXPECT_EQ(readText("<m><entry>1</entry></m>", map, options).str(),
              "doc.xml:1: m/entry: NyXmlMapType Error: file not valid. Key map format not correct. Expected element but received "
              "entry.\n");
}

TEST(FileRead, AFileThatCannotBeRead)
{
    ScratchDirectory const folder;
    FileJoint joint;
    EXPECT_EQ(NyXmlFile::read(folder.path("none.xml"), joint).str(),
              folder.path("none.xml") + ": the file cannot be read: No such file or directory\n");
    EXPECT_EQ(NyXmlFile::read(folder.path(), joint).str(), folder.path() + ": the file cannot be read: it is a directory\n");
}

// A stream may be one that throws at its end, that has failed before, or that fails on the way.
TEST(FileRead, StreamsOfAllMoods)
{
    class Torn : public std::stringbuf {
    public:
        explicit Torn(std::string const& text) : std::stringbuf(text, std::ios::in) {}

    protected:
        int_type underflow() override
        {
            int_type const next = std::stringbuf::underflow();
            return next != traits_type::eof() ? next : throw std::runtime_error("the line is dead");
        }
    };
    for (NyXmlDialect const dialect : { NyXmlDialect::CORE, NyXmlDialect::STANDARD }) {
        NyXmlReadOptions options;
        options.dialect = dialect;
        FileJoint joint;
        std::istringstream stream(goodJoint);
        stream.exceptions(std::ios::failbit | std::ios::badbit | std::ios::eofbit);
        EXPECT_EQ(NyXmlFile::read(stream, "doc.xml", joint, options).str(), "");
        std::ifstream none("none.xml");
        EXPECT_EQ(faultsIn(NyXmlFile::read(none, "doc.xml", joint, options)), "FILE 0 ");
        Torn torn(goodJoint.substr(0, 60));
        std::istream half(&torn);
        EXPECT_EQ(NyXmlFile::read(half, "doc.xml", joint, options).faults.back().kind, Kind::FILE_ERROR);
    }
}

TEST(FileRead, TheRootsName)
{
    FileJoint joint;
    NyXmlReadOptions options;
    options.root = "urn:any#arm";
    EXPECT_TRUE(readText("<a:arm/>", joint, options));
    EXPECT_FALSE(readText(goodJoint, joint, options).isWhole);
    EXPECT_EQ(joint.label, "");
    options.anyRoot = true;
    EXPECT_TRUE(readText(goodJoint, joint, options));
    EXPECT_EQ(joint.label, "elbow");
}

// A rest that the object left alone is read all the same, and what is wrong there is told.
class Hasty : public NyXmlBasicType<int> {
public:
    bool read(NyXmlReader& reader) override
    {
        reader.readXml();
        return true;
    }
};
class Thrower : public NyXmlBasicType<int> {
public:
    bool read(NyXmlReader&) override { throw std::runtime_error("no such thing"); }
};

TEST(FileRead, ObjectsThatStopOrThrow)
{
    NyXmlReadOptions options;
    options.anyRoot = true;
    EXPECT_EQ(faultsOf<Hasty>("<a><b><c d='1'/></b><e>x</e></a>", options), "");
    EXPECT_EQ(faultsOf<Hasty>("<a><b></b>\n<c></d></a>", options), "NOT_WELL_FORMED 2 a/c");
    EXPECT_EQ(faultsOf<Hasty>("<a><b></b><c>", options), "NOT_WELL_FORMED 1 a/c");
    Thrower thrower;
    EXPECT_EQ(readText("<a/>", thrower, options).str(), "doc.xml:1: a: the object stopped reading: no such thing\n");
    NyXmlVectorType<NyXmlBasicType<int>> sequence;
    EXPECT_EQ(faultsIn(readText("<a size='-1'/>", sequence, options)), "EXCEPTION 1 a");
}

TEST(FileRead, OthersAreNotDisturbed)
{
    Messages messages; // the application's own handler
    std::atomic<int> faults = 0;
    auto const work = [&faults](int wrong) {
        std::string document = "<joint>";
        for (int i = 0; i < wrong; ++i)
            document += "<reech/>";
        for (int i = 0; i < 200; ++i) {
            FileJoint joint;
            faults += readText(document + "</joint>", joint).faults.size() == static_cast<std::size_t>(wrong) ? 0 : 1;
        }
    };
    std::vector<std::thread> threads;
    for (int wrong = 0; wrong < 4; ++wrong)
        threads.emplace_back(work, wrong);
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(faults, 0);
    EXPECT_EQ(messages.text(), "");
    Ny::Print::write(Ny::Print::FAULT, "mine\n");
    EXPECT_EQ(messages.text(), "mine\n");
}

TEST(FileRead, ProgressAndCancel)
{
    std::string document = "<names size='5000'>";
    for (int i = 0; i < 5000; ++i)
        document += "<element>name</element>\n";
    document += "</names>";
    ScratchDirectory const folder;
    std::string const path = folder.write("a.xml", document);

    std::vector<double> signalled;
    int texts = 0;
    auto& signals = Ny::Application::instance().connectionManager();
    auto const progress = signals.createSlot<Ny::SignalReadWriteProgressTraits>(
        Ny::SignalReadWriteProgressTraits::name(), [&](double part) { signalled.push_back(part); }, 0);
    auto const status = signals.createSlot<Ny::SignalReadWriteStatusTraits>(
        Ny::SignalReadWriteStatusTraits::name(), [&](std::string const& text) { texts += text.empty() ? 1 : 100; }, 0);

    NyXmlReadOptions options;
    options.anyRoot = true;
    std::uint64_t last = 0;
    std::uint64_t total = 0;
    int calls = 0;
    options.progress = [&](std::uint64_t bytes, std::uint64_t all) {
        EXPECT_GT(bytes, last);
        last = bytes;
        total = all;
        ++calls;
        return true;
    };
    NyXmlVectorType<NyXmlBasicType<std::string>> names;
    EXPECT_TRUE(NyXmlFile::read(path, names, options));
    EXPECT_EQ(last, document.size());
    EXPECT_EQ(total, document.size());
    EXPECT_EQ(calls, static_cast<int>(document.size() / 16383 + 1));
    ASSERT_EQ(signalled.size(), static_cast<std::size_t>(calls));
    EXPECT_EQ(signalled.back(), 1.0);
    EXPECT_EQ(texts, calls);

    calls = 0;
    options.progress = [&](std::uint64_t, std::uint64_t) { return ++calls < 3; };
    NyXmlReadResult const cancelled = NyXmlFile::read(path, names, options);
    EXPECT_TRUE(cancelled.isCancelled);
    EXPECT_FALSE(cancelled.isWhole);
    EXPECT_EQ(cancelled.str(), "");
    EXPECT_EQ(calls, 3);
    EXPECT_GT(names.size(), 0u);
    EXPECT_LT(names.size(), 5000u);

    options.toSignals = false;
    signalled.clear();
    options.progress = [](std::uint64_t, std::uint64_t) -> bool { throw std::runtime_error("mine"); };
    EXPECT_THROW((void)NyXmlFile::read(path, names, options), std::runtime_error);
    EXPECT_TRUE(signalled.empty());
}

} // namespace
