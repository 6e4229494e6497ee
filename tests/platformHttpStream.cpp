#include "ReaderSupport.h"

#include <nyXml/platform/NyIfHttpStream.h>
#include <nyXml/reader/NyXmlReader.h>

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <iterator>
#include <map>
#include <netinet/in.h>
#include <string>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

/// Pieces are sent one by one, a little apart. An empty one keeps the client waiting, until the gate opens or the client has left.
using Answers = std::map<std::string, std::vector<std::string>>;

/// Answers one connection after the other on the loopback interface, each by the path asked for.
class Server {
public:
    explicit Server(Answers answers) : m_Answers(std::move(answers)), m_Listener(socket(AF_INET, SOCK_STREAM, 0))
    {
        setenv("no_proxy", "127.0.0.1", 1); // whatever this machine's proxy, it cannot reach us
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto* const generic = static_cast<sockaddr*>(static_cast<void*>(&address));
        EXPECT_EQ(bind(m_Listener, generic, size), 0);
        EXPECT_EQ(listen(m_Listener, 8), 0);
        EXPECT_EQ(getsockname(m_Listener, generic, &size), 0);
        m_Address = "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port));
        m_Thread = std::thread([this] {
            for (int connection; (connection = accept(m_Listener, nullptr, nullptr)) >= 0; close(connection))
                serve(connection);
        });
    }
    ~Server()
    {
        shutdown(m_Listener, SHUT_RDWR); // wakes the thread
        m_Thread.join();
        close(m_Listener);
    }
    std::string const& address() const { return m_Address; }
    std::atomic<bool> gate{ false };

private:
    void serve(int connection)
    {
        std::string request;
        char c;
        while (request.find("\r\n\r\n") == std::string::npos && recv(connection, &c, 1, 0) == 1)
            request += c;
        std::size_t const path = request.find(' ') + 1;
        auto const answer = m_Answers.find(request.substr(path, request.find(' ', path) - path));
        if (answer == m_Answers.end())
            return;
        for (std::string const& piece : answer->second) {
            for (auto const end = Clock::now() + 5s; piece.empty() && !gate && Clock::now() < end;) {
                if (recv(connection, &c, 1, MSG_DONTWAIT) == 0)
                    return;
                std::this_thread::sleep_for(1ms);
            }
            if (send(connection, piece.data(), piece.size(), MSG_NOSIGNAL) < 0)
                return;
            std::this_thread::sleep_for(5ms);
        }
    }

    Answers const m_Answers;
    int const m_Listener;
    std::string m_Address;
    std::thread m_Thread;
};

std::string const ok = "HTTP/1.1 200 OK\r\nConnection: close\r\n";
std::string const moved = "HTTP/1.1 302 Found\r\nContent-Length: 7\r\nLocation: ";

std::string rest(std::istream& stream) { return std::string(std::istreambuf_iterator<char>(stream), {}); }

/// "text", "text bad" for one that broke off, or "failed" for one that never began.
std::string fetched(std::string const& address, NyIfHttpStream::Limits const& limits = {})
{
    NyIfHttpStream stream(address, 1, limits);
    if (!stream)
        return "failed";
    std::string text = rest(stream);
    return text += stream.bad() ? " bad" : "";
}

TEST(PlatformHttpStream, EveryAnswerEndsInTextOrInAFailure)
{
    std::string large; // does not fit the stream's buffer
    for (int i = 0; i < 50000; ++i)
        large += std::to_string(i);
    struct Row {
        std::string path;
        std::vector<std::string> answer;
        std::string seen;
    } const rows[] = {
        { "/plain", { ok + "\r\n<a/>" }, "<a/>" },
        { "/large", { ok + "\r\n" + large }, large },
        { "/open", { "HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\n<a/>", "" }, "<a/>" }, // nobody waits for the connection's end
        { "/moved", { moved + "/plain\r\n\r\n", "skipped" }, "<a/>" },
        { "/empty", { ok + "Content-Length: 0\r\n\r\n" }, "" }, // an empty document is the reader's matter, not ours
        // no answer
        { "/404", { "HTTP/1.1 404 Not Found\r\nContent-Length: 3\r\n\r\n<a>" }, "failed" },
        { "/file", { moved + "file:///etc/hostname\r\n\r\nskipped" }, "failed" },
        { "/noise", { "220 some other service\r\n" }, "failed" },
        { "/silent", { "" }, "failed" },
        { "/endless", std::vector<std::string>(1000, "HTTP/1.1 100 Continue\r\n\r\n"), "failed" },
        { "/dropped", {}, "failed" },
        // half an answer
        { "/length", { ok + "Content-Length: 100\r\n\r\n", "<a><b/>" }, "<a><b/> bad" },
        { "/stall", { ok + "\r\n", "<a>", "" }, "<a> bad" },
    };
    Answers answers{ { "/trickle", std::vector<std::string>(1000, ok + "\r\n") },
                     { "/slow", std::vector<std::string>(250, ok + "\r\n" + std::string(100, 's')) } };
    for (Row const& row : rows)
        answers[row.path] = row.answer;
    Server const server(answers);
    NyIfHttpStream::Limits limits;
    EXPECT_TRUE(limits.connect == 10s && limits.answer == 30s && limits.stall == 30s && limits.leastBytes == 64);
    limits.answer = limits.stall = 1s;
    auto const start = Clock::now();
    for (Row const& row : rows)
        EXPECT_EQ(fetched(server.address() + row.path, limits), row.seen) << row.path;
    for (std::string const& address : { Server({}).address(), std::string("http://no-such-host.invalid/"),
                                        std::string("file:///etc/hostname"), std::string("http://"), std::string() })
        EXPECT_EQ(fetched(address, limits), "failed") << address;
    EXPECT_EQ(fetched(server.address() + "/slow", limits).find(" bad"), std::string::npos)
        << "slower than a stall as a whole, but never as long still";
    limits.leastBytes = 1000000;
    EXPECT_NE(fetched(server.address() + "/trickle", limits).find(" bad"), std::string::npos) << "it sends some, but not enough";
    EXPECT_LT(Clock::now() - start, 10s);
}

