// Each kind of document that would stop or hang a process, in a process of its own: it has to end with its message, soon and in little
// memory.

#include "fileSupport.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <thread>
#include <vector>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool isMeasured = false; // the sanitizer's own memory and time
#elif defined(__has_feature)
constexpr bool isMeasured = !__has_feature(address_sanitizer) && !__has_feature(thread_sanitizer);
#else
constexpr bool isMeasured = true;
#endif

/// A text, and then others without end.
class Endless : public std::streambuf {
public:
    Endless(std::string start, std::string more) : m_bytes(std::move(start)), m_more(std::move(more)) { set(); }

protected:
    int_type underflow() override
    {
        m_bytes.clear();
        while (m_bytes.size() < 16384)
            m_bytes += m_more;
        set();
        return traits_type::to_int_type(m_bytes[0]);
    }

private:
    void set() { setg(m_bytes.data(), m_bytes.data(), m_bytes.data() + m_bytes.size()); }
    std::string m_bytes;
    std::string m_more;
};

template <class Object>
std::function<NyXmlReadResult(NyXmlReadOptions const&)> endless(std::string const& start, std::string const& more)
{
    return [=](NyXmlReadOptions const& options) {
        Endless buffer(start, more);
        std::istream stream(&buffer);
        Object object;
        return NyXmlFile::read(stream, "doc.xml", object, options);
    };
}

template <class Object>
std::function<NyXmlReadResult(NyXmlReadOptions const&)> text(std::string const& document)
{
    return [=](NyXmlReadOptions const& options) {
        Object object;
        return readText(document, object, options);
    };
}

std::function<NyXmlReadResult(NyXmlReadOptions const&)> file(std::string const& path)
{
    return [=](NyXmlReadOptions const& options) {
        FileNode node;
        return NyXmlFile::read(path, node, options);
    };
}

/// What came of it, and at what cost.
struct Outcome {
    std::string faults;
    double seconds = 0; ///< of the processor
    long kilobytes = 0;
    int status = -1;
};

Outcome inAProcess(std::function<NyXmlReadResult(NyXmlReadOptions const&)> const& read, NyXmlReadOptions const& options)
{
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    pid_t const child = fork();
    if (child == 0) {
        alarm(60);
        std::string const faults = read(options).str();
        ssize_t const sent = write(ends[1], faults.data(), faults.size());
        _exit(sent == static_cast<ssize_t>(faults.size()) ? 0 : 2);
    }
    close(ends[1]);
    Outcome outcome;
    char bytes[4096];
    for (ssize_t got; (got = ::read(ends[0], bytes, sizeof bytes)) > 0;)
        outcome.faults.append(bytes, static_cast<std::size_t>(got));
    close(ends[0]);
    rusage usage{};
    wait4(child, &outcome.status, 0, &usage);
    outcome.seconds = static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
                      1e-6 * static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec);
    outcome.kilobytes = usage.ru_maxrss;
    return outcome;
}

/// Sends one document without end to whoever asks, and waits between its pieces.
class EndlessServer {
public:
    explicit EndlessServer(std::string const& piece = std::string(65536, ' ') + "<a/>", std::chrono::milliseconds pause = {})
        : m_listener(socket(AF_INET, SOCK_STREAM, 0))
    {
        setenv("no_proxy", "127.0.0.1", 1);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto* const generic = static_cast<sockaddr*>(static_cast<void*>(&address));
        EXPECT_EQ(bind(m_listener, generic, size), 0);
        EXPECT_EQ(listen(m_listener, 8), 0);
        EXPECT_EQ(getsockname(m_listener, generic, &size), 0);
        m_address = "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)) + "/a.xml";
        m_thread = std::thread([this, piece, pause] {
            for (int connection; (connection = accept(m_listener, nullptr, nullptr)) >= 0; close(connection)) {
                std::string bytes = "HTTP/1.1 200 OK\r\nContent-Type: text/xml\r\nConnection: close\r\n\r\n<element>";
                while (send(connection, bytes.data(), bytes.size(), MSG_NOSIGNAL) > 0)
                    std::this_thread::sleep_for(pause), bytes = piece;
            }
        });
    }
    ~EndlessServer()
    {
        shutdown(m_listener, SHUT_RDWR);
        m_thread.join();
        close(m_listener);
    }
    std::string const& address() const { return m_address; }

private:
    int m_listener;
    std::string m_address;
    std::thread m_thread;
};

std::string attributes(int count)
{
    std::string result;
    for (int i = 0; i < count; ++i)
        result += " a" + std::to_string(i) + "='1'";
    return result;
}

