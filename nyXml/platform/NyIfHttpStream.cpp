#include <nyXml/platform/NyIfHttpStream.h>

#include <curl/curl.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <streambuf>

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

struct EasyCleanup {
    void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
};
struct MultiCleanup {
    void operator()(CURLM* multi) const { curl_multi_cleanup(multi); }
};

bool curlReady()
{
    static bool const ready = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK; // once, whichever thread comes first
    return ready;
}

// http://host/dir\sub/file.xml -> http://host/dir/sub/file.xml
std::string withSlashes(std::string address)
{
    auto const pathEnd = address.begin() + static_cast<std::ptrdiff_t>(std::min(address.find_first_of("?#"), address.size()));
    std::replace(address.begin(), pathEnd, '\\', '/');
    return address;
}

} // namespace

/// The body of the answer. The transfer makes progress only inside open() and underflow(), on the thread that calls them.
class NyIfHttpStream::Body : public std::streambuf {
public:
    Body(NyIfHttpStream& owner, Limits const& limits) : m_Owner(owner), m_Limits(limits) {}
    ~Body() override
    {
        if (m_Added)
            curl_multi_remove_handle(m_Multi.get(), m_Easy.get());
    }

    /// True once the answer has begun, false if there is none.
    bool open(std::string const& address)
    {
        if (!prepare(address))
            return false;
        Clock::time_point const deadline = Clock::now() + m_Limits.answer;
        perform();
        while (!hasBegun()) {
            milliseconds const left = std::chrono::duration_cast<milliseconds>(deadline - Clock::now());
            if (left.count() <= 0) {
                end(CURLE_OPERATION_TIMEDOUT);
            } else {
                wait(left);
                perform();
            }
        }
        offerBuffer();
        return m_Answered || m_Size != 0 || m_Result == CURLE_OK;
    }

protected:
    int_type underflow() override
    {
        m_Size = 0;
        while (m_Size == 0 && !m_Over)
            fetch();
        offerBuffer();
        if (m_Size != 0)
            return traits_type::to_int_type(*gptr());
        if (m_Result != CURLE_OK)
            m_Owner.setstate(std::ios::badbit); // not thrown: who reads from this buffer directly does not expect it
        return traits_type::eof();
    }

private:
    bool prepare(std::string const& address)
    {
        if (!curlReady())
            return false;
        m_Easy.reset(curl_easy_init());
        m_Multi.reset(curl_multi_init());
        if (!m_Easy || !m_Multi)
            return false;

        bool done = true;
        auto const set = [this, &done](CURLoption option, auto value) {
            done = curl_easy_setopt(m_Easy.get(), option, value) == CURLE_OK && done;
        };
        set(CURLOPT_URL, withSlashes(address).c_str());
        set(CURLOPT_USERAGENT, "nyXml");
        set(CURLOPT_FOLLOWLOCATION, 1L);
        set(CURLOPT_MAXREDIRS, 10L);
#if LIBCURL_VERSION_NUM >= 0x075500
        set(CURLOPT_PROTOCOLS_STR, "http,https"); // for redirects too: a server must not point us at our own files
        set(CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
#else
        set(CURLOPT_PROTOCOLS, static_cast<long>(CURLPROTO_HTTP | CURLPROTO_HTTPS));
        set(CURLOPT_REDIR_PROTOCOLS, static_cast<long>(CURLPROTO_HTTP | CURLPROTO_HTTPS));
#endif
        set(CURLOPT_FAILONERROR, 1L);
        set(CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L); // a proxy's consent is not the answer
        set(CURLOPT_NOSIGNAL, 1L);
        set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(m_Limits.connect.count()));
#if LIBCURL_VERSION_NUM >= 0x075700
        set(CURLOPT_QUICK_EXIT, 1L); // giving up on a name server must not wait for it after all
#endif
        set(CURLOPT_WRITEFUNCTION, &Body::takeBytes);
        set(CURLOPT_WRITEDATA, this);
        set(CURLOPT_HEADERFUNCTION, &Body::takeHeaderLine);
        set(CURLOPT_HEADERDATA, this);
        m_Added = done && curl_multi_add_handle(m_Multi.get(), m_Easy.get()) == CURLM_OK;
        return m_Added;
    }

