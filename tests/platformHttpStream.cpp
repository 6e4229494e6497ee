#include <nyXml/platform/NyIfHttpStream.h>

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <map>
#include <netinet/in.h>
#include <poll.h>
#include <string>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

/// Answers one connection after the other on the loopback interface, by the script of the path asked for. Never waits for long.
class Server {
public:
    struct Script {
        std::vector<std::string> pieces;         // sent one by one, a little apart
        bool hold = false;                       // leave the connection open after the last
        std::atomic<bool> const* gate = nullptr; // what is behind the first piece waits for it
    };

    explicit Server(std::map<std::string, Script> scripts) : m_Scripts(std::move(scripts))
    {
        m_Listener = socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto* const generic = static_cast<sockaddr*>(static_cast<void*>(&address));
        EXPECT_EQ(bind(m_Listener, generic, size), 0);
        EXPECT_EQ(listen(m_Listener, 8), 0);
        EXPECT_EQ(getsockname(m_Listener, generic, &size), 0);
        m_Address = "127.0.0.1:" + std::to_string(ntohs(address.sin_port));
        m_Thread = std::thread([this] { run(); });
    }
    ~Server()
    {
        m_Stop = true;
        m_Thread.join();
        close(m_Listener);
    }
    std::string url(std::string const& path) const { return "http://" + m_Address + path; }
    std::string const& address() const { return m_Address; }

private:
    void run()
    {
        while (!m_Stop) {
            pollfd waiting{ m_Listener, POLLIN, 0 };
            if (poll(&waiting, 1, 10) != 1)
                continue;
            int const connection = accept(m_Listener, nullptr, nullptr);
            timeval const limit{ 5, 0 };
            setsockopt(connection, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
            setsockopt(connection, SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
            serve(connection);
            close(connection);
        }
    }
    void serve(int connection)
    {
        std::string request;
        for (char c; request.find("\r\n\r\n") == std::string::npos && recv(connection, &c, 1, 0) == 1;)
            request += c;
        std::string const line = request.substr(0, request.find('\r'));
        std::size_t const path = line.find(' ') + 1;
        auto const found = m_Scripts.find(line.substr(path, line.find(' ', path) - path));
        if (found == m_Scripts.end())
            return;
        Script const& script = found->second;
        for (std::size_t i = 0; i != script.pieces.size(); ++i) {
            if (i != 0)
                std::this_thread::sleep_for(5ms);
            if (i == 1 && script.gate)
                pauseUntil([&script] { return script.gate->load(); });
            std::string const& piece = script.pieces[i];
            for (std::size_t sent = 0; sent != piece.size();) {
                auto const count = send(connection, piece.data() + sent, piece.size() - sent, MSG_NOSIGNAL);
                if (count <= 0)
                    return; // the client has left
                sent += static_cast<std::size_t>(count);
            }
        }
        if (script.hold)
            pauseUntil([connection] {
                char c;
                return recv(connection, &c, 1, MSG_DONTWAIT) == 0;
            });
    }
    void pauseUntil(std::function<bool()> const& done)
    {
        for (auto const end = Clock::now() + 5s; !m_Stop && !done() && Clock::now() < end;)
            std::this_thread::sleep_for(1ms);
    }

    std::map<std::string, Script> const m_Scripts;
    int m_Listener = -1;
    std::string m_Address;
    std::atomic<bool> m_Stop{ false };
    std::thread m_Thread;
};

std::string const ok = "HTTP/1.1 200 OK\r\nConnection: close\r\n";

class PlatformHttpStream : public testing::Test {
protected:
    void SetUp() override { setenv("no_proxy", "127.0.0.1", 1); } // whatever this machine's proxy, it cannot reach us
    void TearDown() override { unsetenv("no_proxy"); }
};

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

TEST_F(PlatformHttpStream, BodyArrivesWhileTheServerStillWrites)
{
    std::atomic<bool> gate{ false };
    Server server({ { "/a.xml", { { ok + "\r\n<a>", "<b/>", "</a>" }, false, &gate } } });
    NyIfHttpStream::Limits limits;
    limits.stall = 700ms;
    NyIfHttpStream stream(server.url("/a.xml"), 1, limits);
    ASSERT_TRUE(stream);
    char first[3];
    ASSERT_TRUE(stream.read(first, 3)); // the server writes no more until we have this
    EXPECT_EQ(std::string(first, 3), "<a>");
    std::this_thread::sleep_for(800ms); // longer than a server may stall, but it is the reader who takes its time
    gate = true;
    EXPECT_EQ(rest(stream), "<b/></a>");
    EXPECT_FALSE(stream.bad());
}

TEST_F(PlatformHttpStream, LargeBodiesComeThroughTheBoundedBufferUnchanged)
{
    std::string body, chunked;
    for (std::size_t i = 0; i != 300; ++i) {
        std::string chunk(1 + i * 7919 % 30000, static_cast<char>(i)); // 4 MiB, cut elsewhere than the buffer is
        chunk[chunk.size() / 2] = '\n';
        char size[16];
        std::snprintf(size, sizeof size, "%zx\r\n", chunk.size());
        chunked += size + chunk + "\r\n";
        body += chunk;
    }
    Server server({ { "/chunked", { { ok + "Transfer-Encoding: chunked\r\n\r\n" + chunked + "0\r\n\r\n" }, true } },
                    { "/plain", { { ok + "\r\n" + body } } } });
    EXPECT_TRUE(fetched(server.url("/plain")) == body);
    EXPECT_TRUE(fetched(server.url("/chunked")) == body);
}

TEST_F(PlatformHttpStream, EveryFailureToBeginShowsAfterConstruction)
{
    auto const redirect = [](std::string const& location) {
        return Server::Script{ { "HTTP/1.1 302 Found\r\nContent-Length: 4\r\nLocation: " + location + "\r\n\r\nbody" } };
    };
    std::string const nobodyListens = Server({}).url("/");
    Server server({
        { "/404", { { "HTTP/1.1 404 Not Found\r\nContent-Length: 3\r\n\r\n<a>" } } },
        { "/503", { { "HTTP/1.1 503 Busy\r\n\r\n<a/>" } } },
        { "/file", redirect("file:///etc/hostname") },
        { "/ftp", redirect("ftp://127.0.0.1/x") },
        { "/loop", redirect("/loop") },
        { "/to404", redirect("/404") },
        { "/noise", { { "220 some other service\r\n" } } },
        { "/silent", { {}, true } },
        { "/endless", { std::vector<std::string>(1000, "HTTP/1.1 100 Continue\r\n\r\n") } },
    });
    NyIfHttpStream::Limits limits;
    limits.answer = 300ms;
    auto const start = Clock::now();
    for (char const* path : { "/404", "/503", "/file", "/ftp", "/loop", "/to404", "/noise", "/silent", "/endless", "/dropped" })
        EXPECT_EQ(fetched(server.url(path), limits), "failed") << path;
    for (std::string const& address : { nobodyListens, std::string("http://no-such-host.invalid/"),
                                        std::string("file:///etc/hostname"), std::string("http://"), std::string() })
        EXPECT_EQ(fetched(address, limits), "failed") << address;
    EXPECT_LT(Clock::now() - start, 10s);
}

TEST_F(PlatformHttpStream, RedirectsAreFollowedAndTheirBodiesSkipped)
{
    std::string const moved = "HTTP/1.1 301 Moved\r\nLocation: /b\r\n";
    Server server({ { "/kept", { { moved + "Content-Length: 7\r\n\r\n", "skipped" } } },
                    { "/closed", { { moved + "Connection: close\r\n\r\nskipped" } } },
                    { "/b", { { ok + "\r\n<b/>" } } },
                    { "/empty", { { ok + "Content-Length: 0\r\n\r\n" } } },
                    { "/204", { { "HTTP/1.1 204 No Content\r\n\r\n" } } } });
    EXPECT_EQ(fetched(server.url("/kept")), "<b/>");
    EXPECT_EQ(fetched(server.url("/closed")), "<b/>");
    EXPECT_EQ(fetched(server.url("/empty")), ""); // an empty document is the reader's matter, not ours
    EXPECT_EQ(fetched(server.url("/204")), "");
}

TEST_F(PlatformHttpStream, BodyThatBreaksOffOrStallsEndsBad)
{
    Server server({ { "/length", { { ok + "Content-Length: 100\r\n\r\n", "<a><b/>" } } },
                    { "/chunk", { { ok + "Transfer-Encoding: chunked\r\n\r\n3\r\n<a>\r\n5\r\n<b" } } },
                    { "/stall", { { ok + "\r\n", "<a>" }, true } },
                    { "/trickle", { std::vector<std::string>(1000, ok + "X: y\r\n\r\n") } } });
    EXPECT_EQ(fetched(server.url("/length")), "<a><b/> bad");
    EXPECT_EQ(fetched(server.url("/chunk")), "<a><b bad");
    NyIfHttpStream::Limits limits;
    limits.stall = 500ms;
    auto const start = Clock::now();
    EXPECT_EQ(fetched(server.url("/stall"), limits), "<a> bad");
    limits.leastBytes = 1000000; // it sends some, but not enough
    EXPECT_NE(fetched(server.url("/trickle"), limits).find(" bad"), std::string::npos);
    EXPECT_LT(Clock::now() - start, 5s);
}

TEST_F(PlatformHttpStream, BackslashOfAJoinedLinkIsASlash)
{
    Server server({ { "/a/d/c.xml?x\\y", { { ok + "\r\n<c/>" } } } });
    EXPECT_EQ(fetched(server.url("/a\\d/c.xml?x\\y")), "<c/>");
}

TEST_F(PlatformHttpStream, ProxyOfTheEnvironmentIsAsked)
{
    // A proxy sees the whole address, and looks the host up itself.
    Server proxy({ { "http://far.invalid/a.xml", { { ok + "\r\n<a/>" } } } });
    setenv("http_proxy", ("http://" + proxy.address()).c_str(), 1);
    EXPECT_EQ(fetched("http://far.invalid/a.xml"), "<a/>");
    unsetenv("http_proxy");
}

} // namespace