/// Nine entities, each of ten of the one before.
std::string entities()
{
    std::string document = "<!DOCTYPE node [<!ENTITY e0 \"lol\">";
    for (int i = 1; i < 10; ++i) {
        document += "<!ENTITY e" + std::to_string(i) + " \"";
        for (int k = 0; k < 10; ++k)
            document += "&e" + std::to_string(i - 1) + ";";
        document += "\">";
    }
    return document + "]><node><value>&e9;</value></node>";
}

class Greenhouse : public NyXmlBaseVariableCompoundType {
public:
    NyXmlObject* clone() const override { return new Greenhouse(*this); }
    NyXmlObject* newObject() const override { return new Greenhouse; }
    NyToken const& token() const override { return NyXml::NyVarVectorTypeToken; }
    bool equality(NyXmlObject const*) const override { return true; }
    void registerComponents() override {}
    bool readValueFromToken(NyToken const& element, NyXmlReader& reader) override
    {
        std::unique_ptr<NyXmlObject> const member(newObjectFromToken(element));
        return member != nullptr && (member->read(reader), true);
    }
};

TEST(GuardHostile, EachEndsSoonInLittleMemoryWithItsMessage)
{
    using Strings = NyXmlVectorType<NyXmlBasicType<std::string>>;
    using Doubles = NyXmlVectorBasicType<NyXmlBasicType<double>>;
    constexpr int million = 1'000'000;
    std::string const plugIn = NYXML_TEST_PLUGIN_DIR "/shapes.nyp";

    ScratchDirectory const folder;
    std::string const pipePath = folder.path("pipe");
    ASSERT_EQ(mkfifo(pipePath.c_str(), 0600), 0);
    auto const linkTo = [](std::string const& href) { return "<NyInclude type='simple' href='" + href + "'/>"; };
    std::string const twice =
        folder.write("twice.xml", "<node><nodes size='2'>" + linkTo("twice.xml") + linkTo("twice.xml") + "</nodes></node>");
    std::string const toPipe = folder.write("toPipe.xml", "<node>" + linkTo(pipePath) + "</node>");
    std::string const toZero = folder.write("toZero.xml", "<node>" + linkTo("/dev/zero") + "</node>");
    EndlessServer const server;

    NyXmlReadOptions options;
    options.anyRoot = true;
    options.guard = NyXmlGuard::forStrangers();
    NyXmlReadOptions linked = options;
    linked.guard->links = NyXmlGuard::Links::ANYWHERE;
    NyXmlReadOptions circling = linked;
    circling.guard->noCycles = false;
    circling.guard->includeDepth = NyXmlGuard::noLimit;

    struct Row {
        char const* name;
        std::function<NyXmlReadResult(NyXmlReadOptions const&)> read;
        NyXmlReadOptions const& options;
        char const* message;              ///< a part of it
        char const* inStandard = nullptr; ///< if it is another one there
    };
    Row const rows[] = {
        { "depth of objects", endless<FileNode>("<node>", "<nodes size='1'><element>"), options, "broken: depth: more than 256" },
        { "a depth that is skipped", endless<FileNode>("<node>", "<x>"), options, "broken: depth: more than 256" },
        { "an include of itself", file(twice), linked, "broken: cycles: \"" },
        { "the same, with cycles allowed", file(twice), circling, "broken: includes: more than 16" },
        { "no links at all", file(twice), options, "broken: links: \"" },
        { "a device", file("/dev/zero"), options, "broken: regular files: it is a device" },
        { "a pipe", file(pipePath), options, "broken: regular files: it is a pipe" },
        { "a link to a device", file(toZero), linked, "broken: regular files: \"/dev/zero\"" },
        { "a link to a pipe", file(toPipe), linked, "broken: regular files: \"" },
        { "a server without end", text<FileNode>("<node>" + linkTo(server.address()) + "</node>"), linked,
          "broken: bytes: more than 16777216" },
        { "attributes", text<FileNode>("<node" + attributes(million) + "/>"), options, "broken: attributes: more than 256" },
        { "attributes that fit in one read", text<FileNode>("<node" + attributes(400) + "/>"), options,
          "broken: attributes: more than 256" },
        { "attributes that come twice", endless<FileNode>("<node", " a='1'"), options, "broken: attributes: more than 256" },
        { "a size", text<Doubles>("<v size='2147483647'><group>1 2</group></v>"), options, "broken: items: more than 1000000" },
        { "a size of vectors", text<NyXmlVectorVector>("<v size='2147483647'><element x='1' y='2' z='3'/></v>"), options,
          "broken: items: more than 1000000" },
        { "a negative size", text<Strings>("<v size='-1'/>"), options, "broken: items: more than 1000000" },
        { "a plug-in", text<Greenhouse>("<g><length library='" + plugIn + "'>1</length></g>"), options, "broken: plug-ins: \"" },
        { "a text", endless<FileNode>("<node><value>", "x"), options, "broken: text: more than 4194304" },
        { "words", endless<Doubles>("<v size='1'><group>", "1 "), options, "broken: items: more than 1000000",
          "broken: text: more than 4194304" },
        { "long words", endless<Doubles>("<v size='1'><group>", std::string(99, '1') + ' '), options,
          "broken: text: more than 4194304" },
        { "a name", endless<FileNode>("<node><", "x"), options, "broken: text: more than 4194304" },
        { "a value", endless<FileNode>("<node><value a='", "x"), options, "broken: text: more than 4194304" },
        { "comments", endless<FileNode>("<node>", "<!-- > -->"), options, "broken: text: more than 4194304", "broken: bytes" },
        { "a comment", endless<FileNode>("<node><!--", " > "), options, "broken: text: more than 4194304" },
        { "elements", endless<Strings>("<v size='1'>", "<element>" + std::string(100, 'x') + "</element>"), options,
          "broken: bytes: more than 16777216" },
        { "faults", endless<FileNode>("<node>", "<x/>"), options, "broken: faults: more than 100" },
        { "zero bytes", endless<FileNode>("<node>", std::string(100, '\0')), options, "broken: text: more than 4194304",
          "file not well formed" },
        { "entities of entities", text<FileNode>(entities()), options, "file not well formed" },
        { "vectors that break off", text<NyXmlVectorVector>("<v size='1000'><element x='1' y='2' z='3'/>"), options,
          "doc.xml:1: v: ", "doc.xml:1:44: v: " },
        { "a link with an attribute too many", text<FileNode>("<node><NyInclude type='simple' href='x' title=''/></node>"),
          options, "broken: links: \"" },
    };
    struct Way {
        char const* name;
        NyXmlDialect dialect;
        NyXmlReadOptions::Strictness strictness;
    };
    Way const ways[] = {
        { "", NyXmlDialect::CORE, NyXmlReadOptions::Strictness::NONE },
        { ", strictly", NyXmlDialect::CORE, NyXmlReadOptions::Strictness::ALL },
        { ", in XML 1.0", NyXmlDialect::STANDARD, NyXmlReadOptions::Strictness::NONE },
    };
    for (Row const& row : rows)
        for (Way const& way : ways) {
            SCOPED_TRACE(std::string(row.name) + way.name);
            NyXmlReadOptions chosen = row.options;
            chosen.dialect = way.dialect;
            chosen.strictness = way.strictness;
            Outcome const outcome = inAProcess(row.read, chosen);
            bool const isOther = way.dialect == NyXmlDialect::STANDARD && row.inStandard != nullptr;
            EXPECT_EQ(outcome.status, 0);
            EXPECT_NE(outcome.faults.find(isOther ? row.inStandard : row.message), std::string::npos)
                << outcome.faults.substr(0, 1000);
            if (isMeasured) {
                EXPECT_LT(outcome.seconds, 1.0);
                EXPECT_LT(outcome.kilobytes, 64 * 1024);
            }
            if (std::getenv("NYXML_TEST_TELL") != nullptr)
                std::cout << row.name << way.name << ": " << outcome.seconds << " s, " << outcome.kilobytes << " kB\n";
        }
}

// One that sends too little counts as dead, and one that sends enough for that runs into the limit of time.
TEST(GuardHostile, AServerThatTricklesIsLeft)
{
    using namespace std::chrono_literals;
    for (bool const isAlive : { false, true }) {
        EndlessServer const server(std::string(isAlive ? 99 : 1, ' '), 20ms);
        NyXmlReadOptions options;
        options.guard = NyXmlGuard::forStrangers();
        options.guard->links = NyXmlGuard::Links::ANYWHERE;
        options.guard->http = { 3s, 3s, 400ms, 256 };
        options.guard->time = isAlive ? 1s : 10s;
        FileNode node;
        auto const start = std::chrono::steady_clock::now();
        auto const result = readText("<node><NyInclude type='simple' href='" + server.address() + "'/></node>", node, options);
        EXPECT_LT(std::chrono::steady_clock::now() - start, 3s);
        EXPECT_FALSE(result.isWhole);
        EXPECT_EQ(result.str().find("broken: time") != std::string::npos, isAlive) << result.str();
    }
}

} // namespace
