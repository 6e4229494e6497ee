#include "fileSupport.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <fstream>
#include <iterator>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using Step = NyXmlWriteResult::Step;

std::string contentOf(std::string const& path)
{
    std::ifstream file(path, std::ios::binary);
    return { std::istreambuf_iterator<char>(file), {} };
}

mode_t modeOf(std::string const& path)
{
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

std::size_t filesIn(std::string const& folder)
{
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), {}));
}

FileJoint elbow()
{
    FileJoint joint;
    joint.id = 7;
    joint.angle = 0.1;
    joint.label = std::string("elbow");
    joint.xmlInit();
    joint.mode = 1;
    return joint;
}

/// As long as it lives no file grows beyond this, as on a full disk.
class SmallDisk {
public:
    explicit SmallDisk(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit limit = m_before;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
    }
    ~SmallDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    rlimit m_before{};
    void (*m_handler)(int) = nullptr;
};

class Refuses : public FileJoint {
public:
    bool write(NyXmlWriter& writer) const override
    {
        FileJoint::write(writer);
        return false;
    }
};

TEST(FileWrite, ComesBack)
{
    ScratchDirectory const folder;
    std::string const path = folder.path("a.xml");
    FileJoint const joint = elbow();
    NyXmlWriteOptions options;
    options.withVersion = true;
    options.root = "urn:demo/arm#arm";
    options.prepare = [](NyXmlWriter& writer) { writer.setHeader("<!-- mine -->"); };
    NyXmlWriteResult const written = NyXmlFile::write(path, joint, options);
    EXPECT_TRUE(written.isWritten());
    EXPECT_EQ(written.faults.size(), 2u) << "elements without namespace";
    EXPECT_EQ(contentOf(path).substr(0, 18), "<!-- mine -->\n<arm");
    EXPECT_NE(contentOf(path).find("a.arm.xsd"), std::string::npos)
        << "the schema is called after the document, not after the file beside it";

    FileJoint again;
    NyXmlReadOptions reading;
    reading.root = "arm";
    EXPECT_TRUE(NyXmlFile::read(path, again, reading));
    EXPECT_EQ(again, joint);
    EXPECT_EQ(filesIn(folder.path()), 1u);
}

TEST(FileWrite, TakesThePlaceOfTheOldDocument)
{
    ScratchDirectory const folder;
    std::string const path = folder.write("a.xml", "old");
    chmod(path.c_str(), 0640);
    fs::create_symlink("a.xml", folder.path("link.xml"));
    fs::create_symlink("sub/new.xml", folder.path("dangling.xml"));
    fs::create_directory(folder.path("sub"));
    EXPECT_TRUE(NyXmlFile::write(folder.path("link.xml"), elbow()).isWritten());
    EXPECT_TRUE(fs::is_symlink(folder.path("link.xml")));
    EXPECT_EQ(modeOf(path), 0640u);
    FileJoint again;
    EXPECT_TRUE(NyXmlFile::read(path, again));

    EXPECT_TRUE(NyXmlFile::write(folder.path("dangling.xml"), elbow()).isWritten());
    EXPECT_TRUE(fs::is_regular_file(folder.path("sub/new.xml")));
    mode_t const mask = umask(0);
    umask(mask);
    EXPECT_EQ(modeOf(folder.path("sub/new.xml")), 0666u & ~mask);
    EXPECT_EQ(filesIn(folder.path()) + filesIn(folder.path("sub")), 5u);
}

// Whatever goes wrong, the old document is there, and nothing beside it.
TEST(FileWrite, AFailureLeavesTheOldDocument)
{
    ScratchDirectory const folder;
    std::string const path = folder.write("a.xml", "old");
    NyXmlVectorBasicType<NyXmlBasicType<int>> const numbers(100'000);
    NyXmlWriteOptions options;
    options.root = "numbers";
    for (rlim_t bytes : { 0, 1, 4096, 65536, 150'000 }) {
        SCOPED_TRACE(bytes);
        SmallDisk const disk(bytes);
        NyXmlWriteResult const result = NyXmlFile::write(path, numbers, options);
        EXPECT_EQ(result.failedStep, Step::WRITE);
        EXPECT_EQ(result.reason, "File too large");
    }
    EXPECT_EQ(NyXmlFile::write(path, Refuses(), options).failedStep, Step::OBJECT);
    EXPECT_EQ(contentOf(path), "old");
    EXPECT_EQ(filesIn(folder.path()), 1u);

    fs::create_symlink("circle.xml", folder.path("circle.xml"));
    EXPECT_EQ(NyXmlFile::write(folder.path("circle.xml"), numbers, options).failedStep, Step::OPEN);
    EXPECT_TRUE(fs::is_symlink(folder.path("circle.xml")));
    EXPECT_EQ(NyXmlFile::write("", numbers, options).failedStep, Step::OPEN);
    EXPECT_EQ(NyXmlFile::write(folder.path("none/a.xml"), numbers, options).str().substr(0, 54),
              "the file cannot be made: No such file or directory\n");
    EXPECT_EQ(NyXmlFile::write(folder.path(), numbers, options).failedStep, Step::OPEN);
    NyXmlWriteResult const full = NyXmlFile::write("/dev/full", numbers, options);
    EXPECT_EQ(full.failedStep, Step::WRITE);
    EXPECT_EQ(full.reason, "No space left on device");
}

TEST(FileWrite, ToAStream)
{
    std::ostringstream stream;
    EXPECT_TRUE(NyXmlFile::write(stream, "a.xml", elbow()).isWritten());
    FileJoint again;
    EXPECT_TRUE(readText(stream.str(), again));
    EXPECT_EQ(again, elbow());
    stream.setstate(std::ios::badbit);
    EXPECT_EQ(NyXmlFile::write(stream, "a.xml", elbow()).failedStep, Step::WRITE);
}

} // namespace