    // Called by libcurl with a part of the body. What does not fit stays with libcurl, which then stops reading from the server.
    static std::size_t takeBytes(char* bytes, std::size_t, std::size_t size, void* self)
    {
        Body& body = *static_cast<Body*>(self);
        if (size > body.m_Buffer.size() - body.m_Size) {
            body.m_Paused = true;
            return CURL_WRITEFUNC_PAUSE;
        }
        std::memcpy(body.m_Buffer.data() + body.m_Size, bytes, size);
        body.m_Size += size;
        body.m_ArrivedInWindow += size;
        return size;
    }

    // Called by libcurl with each line of a header. An empty line ends it: of the answer, unless it is a redirect or a prelude.
    static std::size_t takeHeaderLine(char* line, std::size_t, std::size_t size, void* self)
    {
        Body& body = *static_cast<Body*>(self);
        if (size != 0 && (line[0] == '\r' || line[0] == '\n')) {
            long status = 0;
            curl_easy_getinfo(body.m_Easy.get(), CURLINFO_RESPONSE_CODE, &status);
            body.m_Answered = body.m_Answered || (status >= 200 && status < 300);
        }
        return size;
    }

    void perform()
    {
        if (m_Paused) {
            m_Paused = false;
            curl_easy_pause(m_Easy.get(), CURLPAUSE_CONT);
        }
        int running = 0;
        if (curl_multi_perform(m_Multi.get(), &running) != CURLM_OK)
            end(CURLE_RECV_ERROR);
        int left = 0;
        while (CURLMsg const* message = curl_multi_info_read(m_Multi.get(), &left)) {
            if (message->msg == CURLMSG_DONE)
                end(message->data.result);
        }
    }

    void wait(milliseconds atMost)
    {
        int const timeout = static_cast<int>(std::clamp<milliseconds::rep>(atMost.count(), 1, 1000));
        if (curl_multi_poll(m_Multi.get(), nullptr, 0, timeout, nullptr) != CURLM_OK)
            end(CURLE_RECV_ERROR);
    }

    // One step towards the next bytes. A window of waiting ends well with enough bytes, and badly with its time.
    void fetch()
    {
        perform();
        if (m_ArrivedInWindow >= m_Limits.leastBytes) {
            m_ArrivedInWindow = 0;
            m_WaitedInWindow = Clock::duration::zero();
        }
        if (m_Size != 0 || m_Over)
            return;
        if (m_WaitedInWindow >= m_Limits.stall)
            return end(CURLE_OPERATION_TIMEDOUT);
        Clock::time_point const before = Clock::now();
        wait(std::chrono::ceil<milliseconds>(m_Limits.stall - m_WaitedInWindow));
        m_WaitedInWindow += Clock::now() - before;
    }

    bool hasBegun() const { return m_Answered || m_Size != 0 || m_Over; }

    void end(CURLcode result)
    {
        m_Over = true;
        m_Result = result;
    }

    void offerBuffer() { setg(m_Buffer.data(), m_Buffer.data(), m_Buffer.data() + m_Size); }

    // libcurl hands over at most CURL_MAX_WRITE_SIZE bytes at a time, so an empty buffer always takes the next part.
    static constexpr std::size_t bufferSize = 65536;
    static_assert(bufferSize >= CURL_MAX_WRITE_SIZE, "a part of the body must fit into the empty buffer");

    NyIfHttpStream& m_Owner;
    Limits const m_Limits;
    std::unique_ptr<CURLM, MultiCleanup> m_Multi;
    std::unique_ptr<CURL, EasyCleanup> m_Easy; // behind the multi handle: goes first
    bool m_Added = false;
    bool m_Answered = false; // the header of the final answer is in, and it is a success
    bool m_Paused = false;   // libcurl holds a part of the body that did not fit
    bool m_Over = false;     // nothing more will come; m_Result tells why
    CURLcode m_Result = CURLE_OK;
    std::size_t m_ArrivedInWindow = 0;
    Clock::duration m_WaitedInWindow = Clock::duration::zero();
    std::size_t m_Size = 0; // bytes in the buffer, from its start
    std::array<char, bufferSize> m_Buffer;
};

NyIfHttpStream::NyIfHttpStream(std::string const& address, int mode) : NyIfHttpStream(address, mode, Limits()) {}

NyIfHttpStream::NyIfHttpStream(std::string const& address, int, Limits const& limits)
    : std::istream(nullptr),
      m_Body(std::make_unique<Body>(*this, limits))
{
    rdbuf(m_Body.get());
    if (!m_Body->open(address))
        setstate(std::ios::failbit);
}

NyIfHttpStream::~NyIfHttpStream() = default;