TEST(PlatformHttpStream, RedirectsLeadWhereTheySayAndNoFurtherThanTen)
{
    Server const other({ { "/far", { ok + "\r\nfar" } } });
    std::string const redirect = "HTTP/1.1 307 Moved\r\nLocation: ", words(200000, 'w');
    struct {
        std::string path, head, seen;
    } const rows[] = {
        { "/301", "HTTP/1.1 301 Moved\r\nLocation: /plain", "plain" },
        { "/303", "HTTP/1.1 303 Moved\r\nLOCATION:/plain \r\nlocation: /lost", "plain" },
        { "/308", "HTTP/1.1 308 Moved\r\nLocation: /plain", "plain" },
        { "/304", "HTTP/1.1 304 Not Modified\r\nX: /plain", "failed" }, // to nowhere
        { "/d/sibling", redirect + "deep", "deep" },
        { "/d/e/above", redirect + "../deep", "deep" },
        { "/query", redirect + "/plain?a=1&b=%20", "query" },
        { "/blank", redirect + "/a b", "blank" },
        { "/host", redirect + other.address() + "/far", "far" },
        { "/lost", redirect + other.address() + "/plain", "failed" },
        { "/ftp", redirect + "ftp://127.0.0.1/plain", "failed" },
        { "/loop", redirect + "/loop", "failed" },
        { "/10", redirect + "/9", "plain" },
        { "/11", redirect + "/10", "failed" },
    };
    Answers answers{ { "/plain", { ok + "\r\nplain" } },
                     { "/d/deep", { ok + "\r\ndeep" } },
                     { "/plain?a=1&b=%20", { ok + "\r\nquery" } },
                     { "/a%20b", { ok + "\r\nblank" } },
                     { "/1", { redirect + "/plain\r\n\r\n" } } };
    for (auto const& row : rows)
        answers[row.path] = { row.head + "\r\nContent-Length: 1000000\r\n\r\n" + words }; // nobody waits for the rest
    for (int i = 2; i != 10; ++i)
        answers['/' + std::to_string(i)] = { redirect + '/' + std::to_string(i - 1) + "\r\n\r\n" };
    Server const server(answers);
    for (auto const& row : rows)
        EXPECT_EQ(fetched(server.address() + row.path), row.seen) << row.path;
    EXPECT_EQ(fetched(server.address() + "\\d/e\\..\\deep"), "deep") << "backslashes";
}

TEST(PlatformHttpStream, GateIsAskedForEachAddressAsItIsSent)
{
    Server const server(
        { { "/a", { moved + "b?x\r\n\r\n" } }, { "/b?x", { moved + "/c\r\n\r\n" } }, { "/c", { ok + "\r\nc" } } });
    std::string const address = server.address(), start = "HTTP" + address.substr(4) + "/d/../a";
    std::vector<std::string> asked;
    EXPECT_FALSE(NyIfHttpStream::setGate([&asked](std::string const& at) { return asked.push_back(at), true; }));
    EXPECT_EQ(fetched(start), "c");
    EXPECT_EQ(asked, (std::vector{ address + "/a", address + "/b?x", address + "/c" }));
    for (std::string const& refused : asked) {
        NyIfHttpStream::setGate([&refused](std::string const& at) { return at != refused; });
        EXPECT_EQ(fetched(start), "failed") << refused;
    }
    NyIfHttpStream::setGate([](std::string const& at) { return at.back() == 'a' ? true : throw at; });
    EXPECT_THROW(fetched(start), std::string);
    EXPECT_TRUE(NyIfHttpStream::setGate({}));
    EXPECT_EQ(fetched(start), "c");
}

TEST(PlatformHttpStream, BodyArrivesWhileTheServerStillWrites)
{
    Server server({ { "/a.xml", { ok + "\r\n<a>", "", "<b/>", "</a>" } } });
    NyIfHttpStream::Limits limits;
    limits.stall = 700ms;
    NyIfHttpStream stream(server.address() + "/a.xml", 1, limits);
    char first[3];
    ASSERT_TRUE(stream.read(first, 3)); // the server writes no more until we have this
    EXPECT_EQ(std::string(first, 3), "<a>");
    std::this_thread::sleep_for(800ms); // longer than a server may stall, but it is the reader who takes its time
    server.gate = true;
    EXPECT_EQ(rest(stream), "<b/></a>");
    EXPECT_FALSE(stream.bad());
}

TEST(PlatformHttpStream, IncludesOfAServersDocumentAreItsOwn)
{
    Server const server({ { "/a/b.xml", { ok + "\r\n<b><NyInclude type='simple' href='d/c.xml'/>", "</b>" } },
                          { "/a/d/c.xml", { ok + "\r\n<c>te", "xt</c>" } } });
    EXPECT_EQ(eventsOf<NyXmlReader>("<a><NyInclude type='simple' href='" + server.address() + "/a/b.xml'/></a>"),
              "start a | start b | start c | content text | end | end | eof");
}

} // namespace
